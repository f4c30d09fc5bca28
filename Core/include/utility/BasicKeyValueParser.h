#ifndef VORTM_UTILITY_BASICKEYVALUEPARSER_H
#define VORTM_UTILITY_BASICKEYVALUEPARSER_H

#include <map>
#include <string>

namespace vortm {
namespace utility {

// Reader of "key = value" files, one pair a line:
// - blanks (space, tab, CR) around keys and values are trimmed; a UTF-8
//   byte order mark at the start of the text is skipped;
// - blank lines, and lines whose first non-blank character is "#", are
//   passed over. A "#" elsewhere belongs to the value, so values such as
//   microblog topics ("#topic#") need no quoting;
// - the value runs from behind the first "=" to the end of the line, and
//   may be empty;
// - a key that comes again replaces the earlier value: the later line wins,
//   so settings can be overridden by appending to a file;
// - a line with no "=", an empty key, a key with a blank or a zero byte
//   inside it is malformed: parsing stops with false, and getError() says
//   which line ("line 3: expected key = value").
class BasicKeyValueParser {
 public:
  BasicKeyValueParser();

  // Adds the pairs of `text` to `out`; on a malformed line `out` keeps the
  // pairs of the lines before it.
  bool parseText(const std::string& text, std::map<std::string, std::string>& out);
  // The same for a regular file of at most kMaxFileBytes bytes.
  bool parseFile(const std::string& path, std::map<std::string, std::string>& out);

  const std::string& getError() const { return m_error; }
  // Line of the error counted from 1, or 0 when the error is not a line's.
  int getErrorLine() const { return m_errorLine; }

  static const size_t kMaxFileBytes;

 private:
  bool fail(int line, const std::string& reason);

  std::string m_error;
  int m_errorLine;
};

}  // namespace utility
}  // namespace vortm

#endif
