#include "modular/StandardLexcionSentiScorer.h"

#include <cmath>

#include "configure/Parameter.h"
#include "modular/SentiOrientedPositionWeighter.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using configure::Parameter;

const std::string StandardLexcionSentiScorer::PARAM_POSITION_WEIGHTER = "position_weighter";

namespace {

// Value of a polar word by its tag; false for any other tag.
bool polarityOf(int tag, double& value) {
  switch (tag) {
    case Token::TG_POSITIVE:
      value = 1.0;
      return true;
    case Token::TG_NEGATIVE:
      value = -1.0;
      return true;
    case Token::TG_NOT_POSITIVE:
      value = -0.25;
      return true;
    case Token::TG_NOT_NEGATIVE:
      value = 0.25;
      return true;
    default:
      return false;
  }
}

}  // namespace

bool StandardLexcionSentiScorer::degreeFactor(int tag, double& factor) {
  switch (tag) {
    case Token::TG_DEGREE_10:
      factor = 1.5;
      return true;
    case Token::TG_DEGREE_11:
      factor = 1.2;
      return true;
    case Token::TG_DEGREE_12:
      factor = 1.0;
      return true;
    case Token::TG_DEGREE_13:
      factor = 0.5;
      return true;
    case Token::TG_DEGREE_14:
      factor = 0.0;
      return true;
    case Token::TG_NEGATION:
      factor = -0.25;
      return true;
    default:
      return false;
  }
}

StandardLexcionSentiScorer::StandardLexcionSentiScorer() {}

StandardLexcionSentiScorer::~StandardLexcionSentiScorer() {}

bool StandardLexcionSentiScorer::config(const Parameter& param) {
  if (m_positionWeighterPtr) return true;
  const Parameter& weighterParam = param[PARAM_POSITION_WEIGHTER];
  // Without the element the scorer stays without a weighter; there is no
  // default one.
  if (weighterParam.isNull()) return true;
  m_positionWeighterPtr = new SentiOrientedPositionWeighter();
  return m_positionWeighterPtr->config(weighterParam);
}

bool StandardLexcionSentiScorer::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  // A scorer configured without a weighter fails here with the null-pointer
  // error rather than reading through a null pointer.
  return (*m_positionWeighterPtr).weighting(tokens, weights);
}

bool StandardLexcionSentiScorer::getSentiScore(std::vector<Token>& tokens, double& score) {
  return this->score(tokens, score, nullptr);
}

bool StandardLexcionSentiScorer::explainSentiScore(std::vector<Token>& tokens, double& score, ScoreTrace& trace) {
  trace = ScoreTrace();
  return this->score(tokens, score, &trace);
}

bool StandardLexcionSentiScorer::score(std::vector<Token>& tokens, double& score, ScoreTrace* trace) {
  const size_t n = tokens.size();
  std::vector<double> weights;
  weighting(tokens, weights);
  std::vector<std::string> reasons;
  if (trace) startTrace(*trace, tokens, m_positionWeighterPtr.get(), reasons);

  std::vector<double> polarity(n, 0.0);
  int count = 0;
  for (size_t i = 0; i < n; ++i) {
    const int tag = tokens[i].tag;
    double value = 0.0;
    if (!polarityOf(tag, value)) continue;
    ++count;

    const int prevTag = i > 0 ? static_cast<int>(tokens[i - 1].tag) : Token::TG_PLAIN;
    const int nextTag = i + 1 < n ? static_cast<int>(tokens[i + 1].tag) : Token::TG_PLAIN;
    // Only the immediate neighbours count, and the previous one wins even
    // when its factor is neutral.
    double degree = 1.0;
    int modifier = -1;
    if (degreeFactor(prevTag, degree)) {
      modifier = static_cast<int>(i) - 1;
    } else if (degreeFactor(nextTag, degree)) {
      modifier = static_cast<int>(i) + 1;
    } else {
      degree = 1.0;
    }
    if (trace) {
      ScoredWord w;
      w.token = tokens[i];
      w.index = i;
      w.value = value;
      w.modifierIndex = modifier;
      if (modifier >= 0) w.modifier = tokens[static_cast<size_t>(modifier)];
      w.degree = degree;
      w.weight = weights[i];
      if (i < reasons.size()) w.weightReason = reasons[i];
      trace->words.push_back(w);
    }

    if (tag == Token::TG_POSITIVE || tag == Token::TG_NEGATIVE) {
      value *= degree;
    } else if (degree > 1.0) {
      // Weak words are weakened further by a strengthening degree word, and
      // left as they are by a negation or an erasing degree word.
      value /= degree;
    }
    polarity[i] = value * weights[i];
  }

  double sum = 0.0;
  double absSum = 0.0;
  for (size_t i = 0; i < n; ++i) {
    sum += polarity[i];
    absSum += std::fabs(polarity[i]);
  }

  if (n == 0) {
    score = 0.0;
    return true;
  }
  score = sum;
  double share = 1.0;  // what one unit of polarity adds to the score
  if (absSum > 1e-05) {
    score = sum / absSum;
    share = 1.0 / absSum;
    // Few polar words make a less certain text.
    if (count < 4) {
      score *= count * 0.25;
      share *= count * 0.25;
    }
  }
  if (trace) {
    trace->sum = sum;
    trace->absSum = absSum;
    trace->polarCount = count;
    trace->damping = absSum > 1e-05 && count < 4 ? count * 0.25 : 1.0;
    for (ScoredWord& w : trace->words) w.contribution = polarity[w.index] * share;
  }
  return true;
}

}  // namespace modular
}  // namespace vortm
