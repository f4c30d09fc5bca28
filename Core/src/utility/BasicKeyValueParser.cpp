#include "utility/BasicKeyValueParser.h"

#include <sys/stat.h>

#include <cstdio>

#include "common/Logger.h"
#include "utility/Utility.h"

namespace vortm {
namespace utility {

const size_t BasicKeyValueParser::kMaxFileBytes = 16u << 20;

namespace {

// Blanks of a line; a line feed never reaches here.
bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

void trimBlanks(std::string& s) {
  size_t b = 0, e = s.size();
  while (b < e && isBlank(s[b])) ++b;
  while (e > b && isBlank(s[e - 1])) --e;
  s = s.substr(b, e - b);
}

}  // namespace

BasicKeyValueParser::BasicKeyValueParser() : m_errorLine(0) {}

bool BasicKeyValueParser::fail(int line, const std::string& reason) {
  m_errorLine = line;
  m_error = line > 0 ? "line " + std::to_string(line) + ": " + reason : reason;
  return false;
}

bool BasicKeyValueParser::parseText(const std::string& text, std::map<std::string, std::string>& out) {
  m_error.clear();
  m_errorLine = 0;
  size_t pos = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
  int number = 0;
  while (pos < text.size()) {
    size_t end = text.find('\n', pos);
    if (end == std::string::npos) end = text.size();
    std::string line = text.substr(pos, end - pos);
    pos = end + 1;
    ++number;
    trimBlanks(line);
    if (line.empty() || line[0] == '#') continue;
    size_t eq = line.find('=');
    if (eq == std::string::npos) return fail(number, "expected key = value");
    std::string key = line.substr(0, eq);
    std::string value = line.substr(eq + 1);
    trimBlanks(key);
    trimBlanks(value);
    if (key.empty()) return fail(number, "empty key");
    for (char c : key)
      if (isBlank(c) || c == '\0') return fail(number, "blank or zero byte inside the key '" + key + "'");
    out[key] = value;
  }
  return true;
}

bool BasicKeyValueParser::parseFile(const std::string& path, std::map<std::string, std::string>& out) {
  m_error.clear();
  m_errorLine = 0;
  struct stat st;
  if (stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) return fail(0, "cannot read " + path);
  if (static_cast<unsigned long long>(st.st_size) > kMaxFileBytes) return fail(0, "file too large: " + path);
  FILE* f = std::fopen(path.c_str(), "rb");
  if (!f) return fail(0, "cannot read " + path);
  std::string text;
  char buf[65536];
  size_t n;
  while ((n = std::fread(buf, 1, sizeof(buf), f)) > 0 && text.size() <= kMaxFileBytes) text.append(buf, n);
  std::fclose(f);
  // The file may have grown since stat().
  if (text.size() > kMaxFileBytes) return fail(0, "file too large: " + path);
  return parseText(text, out);
}

bool Utility::parseConfigFile(const std::string& path, std::map<std::string, std::string>& values) {
  BasicKeyValueParser parser;
  if (parser.parseFile(path, values)) return true;
  common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Parse Config File" + path + ", " + parser.getError());
  return false;
}

}  // namespace utility
}  // namespace vortm
