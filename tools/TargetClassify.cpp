// `vorelin classify --target WORD`: scores texts with regard to target words
// through the target-aware classifier, which the C interface does not reach.
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ModelPaths.h"
#include "TargetClassify.h"
#include "application/TargetAwareSentiClassifiers.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "utility/Utility.h"

namespace vorelin {
namespace cli {

namespace {

const char kTargetUsage[] =
    "Usage: vorelin classify --target WORD [--target WORD...] [--config FILE] [--quiet]\n"
    "                        [--input FILE] [TEXT...]\n"
    "       vorelin classify --targets-from N [--config FILE] [--quiet] [--input FILE]\n"
    "\n"
    "Scores each text with regard to the target words: how positive it is about\n"
    "them rather than overall. Prints SCORE<TAB>TEXT per text; a text in which\n"
    "no target occurs scores 0.0, with a note on standard error.\n"
    "\n"
    "  --target WORD     a target word; repeat for several\n"
    "  --targets-from N  read TSV lines: column N (from 1) holds the targets,\n"
    "                    separated by ',', and the last column the text\n"
    "  --config FILE     target-aware configuration (default: the shipped one)\n"
    "  --input FILE      read texts from FILE, one per line (default: stdin)\n"
    "  --quiet           drop the library's log records\n";

struct Options {
  std::vector<std::string> targets;
  int targetColumn = 0;
  std::string config;
  std::string input;
  bool quiet = false;
  std::vector<std::string> texts;
};

bool parse(int argc, char** argv, Options& options, std::string& error) {
  for (int i = 2; i < argc; ++i) {
    std::string arg = argv[i];
    std::string value;
    bool valued = arg == "--target" || arg == "--targets-from" || arg == "--config" || arg == "--input";
    if (valued) {
      if (i + 1 >= argc) {
        error = "option " + arg + " needs a value";
        return false;
      }
      value = argv[++i];
    }
    if (arg == "--target") {
      options.targets.push_back(value);
    } else if (arg == "--targets-from") {
      char* end = nullptr;
      long column = std::strtol(value.c_str(), &end, 10);
      if (value.empty() || *end != '\0' || column < 1 || column > 1000) {
        error = "--targets-from needs a column number from 1";
        return false;
      }
      options.targetColumn = static_cast<int>(column);
    } else if (arg == "--config") {
      options.config = value;
    } else if (arg == "--input") {
      options.input = value;
    } else if (arg == "--quiet") {
      options.quiet = true;
    } else if (arg == "--") {
      for (++i; i < argc; ++i) options.texts.push_back(argv[i]);
    } else if (arg.size() > 1 && arg[0] == '-' && arg != "-") {
      error = "unknown option '" + arg + "' with --target";
      return false;
    } else {
      options.texts.push_back(arg);
    }
  }
  if (options.targets.empty() == (options.targetColumn == 0)) {
    error = "give either --target or --targets-from";
    return false;
  }
  if (options.targetColumn > 0 && !options.texts.empty()) {
    error = "--targets-from reads lines from --input or standard input, not arguments";
    return false;
  }
  return true;
}

std::vector<std::string> splitTargets(const std::string& field) {
  std::vector<std::string> parts;
  vortm::utility::Utility::strTokenize(field, ",", parts);
  std::vector<std::string> targets;
  for (std::string& part : parts) {
    vortm::utility::Utility::trim(part);
    if (!part.empty()) targets.push_back(part);
  }
  return targets;
}

bool anyOccurs(const std::string& text, const std::vector<std::string>& targets) {
  for (std::string target : targets) {
    vortm::utility::Utility::trim(target);
    if (!target.empty() && text.find(target) != std::string::npos) return true;
  }
  return false;
}

}  // namespace

bool wantsTargets(int argc, char** argv) {
  for (int i = 2; i < argc; ++i) {
    if (std::strcmp(argv[i], "--") == 0) return false;
    if (std::strcmp(argv[i], "--target") == 0 || std::strcmp(argv[i], "--targets-from") == 0) return true;
  }
  return false;
}

std::string defaultTargetConfig() {
  // The target-aware model sits beside the default one.
  std::string path = defaultModelConfig("utf-8");
  std::string::size_type slash = path.rfind("/default/");
  if (slash == std::string::npos) return std::string();
  std::string candidate = path.substr(0, slash) + "/target/target.xml";
  std::ifstream probe(candidate);
  return probe ? candidate : std::string();
}

int runTargetClassify(int argc, char** argv) {
  for (int i = 2; i < argc; ++i) {
    if (std::strcmp(argv[i], "--help") == 0 || std::strcmp(argv[i], "-h") == 0) {
      std::fputs(kTargetUsage, stdout);
      return kOk;
    }
  }
  Options options;
  std::string error;
  if (!parse(argc, argv, options, error)) return usageError("classify", error);
  if (options.config.empty()) options.config = defaultTargetConfig();
  if (options.config.empty()) {
    std::fprintf(stderr, "vorelin classify: no target-aware model found; build it or give --config FILE\n");
    return kFailure;
  }
  std::ifstream file;
  std::istream* in = &std::cin;
  if (!options.input.empty()) {
    file.open(options.input, std::ios::binary);
    if (!file) {
      std::fprintf(stderr, "vorelin classify: cannot read %s\n", options.input.c_str());
      return kFailure;
    }
    in = &file;
  }

  redirectLibraryOutput(options.quiet);
  vortm::configure::BasicParamParser parser;
  vortm::common::AutoPtr<vortm::configure::Parameter> root;
  vortm::application::TargetAwareStandardSentiClassifier classifier;
  if (!parser.doParse(options.config, root) || !root || !classifier.config((*root)["target_aware_classifier"])) {
    std::fprintf(stderr, "vorelin classify: cannot initialise a target-aware classifier from %s\n",
                 options.config.c_str());
    return kFailure;
  }

  int status = kOk;
  int number = 0;
  auto score = [&](const std::string& text, const std::vector<std::string>& targets) {
    double value = 0.0;
    if (text.empty()) {
      writeOut("\t\n");  // as plain classify does, so that lines stay aligned
      return;
    }
    if (!anyOccurs(text, targets)) {
      std::fprintf(stderr, "vorelin classify: line %d: no target occurs in the text\n", number);
    } else if (!classifier.classifyMarkingTargets(text, targets, value)) {
      std::fprintf(stderr, "vorelin classify: line %d could not be classified\n", number);
      status = kFailure;
      writeOut("\t" + text + "\n");
      return;
    }
    char buffer[64];
    std::snprintf(buffer, sizeof(buffer), "%.6f", value);
    writeOut(std::string(buffer) + "\t" + text + "\n");
  };

  if (!options.texts.empty() && options.input.empty()) {
    for (const std::string& text : options.texts) {
      ++number;
      score(text, options.targets);
    }
  } else {
    std::string line;
    while (nextTextLine(*in, line, number)) {
      if (options.targetColumn == 0) {
        score(line, options.targets);
        continue;
      }
      std::vector<std::string> fields;
      vortm::utility::Utility::strTokenize(line, "\t", fields);
      if (static_cast<int>(fields.size()) <= options.targetColumn) {
        std::fprintf(stderr, "vorelin classify: line %d has no text after column %d\n", number,
                     options.targetColumn);
        status = kFailure;
        continue;
      }
      score(fields.back(), splitTargets(fields[options.targetColumn - 1]));
    }
  }
  std::fflush(stdout);
  return status;
}

}  // namespace cli
}  // namespace vorelin
