#include "modular/SentiOrientedPositionWeighter.h"

#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using configure::Parameter;

const std::string SentiOrientedPositionWeighter::PARAM_POSITION_AWARE = "position_aware";
const std::string SentiOrientedPositionWeighter::PARAM_QUOTA_PENALTY = "quota_penalty";
const std::string SentiOrientedPositionWeighter::PARAM_BUT_CONJ_BOOST = "but_conj_boost";
const std::string SentiOrientedPositionWeighter::PARAM_THOUGH_CONJ_PENALTY = "though_conj_penalty";
const std::string SentiOrientedPositionWeighter::PARAM_QUESTION_MARK_PENALTY = "question_mark_penalty";

namespace {

// Marks that end a sentence for the position curve; clause marks do not.
bool isSentenceMark(int type) {
  return type == Token::TT_SEN_PUNC || type == Token::TT_QUESTION_MARK || type == Token::TT_NEWLINE;
}

}  // namespace

SentiOrientedPositionWeighter::SentiOrientedPositionWeighter() { setDefaults(); }

void SentiOrientedPositionWeighter::setDefaults() {
  m_bPositionAware = false;
  m_quotaPenalty = 1.0;
  m_butConjBoost = 2.0;
  m_thoughConjPenalty = 0.25;
  m_questionMarkPenalty = 1.0;
}

bool SentiOrientedPositionWeighter::config(const Parameter& param) {
  // A repeated config starts from the defaults, not from the last settings.
  setDefaults();
  param[PARAM_QUOTA_PENALTY].getFloatValue(m_quotaPenalty);
  param[PARAM_BUT_CONJ_BOOST].getFloatValue(m_butConjBoost);
  param[PARAM_THOUGH_CONJ_PENALTY].getFloatValue(m_thoughConjPenalty);
  param[PARAM_QUESTION_MARK_PENALTY].getFloatValue(m_questionMarkPenalty);
  std::string aware;
  if (param[PARAM_POSITION_AWARE].getStringValue(aware)) {
    utility::Utility::toLowcase(aware);
    m_bPositionAware = aware == "true";
  }
  return true;
}

bool SentiOrientedPositionWeighter::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  return weightingWithReasons(tokens, weights, nullptr);
}

namespace {
void addReason(std::vector<std::string>* reasons, size_t i, const char* why) {
  if (!reasons) return;
  std::string& r = (*reasons)[i];
  if (!r.empty()) r += ",";
  r += why;
}
}  // namespace

bool SentiOrientedPositionWeighter::weightingWithReasons(std::vector<Token>& tokens, std::vector<double>& weights,
                                                         std::vector<std::string>* reasons) {
  if (reasons) reasons->assign(tokens.size(), std::string());
  if (tokens.empty()) {
    weights.clear();
    return true;
  }
  weights.resize(tokens.size(), 1.0);

  bool inQuote = false;
  bool afterBut = false;
  bool afterThough = false;
  size_t senStart = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    const int type = tokens[i].type;
    const int tag = tokens[i].tag;
    if (type == Token::TT_QUOTE_BEGIN) {
      inQuote = true;
    } else if (type == Token::TT_QUOTE_END) {
      inQuote = false;
    } else if (type == Token::TT_SEN_PUNC || type == Token::TT_CLAUSE_PUNC || type == Token::TT_QUESTION_MARK ||
               type == Token::TT_NEWLINE) {
      // A question damps only back to the last mark of any kind, clause
      // marks included; the mark itself is spared.
      if (type == Token::TT_QUESTION_MARK && senStart < i) {
        for (size_t k = senStart; k < i; ++k) {
          weights[k] *= m_questionMarkPenalty;
          addReason(reasons, k, "question");
        }
      }
      afterBut = false;
      afterThough = false;
      senStart = i + 1;
    } else if (tag == Token::TG_BUT_CONJ) {
      afterBut = true;
      afterThough = false;
    } else if (tag == Token::TG_THOUGH_CONJ) {
      afterBut = false;
      afterThough = true;
    }

    // A quoted token takes the quote factor alone, but the conjunction state
    // lives on through the quotation.
    if (inQuote) {
      weights[i] *= m_quotaPenalty;
      addReason(reasons, i, "quote");
    } else if (afterBut) {
      weights[i] *= m_butConjBoost;
      addReason(reasons, i, "but");
    } else if (afterThough) {
      weights[i] *= m_thoughConjPenalty;
      addReason(reasons, i, "though");
    }
  }

  if (m_bPositionAware) {
    std::vector<double> positional;
    positionAwareWeighting(tokens, positional);
    for (size_t i = 0; i < weights.size() && i < positional.size(); ++i) {
      weights[i] *= positional[i];
      if (positional[i] != 1.0) addReason(reasons, i, "position");
    }
  }
  return true;
}

bool SentiOrientedPositionWeighter::positionAwareWeighting(std::vector<Token>& tokens,
                                                           std::vector<double>& weights) {
  if (tokens.empty()) {
    weights.clear();
    return true;
  }
  weights.resize(tokens.size(), 1.0);

  int marks = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (isSentenceMark(tokens[i].type)) ++marks;
  }
  if (marks < 2) return true;

  // The curve jumps from 0.75 down to about 0.5 at the first quarter and
  // climbs past 1.0 after the middle; the jump is intended.
  const double s = marks - 1;
  int r = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (isSentenceMark(tokens[i].type)) ++r;
    if (r <= s * 0.5 * 0.5) {
      weights[i] = 0.75;
    } else if (r <= s * 0.5) {
      weights[i] = (s - r) / s;
    } else {
      weights[i] = r / s;
    }
  }
  return true;
}

}  // namespace modular
}  // namespace vortm
