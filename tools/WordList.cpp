#include "WordList.h"

#include <errno.h>

#include <cstring>
#include <fstream>
#include <sstream>

#include "CommandLine.h"
#include "TokenNames.h"

namespace vorelin {
namespace cli {

namespace {
std::vector<std::string> fields(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> out;
  std::string f;
  while (in >> f) out.push_back(f);
  return out;
}
}  // namespace

bool readWordList(const std::string& path, int defaultType, int defaultTag, std::vector<WordEntry>& entries,
                  std::string& error) {
  if (!checkReadableFile(path, error)) return false;
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot open " + path + ": " + std::strerror(errno);
    return false;
  }
  int type = defaultType;
  int tag = defaultTag;
  bool blanks = false;
  std::string line;
  int number = 0;
  while (nextTextLine(in, line, number)) {
    const std::string where = path + ":" + std::to_string(number) + ": ";
    if (line.compare(0, 2, "#!") == 0) {
      std::vector<std::string> f = fields(line.substr(2));
      bool ok = f.size() == 2 && ((f[0] == "type" && parseType(f[1], type)) || (f[0] == "tag" && parseTag(f[1], tag)) ||
                                  (f[0] == "blanks" && (f[1] == "on" || f[1] == "off")));
      if (ok && f[0] == "blanks") blanks = f[1] == "on";
      if (!ok) {
        error = where + "malformed directive '" + line + "'";
        return false;
      }
      continue;
    }
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> f = fields(line);
    if (f.empty()) continue;
    WordEntry entry{blanks ? " " + f[0] + " " : f[0], type, tag, number};
    int t = 0, g = 0;
    // A number behind the word is a jieba frequency, and a part of speech
    // may follow it; both are ignored unless the two read as a type and a
    // tag. A name behind the word must be a type followed by a tag, so that
    // a misspelt name stops the build instead of passing as a frequency.
    const bool frequency = f.size() > 1 && f[1].find_first_not_of("0123456789") == std::string::npos;
    if (f.size() == 3 && parseType(f[1], t) && parseTag(f[2], g)) {
      entry.type = t;
      entry.tag = g;
    } else if (f.size() == 3 && frequency && parseType(f[1], t) &&
               f[2].find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ") != std::string::npos) {
      // Parts of speech are lower case; an upper-case name is a tag gone wrong.
      error = where + "unknown tag '" + f[2] + "'";
      return false;
    } else if (f.size() > 1 && !frequency) {
      error = where + (parseType(f[1], t) ? (f.size() > 2 ? "unknown tag '" + f[2] + "'" : "a type needs a tag after it")
                                          : "unknown type '" + f[1] + "'");
      return false;
    }
    entries.push_back(entry);
  }
  return true;
}

}  // namespace cli
}  // namespace vorelin
