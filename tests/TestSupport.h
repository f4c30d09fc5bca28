#ifndef VORELIN_TESTS_TESTSUPPORT_H
#define VORELIN_TESTS_TESTSUPPORT_H

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace vortm {
namespace testing {

// Captures what the library writes to std::cout (log records and printed
// lines) for as long as it lives.
class StdoutCapture {
 public:
  StdoutCapture() : m_old(std::cout.rdbuf(m_buffer.rdbuf())) {}
  ~StdoutCapture() { std::cout.rdbuf(m_old); }
  std::string str() const { return m_buffer.str(); }
  std::vector<std::string> lines() const {
    std::vector<std::string> out;
    std::istringstream in(m_buffer.str());
    std::string line;
    while (std::getline(in, line)) out.push_back(line);
    return out;
  }

 private:
  std::ostringstream m_buffer;
  std::streambuf* m_old;
};

// The record the logger writes, with the time stamp as a pattern.
inline std::string logPattern(const std::string& level, const std::string& code, const std::string& msg) {
  std::string escaped;
  for (char c : msg) {
    if (std::string("\\^$.|?*+()[]{}").find(c) != std::string::npos) escaped += '\\';
    escaped += c;
  }
  return "<\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2}><\\[App\\]\\[Vor_Text_Mining\\]><\\[" + level +
         "Code\\]\\[" + code + "\\]><\\[" + level + "Msg\\]\\[" + escaped + "\\]>";
}

inline bool isLogRecord(const std::string& line, const std::string& level, const std::string& code,
                        const std::string& msg) {
  return std::regex_match(line, std::regex(logPattern(level, code, msg)));
}

// A fresh directory under the system's temporary folder, removed at the end.
class TempDir {
 public:
  TempDir() {
    char tmpl[] = "/tmp/vorelin_test_XXXXXX";
    char* p = mkdtemp(tmpl);
    m_path = p ? p : "/tmp";
  }
  ~TempDir() {
    std::string cmd = "rm -rf '" + m_path + "'";
    if (std::system(cmd.c_str()) != 0) {
    }
  }
  const std::string& path() const { return m_path; }
  std::string file(const std::string& name) const { return m_path + "/" + name; }

 private:
  std::string m_path;
};

inline void writeFile(const std::string& path, const std::string& content) {
  std::ofstream out(path, std::ios::binary);
  out << content;
}

inline std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream s;
  s << in.rdbuf();
  return s.str();
}

}  // namespace testing
}  // namespace vortm

#endif
