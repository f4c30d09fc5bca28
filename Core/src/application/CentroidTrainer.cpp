#include "application/CentroidTrainer.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <map>
#include <random>
#include <thread>

#include "application/CentroidSentiClassifier.h"
#include "common/thread/SimpleThreadPool.h"
#include "configure/BasicParamParser.h"
#include "modular/IDocVectorBuilder.h"
#include "modular/StandardDocVectorBuilder.h"
#include "modular/Vocabulary.h"

namespace vortm {
namespace application {

using analyzer::Token;
using common::AutoPtr;
using modular::Centroid;
using SparseVec = utility::MySparseVector<double, int>;

namespace {

std::string xmlEscape(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '&') {
      out += "&amp;";
    } else if (c == '<') {
      out += "&lt;";
    } else if (c == '>') {
      out += "&gt;";
    } else {
      out += c;
    }
  }
  return out;
}

// Runs work(i) for i in [0, count) on `threads` threads, reporting progress
// every 256 items.
void parallelFor(size_t count, unsigned int threads, const std::function<void(size_t)>& work,
                 const std::function<void(size_t)>& tick) {
  common::SimpleThreadPool pool(threads);
  common::forEachOnPool(pool, count, work, 256, tick);
}

bool isAscii(const std::string& word) {
  for (unsigned char c : word) {
    if (c >= 0x80) return false;
  }
  return true;
}

bool excludeAsciiToo(Token& token) { return analyzer::isExcludeForVocab(token) || isAscii(token.term); }

double dot(const SparseVec& vec, const std::vector<double>& row) {
  double sum = 0.0;
  for (int i = 0; i < vec.size(); ++i) {
    std::pair<int, const double*> item = vec.getIdValuePairByIndex(i);
    sum += *item.second * row[item.first];
  }
  return sum;
}

}  // namespace

CentroidTrainer::CentroidTrainer(const CentroidTrainOptions& options) : m_options(options) {}

unsigned int CentroidTrainer::threadCount() const {
  unsigned int threads = m_options.threads;
  if (threads == 0) threads = std::thread::hardware_concurrency();
  return threads == 0 ? 1 : threads;
}

void CentroidTrainer::report(const std::string& stage, size_t done, size_t total) {
  if (m_options.progress) m_options.progress(stage, done, total);
}

std::string CentroidTrainer::normMethod() const { return m_options.estimator == "mean" ? "l2norm" : "none"; }

std::string CentroidTrainer::ensureNonNegative() const { return m_options.estimator == "mean" ? "true" : "false"; }

bool CentroidTrainer::tokenize(modular::TextAnalyzer& textAnalyzer, const std::vector<std::string>& texts,
                               std::vector<std::vector<Token> >& docs, size_t& failed) {
  docs.assign(texts.size(), std::vector<Token>());
  std::atomic<size_t> firstFailure(texts.size());
  parallelFor(
      texts.size(), threadCount(),
      [&](size_t i) {
        if (!textAnalyzer.tokenizeText(texts[i], docs[i], true)) {
          size_t seen = firstFailure.load();
          while (i < seen && !firstFailure.compare_exchange_weak(seen, i)) {
          }
        }
      },
      [&](size_t done) { report("tokenizing", done, texts.size()); });
  failed = firstFailure.load();
  return failed == texts.size();
}

bool CentroidTrainer::buildVectors(const std::string& vocabularyPath, std::vector<std::vector<Token> >& docs,
                                   const std::vector<size_t>& use, std::vector<SparseVec>& vectors, int& featureCount,
                                   std::string& error) {
  std::string extra;
  if (!m_options.builderFileKey.empty()) {
    extra = "<" + m_options.builderFileKey + ">" + xmlEscape(m_options.builderFile) + "</" +
            m_options.builderFileKey + ">";
  }
  std::string xml = "<builder><identifier>" + xmlEscape(m_options.builder) + "</identifier><param><vocabulary_file>" +
                    xmlEscape(vocabularyPath) + "</vocabulary_file><word_weighting_method>" +
                    xmlEscape(m_options.weighting) +
                    "</word_weighting_method><normalize_method>l2norm</normalize_method>" + extra + "</param></builder>";
  AutoPtr<configure::Parameter> root;
  configure::BasicParamParser parser;
  AutoPtr<modular::IDocVectorBuilder> builderPtr;
  if (!parser.doParseFromText(xml, root) || !modular::IDocVectorBuilder::configDocVectorBuilder((*root)["builder"], builderPtr)) {
    error = "cannot set up the document vector builder over " + vocabularyPath;
    return false;
  }
  modular::IDocVectorBuilder& builder = *builderPtr;
  featureCount = builder.getFeatureCount();
  vectors.assign(use.size(), SparseVec());
  parallelFor(
      use.size(), threadCount(), [&](size_t i) { builder.buildDocVec(docs[use[i]], vectors[i]); },
      [&](size_t done) { report("vectors", done, use.size()); });
  return true;
}

