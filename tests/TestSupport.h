#ifndef VORELIN_TESTS_TESTSUPPORT_H
#define VORELIN_TESTS_TESTSUPPORT_H

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iostream>
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

// True when the line starts with a time stamp "<YYYY-MM-DD hh:mm:ss>".
inline bool hasTimeStamp(const std::string& line) {
  static const char shape[] = "<dddd-dd-dd dd:dd:dd>";
  if (line.size() < sizeof(shape) - 1) return false;
  for (size_t i = 0; i + 1 < sizeof(shape); ++i) {
    bool digit = line[i] >= '0' && line[i] <= '9';
    if (shape[i] == 'd' ? !digit : line[i] != shape[i]) return false;
  }
  return true;
}

// The record the logger writes: a time stamp, then the fixed text.
inline bool isLogRecord(const std::string& line, const std::string& level, const std::string& code,
                        const std::string& msg) {
  const std::string rest = "<[App][Vor_Text_Mining]><[" + level + "Code][" + code + "]><[" + level + "Msg][" +
                           msg + "]>";
  return hasTimeStamp(line) && line.compare(21, std::string::npos, rest) == 0;
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
