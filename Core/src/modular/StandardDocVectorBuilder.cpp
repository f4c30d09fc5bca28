#include "modular/StandardDocVectorBuilder.h"

#include <cmath>
#include <stdexcept>

#include "common/Logger.h"
#include "configure/Parameter.h"

namespace vortm {
namespace modular {

using common::AutoPtr;
using utility::MySparseVector;

const std::string StandardDocVectorBuilder::PARAM_VOCABULARY_FILE = "vocabulary_file";
const std::string StandardDocVectorBuilder::PARAM_WORD_WEIGHTING_METHOD = "word_weighting_method";
const std::string StandardDocVectorBuilder::PARAM_NORMALIZE_METHOD = "normalize_method";

double TFIDFWordWeighter::weighting(Vocabulary& /*vocabulary*/, WordInfo& info, double frequency) {
  return frequency * static_cast<double>(info.idf);
}

double BoolWordWeighter::weighting(Vocabulary& /*vocabulary*/, WordInfo& /*info*/, double frequency) {
  return frequency > 0.5 ? 1.0 : 0.0;
}

double Bo1WordWeighter::weighting(Vocabulary& vocabulary, WordInfo& info, double frequency) {
  double x = static_cast<double>(info.tf) / static_cast<double>(vocabulary.getDocCount());
  return std::log10((x + 1.0) / x) / std::log10(2.0) * frequency + std::log10(x + 1.0) / std::log10(2.0);
}

StandardDocVectorBuilder::StandardDocVectorBuilder() : normMethod("l2norm"), initialized(false) {}

StandardDocVectorBuilder::StandardDocVectorBuilder(AutoPtr<IWordWeighter> weighter)
    : wordWeighter(weighter), normMethod("l2norm"), initialized(false) {}

StandardDocVectorBuilder::~StandardDocVectorBuilder() {}

bool StandardDocVectorBuilder::config(const configure::Parameter& param) {
  std::string path;
  if (!param[PARAM_VOCABULARY_FILE].getStringValue(path) || !vocabulary.loadFrom(path)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Vocabulary from " + path);
    return false;
  }
  if (!wordWeighter) {
    std::string method = "tf-idf";
    param[PARAM_WORD_WEIGHTING_METHOD].getStringValue(method);
    if (method == "tf-idf") {
      wordWeighter = AutoPtr<IWordWeighter>(new TFIDFWordWeighter(), true);
    } else if (method == "bool") {
      wordWeighter = AutoPtr<IWordWeighter>(new BoolWordWeighter(), true);
    } else if (method == "bo1") {
      wordWeighter = AutoPtr<IWordWeighter>(new Bo1WordWeighter(), true);
    }
  }
  normMethod = "l2norm";
  param[PARAM_NORMALIZE_METHOD].getStringValue(normMethod);
  if (wordWeighter) initialized = true;
  return initialized;
}

bool StandardDocVectorBuilder::buildWordFreVector(std::vector<analyzer::Token>& tokens,
                                                  MySparseVector<double, int>& docVec) {
  thread_local std::vector<int> ids;
  vocabulary.getTermIds(tokens, ids);
  docVec.addAll(ids, nullptr, ids.size());
  return true;
}

bool StandardDocVectorBuilder::wordWeighting(MySparseVector<double, int>& docVec) {
  std::vector<WordInfo>& infos = vocabulary.getWordInfos();
  for (int i = 0; i < docVec.size(); ++i) {
    std::pair<int, double*> item = docVec.getIdValuePairByIndex(i);
    if (item.second == nullptr) throw std::runtime_error("null point error");
    *item.second = wordWeighter->weighting(vocabulary, infos[item.first], *item.second);
  }
  return true;
}

void StandardDocVectorBuilder::norm(MySparseVector<double, int>& docVec) {
  double squares = 0.0;
  double absolutes = 0.0;
  for (int i = 0; i < docVec.size(); ++i) {
    double value = *docVec.getIdValuePairByIndex(i).second;
    squares += value * value;
    absolutes += std::fabs(value);
  }
  double divisor;
  if (normMethod == "l2norm" && squares > 1e-05) {
    divisor = std::sqrt(squares);
  } else if (normMethod == "l1norm" && absolutes > 1e-05) {
    divisor = absolutes;
  } else {
    return;
  }
  for (int i = 0; i < docVec.size(); ++i) *docVec.getIdValuePairByIndex(i).second /= divisor;
}

bool StandardDocVectorBuilder::buildDocVec(std::vector<analyzer::Token>& tokens, MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  if (tokens.empty()) return true;
  buildWordFreVector(tokens, docVec);
  wordWeighting(docVec);
  norm(docVec);
  return true;
}

bool StandardDocVectorBuilder::buildDocVecOfWords(const std::vector<Vocabulary::WordPiece>& words,
                                                  MySparseVector<double, int>& docVec,
                                                  const std::vector<double>* weights) {
  if (!initialized) return false;
  docVec.clear();
  if (words.empty()) return true;
  thread_local std::vector<int> ids;
  vocabulary.getWordIds(words, ids);
  docVec.addAll(ids, weights, ids.size());
  StandardDocVectorBuilder::wordWeighting(docVec);
  norm(docVec);
  return true;
}

bool StandardDocVectorBuilder::buildDocVec(Text& text, MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  for (size_t i = 0; i < text.m_terms.size(); ++i) {
    docVec[text.m_terms[i].id] = static_cast<double>(text.m_terms[i].weight);
  }
  norm(docVec);
  return true;
}

int StandardDocVectorBuilder::getFeatureCount() { return vocabulary.size(); }

}  // namespace modular
}  // namespace vortm
