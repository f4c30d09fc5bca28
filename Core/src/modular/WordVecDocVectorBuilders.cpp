#include "modular/WordVecDocVectorBuilders.h"

#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/BufferedFileReader.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using common::AutoPtr;
using utility::MySparseVector;
using utility::Utility;

const std::string WordVecDocVectorBuilder::PARAM_WORD_VEC_FILE = "word_vec_file";
const std::string WordExpandDocVectorBuilder::PARAM_WORD_EXPAND_FILE = "word_expand_file";
const double WordExpandDocVectorBuilder::kExpandFactor = 0.2;

namespace {

// Embeddings wider than this are taken for a corrupt header rather than
// allocated.
const int kMaxWordDim = 65536;

bool parseDouble(const std::string& field, double& value) {
  if (field.empty()) return false;
  char* end = nullptr;
  errno = 0;
  value = std::strtod(field.c_str(), &end);
  return end == field.c_str() + field.size() && errno == 0 && std::isfinite(value);
}

bool parseInt(const std::string& field, int& value) {
  if (field.empty()) return false;
  char* end = nullptr;
  errno = 0;
  long parsed = std::strtol(field.c_str(), &end, 10);
  if (end != field.c_str() + field.size() || errno != 0 || parsed > kMaxWordDim || parsed < -kMaxWordDim) return false;
  value = static_cast<int>(parsed);
  return true;
}

const std::string& wordOf(const Vocabulary& vocabulary, int id) {
  static const std::string kNone;
  const std::vector<WordInfo>& infos = vocabulary.getWordInfos();
  return id >= 0 && id < static_cast<int>(infos.size()) ? infos[id].word : kNone;
}

}  // namespace

// ---- word vectors ----

WordVecDocVectorBuilder::WordVecDocVectorBuilder() : wordDim(0), normalizeWordVec(true), initialized(false) {}

WordVecDocVectorBuilder::~WordVecDocVectorBuilder() {}

bool WordVecDocVectorBuilder::config(const configure::Parameter& param) {
  initialized = false;
  docVecBuilder = AutoPtr<StandardDocVectorBuilder>(new StandardDocVectorBuilder(), true);
  if (!docVecBuilder->config(param)) return false;
  std::string path;
  param[PARAM_WORD_VEC_FILE].getStringValue(path);
  if (!loadWordVec(path, normalizeWordVec)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Word Vec from " + path);
    return false;
  }
  initialized = true;
  return true;
}

bool WordVecDocVectorBuilder::loadWordVec(const std::string& path, bool normalize) {
  wordVecs.clear();
  wordIds.clear();
  rowOfId.clear();
  wordDim = 0;
  if (!docVecBuilder) return false;
  utility::BufferedFileReader reader(false);
  if (path.empty() || !reader.open(path)) return false;
  std::string line;
  if (!reader.readLine(line)) return false;
  std::vector<std::string> fields;
  Utility::strTokenize(line, fields, ' ');
  int dim = 0;
  if (fields.size() != 2 || !parseInt(fields[1], dim) || dim <= 1) return false;
  wordDim = dim;
  std::cout << " word dim  " << wordDim << std::endl;
  const Vocabulary& vocabulary = docVecBuilder->getVocabulary();
  std::vector<double> row;
  while (reader.readLine(line)) {
    fields.clear();
    Utility::strTokenize(line, fields, ' ');
    // A short or unreadable row would leave the embeddings of unequal width.
    if (fields.size() < static_cast<size_t>(wordDim) + 1 || vocabulary.getWordId(fields[0]) < 0) continue;
    row.assign(wordDim, 0.0);
    bool good = true;
    for (int j = 0; j < wordDim && good; ++j) good = parseDouble(fields[j + 1], row[j]);
    if (!good) continue;
    if (normalize) {
      double squares = 0.0;
      for (int j = 0; j < wordDim; ++j) squares += row[j] * row[j];
      if (squares > 1e-05) {
        double length = std::sqrt(squares);
        for (int j = 0; j < wordDim; ++j) row[j] /= length;
      }
    }
    // A word given twice keeps its later row.
    wordIds[fields[0]] = static_cast<unsigned int>(wordVecs.size());
    wordVecs.push_back(row);
  }
  rowOfId.assign(vocabulary.size(), -1);
  for (std::map<std::string, unsigned int>::const_iterator it = wordIds.begin(); it != wordIds.end(); ++it)
    rowOfId[vocabulary.getWordId(it->first)] = static_cast<int>(it->second);
  return true;
}

bool WordVecDocVectorBuilder::accumulate(int row, double weight, std::vector<double>& sum) const {
  if (row < 0) return false;
  const std::vector<double>& vec = wordVecs[row];
  for (int j = 0; j < wordDim; ++j) sum[j] += weight * vec[j];
  return true;
}

void WordVecDocVectorBuilder::average(const std::vector<double>& sum, double total,
                                      MySparseVector<double, int>& docVec) const {
  if (!(total > 1e-05) || wordDim == 0) return;
  for (int j = 0; j < wordDim; ++j) docVec[j] = sum[j] / total;
}

