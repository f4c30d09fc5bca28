// vorelin eval: accuracy of a model on labelled texts.
#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ModelPaths.h"
#include "vorelin.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin eval [--config FILE] [--quiet] [--errors] SET.tsv...\n"
    "\n"
    "Reads lines 'LABEL<TAB>TEXT' (LABEL 1 for positive, -1 for negative) and\n"
    "reports the model's accuracy: a text counts as right when its score has\n"
    "the label's sign; a score of exactly 0 counts as wrong, and the share of\n"
    "such undecided texts is reported too. --errors lists the misses.\n";

struct Tally {
  int total = 0;
  int right = 0;
  int undecided = 0;
};

}  // namespace

int runEval(int argc, char** argv) {
  CommandLine cl({"config"}, {"help", "quiet", "errors"});
  if (!cl.parse(argc, argv, 2)) return usageError("eval", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  if (cl.positional().empty()) return usageError("eval", "give at least one labelled file");
  std::string config = cl.get("config", defaultModelConfig());
  if (config.empty()) {
    std::fprintf(stderr, "vorelin eval: no default model found; build it or give --config FILE\n");
    return kFailure;
  }
  redirectLibraryOutput(cl.has("quiet"));
  void* handle = nullptr;
  if (!Senti_Classifier_Init(config.c_str(), &handle)) {
    std::fprintf(stderr, "vorelin eval: cannot initialise a classifier from %s\n", config.c_str());
    return kFailure;
  }
  int status = kOk;
  std::string out;
  for (const std::string& path : cl.positional()) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
      std::fprintf(stderr, "vorelin eval: cannot read %s\n", path.c_str());
      status = kFailure;
      continue;
    }
    std::map<int, Tally> byLabel;
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
      ++number;
      if (!line.empty() && line.back() == '\r') line.pop_back();
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
      bool ok = Senti_Classify_Perform(handle, text.c_str(), &score) == 1;
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
    Tally all;
    for (const auto& kv : byLabel) {
      all.total += kv.second.total;
      all.right += kv.second.right;
      all.undecided += kv.second.undecided;
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
  return status;
}

}  // namespace cli
}  // namespace vorelin
