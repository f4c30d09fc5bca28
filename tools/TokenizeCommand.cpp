// vorelin tokenize: shows the tokens that a model's analyzer makes.
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ModelPaths.h"
#include "TokenNames.h"
#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "modular/TextAnalyzer.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin tokenize [--config FILE] [--quiet] [TEXT...]\n"
    "\n"
    "Prints the tokens that the analyzer of the first classifier in the\n"
    "configuration makes of each TEXT (or of each line of standard input):\n"
    "term, start and end byte offsets (end inclusive), type and tag, one token\n"
    "a line, with a blank line after each text.\n";

// The first member's analyzer block, as a lexicon classifier reads it.
const vortm::configure::Parameter& analyzerBlock(const vortm::configure::Parameter& root) {
  return root["number_senti_classifiers"][0]["param"]["text_analyzer"];
}

}  // namespace

int runTokenize(int argc, char** argv) {
  CommandLine cl({"config"}, {"help", "quiet"});
  if (!cl.parse(argc, argv, 2)) return usageError("tokenize", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  std::string config = cl.get("config", defaultModelConfig());
  if (config.empty()) {
    std::fprintf(stderr, "vorelin tokenize: no default model found; build it or give --config FILE\n");
    return kFailure;
  }
  redirectLibraryOutput(cl.has("quiet"));
  vortm::configure::BasicParamParser parser;
  vortm::common::AutoPtr<vortm::configure::Parameter> root;
  if (!parser.doParse(config, root)) {
    std::fprintf(stderr, "vorelin tokenize: cannot parse %s\n", config.c_str());
    return kFailure;
  }
  vortm::common::AutoPtr<vortm::modular::TextAnalyzer> analyzer;
  if (!vortm::modular::TextAnalyzer::configTextAnalyzer(analyzerBlock(*root), analyzer)) {
    std::fprintf(stderr, "vorelin tokenize: %s has no usable text_analyzer in its first classifier\n",
                 config.c_str());
    return kFailure;
  }
  auto show = [&](const std::string& text) {
    std::vector<vortm::analyzer::Token> tokens;
    if (!analyzer->tokenizeText(text, tokens, true)) {
      std::fprintf(stderr, "vorelin tokenize: cannot tokenize: %s\n", text.c_str());
      return false;
    }
    std::string out;
    for (const auto& t : tokens) {
      out += t.term + "\t" + std::to_string(t.startOffset) + "\t" + std::to_string(t.endOffset) + "\t" +
             typeName(t.type) + "\t" + tagName(t.tag) + "\n";
    }
    writeOut(out + "\n");
    return true;
  };
  bool ok = true;
  if (!cl.positional().empty()) {
    for (const auto& text : cl.positional()) ok = show(text) && ok;
  } else {
    std::string line;
    while (std::getline(std::cin, line)) {
      if (!line.empty() && line.back() == '\r') line.pop_back();
      ok = show(line) && ok;
    }
  }
  return ok ? kOk : kFailure;
}

}  // namespace cli
}  // namespace vorelin
