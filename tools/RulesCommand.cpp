// vorelin rules: the classes that a rule file gives each text.
#include <cstdio>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ToolConfig.h"
#include "common/thread/SimpleThreadPool.h"
#include "modular/RuleSet.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin rules --rules FILE.xml [--config FILE] [--input FILE] [--all]\n"
    "                     [--threads N] [--options FILE] [--quiet] [TEXT...]\n"
    "\n"
    "Applies the keyword rules of FILE.xml to each TEXT, or each line of FILE, or\n"
    "each line of standard input. Prints one line per input line, in input order:\n"
    "the class of the strongest matching rule, a tab, its strength, a tab, the\n"
    "text. A text that no rule matches gets \"-\" and 0. With --all the first\n"
    "field lists every matching class as CLASS:STRENGTH, strongest first,\n"
    "separated by commas.\n"
    "\n"
    "  --rules FILE    the rule file (XML; see models/rules/README.md)\n"
    "  --config FILE   configuration whose text analyzer cuts the words\n"
    "                  (default: the shipped model's)\n"
    "  --input FILE    read texts from FILE, one per line\n"
    "  --all           every matching class, not just the strongest\n"
    "  --threads N     matching threads (default 1)\n"
    "  --options FILE  defaults for these options from a key = value file\n"
    "  --quiet         drop the library's log records (otherwise on stderr)\n";

std::string formatMatches(const std::vector<vortm::modular::RuleSet::Match>& matches, bool all) {
  char number[32];
  if (matches.empty()) return "-\t0";
  if (!all) {
    std::snprintf(number, sizeof(number), "%.6f", matches[0].strength);
    return matches[0].classId + "\t" + number;
  }
  std::string out;
  for (size_t i = 0; i < matches.size(); ++i) {
    std::snprintf(number, sizeof(number), "%.6f", matches[i].strength);
    out += (i ? "," : "") + matches[i].classId + ":" + number;
  }
  std::snprintf(number, sizeof(number), "%.6f", matches[0].strength);
  return out + "\t" + number;
}

}  // namespace

int runRules(int argc, char** argv) {
  CommandLine cl({"rules", "config", "input", "threads", "options"}, {"all", "quiet", "help"});
  if (!cl.parse(argc, argv, 2)) return usageError("rules", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  ToolOptions options(cl);
  std::string error;
  if (!options.load(error)) return usageError("rules", error);
  if (!options.has("rules")) return usageError("rules", "--rules FILE is required");
  long threads = options.number("threads", 1, 1, 256);
  if (threads < 0) return usageError("rules", "--threads needs a number from 1 to 256");
  if (options.has("input") && !cl.positional().empty())
    return usageError("rules", "give texts as arguments or with --input, not both");
  std::string config = configOrDefault(options, "rules");
  if (config.empty()) return kFailure;

  redirectLibraryOutput(cl.has("quiet") || options.get("quiet") == "true");
  vortm::common::AutoPtr<vortm::configure::Parameter> root;
  const vortm::configure::Parameter* block = nullptr;
  if (!findClassifierBlock(config, false, root, block, error)) {
    std::fprintf(stderr, "vorelin rules: %s\n", error.c_str());
    return kFailure;
  }
  vortm::modular::RuleSet rules;
  if (!rules.config((*block)["text_analyzer"], options.get("rules"))) {
    std::fprintf(stderr, "vorelin rules: cannot use the rules of %s with the analyzer of %s\n",
                 options.get("rules").c_str(), config.c_str());
    return kFailure;
  }

  std::vector<std::string> lines = cl.positional();
  if (lines.empty()) {
    std::ifstream file;
    std::istream* in = openInput(options, file, "rules");
    if (!in) return kFailure;
    std::string line;
    for (bool first = true; readTextLine(*in, line, first); first = false) lines.push_back(line);
  }

  const bool all = cl.has("all") || options.get("all") == "true";
  std::vector<std::string> out(lines.size());
  std::vector<char> failed(lines.size(), 0);
  auto work = [&](size_t i) {
    std::vector<vortm::modular::RuleSet::Match> matches;
    failed[i] = !rules.matchText(lines[i], matches);
    out[i] = formatMatches(matches, all) + "\t" + lines[i] + "\n";
  };
  if (threads > 1) {
    vortm::common::SimpleThreadPool pool(static_cast<unsigned int>(threads));
    vortm::common::forEachOnPool(pool, lines.size(), work);
  } else {
    for (size_t i = 0; i < lines.size(); ++i) work(i);
  }
  int status = kOk;
  for (size_t i = 0; i < lines.size(); ++i) {
    writeOut(out[i]);
    if (failed[i]) status = kFailure;
  }
  return status;
}

}  // namespace cli
}  // namespace vorelin