bool CentroidTrainer::train(const std::vector<int>& labels, std::vector<std::vector<Token> >& docs,
                            const std::vector<size_t>& useIn, const std::string& vocabularyPath,
                            const std::string& centroidPath, std::string& error) {
  std::vector<size_t> use = useIn;
  if (use.empty()) {
    for (size_t i = 0; i < docs.size(); ++i) use.push_back(i);
  }
  size_t positives = 0;
  for (size_t i : use) positives += labels[i] == 1 ? 1 : 0;
  if (use.empty()) {
    error = "no training documents";
    return false;
  }
  if (positives == 0 || positives == use.size()) {
    error = "the training documents hold only one class; both positive and negative ones are needed";
    return false;
  }
  modular::Vocabulary vocabulary;
  std::unordered_map<std::string, unsigned int> localIds;
  for (size_t k = 0; k < use.size(); ++k) {
    vocabulary.addDocument(docs[use[k]], m_options.nonAsciiOnly ? excludeAsciiToo : nullptr, localIds);
    if ((k % 4096) == 0) report("vocabulary", k, use.size());
  }
  report("vocabulary", use.size(), use.size());
  vocabulary.sortByDf();
  vocabulary.setMinDf(m_options.minDf);
  if (m_options.maxSize > 0) {
    // Drop what saving would drop first, so that the cut keeps maxSize words.
    std::vector<modular::WordInfo>& infos = vocabulary.getWordInfos();
    vocabulary.excludeUselessEnglishWord();
    for (modular::WordInfo& info : infos) {
      if (m_options.minDf > 0 && info.df < static_cast<unsigned int>(m_options.minDf)) info.df = 0;
    }
    vocabulary.resize(m_options.maxSize);
  }
  if (!vocabulary.writeTo(vocabularyPath)) {
    error = "cannot write the vocabulary to " + vocabularyPath;
    return false;
  }
  if (vocabulary.getWordCount() < 1) {
    error = "no word of the corpus passed the vocabulary limits";
    return false;
  }
  std::vector<SparseVec> vectors;
  int featureCount = 0;
  if (!buildVectors(vocabularyPath, docs, use, vectors, featureCount, error)) return false;
  std::vector<int> useLabels;
  for (size_t i : use) useLabels.push_back(labels[i]);
  Centroid centroid;
  if (m_options.estimator == "mean") {
    trainMean(useLabels, vectors, featureCount, centroid);
  } else {
    trainLinear(useLabels, vectors, featureCount, centroid);
  }
  centroid.sampleCount = static_cast<unsigned int>(use.size());
  if (!centroid.writeTo(centroidPath)) {
    error = "cannot write the centroid to " + centroidPath;
    return false;
  }
  return true;
}

void CentroidTrainer::trainMean(const std::vector<int>& labels, const std::vector<SparseVec>& vectors,
                                int featureCount, Centroid& centroid) {
  centroid.labels = {trainset::Label("neg", "/"), trainset::Label("pos", "/")};
  centroid.weights.assign(2, std::vector<double>(featureCount, 0.0));
  centroid.biases.assign(2, 0.0);
  double counts[2] = {0.0, 0.0};
  for (size_t i = 0; i < vectors.size(); ++i) {
    int row = labels[i] == 1 ? 1 : 0;
    counts[row] += 1.0;
    for (int k = 0; k < vectors[i].size(); ++k) {
      std::pair<int, const double*> item = vectors[i].getIdValuePairByIndex(k);
      centroid.weights[row][item.first] += *item.second;
    }
  }
  for (int row = 0; row < 2; ++row) {
    for (double& w : centroid.weights[row]) w /= std::max(counts[row], 1.0);
  }
}

