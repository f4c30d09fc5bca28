// vorelin lexicon build|dump: make the lexicon files that scorers read, and
// show what one holds. Each kind of lexicon has its own file of actions.
#include <cstdio>
#include <string>

#include "CommandLine.h"
#include "LexiconKinds.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin lexicon build --kind weighted [--encoding utf-8|gbk] --out FILE LIST...\n"
    "       vorelin lexicon dump [--kind weighted] [--encoding utf-8|gbk] FILE\n"
    "\n"
    "build   compiles 'word<TAB>weight' lines (UTF-8) into a saved weighted\n"
    "        lexicon; for gbk the words are converted to GBK. A later line of a\n"
    "        word replaces an earlier one. Blank lines and '#' comments are\n"
    "        skipped; a byte-order mark and CRLF line ends are accepted.\n"
    "dump    prints a saved lexicon as 'word<TAB>weight' lines in word order,\n"
    "        in a form that build reads back to the same file.\n";

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
  const std::string kind = cl.get("kind", action == "dump" ? "weighted" : "");
  if (kind.empty()) return usageError("lexicon", action + " needs --kind weighted");
  if (kind != "weighted") return usageError("lexicon", "unknown kind '" + kind + "' (weighted)");
  if (action == "build") return buildWeightedLexicon(cl);
  if (action == "dump") return dumpWeightedLexicon(cl);
  return usageError("lexicon", "unknown action '" + action + "' (build or dump)");
}

}  // namespace cli
}  // namespace vorelin
