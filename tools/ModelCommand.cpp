// vorelin model inspect: what a saved vocabulary or centroid holds.
#include <sys/stat.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "CommandLine.h"
#include "modular/Centroid.h"
#include "modular/Vocabulary.h"

namespace vorelin {
namespace cli {

namespace {

const char* kHelp =
    "Usage: vorelin model inspect [--type vocabulary|centroid] [--vocabulary FILE]\n"
    "                             [--top N] FILE\n"
    "\n"
    "Prints a summary of a saved vocabulary (documents, words, the most\n"
    "frequent words) or centroid (classes, features, biases, and with its\n"
    "vocabulary the top N words of each class). The kind of FILE is guessed\n"
    "unless --type says it; a centroid's vocabulary defaults to the file with\n"
    "the same name and the extension .vocab.\n";

bool exists(const std::string& path) {
  struct stat info;
  return stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::string siblingVocabulary(const std::string& path) {
  size_t slash = path.rfind('/');
  size_t dot = path.rfind('.');
  std::string stem = dot != std::string::npos && (slash == std::string::npos || dot > slash) ? path.substr(0, dot) : path;
  return stem + ".vocab";
}

// A centroid's labels are short printable names; a vocabulary read as a
// centroid gives nothing of the kind.
bool plausibleCentroid(vortm::modular::Centroid& centroid) {
  if (!centroid.isValid()) return false;
  for (const vortm::trainset::Label& label : centroid.labels) {
    if (label.identifier.empty() || label.identifier.size() > 200) return false;
    for (unsigned char c : label.identifier) {
      if (c < 0x20) return false;
    }
  }
  return true;
}

std::string vocabularySummary(vortm::modular::Vocabulary& vocabulary, int top) {
  char buf[256];
  std::snprintf(buf, sizeof(buf), "vocabulary\ndocuments\t%u\nwords\t%d\n", vocabulary.getDocCount(),
                vocabulary.size());
  std::string out = buf;
  const std::vector<vortm::modular::WordInfo>& infos = vocabulary.getWordInfos();
  for (int i = 0; i < top && i < vocabulary.size(); ++i) {
    std::snprintf(buf, sizeof(buf), "\tdf %u\ttf %u\tidf %.4f\n", infos[i].df, infos[i].tf, infos[i].idf);
    out += "word\t" + infos[i].word + buf;
  }
  return out;
}

std::string centroidSummary(vortm::modular::Centroid& centroid, vortm::modular::Vocabulary* vocabulary, int top) {
  char buf[256];
  size_t features = centroid.weights.empty() ? 0 : centroid.weights[0].size();
  std::snprintf(buf, sizeof(buf), "centroid\nclasses\t%zu\nfeatures\t%zu\nsamples\t%u\n", centroid.labels.size(),
                features, centroid.sampleCount);
  std::string out = buf;
  for (size_t c = 0; c < centroid.labels.size(); ++c) {
    size_t nonZero = 0;
    for (double w : centroid.weights[c]) nonZero += w != 0.0 ? 1 : 0;
    std::snprintf(buf, sizeof(buf), "\tbias %.6f\tnon-zero weights %zu\n", centroid.biases[c], nonZero);
    out += "class\t" + centroid.labels[c].identifier + buf;
  }
  if (vocabulary == nullptr) return out;
  std::vector<std::vector<std::pair<std::string, double> > > words;
  std::vector<vortm::trainset::Label> labels;
  if (!centroid.getTopWord(*vocabulary, words, labels)) {
    return out + "top words unavailable: the vocabulary does not fit the centroid\n";
  }
  for (size_t c = 0; c < labels.size(); ++c) {
    for (int i = 0; i < top && i < static_cast<int>(words[c].size()); ++i) {
      std::snprintf(buf, sizeof(buf), "\t%.6f\n", words[c][i].second);
      out += "top\t" + labels[c].identifier + "\t" + words[c][i].first + buf;
    }
  }
  return out;
}

int inspect(int argc, char** argv) {
  CommandLine cl({"type", "vocabulary", "top"}, {"help"});
  if (!cl.parse(argc, argv, 3)) return usageError("model", cl.error());
  if (cl.has("help")) {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  if (cl.positional().size() != 1) return usageError("model", "give one file");
  std::string type = cl.get("type");
  if (!type.empty() && type != "vocabulary" && type != "centroid") {
    return usageError("model", "--type is vocabulary or centroid");
  }
  // Kept in a local: `end` points into it after the call.
  const std::string topText = cl.get("top", "10");
  char* end = nullptr;
  long top = std::strtol(topText.c_str(), &end, 10);
  if (*end != '\0' || top < 0 || top > 1000000) return usageError("model", "--top needs a whole number");
  const std::string& path = cl.positional()[0];
  if (!exists(path)) {
    std::fprintf(stderr, "vorelin model: cannot read %s\n", path.c_str());
    return kFailure;
  }
  redirectLibraryOutput(true);
  if (type != "vocabulary") {
    vortm::modular::Centroid centroid;
    if (centroid.loadFrom(path) && plausibleCentroid(centroid)) {
      std::string vocabularyPath = cl.get("vocabulary", siblingVocabulary(path));
      vortm::modular::Vocabulary vocabulary;
      bool haveVocabulary = exists(vocabularyPath) && vocabulary.loadFrom(vocabularyPath);
      if (cl.has("vocabulary") && !haveVocabulary) {
        std::fprintf(stderr, "vorelin model: cannot load the vocabulary %s\n", vocabularyPath.c_str());
        return kFailure;
      }
      writeOut(centroidSummary(centroid, haveVocabulary ? &vocabulary : nullptr, static_cast<int>(top)));
      return kOk;
    }
    if (type == "centroid") {
      std::fprintf(stderr, "vorelin model: %s is not a valid centroid\n", path.c_str());
      return kFailure;
    }
  }
  vortm::modular::Vocabulary vocabulary;
  if (!vocabulary.loadFrom(path)) {
    std::fprintf(stderr, "vorelin model: %s is neither a vocabulary nor a centroid\n", path.c_str());
    return kFailure;
  }
  writeOut(vocabularySummary(vocabulary, static_cast<int>(top)));
  return kOk;
}

}  // namespace

int runModel(int argc, char** argv) {
  std::string action = argc > 2 ? argv[2] : "";
  if (action == "--help" || action == "-h" || action.empty()) {
    std::fputs(kHelp, action.empty() ? stderr : stdout);
    return action.empty() ? kUsage : kOk;
  }
  if (action == "inspect") return inspect(argc, argv);
  return usageError("model", "unknown action '" + action + "' (known: inspect)");
}

}  // namespace cli
}  // namespace vorelin
