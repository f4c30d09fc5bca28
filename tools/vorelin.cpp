// vorelin: command-line front end of the library.
#include <cstdio>
#include <cstring>
#include <string>

#include "CommandLine.h"

namespace {

const char* kMainUsage =
    "Usage: vorelin COMMAND [OPTIONS] [ARGS]\n"
    "\n"
    "Sentiment analysis of Chinese and English text.\n"
    "\n"
    "Commands:\n"
    "  classify   score texts (arguments, a file or standard input)\n"
    "  tokenize   show the tokens a model's analyzer makes\n"
    "  dict       build a trie dictionary from word lists, or look words up\n"
    "  eval       report a model's accuracy on labelled texts\n"
    "  train      train a centroid model from labelled texts\n"
    "  model      inspect a saved vocabulary or centroid\n"
    "  lexicon    build a weighted lexicon from word lists, or dump one\n"
    "\n"
    "Run 'vorelin COMMAND --help' for the options of a command.\n";

}  // namespace

int main(int argc, char** argv) {
  using namespace vorelin::cli;
  if (argc < 2) {
    std::fputs(kMainUsage, stderr);
    return kUsage;
  }
  std::string command = argv[1];
  if (command == "--help" || command == "-h" || command == "help") {
    std::fputs(kMainUsage, stdout);
    return kOk;
  }
  if (command == "classify") return runClassify(argc, argv);
  if (command == "tokenize") return runTokenize(argc, argv);
  if (command == "dict") return runDict(argc, argv);
  if (command == "eval") return runEval(argc, argv);
  if (command == "train") return runTrain(argc, argv);
  if (command == "model") return runModel(argc, argv);
  if (command == "lexicon") return runLexicon(argc, argv);
  std::fprintf(stderr, "vorelin: unknown command '%s'\n\n%s", command.c_str(), kMainUsage);
  return kUsage;
}