// Logistic regression by stochastic gradient descent with a falling step and
// L2 regularisation; the weights are kept as scale * v so that shrinking
// costs nothing per step. The model w.x + b becomes the rows -w/2 and w/2, so
// the classifier's "pos" minus "neg" score is the model's margin.
void CentroidTrainer::trainLinear(const std::vector<int>& labels, const std::vector<SparseVec>& vectors,
                                  int featureCount, Centroid& centroid) {
  size_t n = vectors.size();
  double lambda = 1.0 / (m_options.c * static_cast<double>(n));
  std::vector<double> v(featureCount, 0.0);
  double scale = 1.0;
  double bias = 0.0;
  std::vector<size_t> order(n);
  for (size_t i = 0; i < n; ++i) order[i] = i;
  std::mt19937 random(m_options.seed);
  double t = 0.0;
  const double eta0 = 0.5;
  for (int epoch = 0; epoch < m_options.epochs; ++epoch) {
    for (size_t i = n; i > 1; --i) std::swap(order[i - 1], order[random() % i]);
    for (size_t k = 0; k < n; ++k) {
      const SparseVec& x = vectors[order[k]];
      double y = labels[order[k]] == 1 ? 1.0 : -1.0;
      double eta = eta0 / (1.0 + eta0 * lambda * t);
      t += 1.0;
      double margin = y * (scale * dot(x, v) + bias);
      // derivative of log(1 + exp(-margin)), kept finite for large margins
      double g = margin > 30.0 ? 0.0 : -y / (1.0 + std::exp(margin));
      scale *= (1.0 - eta * lambda);
      if (scale < 1e-9) {
        for (double& w : v) w *= scale;
        scale = 1.0;
      }
      if (g != 0.0) {
        double step = -eta * g / scale;
        for (int j = 0; j < x.size(); ++j) {
          std::pair<int, const double*> item = x.getIdValuePairByIndex(j);
          v[item.first] += step * *item.second;
        }
        if (m_options.bias) bias -= eta * g * 0.1;
      }
    }
    report("training", static_cast<size_t>(epoch + 1), static_cast<size_t>(m_options.epochs));
  }
  centroid.labels = {trainset::Label("neg", "/"), trainset::Label("pos", "/")};
  centroid.weights.assign(2, std::vector<double>(featureCount, 0.0));
  for (int j = 0; j < featureCount; ++j) {
    centroid.weights[1][j] = 0.5 * scale * v[j];
    centroid.weights[0][j] = -centroid.weights[1][j];
  }
  centroid.biases = {-0.5 * bias, 0.5 * bias};
}

bool CentroidTrainer::crossValidate(const std::vector<int>& labels, std::vector<std::vector<Token> >& docs, int folds,
                                    const std::string& scratchPrefix, double& accuracy, std::string& error) {
  if (folds < 2 || docs.size() < static_cast<size_t>(folds)) {
    error = "cross-validation needs at least 2 folds and a document per fold";
    return false;
  }
  size_t right = 0;
  size_t total = 0;
  CentroidSentiClassifier scorer;
  for (int fold = 0; fold < folds; ++fold) {
    std::vector<size_t> trainSet;
    std::vector<size_t> testSet;
    for (size_t i = 0; i < docs.size(); ++i) (static_cast<int>(i % folds) == fold ? testSet : trainSet).push_back(i);
    std::string vocabularyPath = scratchPrefix + ".vocab";
    std::string centroidPath = scratchPrefix + ".centroid";
    if (!train(labels, docs, trainSet, vocabularyPath, centroidPath, error)) return false;
    Centroid centroid;
    std::vector<SparseVec> vectors;
    int featureCount = 0;
    if (!centroid.loadFrom(centroidPath) ||
        !buildVectors(vocabularyPath, docs, testSet, vectors, featureCount, error)) {
      if (error.empty()) error = "cannot read back " + centroidPath;
      return false;
    }
    // Read the model the way a configured classifier will.
    if (normMethod() == "l2norm") centroid.L2Normalize();
    if (ensureNonNegative() == "true") centroid.ensureNonNegative();
    for (size_t k = 0; k < testSet.size(); ++k) {
      std::vector<double> scores;
      double score = 0.0;
      if (centroid.classify(vectors[k], scores)) score = scorer.computeSentiScore(centroid, scores);
      if ((score >= 0.0) == (labels[testSet[k]] == 1)) ++right;
      ++total;
    }
  }
  accuracy = total == 0 ? 0.0 : static_cast<double>(right) / static_cast<double>(total);
  return true;
}

}  // namespace application
}  // namespace vortm
