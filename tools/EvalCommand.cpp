// vorelin eval: accuracy of a model on labelled texts.
#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ConfigCheck.h"
#include "LineReader.h"
#include "vorelin.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin eval [--config FILE | --encoding utf-8|gbk] [--quiet] [--errors] SET.tsv...\n"
    "\n"
    "Reads lines 'LABEL<TAB>TEXT' (LABEL 1 for positive, -1 for negative) from\n"
    "each SET (- for standard input) and reports the model's accuracy: a text\n"
    "counts as right when its score has the label's sign; a score of exactly 0\n"
    "is undecided, right for neither label, and the share of such texts is\n"
    "reported too. --errors lists the misses. A set with no labelled line is\n"
    "an error.\n";

// Labelled lines are short; a longer one is read cut and likely mislabelled.
const size_t kMaxLine = 1 << 20;

struct Tally {
  int total = 0;
  int right = 0;
  int undecided = 0;
};

}  // namespace

int runEval(int argc, char** argv) {
  CommandLine cl({"config", "encoding"}, {"quiet", "errors"});
  if (!cl.parse(argc, argv, 2)) return usageError("eval", cl.error());
  int rc = kOk;
  if (standardOptions(cl, kHelp, rc)) return rc;
  if (cl.positional().empty()) return usageError("eval", "give at least one labelled file");
  std::string encoding;
  if (!parseEncoding(cl.get("encoding", "utf-8"), encoding))
    return usageError("eval", "--encoding must be utf-8 or gbk");
  const std::string config = modelConfigFor(cl, "eval", encoding);
  if (config.empty()) return kFailure;
  redirectLibraryOutput(cl.has("quiet"));
  ConfigInfo info;
  checkConfig("eval", config, info);
  void* handle = nullptr;
  if (!Senti_Classifier_Init(config.c_str(), &handle)) {
    std::fprintf(stderr, "vorelin eval: cannot initialise a classifier from %s\n", config.c_str());
    return kFailure;
  }
  int status = kOk;
  std::string out;
  for (const std::string& path : cl.positional()) {
    const int fd = openInput("eval", path);
    if (fd < 0) {
      status = kFailure;
      continue;
    }
    LineReader in(fd, kMaxLine);
    std::map<int, Tally> byLabel;
    std::string line;
    bool cut = false;
    int number = 0;
    while (in.next(line, cut)) {
      ++number;
      if (line.empty()) continue;
      size_t tab = line.find('\t');
      std::string label = tab == std::string::npos ? "" : line.substr(0, tab);
      if (label != "1" && label != "-1") {
        std::fprintf(stderr, "vorelin eval: %s:%d: expected LABEL<TAB>TEXT\n", path.c_str(), number);
        status = kFailure;
        continue;
      }
      int expected = label == "1" ? 1 : -1;
      std::string text = line.substr(tab + 1);
      double score = 0.0;
      bool ok = classifyText(handle, text, score);
      Tally& t = byLabel[expected];
      ++t.total;
      if (!ok || score == 0.0) {
        ++t.undecided;
      } else if ((score > 0) == (expected > 0)) {
        ++t.right;
        continue;
      }
      if (cl.has("errors")) {
        char buf[64];
        std::snprintf(buf, sizeof(buf), "%+.4f\t%d\t", score, expected);
        out += "miss\t" + std::string(buf) + text + "\n";
      }
    }
    if (fd > 0) ::close(fd);
    Tally all;
    for (const auto& kv : byLabel) {
      all.total += kv.second.total;
      all.right += kv.second.right;
      all.undecided += kv.second.undecided;
    }
    if (all.total == 0) {
      std::fprintf(stderr, "vorelin eval: %s has no labelled line\n", path.c_str());
      status = kFailure;
      continue;
    }
    char buf[512];
    auto pct = [](int a, int b) { return b ? 100.0 * a / b : 0.0; };
    std::snprintf(buf, sizeof(buf),
                  "%s\taccuracy %.1f%% (%d/%d)\tpositive %.1f%%\tnegative %.1f%%\tundecided %.1f%%\n", path.c_str(),
                  pct(all.right, all.total), all.right, all.total, pct(byLabel[1].right, byLabel[1].total),
                  pct(byLabel[-1].right, byLabel[-1].total), pct(all.undecided, all.total));
    out += buf;
  }
  writeOut(out);
  Senti_Classifier_Exit(handle);
  if (!finishOutput("eval")) return kFailure;
  return status;
}

}  // namespace cli
}  // namespace vorelin
