// vorelin corpus label: a labelled training file from unlabelled reviews,
// by the lexicon scorer of a configuration.
#include <cstdio>
#include <deque>
#include <fstream>
#include <iostream>
#include <string>
#include <utility>

#include "CommandLine.h"
#include "ToolConfig.h"
#include "common/thread/SimpleThreadPool.h"
#include "modular/ILexcionSentiScorer.h"
#include "modular/LexcionSentiScorerTokenizedDocFilter.h"
#include "modular/ParallelTokenizedDocIterator.h"
#include "modular/TextAnalyzer.h"
#include "trainset/DocReader.h"

namespace vorelin {
namespace cli {

namespace {

const char* kCorpusUsage =
    "Usage: vorelin corpus label --config FILE [--input FILE] [--output FILE]\n"
    "                            [--threads N] [--options FILE] [--quiet]\n";

const char* kLabelHelp =
    "Usage: vorelin corpus label --config FILE [--input FILE] [--output FILE]\n"
    "                            [--threads N] [--options FILE] [--quiet]\n"
    "\n"
    "Reads unlabelled texts, one per line, and writes those that the lexicon\n"
    "scorer of FILE is confident about as LABEL<TAB>TEXT lines, the format of\n"
    "'vorelin train centroid': 1 for a score above 0.25, -1 for one below -0.25.\n"
    "Texts in between, and empty lines, are left out. Output keeps input order.\n"
    "Counts go to standard error.\n"
    "\n"
    "  --config FILE   configuration with a lexicon classifier (its text\n"
    "                  analyzer and lexicon scorer are used; default: the\n"
    "                  shipped model)\n"
    "  --input FILE    unlabelled texts (default: standard input)\n"
    "  --output FILE   where the labelled lines go (default: standard output)\n"
    "  --threads N     tokenizing and scoring threads (default: one per core)\n"
    "  --options FILE  defaults for these options from a key = value file\n"
    "  --quiet         no counts and no library messages\n";

// Lines of a stream as documents; `source` carries the line number, so
// that the text can be found again when its document comes back.
class StreamLineDocReader : public vortm::trainset::DocReader {
 public:
  explicit StreamLineDocReader(std::istream& in) : m_in(in), m_number(0) {}
  bool hasNextDoc() override {
    std::string line;
    while (readTextLine(m_in, line, m_number == 0)) {
      ++m_number;
      if (line.empty()) continue;
      m_doc.content = line;
      m_doc.source = std::to_string(m_number);
      m_texts.emplace_back(m_number, line);
      return true;
    }
    return false;
  }
  vortm::trainset::Doc getNextDoc() override { return m_doc; }
  void getNextDoc(vortm::trainset::Doc& doc) override { doc = m_doc; }

  // The text of line `number`; earlier lines are forgotten.
  std::string takeText(long number) {
    while (!m_texts.empty() && m_texts.front().first < number) m_texts.pop_front();
    if (m_texts.empty() || m_texts.front().first != number) return std::string();
    std::string text = std::move(m_texts.front().second);
    m_texts.pop_front();
    return text;
  }
  long lineCount() const { return m_number; }

