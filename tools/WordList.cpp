#include "WordList.h"

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
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot read " + path;
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
    // Two fields that read as a type and a tag set them; anything else behind
    // the word (a jieba frequency and part of speech) is ignored.
    if (f.size() == 3 && parseType(f[1], t) && parseTag(f[2], g)) {
      entry.type = t;
      entry.tag = g;
    }
    entries.push_back(entry);
  }
  return true;
}

}  // namespace cli
}  // namespace vorelin
