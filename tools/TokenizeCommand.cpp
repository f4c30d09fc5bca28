// vorelin tokenize: shows the tokens that a model's analyzer makes.
#include <unistd.h>

#include <cstdio>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ConfigCheck.h"
#include "LineReader.h"
#include "TokenNames.h"
#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "modular/TextAnalyzer.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin tokenize [--config FILE | --encoding utf-8|gbk] [--quiet]\n"
    "                        [--input FILE|-] [TEXT...]\n"
    "\n"
    "Prints the tokens that the analyzer of the first classifier in the\n"
    "configuration makes of each TEXT (or of each line of FILE or of standard\n"
    "input):\n"
    "term, start and end byte offsets (end inclusive), type and tag, one token\n"
    "a line, with a blank line after each text.\n";

const size_t kMaxLine = 1 << 20;

// The first member's analyzer block, as a lexicon classifier reads it.
const vortm::configure::Parameter& analyzerBlock(const vortm::configure::Parameter& root) {
  return root["number_senti_classifiers"][0]["param"]["text_analyzer"];
}

}  // namespace

int runTokenize(int argc, char** argv) {
  CommandLine cl({"config", "encoding", "input"}, {"quiet"});
  if (!cl.parse(argc, argv, 2)) return usageError("tokenize", cl.error());
  int rc = kOk;
  if (standardOptions(cl, kHelp, rc)) return rc;
  if (cl.has("input") && !cl.positional().empty())
    return usageError("tokenize", "give texts as arguments or with --input, not both");
  std::string encoding;
  if (!parseEncoding(cl.get("encoding", "utf-8"), encoding))
    return usageError("tokenize", "--encoding must be utf-8 or gbk");
  const std::string config = modelConfigFor(cl, "tokenize", encoding);
  if (config.empty()) return kFailure;
  const int fd = cl.has("input") ? openInput("tokenize", cl.get("input")) : 0;
  if (fd < 0) return kFailure;
  redirectLibraryOutput(cl.has("quiet"));
  ConfigInfo info;
  if (!checkConfig("tokenize", config, info)) return kFailure;
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
    LineReader reader(fd, kMaxLine);
    std::string line;
    bool cut = false;
    while (reader.next(line, cut)) ok = show(line) && ok;
    if (fd > 0) ::close(fd);
  }
  return finishOutput("tokenize") && ok ? kOk : kFailure;
}

}  // namespace cli
}  // namespace vorelin
