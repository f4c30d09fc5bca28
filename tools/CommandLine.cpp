#include "CommandLine.h"

#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <streambuf>

namespace vorelin {
namespace cli {

CommandLine::CommandLine(const std::set<std::string>& valued, const std::set<std::string>& flags)
    : m_valued(valued), m_knownFlags(flags) {}

bool CommandLine::parse(int argc, char** argv, int first) {
  bool optionsDone = false;
  for (int i = first; i < argc; ++i) {
    std::string arg = argv[i];
    if (optionsDone || arg.size() < 2 || arg.compare(0, 2, "--") != 0) {
      // A lone "-" is a positional argument (standard input, by convention).
      m_positional.push_back(arg);
      continue;
    }
    if (arg == "--") {
      optionsDone = true;
      continue;
    }
    std::string name = arg.substr(2);
    std::string value;
    bool inlineValue = false;
    size_t eq = name.find('=');
    if (eq != std::string::npos) {
      value = name.substr(eq + 1);
      name = name.substr(0, eq);
      inlineValue = true;
    }
    if (m_knownFlags.count(name)) {
      if (inlineValue) {
        m_error = "option --" + name + " takes no value";
        return false;
      }
      m_flags.insert(name);
    } else if (m_valued.count(name)) {
      if (!inlineValue) {
        if (i + 1 >= argc) {
          m_error = "option --" + name + " needs a value";
          return false;
        }
        value = argv[++i];
      }
      m_values[name] = value;
    } else {
      m_error = "unknown option --" + name;
      return false;
    }
  }
  return true;
}

std::string CommandLine::get(const std::string& name, const std::string& fallback) const {
  auto it = m_values.find(name);
  return it == m_values.end() ? fallback : it->second;
}

int usageError(const std::string& command, const std::string& message) {
  std::fprintf(stderr, "vorelin %s: %s\nTry 'vorelin %s --help'.\n", command.c_str(), message.c_str(),
               command.c_str());
  return kUsage;
}

namespace {
class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
};
}  // namespace

void redirectLibraryOutput(bool quiet) {
  // Never destroyed: std::cout is flushed at exit, after function-local
  // statics are gone, and must not find its buffer freed.
  static NullBuffer* null = new NullBuffer;
  std::cout.rdbuf(quiet ? static_cast<std::streambuf*>(null) : std::cerr.rdbuf());
}

bool nextTextLine(std::istream& in, std::string& line, int& number) {
  if (!std::getline(in, line)) return false;
  ++number;
  if (number == 1 && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return true;
}

void writeOut(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace cli
}  // namespace vorelin
