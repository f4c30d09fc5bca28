#ifndef VORELIN_TESTS_FIXEDSCORECLASSIFIER_H
#define VORELIN_TESTS_FIXEDSCORECLASSIFIER_H

#include <atomic>
#include <string>

#include "application/ISentiClassifier.h"
#include "common/InstanceCreator.h"
#include "common/Singleton.h"
#include "configure/Parameter.h"

namespace vortm {
namespace testing {

// A test double registered under "test_fixed_score": it returns the score
// that its "score" key gives, fails when "fail" is "true", and counts calls.
class FixedScoreClassifier : public application::ISentiClassifier {
 public:
  bool config(const configure::Parameter& param) override {
    std::string fail;
    if (param["config_fail"].getStringValue(fail) && fail == "true") return false;
    return read(param);
  }
  bool classify(const std::string&, double& score) override {
    ++s_calls;
    if (m_fail) return false;
    score = m_score;
    return true;
  }
  bool update(const configure::Parameter& param) override { return read(param); }

  static std::atomic<int> s_calls;

 private:
  bool read(const configure::Parameter& param) {
    m_score = 0.0;
    param["score"].getFloatValue(m_score);
    std::string fail;
    m_fail = param["fail"].getStringValue(fail) && fail == "true";
    std::string updateFail;
    return !(param["update_fail"].getStringValue(updateFail) && updateFail == "true");
  }
  double m_score = 0.0;
  bool m_fail = false;
};

VORTM_DECLARE_CREATOR(FixedScoreClassifierCreator, application::ISentiClassifier, FixedScoreClassifier,
                      "test_fixed_score");

inline void registerFixedScoreClassifier() {
  common::Singleton<common::InstanceCreatorHelper<FixedScoreClassifierCreator> >::instance();
}

// One member block of a combined configuration.
inline std::string member(const std::string& identifier, const std::string& weight, const std::string& params) {
  return "<item><identifier>" + identifier + "</identifier><param>" + params + "</param>" + weight + "</item>";
}

inline std::string numericWeight(double w) {
  return "<number_weight type=\"numeric\">" + std::to_string(w) + "</number_weight>";
}

inline std::string scoreParam(double s) { return "<score type=\"float\">" + std::to_string(s) + "</score>"; }

}  // namespace testing
}  // namespace vortm

#endif
