// vorelin lexicon build|dump: dispatches to the tool of each lexicon kind.
#include <cstdio>
#include <string>

#include "CommandLine.h"
#include "LabelLexiconTool.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin lexicon build --kind label [--encoding utf-8|gbk] --out FILE LIST...\n"
    "       vorelin lexicon dump [--kind label] [--encoding utf-8|gbk] FILE\n"
    "\n"
    "build   compiles plain-text lists (UTF-8) into a saved lexicon. For the\n"
    "        label kind a line is 'KEY<TAB>VALUE': KEY a word, or an attribute\n"
    "        followed by a sentiment word with no space between (modifiers\n"
    "        included where the pair is a fixed phrase), VALUE a signed number.\n"
    "        A value of size 0.99 or more is a default the word's own value may\n"
    "        override; a smaller one stands. A later line for a key replaces an\n"
    "        earlier one; '#' starts a comment line. Keys are converted to GBK\n"
    "        for --encoding gbk.\n"
    "dump    prints a saved lexicon back as 'KEY<TAB>VALUE' lines (UTF-8).\n";

}  // namespace

int runLexicon(int argc, char** argv) {
  CommandLine cl({"kind", "encoding", "out"}, {"help", "quiet"});
  if (!cl.parse(argc, argv, 2)) return usageError("lexicon", cl.error());
  if (cl.has("help") || cl.positional().empty()) {
    std::fputs(kHelp, cl.has("help") ? stdout : stderr);
    return cl.has("help") ? kOk : kUsage;
  }
  redirectLibraryOutput(cl.has("quiet"));
  const std::string& action = cl.positional()[0];
  const std::string kind = cl.get("kind", action == "dump" ? "label" : "");
  if (kind.empty()) return usageError("lexicon", action + " needs --kind label");
  if (kind != "label") return usageError("lexicon", "unknown kind '" + kind + "' (label)");
  if (action == "build") return buildLabelLexicon(cl);
  if (action == "dump") return dumpLabelLexicon(cl);
  return usageError("lexicon", "unknown action '" + action + "' (build or dump)");
}

}  // namespace cli
}  // namespace vorelin
