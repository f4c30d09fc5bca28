// A C++ host of target-aware scoring, which the C interface does not offer:
// build a TargetAwareStandardSentiClassifier from a configuration, then score
// one text for each target given.
//
//   vorelin_target_host [CONFIG TEXT TARGET...]
//
// Build against the installed headers (<prefix>/include/vorelin) and
// libVorelin.so. A classifier of this kind changes its analyzer during a
// call, so give each thread its own.
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "application/TargetAwareSentiClassifiers.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"

int main(int argc, char** argv) {
  std::string config = argc > 1 ? argv[1] : VORELIN_TARGET_CONFIG;
  std::string text = argc > 2 ? argv[2] : "菜很好吃，但是服务太差";
  std::vector<std::string> targets;
  for (int i = 3; i < argc; ++i) targets.push_back(argv[i]);
  if (targets.empty()) targets = {"菜", "服务"};

  // The library logs to std::cout; keep standard output for the scores.
  std::streambuf* out = std::cout.rdbuf(std::cerr.rdbuf());
  vortm::configure::BasicParamParser parser;
  vortm::common::AutoPtr<vortm::configure::Parameter> root;
  vortm::application::TargetAwareStandardSentiClassifier classifier;
  bool ready = parser.doParse(config, root) && classifier.config((*root)["target_aware_classifier"]);
  std::cout.rdbuf(out);
  if (!ready) {
    std::fprintf(stderr, "could not build a target-aware classifier from %s\n", config.c_str());
    return 1;
  }
  for (const std::string& target : targets) {
    double score = 0.0;
    if (!classifier.classifyMarkingTargets(text, {target}, score)) {
      std::fprintf(stderr, "could not classify: %s\n", text.c_str());
      return 1;
    }
    std::printf("%+.4f\t%s\t%s\n", score, target.c_str(), text.c_str());
  }
  return 0;
}
