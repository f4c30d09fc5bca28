#ifndef VORTM_APPLICATION_CNNSENTICLASSIFIER_H
#define VORTM_APPLICATION_CNNSENTICLASSIFIER_H

#include <Eigen/Dense>
#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/CNNDocVectorBuilder.h"
#include "modular/TextAnalyzer.h"

namespace vortm {
namespace application {

// Scores a text with a convolutional document vector and a two-output
// linear layer: output 1 is the positive class, output 0 the negative one.
// Whether several threads may classify at once is the builder's matter; the
// convolutional builders allow it.
class CNNSentiClassifier : public ISentiClassifier {
 public:
  CNNSentiClassifier();
  ~CNNSentiClassifier() override;

  bool config(const configure::Parameter& param) override;
  bool classify(const std::string& text, double& score) override;
  virtual bool classify(std::vector<analyzer::Token>& tokens, double& score);
  bool readParam(const std::string& file);

  // The score of the two outputs: a softmax with 2.5 added to both
  // exponentials, mapped onto (-1, 1), so weak outputs stay near 0.
  static double scoreOf(double z0, double z1);

  static const std::string PARAM_CNN_DOC_VEC_BUILDER;
  static const std::string PARAM_TEXT_ANALYZER;
  static const std::string PARAM_PARAM_FILE;

 private:
  CNNSentiClassifier(const CNNSentiClassifier&) = delete;
  CNNSentiClassifier& operator=(const CNNSentiClassifier&) = delete;

  Eigen::MatrixXd* m_pW;
  Eigen::VectorXd* m_pB;
  common::AutoPtr<modular::CNNDocVectorBuilder> m_docVecBuilderPtr;
  common::AutoPtr<modular::TextAnalyzer> m_textAnalyzerPtr;
  bool m_bReady;
  int m_featureCount;
};

VORTM_DECLARE_CREATOR(CNNSentiClassifierCreator, ISentiClassifier, CNNSentiClassifier, "cnn_senti_classifier");

}  // namespace application
}  // namespace vortm

#endif
