#ifndef VORTM_APPLICATION_ISENTICLASSIFIER_H
#define VORTM_APPLICATION_ISENTICLASSIFIER_H

#include <string>
#include <vector>

#include "configure/Configurable.h"
#include "modular/ScoreTrace.h"

namespace vortm {
namespace application {

// How a classifier reached its score. Lexicon classifiers fill `scorer`,
// combined ones one entry of `members` and `weights` per member; a
// classifier that cannot explain itself leaves `detailed` false.
struct ClassifyTrace {
  bool detailed = false;
  double score = 0.0;
  modular::ScoreTrace scorer;
  std::vector<double> weights;
  std::vector<ClassifyTrace> members;
};

// A classifier gives a text a score; positive means positive opinion. It is
// usable once config() has returned true. classify() keeps its working data
// in locals, so a configured classifier may serve several threads, but
// update() must not run beside classify().
class ISentiClassifier : public virtual configure::Configurable {
 public:
  virtual ~ISentiClassifier() {}
  bool config(const configure::Parameter& param) override = 0;
  virtual bool classify(const std::string& text, double& score) = 0;
  virtual bool update(const configure::Parameter& /*param*/) { return true; }
  // classify() that also tells how; overridden by classifiers that can fill
  // the trace from their own classifying code.
  virtual bool explain(const std::string& text, double& score, ClassifyTrace& trace) {
    trace = ClassifyTrace();
    bool ok = classify(text, score);
    trace.score = score;
    return ok;
  }

 protected:
  // For explain() overrides: runs the classifying pass with a fresh detailed
  // trace and records the score it reached.
  template <class Pass>
  static bool traced(double& score, ClassifyTrace& trace, Pass pass) {
    trace = ClassifyTrace();
    trace.detailed = true;
    bool ok = pass(&trace);
    trace.score = score;
    return ok;
  }
};

}  // namespace application
}  // namespace vortm

#endif
