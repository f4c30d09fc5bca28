#ifndef VORTM_APPLICATION_COMBINESENTICLASSIFIER_H
#define VORTM_APPLICATION_COMBINESENTICLASSIFIER_H

#include <string>
#include <vector>

#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace application {

// The classifier behind every handle: the weighted sum of its members'
// scores. Weights are used as given, never normalised; one failing member
// fails the whole call.
class CombineSentiClassifier : public ISentiClassifier {
 public:
  CombineSentiClassifier();
  ~CombineSentiClassifier() override;

  bool config(const configure::Parameter& param) override;
  bool classify(const std::string& text, double& score) override;
  bool explain(const std::string& text, double& score, ClassifyTrace& trace) override;
  bool update(const configure::Parameter& param) override;

  static const std::string PARAM_NUMBER_SENTI_CLASSIFIERS;
  static const std::string PARAM_IDENTIFIER;
  static const std::string PARAM_PARAM;
  static const std::string PARAM_NUMBER_WEIGHT;

  size_t memberCount() const { return m_classifiers.size(); }

 private:
  // The one classifying pass; `trace` may be null.
  bool run(const std::string& text, double& score, ClassifyTrace* trace);

  bool m_bReady;
  std::vector<common::AutoPtr<ISentiClassifier> > m_classifiers;
  std::vector<double> m_weights;
};

VORTM_DECLARE_CREATOR(CombineSentiClassifierCreator, ISentiClassifier, CombineSentiClassifier,
                      "combine_senti_classifier");

}  // namespace application
}  // namespace vortm

#endif