bool WordVecDocVectorBuilder::buildDocVec(std::vector<analyzer::Token>& tokens, MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  MySparseVector<double, int> weights;
  if (!docVecBuilder->buildDocVec(tokens, weights)) return false;
  double total = 0.0;
  std::vector<double> sum(wordDim, 0.0);
  for (int i = 0; i < weights.size(); ++i) {
    std::pair<int, double*> item = weights.getIdValuePairByIndex(i);
    if (item.second == nullptr) throw std::runtime_error("null point error");
    int row = item.first >= 0 && item.first < static_cast<int>(rowOfId.size()) ? rowOfId[item.first] : -1;
    if (accumulate(row, *item.second, sum)) total += *item.second;
  }
  average(sum, total, docVec);
  return true;
}

bool WordVecDocVectorBuilder::buildDocVec(Text& text, MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  double total = 0.0;
  std::vector<double> sum(wordDim, 0.0);
  for (size_t i = 0; i < text.m_terms.size(); ++i) {
    double weight = static_cast<double>(text.m_terms[i].weight);
    std::map<std::string, unsigned int>::const_iterator found = wordIds.find(text.m_terms[i].term);
    int row = found == wordIds.end() ? -1 : static_cast<int>(found->second);
    if (accumulate(row, weight, sum)) total += weight;
  }
  average(sum, total, docVec);
  return true;
}

// ---- word expansion ----

WordExpandDocVectorBuilder::WordExpandDocVectorBuilder() {}

WordExpandDocVectorBuilder::~WordExpandDocVectorBuilder() {}

bool WordExpandDocVectorBuilder::config(const configure::Parameter& param) {
  if (!StandardDocVectorBuilder::config(param)) return false;
  std::string path;
  param[PARAM_WORD_EXPAND_FILE].getStringValue(path);
  if (!loadWordExpandLib(path)) {
    initialized = false;
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Word Expand Lib  from " + path);
    return false;
  }
  return true;
}

bool WordExpandDocVectorBuilder::loadWordExpandLib(const std::string& path) {
  expansions.clear();
  expansionIds.clear();
  utility::BufferedFileReader reader(false);
  if (path.empty() || !reader.open(path)) return false;
  std::string line;
  std::vector<std::string> fields;
  std::vector<std::string> elements;
  std::vector<std::string> parts;
  while (reader.readLine(line)) {
    fields.clear();
    Utility::strTokenize(line, fields, ' ');
    if (fields.size() != 2 || vocabulary.getWordId(fields[0]) < 0) continue;
    // A word listed twice keeps its later line.
    expansionIds[fields[0]] = static_cast<unsigned int>(expansions.size());
    elements.clear();
    Utility::strTokenize(fields[1], elements, ';');
    std::vector<std::pair<int, double> > related;
    for (size_t e = 0; e < elements.size() && e < kMaxRelated; ++e) {
      parts.clear();
      Utility::strTokenize(elements[e], parts, ':');
      if (parts.size() != 2) continue;
      int id = vocabulary.getWordId(parts[0]);
      double weight = 0.0;
      if (id < 0 || !parseDouble(parts[1], weight) || !(weight > 1e-05)) continue;
      related.push_back(std::make_pair(id, weight));
    }
    expansions.push_back(related);
  }
  return true;
}

void WordExpandDocVectorBuilder::expand(int id, const std::string& word, double weight,
                                        MySparseVector<double, int>& docVec) const {
  docVec[id] += weight;
  std::map<std::string, unsigned int>::const_iterator found = expansionIds.find(word);
  if (found == expansionIds.end()) return;
  const std::vector<std::pair<int, double> >& related = expansions[found->second];
  for (size_t r = 0; r < related.size(); ++r) docVec[related[r].first] += weight * kExpandFactor * related[r].second;
}

namespace {

void l2(MySparseVector<double, int>& docVec) {
  double squares = 0.0;
  for (int i = 0; i < docVec.size(); ++i) {
    double value = *docVec.getIdValuePairByIndex(i).second;
    squares += value * value;
  }
  if (!(squares > 1e-05)) return;
  double length = std::sqrt(squares);
  for (int i = 0; i < docVec.size(); ++i) *docVec.getIdValuePairByIndex(i).second /= length;
}

}  // namespace

bool WordExpandDocVectorBuilder::buildDocVec(std::vector<analyzer::Token>& tokens, MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  MySparseVector<double, int> plain;
  StandardDocVectorBuilder::buildDocVec(tokens, plain);
  for (int i = 0; i < plain.size(); ++i) {
    std::pair<int, double*> item = plain.getIdValuePairByIndex(i);
    if (item.second == nullptr) throw std::runtime_error("null point error");
    expand(item.first, wordOf(vocabulary, item.first), *item.second, docVec);
  }
  l2(docVec);
  return true;
}

bool WordExpandDocVectorBuilder::buildDocVec(Text& text, MySparseVector<double, int>& docVec) {
  if (!initialized) return false;
  docVec.clear();
  for (size_t i = 0; i < text.m_terms.size(); ++i) {
    const TextTerm& term = text.m_terms[i];
    // The term's id is where its weight goes; its word finds the expansion.
    if (term.id < 0) continue;
    expand(term.id, term.term, static_cast<double>(term.weight), docVec);
  }
  l2(docVec);
  return true;
}

}  // namespace modular
}  // namespace vortm
