// Weighted lexicons: 'word<TAB>weight' text lines to the saved form that the
// weighted scorer loads, and back.
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "GbkConverter.h"
#include "LexiconKinds.h"
#include "modular/WeightedLexcionSentiScorer.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"

namespace vorelin {
namespace cli {

namespace {

using Lexicon = vortm::modular::WeightedLexcionSentiScorer::WeightedSentiLexcion;

int fail(const std::string& message) {
  std::fprintf(stderr, "vorelin lexicon: %s\n", message.c_str());
  return kFailure;
}

// A tab separates word and weight; without one, any run of blanks does.
bool splitLine(const std::string& line, std::string& word, std::string& weight) {
  const size_t tab = line.find('\t');
  if (tab != std::string::npos) {
    word = line.substr(0, tab);
    weight = line.substr(tab + 1);
  } else {
    std::istringstream in(line);
    in >> word >> weight;
    std::string extra;
    if (in >> extra) return false;
  }
  const char* blanks = " \t";
  weight.erase(0, weight.find_first_not_of(blanks));
  weight.erase(weight.find_last_not_of(blanks) + 1);
  word.erase(word.find_last_not_of(blanks) + 1);
  return !word.empty() && !weight.empty();
}

bool parseWeight(const std::string& text, double& value) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  value = std::strtod(text.c_str(), &end);
  return errno == 0 && *end == '\0' && std::isfinite(value);
}

bool readWeights(const std::string& path, Lexicon& lexicon, std::string& error) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    error = "cannot read " + path;
    return false;
  }
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (number == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.find_first_not_of(" \t") == std::string::npos || line[0] == '#') continue;
    const std::string where = path + ":" + std::to_string(number) + ": ";
    std::string word, weight;
    if (!splitLine(line, word, weight)) {
      error = where + "expected 'word<TAB>weight', got '" + line + "'";
      return false;
    }
    double value = 0.0;
    if (!parseWeight(weight, value)) {
      error = where + "weight of '" + word + "' is not a finite number: '" + weight + "'";
      return false;
    }
    lexicon.m_weights[word] = value;
  }
  return true;
}

// The shortest decimal form that reads back to the same double.
std::string formatWeight(double value) {
  char buffer[32];
  for (int precision = 1; precision <= 17; ++precision) {
    std::snprintf(buffer, sizeof buffer, "%.*g", precision, value);
    if (std::strtod(buffer, nullptr) == value) break;
  }
  return buffer;
}

bool encodingOf(const CommandLine& cl, bool& gbk) { return parseEncoding(cl.get("encoding", "utf-8"), gbk); }

}  // namespace

int buildWeightedLexicon(const CommandLine& cl) {
  bool gbk = false;
  if (!encodingOf(cl, gbk)) return usageError("lexicon", "--encoding must be utf-8 or gbk");
  if (cl.get("out").empty()) return usageError("lexicon", "build needs --out FILE");
  if (cl.positional().size() < 2) return usageError("lexicon", "build needs at least one LIST");

  Lexicon read;
  for (size_t i = 1; i < cl.positional().size(); ++i) {
    std::string error;
    if (!readWeights(cl.positional()[i], read, error)) return fail(error);
  }
  Lexicon lexicon;
  size_t skipped = 0;
  GbkConverter converter(true);
  if (gbk && !converter.ok()) return fail("this system cannot convert UTF-8 to GBK");
  for (const auto& entry : read.m_weights) {
    std::string word = entry.first;
    if (gbk && !converter.convert(entry.first, word)) {
      ++skipped;
      continue;
    }
    lexicon.m_weights[word] = entry.second;
  }

  const std::string out = cl.get("out");
  vortm::utility::BufferedFileWriter writer(true);
  if (!writer.open(out) || !lexicon.writeSelf(writer) || !writer.close()) return fail("cannot write " + out);
  std::fprintf(stderr, "vorelin lexicon: %zu weights written to %s", lexicon.m_weights.size(), out.c_str());
  if (skipped) std::fprintf(stderr, " (%zu skipped: not representable in GBK)", skipped);
  std::fprintf(stderr, "\n");
  return kOk;
}

int dumpWeightedLexicon(const CommandLine& cl) {
  bool gbk = false;
  if (!encodingOf(cl, gbk)) return usageError("lexicon", "--encoding must be utf-8 or gbk");
  if (cl.positional().size() != 2) return usageError("lexicon", "dump needs exactly one FILE");
  const std::string& path = cl.positional()[1];
  vortm::modular::WeightedLexcionSentiScorer scorer;
  if (!scorer.loadWeightedLexcion(path)) return fail("cannot load weighted lexicon " + path);

  GbkConverter converter(false);
  std::string out;
  for (const auto& entry : scorer.lexcion().m_weights) {
    std::string word = entry.first;
    if (gbk && !converter.convert(entry.first, word)) word = entry.first;
    out += word + "\t" + formatWeight(entry.second) + "\n";
  }
  writeOut(out);
  return kOk;
}

}  // namespace cli
}  // namespace vorelin
