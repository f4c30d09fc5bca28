// The label lexicon's text form: building the saved file and dumping it.
#include "LexiconKinds.h"

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "TextEncoding.h"
#include "modular/SentiLabelSentiScorer.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"

namespace vorelin {
namespace cli {

namespace {

typedef vortm::modular::SentiLabelSentiScorer::SentiLabelLexcion Lexicon;

void trimSpaces(std::string& s) {
  const char* blank = " \t\r";
  s.erase(s.find_last_not_of(blank) + 1);
  s.erase(0, s.find_first_not_of(blank));
}

// A finite number filling the whole text; false for anything else.
bool parseValue(const std::string& text, double& value) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  value = std::strtod(text.c_str(), &end);
  return errno == 0 && end == text.c_str() + text.size() && std::isfinite(value);
}

// Reads one list into `entries`; malformed lines are reported by file and
// line and skipped. False only for an unreadable file.
bool readList(const std::string& path, bool gbk, TextConverter& converter, Lexicon& lexicon, size_t& added,
              size_t& skipped) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::fprintf(stderr, "vorelin lexicon: cannot read %s\n", path.c_str());
    return false;
  }
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (number == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
    std::string text = line;
    trimSpaces(text);
    if (text.empty() || text[0] == '#') continue;
    // The value is the last field, after a tab or, failing that, a blank.
    size_t cut = text.find_last_of('\t');
    if (cut == std::string::npos) cut = text.find_last_of(' ');
    std::string key = cut == std::string::npos ? text : text.substr(0, cut);
    std::string field = cut == std::string::npos ? std::string() : text.substr(cut + 1);
    trimSpaces(key);
    double value = 0.0;
    const char* problem = nullptr;
    if (cut == std::string::npos || key.empty())
      problem = "expected KEY<TAB>VALUE";
    else if (!parseValue(field, value))
      problem = "malformed value";
    else if (gbk && !converter.convert(key, key))
      problem = "key not representable in GBK";
    if (problem) {
      std::fprintf(stderr, "vorelin lexicon: %s:%d: %s: %s\n", path.c_str(), number, problem, text.c_str());
      ++skipped;
      continue;
    }
    lexicon.entries()[key] = value;
    ++added;
  }
  return true;
}

// The shortest form that reads back as the same double.
std::string formatValue(double value) {
  char buf[40];
  for (int precision = 6; precision <= 17; ++precision) {
    std::snprintf(buf, sizeof(buf), "%.*g", precision, value);
    if (std::strtod(buf, nullptr) == value) break;
  }
  return buf;
}

}  // namespace

int buildLabelLexicon(const CommandLine& cl) {
  bool gbk = false;
  if (!parseEncoding(cl.get("encoding", "utf-8"), gbk))
    return usageError("lexicon", "--encoding must be utf-8 or gbk");
  if (cl.get("out").empty()) return usageError("lexicon", "build needs --out FILE");
  if (cl.positional().size() < 2) return usageError("lexicon", "build needs at least one LIST");
  TextConverter converter("GBK", "UTF-8");
  Lexicon lexicon;
  size_t added = 0, skipped = 0;
  for (size_t i = 1; i < cl.positional().size(); ++i)
    if (!readList(cl.positional()[i], gbk, converter, lexicon, added, skipped)) return kFailure;
  if (lexicon.entries().empty()) {
    std::fprintf(stderr, "vorelin lexicon: no valid entry read; nothing written\n");
    return kFailure;
  }
  vortm::utility::BufferedFileWriter writer(cl.get("out"), true);
  if (!writer.good() || !lexicon.writeSelf(writer) || !writer.close()) {
    std::fprintf(stderr, "vorelin lexicon: cannot write %s\n", cl.get("out").c_str());
    return kFailure;
  }
  if (!cl.has("quiet")) {
    std::fprintf(stderr, "vorelin lexicon: %zu entries written to %s", lexicon.entries().size(),
                 cl.get("out").c_str());
    if (skipped) std::fprintf(stderr, " (%zu lines skipped)", skipped);
    std::fprintf(stderr, "\n");
  }
  return kOk;
}

int dumpLabelLexicon(const CommandLine& cl) {
  bool gbk = false;
  if (!parseEncoding(cl.get("encoding", "utf-8"), gbk))
    return usageError("lexicon", "--encoding must be utf-8 or gbk");
  if (cl.positional().size() != 2) return usageError("lexicon", "dump needs one FILE");
  const std::string& path = cl.positional()[1];
  vortm::utility::BufferedFileReader reader(path, true);
  Lexicon lexicon;
  if (!reader.good() || !lexicon.readSelf(reader)) {
    std::fprintf(stderr, "vorelin lexicon: %s is not a readable label lexicon\n", path.c_str());
    return kFailure;
  }
  TextConverter converter("UTF-8", "GBK");
  std::string out;
  for (const auto& entry : lexicon.entries()) {
    std::string key = entry.first;
    if (gbk && !converter.convert(entry.first, key)) key = entry.first;
    out += key + "\t" + formatValue(entry.second) + "\n";
  }
  writeOut(out);
  return kOk;
}

}  // namespace cli
}  // namespace vorelin
