#ifndef VORELIN_TOOLS_WORDLIST_H
#define VORELIN_TOOLS_WORDLIST_H

#include <string>
#include <vector>

namespace vorelin {
namespace cli {

struct WordEntry {
  std::string word;
  int type;
  int tag;
  int line;
};

// Reads a plain-text word list (UTF-8). Format, one entry a line:
//   word                    type and tag from the current defaults
//   word TYPE TAG           type and tag by name or number
//   word FREQ [POS]         a jieba-style line: frequency and part of speech
//                           are ignored, the defaults apply
//   #! type TYPE            sets the default type for the lines below
//   #! tag TAG              sets the default tag for the lines below
//   #! blanks on|off        with on, the words below are stored with a blank
//                           before and after them: a dictionary in front of
//                           the English tokenizer then matches whole words
//                           only, never the inside of a longer word
//   # ...                   a comment; blank lines are skipped
// A UTF-8 byte-order mark and CRLF line ends are accepted. The defaults
// start as given by the caller. False with a message on an unreadable file
// or a malformed directive.
bool readWordList(const std::string& path, int defaultType, int defaultTag, std::vector<WordEntry>& entries,
                  std::string& error);

}  // namespace cli
}  // namespace vorelin

#endif
