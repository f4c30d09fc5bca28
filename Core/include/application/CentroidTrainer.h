#ifndef VORTM_APPLICATION_CENTROIDTRAINER_H
#define VORTM_APPLICATION_CENTROIDTRAINER_H

#include <functional>
#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "modular/Centroid.h"
#include "modular/TextAnalyzer.h"
#include "utility/MySparseVector.h"

namespace vortm {
namespace application {

// Settings of a two-class ("neg", "pos") centroid training run.
struct CentroidTrainOptions {
  // Words in fewer documents are left out of the vocabulary.
  int minDf = 2;
  // Most frequent words kept; 0 keeps all.
  int maxSize = 0;
  // "linear": logistic regression, stored as two opposite rows with biases,
  // to be used without row normalisation. "mean": the mean document vector
  // of each class, used with normalised, non-negative rows.
  std::string estimator = "linear";
  std::string weighting = "tf-idf";
  // The document vector builder, and for the word-vector and word-expansion
  // builders the file they read ("word_vec_file" or "word_expand_file").
  std::string builder = "standard_doc_vec_builder";
  std::string builderFileKey;
  std::string builderFile;
  // Inverse regularisation strength of the linear estimator.
  double c = 4.0;
  int epochs = 12;
  unsigned int seed = 1;
  // Without a bias, a text with no known word scores exactly 0, which keeps
  // a model quiet on texts of another language.
  bool bias = true;
  // Leave words of ASCII bytes only out of the vocabulary, so that a Chinese
  // model does not judge English texts.
  bool nonAsciiOnly = false;
  unsigned int threads = 0;  // 0: one per core
  // Called now and then with a stage name and its progress.
  std::function<void(const std::string&, size_t, size_t)> progress;
};

// Trains the vocabulary and the centroid of a centroid classifier from
// labelled texts. Labels are 1 (positive) and 0 (negative).
class CentroidTrainer {
 public:
  explicit CentroidTrainer(const CentroidTrainOptions& options);

  // Tokenizes every text with `analyzer` on all threads; false on the first
  // text that cannot be tokenized, with its index in `failed`.
  bool tokenize(modular::TextAnalyzer& analyzer, const std::vector<std::string>& texts,
                std::vector<std::vector<analyzer::Token> >& docs, size_t& failed);

  // Builds and saves the vocabulary, then the centroid, from the documents
  // whose index is in `use` (all when empty). `error` says what went wrong.
  bool train(const std::vector<int>& labels, std::vector<std::vector<analyzer::Token> >& docs,
             const std::vector<size_t>& use, const std::string& vocabularyPath, const std::string& centroidPath,
             std::string& error);

  // Mean accuracy of k-fold cross-validation (score >= 0 counts positive);
  // the fold models go to files under `scratchPrefix`.
  bool crossValidate(const std::vector<int>& labels, std::vector<std::vector<analyzer::Token> >& docs, int folds,
                     const std::string& scratchPrefix, double& accuracy, std::string& error);

  // The configuration keys that make a centroid classifier read the model
  // the way it was trained.
  std::string normMethod() const;
  std::string ensureNonNegative() const;
  const CentroidTrainOptions& options() const { return m_options; }

 private:
  bool buildVectors(const std::string& vocabularyPath, std::vector<std::vector<analyzer::Token> >& docs,
                    const std::vector<size_t>& use, std::vector<utility::MySparseVector<double, int> >& vectors,
                    int& featureCount, std::string& error);
  void trainMean(const std::vector<int>& labels, const std::vector<utility::MySparseVector<double, int> >& vectors,
                 int featureCount, modular::Centroid& centroid);
  void trainLinear(const std::vector<int>& labels, const std::vector<utility::MySparseVector<double, int> >& vectors,
                   int featureCount, modular::Centroid& centroid);
  void report(const std::string& stage, size_t done, size_t total);
  unsigned int threadCount() const;

  CentroidTrainOptions m_options;
};

}  // namespace application
}  // namespace vortm

#endif
