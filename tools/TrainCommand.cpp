// vorelin train centroid: a vocabulary, a centroid and a ready configuration
// from labelled texts.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "ToolConfig.h"
#include "application/CentroidTrainer.h"
#include "common/AutoPtr.h"
#include "modular/TextAnalyzer.h"
#include "utility/Utility.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin train centroid --config FILE --out PREFIX [OPTIONS] CORPUS...\n"
    "\n"
    "Trains a two-class centroid model from labelled texts and writes\n"
    "PREFIX.vocab (the vocabulary), PREFIX.centroid (the classes \"neg\" and\n"
    "\"pos\") and PREFIX.xml, a configuration that classifies with them.\n"
    "\n"
    "Each CORPUS line is LABEL<TAB>TEXT (with more tab-separated fields, the\n"
    "text is the last one) or LABEL::TEXT. LABEL is 1, +1 or pos for positive,\n"
    "0, -1 or neg for negative. Empty lines are skipped; any other label is an\n"
    "error that names the line.\n"
    "\n"
    "  --config FILE     configuration whose text analyzer tokenizes the texts\n"
    "                    (the first <text_analyzer> element of FILE)\n"
    "  --out PREFIX      where the three files go\n"
    "  --min-df N        leave out words found in fewer than N texts (default 2)\n"
    "  --max-size N      keep at most the N most frequent words (default: all)\n"
    "  --estimator E     linear (logistic regression, default) or mean (class\n"
    "                    means of the document vectors)\n"
    "  --c X             inverse regularisation of the linear estimator (default 4)\n"
    "  --epochs N        passes of the linear estimator (default 12)\n"
    "  --seed N          order of the passes (default 1)\n"
    "  --weighting W     tf-idf (default), bool or bo1\n"
    "  --word-vec FILE   document vectors: the weighted average of the word\n"
    "                    vectors of FILE (text: 'ROWS DIM' line, then\n"
    "                    'WORD V1 .. VDIM' lines, as fastText's .vec)\n"
    "  --word-expand FILE  bag of words where each word lends a share of its\n"
    "                    weight to the related words listed in FILE\n"
    "                    ('WORD rel1:0.8;rel2:0.5' lines)\n"
    "  --no-bias         train without biases: a text with no known word scores 0\n"
    "  --non-ascii-only  leave words of ASCII characters only out of the vocabulary\n"
    "  --cv K            first report the accuracy of K-fold cross-validation\n"
    "  --threads N       tokenizing threads (default: one per core)\n"
    "  --quiet           no progress bar and no library messages\n";

// -1 for a label that is none of the accepted forms.
int parseLabel(std::string label) {
  vortm::utility::Utility::trim(label);
  vortm::utility::Utility::toLowcase(label);
  if (label == "1" || label == "+1" || label == "pos") return 1;
  if (label == "0" || label == "-1" || label == "neg") return 0;
  return -1;
}

bool readCorpus(const std::string& path, std::vector<int>& labels, std::vector<std::string>& texts) {
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    std::fprintf(stderr, "vorelin train: cannot read %s\n", path.c_str());
    return false;
  }
  std::string line;
  int number = 0;
  while (nextTextLine(in, line, number)) {
    if (line.empty()) continue;
    size_t tab = line.find('\t');
    size_t mark = line.find("::");
    std::string label;
    std::string text;
    if (tab != std::string::npos && (mark == std::string::npos || tab < mark)) {
      label = line.substr(0, tab);
      text = line.substr(line.rfind('\t') + 1);
    } else if (mark != std::string::npos) {
      label = line.substr(0, mark);
      text = line.substr(mark + 2);
    } else {
      std::fprintf(stderr, "vorelin train: %s:%d: expected LABEL<TAB>TEXT or LABEL::TEXT\n", path.c_str(), number);
      return false;
    }
    int value = parseLabel(label);
    if (value < 0) {
      std::fprintf(stderr, "vorelin train: %s:%d: malformed label '%s' (use 1/0, pos/neg or +1/-1)\n", path.c_str(),
                   number, label.c_str());
      return false;
    }
    labels.push_back(value);
    texts.push_back(text);
  }
  return true;
}

std::string absolutePath(const std::string& path) {
  if (!path.empty() && path[0] == '/') return path;
  char* cwd = getcwd(nullptr, 0);
  std::string out = cwd ? std::string(cwd) + "/" + path : path;
  std::free(cwd);
  return out;
}

