#ifndef VORTM_MODULAR_POSITIONALDOCVECTORBUILDERS_H
#define VORTM_MODULAR_POSITIONALDOCVECTORBUILDERS_H

#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/IPositionWeighter.h"
#include "modular/ITargetAwarePositionWeighter.h"
#include "modular/StandardDocVectorBuilder.h"

namespace vortm {
namespace modular {

// Bag of words that leaves out sentiment words standing next to a negation
// word: "not good" should not count as "good".
class SentiOrientedDocVectorBuilder : public StandardDocVectorBuilder {
 public:
  SentiOrientedDocVectorBuilder() {}
  explicit SentiOrientedDocVectorBuilder(common::AutoPtr<IWordWeighter> weighter)
      : StandardDocVectorBuilder(weighter) {}
  bool buildWordFreVector(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
};

// A word's count is the sum of the position weights of its occurrences
// rather than the number of them.
class PositionalDocVectorBuilder : public StandardDocVectorBuilder {
 public:
  PositionalDocVectorBuilder() {}
  // Either pointer may be null: config() then picks the word weighter, and
  // without a position weighter the builder never becomes ready.
  PositionalDocVectorBuilder(common::AutoPtr<IWordWeighter> weighter, common::AutoPtr<IPositionWeighter> positions)
      : StandardDocVectorBuilder(weighter), positionWeighter(positions) {}

  bool config(const configure::Parameter& param) override;
  bool buildWordFreVector(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  // `weights` holds one weight per token.
  bool buildPositionAwareWordFreVector(std::vector<analyzer::Token>& tokens, const std::vector<double>& weights,
                                       utility::MySparseVector<double, int>& docVec);

 protected:
  common::AutoPtr<IPositionWeighter> positionWeighter;
};

// Counts words by their nearness to the current targets. setTarget() is
// per request state, so one builder serves one thread at a time.
class TargetAwarePositionalDocVectorBuilder : public PositionalDocVectorBuilder {
 public:
  // A null target-aware weighter is replaced by the standard one; the plain
  // slot always gets the standard (all 1.0) weighter.
  TargetAwarePositionalDocVectorBuilder(common::AutoPtr<IWordWeighter> weighter,
                                        common::AutoPtr<ITargetAwarePositionWeighter> targetWeighter);

  bool config(const configure::Parameter& param) override;
  bool buildWordFreVector(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  void setTarget(const std::vector<std::string>& targets);
  const std::vector<std::string>& getTargets() const { return targets; }
  const common::AutoPtr<ITargetAwarePositionWeighter>& getTargetAwarePositionWeighter() const {
    return targetAwarePositionWeighter;
  }

 protected:
  common::AutoPtr<ITargetAwarePositionWeighter> targetAwarePositionWeighter;
  std::vector<std::string> targets;
};

// Declared for completeness; gfn_creatorRegister leaves it out, so the
// identifier is not found in the registry.
VORTM_DECLARE_CREATOR(SentiOrientedDocVectorBuilderCreator, IDocVectorBuilder, SentiOrientedDocVectorBuilder,
                      "senti_doc_vec_builder");

}  // namespace modular
}  // namespace vortm

#endif
