#include "CommandLine.h"
#include "ModelPaths.h"
#include "vorelin.h"

#include <errno.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <streambuf>

namespace vorelin {
namespace cli {

CommandLine::CommandLine(const std::set<std::string>& valued, const std::set<std::string>& flags)
    : m_valued(valued), m_knownFlags(flags) {
  m_knownFlags.insert("help");
  m_knownFlags.insert("version");
}

bool CommandLine::parse(int argc, char** argv, int first) {
  bool optionsDone = false;
  for (int i = first; i < argc; ++i) {
    std::string arg = argv[i];
    if (!optionsDone && arg == "-h") {
      m_flags.insert("help");
      continue;
    }
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

bool standardOptions(const CommandLine& cl, const char* help, int& rc) {
  if (cl.has("help")) {
    std::fputs(help, stdout);
  } else if (cl.has("version")) {
    std::printf("%s\n", versionText());
  } else {
    return false;
  }
  rc = finishOutput("") ? kOk : kFailure;
  return true;
}

const char* versionText() { return "vorelin " VORELIN_VERSION; }

bool parseEncoding(const std::string& value, std::string& encoding) {
  std::string v;
  for (char c : value) v += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  if (v == "utf-8" || v == "utf8") {
    encoding = "utf-8";
  } else if (v == "gbk" || v == "gb2312") {
    encoding = "gbk";
  } else {
    return false;
  }
  return true;
}

bool checkReadableFile(const std::string& path, std::string& error) {
  struct stat st;
  if (stat(path.c_str(), &st) != 0) {
    error = "cannot open " + path + ": " + std::strerror(errno);
    return false;
  }
  if (S_ISDIR(st.st_mode)) {
    error = "cannot open " + path + ": " + std::strerror(EISDIR);
    return false;
  }
  return true;
}

int openInput(const std::string& command, const std::string& path) {
  if (path == "-") return 0;
  std::string error;
  int fd = -1;
  if (checkReadableFile(path, error)) {
    fd = ::open(path.c_str(), O_RDONLY);
    if (fd < 0) error = "cannot open " + path + ": " + std::strerror(errno);
  }
  if (fd < 0) std::fprintf(stderr, "vorelin %s: %s\n", command.c_str(), error.c_str());
  return fd;
}

std::string modelConfigFor(const CommandLine& cl, const std::string& command, const std::string& encoding) {
  std::string config = cl.get("config");
  if (config.empty()) {
    config = defaultModelConfig(encoding);
    if (config.empty())
      std::fprintf(stderr, "vorelin %s: no default model found; build it or give --config FILE\n", command.c_str());
  }
  return config;
}

bool finishOutput(const std::string& command) {
  if (std::fflush(stdout) == 0 && !std::ferror(stdout)) return true;
  const int err = errno;
  std::fprintf(stderr, "vorelin%s%s: cannot write output: %s\n", command.empty() ? "" : " ", command.c_str(),
               std::strerror(err));
  return false;
}

bool classifyText(void* handle, const std::string& text, double& score) {
  score = 0.0;
  try {
    return Senti_Classify_Perform(handle, text.c_str(), &score) == 1;
  } catch (const std::exception&) {
    return false;
  }
}

namespace {
class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
};
}  // namespace

void redirectLibraryOutput(bool quiet) {
  // The library reads VORELIN_LOG when it first logs: standard error unless
  // the user chose otherwise, nothing with --quiet.
  setenv("VORELIN_LOG", quiet ? "off" : "stderr", quiet ? 1 : 0);
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