class ProgressBar {
 public:
  explicit ProgressBar(bool shown) : m_shown(shown) {}
  ~ProgressBar() { finish(); }
  void update(const std::string& stage, size_t done, size_t total) {
    if (!m_shown) return;
    const int width = 30;
    int filled = total == 0 ? width : static_cast<int>(width * static_cast<double>(done) / total);
    if (filled > width) filled = width;
    std::string bar(filled, '#');
    bar.append(width - filled, ' ');
    std::fprintf(stderr, "\r%-11s [%s] %zu/%zu   ", stage.c_str(), bar.c_str(), done, total);
    std::fflush(stderr);
    m_active = true;
  }
  void finish() {
    if (m_active) std::fputs("\n", stderr);
    m_active = false;
  }

 private:
  bool m_shown;
  bool m_active = false;
};

// The builder's own file, as configured for training.
std::string builderFileElement(const vortm::application::CentroidTrainOptions& options) {
  if (options.builderFileKey.empty()) return std::string();
  return "          <" + options.builderFileKey + ">" + options.builderFile + "</" + options.builderFileKey + ">\n";
}

std::string configurationXml(const std::string& analyzer, const std::string& vocabulary, const std::string& centroid,
                             const vortm::application::CentroidTrainer& trainer, const std::string& weighting) {
  return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
         "<!-- Written by vorelin train centroid. -->\n"
         "<number_senti_classifiers>\n"
         "  <classifier>\n"
         "    <identifier>centroid_senti_classifier</identifier>\n"
         "    <number_weight type=\"numeric\">1.0</number_weight>\n"
         "    <param>\n"
         + analyzer +
         "      <doc_vec_builder>\n"
         "        <identifier>" + trainer.options().builder + "</identifier>\n"
         "        <param>\n"
         "          <vocabulary_file>" + vocabulary + "</vocabulary_file>\n"
         "          <word_weighting_method>" + weighting + "</word_weighting_method>\n"
         "          <normalize_method>l2norm</normalize_method>\n" + builderFileElement(trainer.options()) +
         "        </param>\n"
         "      </doc_vec_builder>\n"
         "      <norm_method>" + trainer.normMethod() + "</norm_method>\n"
         "      <is_ensure_nonnegative>" + trainer.ensureNonNegative() + "</is_ensure_nonnegative>\n"
         "      <senti_centroid_files>\n"
         "        <file>" + centroid + "</file>\n"
         "      </senti_centroid_files>\n"
         "    </param>\n"
         "  </classifier>\n"
         "</number_senti_classifiers>\n";
}

bool parseCount(const CommandLine& cl, const std::string& name, int& value, int minimum) {
  if (!cl.has(name)) return true;
  char* end = nullptr;
  std::string text = cl.get(name);
  long parsed = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || parsed < minimum || parsed > 1000000000L) return false;
  value = static_cast<int>(parsed);
  return true;
}

