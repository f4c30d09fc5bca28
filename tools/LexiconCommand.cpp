// vorelin lexicon build|dump: make the lexicon files that scorers read, and
// show what one holds. Each kind of lexicon has its own file of actions.
#include <cstdio>
#include <string>

#include "CommandLine.h"
#include "LexiconKinds.h"
#include "modular/SentiLabelSentiScorer.h"
#include "utility/BufferedFileReader.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin lexicon build --kind weighted|label [--encoding utf-8|gbk] --out FILE LIST...\n"
    "       vorelin lexicon dump [--kind weighted|label] [--encoding utf-8|gbk] FILE\n"
    "\n"
    "build   compiles plain-text lists (UTF-8) into a saved lexicon; for gbk\n"
    "        the words are converted to GBK. A later line of a key replaces an\n"
    "        earlier one. Blank lines and '#' comments are skipped; a byte-order\n"
    "        mark and CRLF line ends are accepted.\n"
    "          weighted: 'word<TAB>weight' lines, for weighted_lexcion_senti_scorer.\n"
    "          label:    'KEY<TAB>VALUE' lines, KEY a word, or an attribute\n"
    "                    followed by a sentiment word with no space between,\n"
    "                    VALUE a signed number; a value of size 0.99 or more is\n"
    "                    a default the word's own value may override. For\n"
    "                    senti_label_senti_scorer.\n"
    "dump    prints a saved lexicon back as 'KEY<TAB>VALUE' lines, in a form\n"
    "        that build reads back to the same file. Without --kind the kind\n"
    "        is told from the file.\n";

// A label lexicon reads back whole through its own reader; anything else is
// taken for a weighted lexicon, whose loader reports what is wrong with it.
std::string guessKind(const std::string& path) {
  vortm::utility::BufferedFileReader reader(path, true);
  vortm::modular::SentiLabelSentiScorer::SentiLabelLexcion lexicon;
  if (reader.good() && lexicon.readSelf(reader)) return "label";
  return "weighted";
}

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
  if (action != "build" && action != "dump")
    return usageError("lexicon", "unknown action '" + action + "' (build or dump)");
  std::string kind = cl.get("kind");
  if (kind.empty()) {
    if (action == "build") return usageError("lexicon", "build needs --kind weighted or --kind label");
    if (cl.positional().size() != 2) return usageError("lexicon", "dump needs one FILE");
    kind = guessKind(cl.positional()[1]);
  }
  if (kind == "weighted") return action == "build" ? buildWeightedLexicon(cl) : dumpWeightedLexicon(cl);
  if (kind == "label") return action == "build" ? buildLabelLexicon(cl) : dumpLabelLexicon(cl);
  return usageError("lexicon", "unknown kind '" + kind + "' (weighted or label)");
}

}  // namespace cli
}  // namespace vorelin
