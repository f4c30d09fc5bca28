#ifndef VORTM_MODULAR_ITARGETAWARELEXCIONSENTISCORER_H
#define VORTM_MODULAR_ITARGETAWARELEXCIONSENTISCORER_H

#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "configure/Parameter.h"

namespace vortm {
namespace modular {

// A lexicon scorer that answers how positive a text is about its targets:
// words far from every target count for little, and a text without a
// matching target scores 0. The targets live in the object, so one scorer
// serves one target list, and one thread, at a time.
class ITargetAwareLexcionSentiScorer {
 public:
  virtual ~ITargetAwareLexcionSentiScorer() {}
  virtual bool config(const configure::Parameter& param) = 0;
  virtual bool getSentiScore(std::vector<analyzer::Token>& tokens, double& score) = 0;

  // Sets the targets, then scores with them.
  bool getSentiScore(std::vector<analyzer::Token>& tokens, const std::vector<std::string>& targets, double& score) {
    m_targets = targets;
    return getSentiScore(tokens, score);
  }
  void setTargets(const std::vector<std::string>& targets) { m_targets = targets; }
  const std::vector<std::string>& getTargets() const { return m_targets; }

 protected:
  std::vector<std::string> m_targets;
};

}  // namespace modular
}  // namespace vortm

#endif
