#ifndef VORELIN_TESTS_TESTSUPPORT_H
#define VORELIN_TESTS_TESTSUPPORT_H

#include <iconv.h>
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "vorelin.h"

namespace vortm {
namespace testing {

// Splits a text into its lines, without the line feeds.
inline std::vector<std::string> splitLines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  std::string line;
  while (std::getline(in, line)) out.push_back(line);
  return out;
}

// The root of a parameter tree read from XML text; a text that does not
// parse fails the test and gives a null root.
inline common::AutoPtr<configure::Parameter> parseXml(const std::string& xml) {
  configure::BasicParamParser parser;
  common::AutoPtr<configure::Parameter> root;
  EXPECT_TRUE(parser.doParseFromText(xml, root)) << parser.getErrorText() << "\n" << xml;
  return root;
}

// Captures what the library writes to std::cout (log records and printed
// lines) for as long as it lives.
class StdoutCapture {
 public:
  StdoutCapture() : m_old(std::cout.rdbuf(m_buffer.rdbuf())) {}
  ~StdoutCapture() { std::cout.rdbuf(m_old); }
  std::string str() const { return m_buffer.str(); }
  std::vector<std::string> lines() const { return splitLines(m_buffer.str()); }

 private:
  std::ostringstream m_buffer;
  std::streambuf* m_old;
};

// The score at the start of a "score<TAB>text" line.
inline double scoreOf(const std::string& line) { return std::stod(line.substr(0, line.find('\t'))); }

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

// The result of a shell command: its exit code (-1 if it did not exit) and
// what it wrote to standard output.
struct CommandRun {
  int code;
  std::string out;
};

inline CommandRun runCommand(const std::string& command) {
  CommandRun run{-1, ""};
  FILE* pipe = popen(command.c_str(), "r");
  if (!pipe) return run;
  char buf[4096];
  size_t n;
  while ((n = fread(buf, 1, sizeof(buf), pipe)) > 0) run.out.append(buf, n);
  int status = pclose(pipe);
  run.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

// Runs `body` on a thread with a 1 MiB stack, where a walk that recursed once
// per level of a deeply nested input would overflow. False if no thread.
inline bool runOnSmallStack(std::function<void()> body) {
  pthread_attr_t attr;
  pthread_attr_init(&attr);
#if defined(__SANITIZE_THREAD__)
  // ThreadSanitizer's frames are several times larger: the reader's bounded
  // descent needs more room there, while one frame per level of a very deep
  // input would still overflow.
  pthread_attr_setstacksize(&attr, 8 << 20);
#else
  pthread_attr_setstacksize(&attr, 1 << 20);
#endif
  pthread_t thread;
  auto run = [](void* arg) -> void* {
    (*static_cast<std::function<void()>*>(arg))();
    return nullptr;
  };
  bool started = pthread_create(&thread, &attr, run, &body) == 0;
  if (started) pthread_join(thread, nullptr);
  pthread_attr_destroy(&attr);
  return started;
}

// A configuration nested `depth` levels deep, with a text at the bottom.
inline std::string nestedConfig(unsigned int depth) {
  std::string open, close;
  for (unsigned int i = 0; i < depth; ++i) {
    open += "<a>";
    close += "</a>";
  }
  return open + "x" + close;
}

// Runs a command with `input` on its standard input; standard error is
// dropped unless asked for.
inline CommandRun runWithInput(const std::string& command, const std::string& input, bool withStderr) {
  char tmpl[] = "/tmp/vorelin_stdin_XXXXXX";
  int fd = mkstemp(tmpl);
  if (fd < 0) return CommandRun{-1, ""};
  close(fd);
  writeFile(tmpl, input);
  CommandRun run = runCommand(command + " < " + tmpl + (withStderr ? " 2>&1" : " 2>/dev/null"));
  std::remove(tmpl);
  return run;
}

#ifdef VORELIN_CLI
// Runs the vorelin program with a shell argument string and `input` on its
// standard input.
inline CommandRun runCli(const std::string& args, const std::string& input = "", bool withStderr = false) {
  return runWithInput(std::string(VORELIN_CLI) + " " + args, input, withStderr);
}
#endif

// Runs body(t) for t = 0 .. threads - 1, all at once, and waits for them.
inline void onThreads(int threads, const std::function<void(int)>& body) {
  std::vector<std::thread> pool;
  for (int t = 0; t < threads; ++t) pool.emplace_back(body, t);
  for (std::thread& th : pool) th.join();
}

// Threads that share one classifier must agree with one thread alone: each
// makes `rounds` passes over the texts, from its own starting text, through
// score(i, s). Returns how many answers failed or differed from `expected`.
inline int mismatchesOnThreads(int threads, int rounds, const std::vector<double>& expected,
                               const std::function<bool(size_t, double&)>& score) {
  std::atomic<int> wrong(0);
  onThreads(threads, [&](int t) {
    for (int r = 0; r < rounds; ++r)
      for (size_t n = 0; n < expected.size(); ++n) {
        const size_t i = (n + t) % expected.size();
        double s = 0.0;
        if (!score(i, s) || s != expected[i]) ++wrong;
      }
  });
  return wrong;
}

// Scores the texts through the exported C functions on one handle of
// `config`, with the log captured; with `threads`, that many threads sharing
// the handle must then get the same scores. Empty if init fails.
inline std::vector<double> scoreThroughApi(const std::string& config, const std::vector<std::string>& texts,
                                           int threads = 0, int rounds = 1) {
  std::vector<double> scores;
  void* handle = nullptr;
  StdoutCapture quiet;
  EXPECT_EQ(1, Senti_Classifier_Init(config.c_str(), &handle)) << config << "\n" << quiet.str();
  if (!handle) return scores;
  for (const std::string& text : texts) {
    double score = 99.0;
    EXPECT_EQ(1, Senti_Classify_Perform(handle, text.c_str(), &score)) << text;
    scores.push_back(score);
  }
  EXPECT_EQ(0, mismatchesOnThreads(threads, rounds, scores, [&](size_t i, double& s) {
              return Senti_Classify_Perform(handle, texts[i].c_str(), &s) == 1;
            }));
  EXPECT_EQ(1, Senti_Classifier_Exit(handle));
  return scores;
}

// One lexicon classifier over a basic tokenizer and a dictionary tokenizer
// (with `filters`), scored by the scorer block `scorer`.
inline std::string lexiconConfig(const std::string& encode, const std::string& dict, const std::string& filters,
                                 const std::string& scorer) {
  return "<number_senti_classifiers><c><identifier>lexcion_senti_classifier</identifier>"
         "<number_weight type=\"numeric\">1</number_weight><param><text_analyzer><analyzer>"
         "<encode>" + encode + "</encode><tokenizers>"
         "<t><identifier>basicTokenzier</identifier><param><encode>" + encode + "</encode></param></t>"
         "<t><identifier>trieDictMaxForwardTokenzier</identifier><param><encode>" + encode +
         "</encode><dict_file>" + dict + "</dict_file>" + filters + "</param></t>"
         "</tokenizers></analyzer></text_analyzer><lexcion_senti_scorer>" + scorer +
         "</lexcion_senti_scorer></param></c></number_senti_classifiers>";
}

// The label scorer's block over the label lexicon `lexicon`.
inline std::string labelScorerBlock(const std::string& lexicon) {
  return "<identifier>senti_label_senti_scorer</identifier><param><position_weighter><x/></position_weighter>"
         "<senti_label_extractor><identifier>simple_senti_label_extractor</identifier><param><x/></param>"
         "</senti_label_extractor><senti_label_lexcion_file>" + lexicon + "</senti_label_lexcion_file></param>";
}

// UTF-8 text converted to GBK, for the tests that compare both encodings.
inline std::string toGbk(const std::string& utf8) {
  iconv_t cd = iconv_open("GBK", "UTF-8");
  std::string out(utf8.size() * 2 + 4, '\0');
  char* src = const_cast<char*>(utf8.data());
  size_t srcLeft = utf8.size();
  char* dst = &out[0];
  size_t dstLeft = out.size();
  iconv(cd, &src, &srcLeft, &dst, &dstLeft);
  iconv_close(cd);
  out.resize(out.size() - dstLeft);
  return out;
}

inline std::vector<std::string> toGbk(const std::vector<std::string>& utf8) {
  std::vector<std::string> out;
  for (const std::string& text : utf8) out.push_back(toGbk(text));
  return out;
}

}  // namespace testing
}  // namespace vortm

#endif
