// vorelin labels: shows the opinion labels that a model's label scorer
// extracts from texts, and the value each one gets.
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
#include "modular/SentiLabelSentiScorer.h"
#include "modular/TextAnalyzer.h"

namespace vorelin {
namespace cli {

namespace {

using vortm::configure::Parameter;
using vortm::modular::SentiLabel;
using vortm::modular::Unit;

const char* kHelp =
    "Usage: vorelin labels [--config FILE] [--quiet] [TEXT...]\n"
    "\n"
    "Prints the opinion labels that the first label-scoring classifier of the\n"
    "configuration extracts from each TEXT (or from each line of standard\n"
    "input), one label a line:\n"
    "  ATTRIBUTE<TAB>SENTIMENT<TAB>VALUE\n"
    "Each side shows its word in brackets with its modifiers around it as\n"
    "word/TAG, or '-' when the label has no such side; VALUE is the label's\n"
    "value before position weighting. A blank line follows each text.\n";

// The member whose scorer is the label scorer, or the null parameter.
const Parameter& labelClassifier(const Parameter& root) {
  const Parameter& members = root["number_senti_classifiers"];
  for (unsigned int i = 0; i < members.size(); ++i) {
    std::string identifier;
    if (members[i]["param"]["lexcion_senti_scorer"]["identifier"].getStringValue(identifier) &&
        identifier == "senti_label_senti_scorer")
      return members[i];
  }
  return vortm::configure::ParameterNULL;
}

std::string showUnit(const Unit& unit) {
  if (unit.isEmpty()) return "-";
  std::string out;
  for (const auto& t : unit.before) out += t.term + "/" + tagName(t.tag) + " ";
  out += "[" + unit.term + "]";
  for (const auto& t : unit.after) out += " " + t.term + "/" + tagName(t.tag);
  return out;
}

}  // namespace

int runLabels(int argc, char** argv) {
  CommandLine cl({"config"}, {"help", "quiet"});
  if (!cl.parse(argc, argv, 2)) return usageError("labels", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  std::string config = cl.get("config", defaultModelConfig());
  if (config.empty()) {
    std::fprintf(stderr, "vorelin labels: no default model found; give --config FILE\n");
    return kFailure;
  }
  redirectLibraryOutput(cl.has("quiet"));
  vortm::configure::BasicParamParser parser;
  vortm::common::AutoPtr<Parameter> root;
  if (!parser.doParse(config, root)) {
    std::fprintf(stderr, "vorelin labels: cannot parse %s\n", config.c_str());
    return kFailure;
  }
  const Parameter& member = labelClassifier(*root);
  if (member.isNull()) {
    std::fprintf(stderr, "vorelin labels: %s has no classifier with senti_label_senti_scorer\n", config.c_str());
    return kFailure;
  }
  vortm::common::AutoPtr<vortm::modular::TextAnalyzer> analyzer;
  vortm::modular::SentiLabelSentiScorer scorer;
  if (!vortm::modular::TextAnalyzer::configTextAnalyzer(member["param"]["text_analyzer"], analyzer) ||
      !scorer.config(member["param"]["lexcion_senti_scorer"]["param"])) {
    std::fprintf(stderr, "vorelin labels: cannot set up the label scorer of %s\n", config.c_str());
    return kFailure;
  }
  auto show = [&](const std::string& text) {
    std::vector<vortm::analyzer::Token> tokens;
    std::vector<SentiLabel> labels;
    if (!analyzer->tokenizeText(text, tokens, true) || !scorer.extractLabels(tokens, labels)) {
      std::fprintf(stderr, "vorelin labels: cannot analyse: %s\n", text.c_str());
      return false;
    }
    std::string out;
    for (SentiLabel& label : labels) {
      char value[32];
      std::snprintf(value, sizeof(value), "%+.4f", scorer.getSentiSocre(label));
      out += showUnit(label.att) + "\t" + showUnit(label.senti) + "\t" + value + "\n";
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
