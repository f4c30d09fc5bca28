#ifndef VORELIN_TESTS_FIXEDSCORECLASSIFIER_H
#define VORELIN_TESTS_FIXEDSCORECLASSIFIER_H

#include <gtest/gtest.h>

#include <string>

#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "common/Singleton.h"
#include "TestSupport.h"

namespace vortm {
namespace testing {

// A test double registered under "test_fixed_score": it returns its "score",
// and its "config_fail", "fail" and "update_fail" flags make those calls
// fail.
class FixedScoreClassifier : public application::ISentiClassifier {
 public:
  bool config(const configure::Parameter& param) override { return !flag(param, "config_fail") && update(param); }
  bool classify(const std::string&, double& score) override {
    if (!m_fail) score = m_score;
    return !m_fail;
  }
  bool update(const configure::Parameter& param) override {
    m_score = 0.0;
    param["score"].getFloatValue(m_score);
    m_fail = flag(param, "fail");
    return !flag(param, "update_fail");
  }

 private:
  static bool flag(const configure::Parameter& param, const char* key) {
    std::string value;
    return param[key].getStringValue(value) && value == "true";
  }
  double m_score = 0.0;
  bool m_fail = false;
};

VORTM_DECLARE_CREATOR(FixedScoreClassifierCreator, application::ISentiClassifier, FixedScoreClassifier,
                      "test_fixed_score");

inline void registerFixedScoreClassifier() {
  common::Singleton<common::InstanceCreatorHelper<FixedScoreClassifierCreator> >::instance();
}

// One member block of a combined configuration, and the list around members.
inline std::string member(const std::string& identifier, const std::string& weight, const std::string& params) {
  return "<item><identifier>" + identifier + "</identifier><param>" + params + "</param>" + weight + "</item>";
}

inline std::string list(const std::string& members) {
  return "<number_senti_classifiers>" + members + "</number_senti_classifiers>";
}

inline std::string numericWeight(double w) {
  return "<number_weight type=\"numeric\">" + std::to_string(w) + "</number_weight>";
}

inline std::string scoreParam(double s) { return "<score type=\"float\">" + std::to_string(s) + "</score>"; }

// A "test_fixed_score" member of the given weight.
inline std::string fixed(double weight, const std::string& params) {
  return member("test_fixed_score", numericWeight(weight), params);
}

}  // namespace testing
}  // namespace vortm

#endif
