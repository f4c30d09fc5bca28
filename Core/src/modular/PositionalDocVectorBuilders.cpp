#include "modular/PositionalDocVectorBuilders.h"

#include "modular/StandardPositionWeighter.h"
#include "modular/StandardTargetAwarePositionWeighter.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using common::AutoPtr;
using utility::MySparseVector;

namespace {

bool isSentimentTag(Token::TTag tag) { return tag >= 6 && tag <= 9; }

}  // namespace

bool SentiOrientedDocVectorBuilder::buildWordFreVector(std::vector<Token>& tokens, MySparseVector<double, int>& docVec) {
  thread_local std::vector<int> ids;
  vocabulary.getTermIds(tokens, ids);
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (!isSentimentTag(tokens[i].tag)) continue;
    bool negatedLeft = i > 0 && tokens[i - 1].tag == Token::TG_NEGATION;
    bool negatedRight = i + 1 < tokens.size() && tokens[i + 1].tag == Token::TG_NEGATION;
    if (negatedLeft || negatedRight) ids[i] = -1;
  }
  docVec.addAll(ids, nullptr, ids.size());
  return true;
}

bool PositionalDocVectorBuilder::config(const configure::Parameter& param) {
  // A vocabulary that failed to load, or an unknown word weighting, keeps
  // the builder unready as well.
  bool base = StandardDocVectorBuilder::config(param);
  initialized = false;
  if (base && positionWeighter) initialized = true;
  return initialized;
}

bool PositionalDocVectorBuilder::buildWordFreVector(std::vector<Token>& tokens, MySparseVector<double, int>& docVec) {
  std::vector<double> weights;
  positionWeighter->weighting(tokens, weights);
  return buildPositionAwareWordFreVector(tokens, weights, docVec);
}

bool PositionalDocVectorBuilder::buildPositionAwareWordFreVector(std::vector<Token>& tokens,
                                                                 const std::vector<double>& weights,
                                                                 MySparseVector<double, int>& docVec) {
  // A weight of 0.0 still creates the entry.
  thread_local std::vector<int> ids;
  vocabulary.getTermIds(tokens, ids);
  docVec.addAll(ids, &weights, weights.size());
  return true;
}

TargetAwarePositionalDocVectorBuilder::TargetAwarePositionalDocVectorBuilder(
    AutoPtr<IWordWeighter> weighter, AutoPtr<ITargetAwarePositionWeighter> targetWeighter)
    : PositionalDocVectorBuilder(weighter, AutoPtr<IPositionWeighter>(new StandardPositionWeighter(), true)),
      targetAwarePositionWeighter(targetWeighter) {
  if (!targetAwarePositionWeighter) {
    targetAwarePositionWeighter =
        AutoPtr<ITargetAwarePositionWeighter>(new StandardTargetAwarePositionWeighter(), true);
  }
}

bool TargetAwarePositionalDocVectorBuilder::config(const configure::Parameter& param) {
  bool base = PositionalDocVectorBuilder::config(param);
  initialized = false;
  if (base && targetAwarePositionWeighter) initialized = true;
  return initialized;
}

bool TargetAwarePositionalDocVectorBuilder::buildWordFreVector(std::vector<Token>& tokens,
                                                               MySparseVector<double, int>& docVec) {
  std::vector<double> weights;
  targetAwarePositionWeighter->weighting(tokens, targets, weights);
  return buildPositionAwareWordFreVector(tokens, weights, docVec);
}

void TargetAwarePositionalDocVectorBuilder::setTarget(const std::vector<std::string>& list) {
  targets.clear();
  for (size_t i = 0; i < list.size(); ++i) {
    std::string target = list[i];
    utility::Utility::trim(target);
    targets.push_back(target);
  }
}

}  // namespace modular
}  // namespace vortm