int trainCentroid(int argc, char** argv) {
  CommandLine cl({"config", "out", "min-df", "max-size", "estimator", "c", "epochs", "seed", "weighting", "cv",
                  "threads", "word-vec", "word-expand"},
                 {"help", "quiet", "no-bias", "non-ascii-only"});
  if (!cl.parse(argc, argv, 3)) return usageError("train", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  if (!cl.has("config") || !cl.has("out")) return usageError("train", "--config and --out are required");
  if (cl.positional().empty()) return usageError("train", "give at least one corpus file");
  vortm::application::CentroidTrainOptions options;
  int folds = 0;
  int threads = 0;
  int seed = 1;
  if (!parseCount(cl, "min-df", options.minDf, 1) || !parseCount(cl, "max-size", options.maxSize, 1) ||
      !parseCount(cl, "epochs", options.epochs, 1) || !parseCount(cl, "cv", folds, 2) ||
      !parseCount(cl, "threads", threads, 1) || !parseCount(cl, "seed", seed, 0)) {
    return usageError("train", "a count option has a value that is not a whole number in range");
  }
  options.threads = static_cast<unsigned int>(threads);
  options.bias = !cl.has("no-bias");
  options.nonAsciiOnly = cl.has("non-ascii-only");
  options.seed = static_cast<unsigned int>(seed);
  options.estimator = cl.get("estimator", "linear");
  if (options.estimator != "linear" && options.estimator != "mean") {
    return usageError("train", "--estimator is linear or mean");
  }
  options.weighting = cl.get("weighting", "tf-idf");
  if (options.weighting != "tf-idf" && options.weighting != "bool" && options.weighting != "bo1") {
    return usageError("train", "--weighting is tf-idf, bool or bo1");
  }
  if (cl.has("c")) {
    // Kept in a local: `end` points into it after the call.
    const std::string text = cl.get("c");
    char* end = nullptr;
    options.c = std::strtod(text.c_str(), &end);
    if (*end != '\0' || !(options.c > 0.0)) return usageError("train", "--c needs a positive number");
  }
  if (cl.has("word-vec") && cl.has("word-expand")) return usageError("train", "give --word-vec or --word-expand, not both");
  if (cl.has("word-vec") || cl.has("word-expand")) {
    bool vectors = cl.has("word-vec");
    options.builder = vectors ? "word_vec_doc_vec_builder" : "word_expand_doc_vec_builder";
    options.builderFileKey = vectors ? "word_vec_file" : "word_expand_file";
    options.builderFile = absolutePath(cl.get(vectors ? "word-vec" : "word-expand"));
  }
  bool quiet = cl.has("quiet");
  redirectLibraryOutput(quiet);
  ProgressBar bar(!quiet && isatty(2));
  options.progress = [&bar](const std::string& stage, size_t done, size_t total) { bar.update(stage, done, total); };

  vortm::common::AutoPtr<vortm::configure::Parameter> root;
  const vortm::configure::Parameter* analyzerParam = nullptr;
  std::string problem;
  if (!findTextAnalyzer(cl.get("config"), root, analyzerParam, problem)) {
    std::fprintf(stderr, "vorelin train: %s\n", problem.c_str());
    return kFailure;
  }
  vortm::modular::TextAnalyzer analyzer;
  if (!analyzer.config(*analyzerParam)) {
    std::fprintf(stderr, "vorelin train: cannot set up the text analyzer of %s\n", cl.get("config").c_str());
    return kFailure;
  }

  std::vector<int> labels;
  std::vector<std::string> texts;
  for (const std::string& path : cl.positional()) {
    if (!readCorpus(path, labels, texts)) return kFailure;
  }
  if (texts.empty()) {
    std::fprintf(stderr, "vorelin train: the corpus holds no labelled text\n");
    return kFailure;
  }
  vortm::application::CentroidTrainer trainer(options);
  std::vector<std::vector<vortm::analyzer::Token> > docs;
  size_t failed = 0;
  if (!trainer.tokenize(analyzer, texts, docs, failed)) {
    bar.finish();
    std::fprintf(stderr, "vorelin train: the analyzer failed on text %zu\n", failed + 1);
    return kFailure;
  }
  texts.clear();
  std::string prefix = absolutePath(cl.get("out"));
  std::string error;
  std::string out;
  if (folds > 0) {
    double accuracy = 0.0;
    if (!trainer.crossValidate(labels, docs, folds, prefix + ".cv", accuracy, error)) {
      bar.finish();
      std::fprintf(stderr, "vorelin train: %s\n", error.c_str());
      return kFailure;
    }
    std::remove((prefix + ".cv.vocab").c_str());
    std::remove((prefix + ".cv.centroid").c_str());
    char buf[128];
    std::snprintf(buf, sizeof(buf), "cross-validation accuracy %.4f (%d folds)\n", accuracy, folds);
    out += buf;
  }
  std::string vocabularyPath = prefix + ".vocab";
  std::string centroidPath = prefix + ".centroid";
  if (!trainer.train(labels, docs, std::vector<size_t>(), vocabularyPath, centroidPath, error)) {
    bar.finish();
    std::fprintf(stderr, "vorelin train: %s\n", error.c_str());
    return kFailure;
  }
  bar.finish();
  std::string xmlPath = prefix + ".xml";
  std::ofstream xml(xmlPath, std::ios::binary);
  xml << configurationXml(parameterXml(*analyzerParam, "text_analyzer", "      "), vocabularyPath, centroidPath,
                          trainer, options.weighting);
  if (!xml.good()) {
    std::fprintf(stderr, "vorelin train: cannot write %s\n", xmlPath.c_str());
    return kFailure;
  }
  char buf[256];
  std::snprintf(buf, sizeof(buf), "trained on %zu texts\n", labels.size());
  out += buf;
  out += "vocabulary\t" + vocabularyPath + "\ncentroid\t" + centroidPath + "\nconfiguration\t" + xmlPath + "\n";
  writeOut(out);
  return kOk;
}

}  // namespace

int runTrain(int argc, char** argv) {
  std::string kind = argc > 2 ? argv[2] : "";
  if (kind == "--help" || kind == "-h" || kind.empty()) {
    std::fputs(kHelp, kind.empty() ? stderr : stdout);
    return kind.empty() ? kUsage : kOk;
  }
  if (kind == "centroid") return trainCentroid(argc, argv);
  return usageError("train", "unknown model kind '" + kind + "' (known: centroid)");
}

}  // namespace cli
}  // namespace vorelin
