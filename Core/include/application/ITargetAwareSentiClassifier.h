#ifndef VORTM_APPLICATION_ITARGETAWARESENTICLASSIFIER_H
#define VORTM_APPLICATION_ITARGETAWARESENTICLASSIFIER_H

#include <string>
#include <vector>

#include "configure/Configurable.h"

namespace vortm {
namespace application {

// Scores a text with regard to the target words given with each call. Such a
// classifier changes its analyzer during classify(), so one object serves
// one thread at a time.
class ITargetAwareSentiClassifier : public virtual configure::Configurable {
 public:
  virtual ~ITargetAwareSentiClassifier() {}
  bool config(const configure::Parameter& param) override = 0;
  virtual bool classify(const std::string& text, const std::vector<std::string>& targets, double& score) = 0;
};

}  // namespace application
}  // namespace vortm

#endif
