#ifndef VORTM_APPLICATION_CENTROIDSENTICLASSIFIER_H
#define VORTM_APPLICATION_CENTROIDSENTICLASSIFIER_H

#include <string>
#include <vector>

#include "analyzer/ChNGramTokenizer.h"
#include "analyzer/Token.h"
#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/Centroid.h"
#include "modular/IDocVectorBuilder.h"
#include "modular/TextAnalyzer.h"

namespace vortm {
namespace application {

// Scores a text by how much nearer its document vector lies to the "pos"
// row than to the "neg" row of a two-class centroid. Files given at config
// are merged into one model; after update() the models are kept apart and
// their scores averaged.
class CentroidSentiClassifier : public ISentiClassifier {
 public:
  CentroidSentiClassifier();
  ~CentroidSentiClassifier() override;

  bool config(const configure::Parameter& param) override;
  bool classify(const std::string& text, double& score) override;
  bool update(const configure::Parameter& param) override;
  virtual bool classify(std::vector<analyzer::Token>& tokens, double& score);
  virtual bool sentiClassifySentiCentroid(const std::string& text, double& score);
  virtual bool sentiClassifySentiCentroid(std::vector<analyzer::Token>& tokens, double& score);
  virtual bool isValid(modular::Centroid& centroid);

  bool getSentiScoreBySentiCentroids(utility::MySparseVector<double, int>& vector, double& score);
  // Maps the two class scores into (-1, 1), smoothed towards 0.
  double computeSentiScore(modular::Centroid& model, const std::vector<double>& classScores);
  bool configSentiCentroids(const configure::Parameter& files);

  size_t getModelCount() const { return m_centroids.size(); }

  static const std::string PARAM_DOC_VEC_BUILDER;
  static const std::string PARAM_TEXT_ANALYZER;
  static const std::string PARAM_NORM_METHOD;
  static const std::string PARAM_IS_ENSURE_NONNEGATIVE;
  static const std::string PARAM_SENTI_CENTROID_FILES;

 protected:
  // The analyzer's n-gram tokenizer when the text can be scored from the
  // n-grams' bytes alone, otherwise null.
  analyzer::ChNGramTokenizer* gramTokenizer() const;
  bool classifyGrams(analyzer::ChNGramTokenizer& grams, const std::string& text, double& score);

  std::vector<common::AutoPtr<modular::Centroid> > m_centroids;
  common::AutoPtr<modular::IDocVectorBuilder> m_docVecBuilderPtr;
  common::AutoPtr<modular::TextAnalyzer> m_textAnalyzerPtr;
  std::string m_normMethod;
  bool m_bEnsureNonNegative;
  bool m_bReady;
};

VORTM_DECLARE_CREATOR(CentroidSentiClassifierCreator, ISentiClassifier, CentroidSentiClassifier,
                      "centroid_senti_classifier");

}  // namespace application
}  // namespace vortm

#endif