 private:
  std::istream& m_in;
  long m_number;
  vortm::trainset::Doc m_doc;
  std::deque<std::pair<long, std::string> > m_texts;
};

int runLabel(int argc, char** argv) {
  CommandLine cl({"config", "input", "output", "threads", "options"}, {"quiet", "help"});
  if (!cl.parse(argc, argv, 3)) return usageError("corpus", cl.error());
  if (cl.has("help")) {
    std::fputs(kLabelHelp, stdout);
    return kOk;
  }
  ToolOptions options(cl);
  std::string error;
  if (!options.load(error)) return usageError("corpus", error);
  if (!cl.positional().empty()) return usageError("corpus", "unexpected argument '" + cl.positional()[0] + "'");
  long threads = options.number("threads", 0, 1, 256);
  if (threads < 0) return usageError("corpus", "--threads needs a number from 1 to 256");
  const bool quiet = cl.has("quiet") || options.get("quiet") == "true";
  std::string config = configOrDefault(options, "corpus");
  if (config.empty()) return kFailure;
  std::ifstream inFile;
  std::istream* in = openInput(options, inFile, "corpus");
  if (!in) return kFailure;
  FILE* out = stdout;
  if (options.has("output")) {
    out = std::fopen(options.get("output").c_str(), "wb");
    if (!out) {
      std::fprintf(stderr, "vorelin corpus: cannot write %s\n", options.get("output").c_str());
      return kFailure;
    }
  }

  redirectLibraryOutput(quiet);
  using vortm::common::AutoPtr;
  AutoPtr<vortm::configure::Parameter> root;
  const vortm::configure::Parameter* block = nullptr;
  AutoPtr<vortm::modular::TextAnalyzer> analyzer;
  AutoPtr<vortm::modular::ILexcionSentiScorer> scorer;
  if (!findClassifierBlock(config, true, root, block, error) ||
      !vortm::modular::TextAnalyzer::configTextAnalyzer((*block)["text_analyzer"], analyzer) ||
      !vortm::modular::ILexcionSentiScorer::configLexcionSentiScorer((*block)["lexcion_senti_scorer"], scorer)) {
    if (error.empty()) error = "cannot set up the text analyzer and lexicon scorer of " + config;
    std::fprintf(stderr, "vorelin corpus: %s\n", error.c_str());
    if (out != stdout) std::fclose(out);
    return kFailure;
  }

  StreamLineDocReader* reader = new StreamLineDocReader(*in);
  AutoPtr<vortm::trainset::DocReader> readerPtr(reader, true);
  vortm::common::SimpleThreadPool pool(static_cast<unsigned int>(threads));
  AutoPtr<vortm::trainset::TokenizedDocFilter> filter(
      new vortm::modular::LexcionSentiScorerTokenizedDocFilter(scorer), true);
  long positive = 0, negative = 0;
  {
    vortm::modular::ParallelTokenizedDocIterator docs(readerPtr, analyzer, pool, filter, 256);
    while (docs.hasNext()) {
      const vortm::trainset::TokenizedDoc& doc = docs.current();
      const bool pos = doc.label.identifier == "pos";
      (pos ? positive : negative)++;
      std::string line = (pos ? "1\t" : "-1\t") + reader->takeText(std::stol(doc.source)) + "\n";
      std::fwrite(line.data(), 1, line.size(), out);
    }
    if (docs.hadError()) error = "a batch of texts failed and was left out";
    if (!quiet) {
      std::fprintf(stderr, "vorelin corpus: %ld lines, %zu texts: %ld positive, %ld negative, %zu left out",
                   reader->lineCount(), docs.readCount(), positive, negative, docs.droppedCount());
      if (docs.failedCount()) std::fprintf(stderr, ", %zu not tokenized", docs.failedCount());
      std::fputs("\n", stderr);
    }
  }
  bool written = std::fflush(out) == 0 && !std::ferror(out);
  if (out != stdout) written = std::fclose(out) == 0 && written;
  if (!written) {
    std::fprintf(stderr, "vorelin corpus: cannot write %s\n", options.get("output", "standard output").c_str());
    return kFailure;
  }
  if (!error.empty()) {
    std::fprintf(stderr, "vorelin corpus: %s\n", error.c_str());
    return kFailure;
  }
  return kOk;
}

}  // namespace

int runCorpus(int argc, char** argv) {
  std::string sub = argc > 2 ? argv[2] : "";
  if (sub == "label") return runLabel(argc, argv);
  if (sub == "--help" || sub == "-h") {
    std::fputs(kCorpusUsage, stdout);
    return kOk;
  }
  std::fputs(kCorpusUsage, stderr);
  return kUsage;
}

}  // namespace cli
}  // namespace vorelin
