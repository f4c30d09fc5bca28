// vorelin classify: one result line per input line, in input order.
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "CommandLine.h"
#include "TargetClassify.h"
#include "ModelPaths.h"
#include "vorelin.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin classify [--config FILE | --encoding utf-8|gbk] [--threads N]\n"
    "                        [--format tsv|jsonl] [--input FILE] [--quiet] [TEXT...]\n"
    "\n"
    "Scores each TEXT, or each line of FILE, or each line of standard input when\n"
    "neither is given. Prints one line per input line, in input order:\n"
    "  tsv    score, a tab, the text (default)\n"
    "  jsonl  {\"text\": ..., \"score\": ...}\n"
    "An empty line gets an empty score (null in jsonl), so line numbers stay\n"
    "aligned. Positive scores mean positive opinion.\n"
    "\n"
    "  --config FILE   classifier configuration (default: the shipped model)\n"
    "  --encoding E    the shipped model for texts in utf-8 (default) or gbk\n"
    "  --threads N     classify on one handle from N threads (default 1)\n"
    "  --format F      tsv or jsonl\n"
    "  --input FILE    read texts from FILE, one per line\n"
    "  --quiet         drop the library's log records (otherwise on stderr)\n"
    "  --target WORD   score with regard to WORD (see classify --target x --help)\n";

std::string jsonEscape(const std::string& s) {
  std::string out;
  out.reserve(s.size() + 2);
  for (unsigned char c : s) {
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default:
        if (c < 0x20) {
          char buf[8];
          std::snprintf(buf, sizeof(buf), "\\u%04x", c);
          out += buf;
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  return out;
}

struct Result {
  bool empty = false;
  bool ok = false;
  double score = 0.0;
};

// Classifies a batch on one handle from several threads; each thread takes
// the next unclaimed line, and results land at their line's position.
void classifyBatch(void* handle, const std::vector<std::string>& lines, std::vector<Result>& results,
                   int threads) {
  results.assign(lines.size(), Result());
  std::atomic<size_t> next(0);
  auto work = [&] {
    for (size_t i = next++; i < lines.size(); i = next++) {
      if (lines[i].empty()) {
        results[i].empty = true;
        continue;
      }
      double score = 0.0;
      results[i].ok = Senti_Classify_Perform(handle, lines[i].c_str(), &score) == 1;
      results[i].score = score;
    }
  };
  if (threads <= 1 || lines.size() < 2) {
    work();
    return;
  }
  std::vector<std::thread> pool;
  for (int t = 0; t < threads; ++t) pool.emplace_back(work);
  for (auto& th : pool) th.join();
}

std::string formatResult(const std::string& text, const Result& r, bool jsonl) {
  char number[64] = "";
  if (!r.empty && r.ok) std::snprintf(number, sizeof(number), "%.6f", r.score);
  if (jsonl) {
    return "{\"text\": \"" + jsonEscape(text) + "\", \"score\": " + (number[0] ? number : "null") + "}\n";
  }
  return std::string(number) + "\t" + text + "\n";
}

class Progress {
 public:
  Progress(long total, bool enabled) : m_total(total), m_enabled(enabled && total > 0) {}
  void update(long done) {
    if (!m_enabled) return;
    int percent = static_cast<int>(100.0 * static_cast<double>(done) / static_cast<double>(m_total));
    if (percent == m_last) return;
    m_last = percent;
    int width = 40;
    int filled = percent * width / 100;
    std::fprintf(stderr, "\r[%s%s] %3d%%", std::string(filled, '#').c_str(), std::string(width - filled, ' ').c_str(),
                 percent);
    std::fflush(stderr);
  }
  void finish() {
    if (m_enabled) std::fprintf(stderr, "\n");
  }

 private:
  long m_total;
  bool m_enabled;
  int m_last = -1;
};

}  // namespace

int runClassify(int argc, char** argv) {
  if (wantsTargets(argc, argv)) return runTargetClassify(argc, argv);
  CommandLine cl({"config", "encoding", "threads", "format", "input"}, {"quiet", "help"});
  if (!cl.parse(argc, argv, 2)) return usageError("classify", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  std::string format = cl.get("format", "tsv");
  if (format != "tsv" && format != "jsonl") return usageError("classify", "unknown format '" + format + "'");
  int threads = 1;
  try {
    threads = std::stoi(cl.get("threads", "1"));
  } catch (...) {
    threads = 0;
  }
  if (threads < 1 || threads > 256) return usageError("classify", "--threads needs a number from 1 to 256");
  if (cl.has("input") && !cl.positional().empty())
    return usageError("classify", "give texts as arguments or with --input, not both");

  std::string encoding = cl.get("encoding", "utf-8");
  if (encoding == "utf8" || encoding == "UTF-8") encoding = "utf-8";
  if (encoding == "GBK") encoding = "gbk";
  if (encoding != "utf-8" && encoding != "gbk") return usageError("classify", "--encoding must be utf-8 or gbk");
  std::string config = cl.get("config");
  if (config.empty()) {
    config = defaultModelConfig(encoding);
    if (config.empty()) {
      std::fprintf(stderr, "vorelin classify: no default model found; build it or give --config FILE\n");
      return kFailure;
    }
  }
  std::ifstream file;
  std::istream* in = &std::cin;
  long totalBytes = 0;
  if (cl.has("input")) {
    file.open(cl.get("input"), std::ios::binary);
    if (!file) {
      std::fprintf(stderr, "vorelin classify: cannot read %s\n", cl.get("input").c_str());
      return kFailure;
    }
    file.seekg(0, std::ios::end);
    totalBytes = static_cast<long>(file.tellg());
    file.seekg(0, std::ios::beg);
    in = &file;
  }

  redirectLibraryOutput(cl.has("quiet"));
  void* handle = nullptr;
  if (!Senti_Classifier_Init(config.c_str(), &handle)) {
    std::fprintf(stderr, "vorelin classify: cannot initialise a classifier from %s\n", config.c_str());
    return kFailure;
  }

  const bool jsonl = format == "jsonl";
  int status = kOk;
  auto emit = [&](const std::vector<std::string>& lines, const std::vector<Result>& results) {
    std::string out;
    for (size_t i = 0; i < lines.size(); ++i) {
      if (!results[i].empty && !results[i].ok) status = kFailure;
      out += formatResult(lines[i], results[i], jsonl);
    }
    writeOut(out);
    std::fflush(stdout);
  };

  std::vector<Result> results;
  if (!cl.positional().empty() && !cl.has("input")) {
    classifyBatch(handle, cl.positional(), results, threads);
    emit(cl.positional(), results);
  } else {
    // Streams in batches so that a long input needs bounded memory and the
    // output follows the input closely.
    Progress progress(totalBytes, cl.has("input") && isatty(fileno(stderr)));
    const size_t batchSize = 4096;
    std::vector<std::string> batch;
    std::string line;
    long done = 0;
    bool more = true;
    while (more) {
      batch.clear();
      while (batch.size() < batchSize && (more = static_cast<bool>(std::getline(*in, line)))) {
        done += static_cast<long>(line.size()) + 1;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        batch.push_back(line);
      }
      if (batch.empty()) break;
      classifyBatch(handle, batch, results, threads);
      emit(batch, results);
      progress.update(done);
    }
    progress.finish();
  }
  Senti_Classifier_Exit(handle);
  if (status != kOk) std::fprintf(stderr, "vorelin classify: some lines could not be classified\n");
  return status;
}

}  // namespace cli
}  // namespace vorelin
