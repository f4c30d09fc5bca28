#include "modular/WeightedLexcionSentiScorer.h"

#include <cmath>

#include "common/Logger.h"
#include "configure/Parameter.h"
#include "modular/SentiOrientedPositionWeighter.h"
#include "modular/StandardLexcionSentiScorer.h"
#include "utility/BufferedFileReader.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using configure::Parameter;

const std::string WeightedLexcionSentiScorer::PARAM_POSITION_WEIGHTER = "position_weighter";
const std::string WeightedLexcionSentiScorer::PARAM_WEIGHTED_LEXICON_FILE = "weighted_lexcion_file";
const std::string WeightedLexcionSentiScorer::PARAM_BEFORE_ONLY_DEGREE_WORDS_FILE = "before_only_degree_words_file";
const std::string WeightedLexcionSentiScorer::PARAM_AFTER_ONLY_DEGREE_WORDS_FILE = "after_only_degree_words_file";
const std::string WeightedLexcionSentiScorer::PARAM_NEGATIVE_ONLY_DEGREE_WORDS_FILE =
    "negative_only_degree_words_file";
const std::string WeightedLexcionSentiScorer::PARAM_POSITIVE_ONLY_DEGREE_WORDS_FILE =
    "positive_only_degree_words_file";
const std::string WeightedLexcionSentiScorer::PARAM_NEGATION_SENTI_WORDS_FILE = "negation_senti_words_file";

namespace {

bool isErasingOrNegation(int tag) { return tag == Token::TG_DEGREE_14 || tag == Token::TG_NEGATION; }

bool contains(const std::set<std::string>& words, const std::string& word) { return words.count(word) != 0; }

// Words that make a text longer and so dilute its opinion.
bool isCountable(const Token& token) {
  if (token.type == Token::TT_CH_WORD || token.type == Token::TT_USER_WORD) return true;
  const size_t length = token.term.size();
  return token.type == Token::TT_EN_WORD && length >= 2 && length <= 50 &&
         utility::Utility::isEnWord(token.term.data(), static_cast<unsigned int>(length));
}

}  // namespace

bool WeightedLexcionSentiScorer::WeightedSentiLexcion::writeSelf(common::ObjectWriter& writer) {
  if (!writer.writeUint32(static_cast<unsigned int>(m_weights.size()))) return false;
  for (const auto& entry : m_weights) {
    if (!writer.writeString(entry.first) || !writer.writeDouble(entry.second)) return false;
  }
  return true;
}

bool WeightedLexcionSentiScorer::WeightedSentiLexcion::readSelf(common::ObjectReader& reader) {
  unsigned int count = 0;
  if (!reader.readUint32(count)) return false;
  // Entries are read one by one, so a forged count ends at the file's end
  // instead of reserving memory up front.
  for (unsigned int i = 0; i < count; ++i) {
    std::string word;
    double weight = 0.0;
    if (!reader.readString(word) || !reader.readDouble(weight)) return false;
    m_weights.insert(std::make_pair(word, weight));
  }
  return true;
}

WeightedLexcionSentiScorer::WeightedLexcionSentiScorer() {}

WeightedLexcionSentiScorer::~WeightedLexcionSentiScorer() {}

bool WeightedLexcionSentiScorer::config(const Parameter& param) {
  if (!m_positionWeighterPtr) {
    // Unlike the standard scorer, a missing element still gives a weighter
    // with the default settings.
    m_positionWeighterPtr = new SentiOrientedPositionWeighter();
    if (!m_positionWeighterPtr->config(param[PARAM_POSITION_WEIGHTER])) return false;
  }

  std::string path;
  if (!param[PARAM_WEIGHTED_LEXICON_FILE].getStringValue(path) || !loadWeightedLexcion(path)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Weighted Sentiment Lexcion from File " + path);
    return false;
  }

  // The lists are optional, and one that cannot be read leaves its set empty.
  const std::pair<const std::string*, std::set<std::string>*> lists[] = {
      {&PARAM_BEFORE_ONLY_DEGREE_WORDS_FILE, &m_beforeOnlyDegreeWords},
      {&PARAM_AFTER_ONLY_DEGREE_WORDS_FILE, &m_afterOnlyDegreeWords},
      {&PARAM_NEGATIVE_ONLY_DEGREE_WORDS_FILE, &m_negativeOnlyDegreeWords},
      {&PARAM_POSITIVE_ONLY_DEGREE_WORDS_FILE, &m_positiveOnlyDegreeWords},
      {&PARAM_NEGATION_SENTI_WORDS_FILE, &m_negationSentiWords},
  };
  for (const auto& list : lists) {
    std::string file;
    if (param[*list.first].getStringValue(file)) utility::Utility::loadWords(file, *list.second, -1);
  }
  return true;
}

bool WeightedLexcionSentiScorer::loadWeightedLexcion(const std::string& path) {
  utility::BufferedFileReader reader(true);
  if (!reader.open(path)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn(
        "101", "Fail to Open File " + path + " for Loading Weighted Sentiment Lexcion");
    return false;
  }
  return m_lexcion.readSelf(reader);
}

bool WeightedLexcionSentiScorer::weighting(std::vector<Token>& tokens, std::vector<double>& weights) {
  return (*m_positionWeighterPtr).weighting(tokens, weights);
}

double WeightedLexcionSentiScorer::getBoost(Token& previous, Token& current, Token& next) {
  int side = 0;
  return boostFrom(previous, current, next, side);
}

double WeightedLexcionSentiScorer::boostFrom(const Token& previous, const Token& current, const Token& next,
                                             int& side) const {
  side = 0;
  // A positive word beside a word such as "lack" is cancelled outright.
  if (current.tag == Token::TG_POSITIVE) {
    if (contains(m_negationSentiWords, previous.term)) {
      side = -1;
      return 0.0;
    }
    if (contains(m_negationSentiWords, next.term)) {
      side = 1;
      return 0.0;
    }
  }

  const std::set<std::string>* filter = nullptr;
  if (current.tag == Token::TG_POSITIVE)
    filter = &m_negativeOnlyDegreeWords;
  else if (current.tag == Token::TG_NEGATIVE)
    filter = &m_positiveOnlyDegreeWords;

  double factor = 1.0;
  if ((filter == nullptr || !contains(*filter, previous.term)) &&
      StandardLexcionSentiScorer::degreeFactor(previous.tag, factor)) {
    // Only erasing words and negations consult the after-only list: such a
    // word cannot act forwards.
    if (!isErasingOrNegation(previous.tag) || !contains(m_afterOnlyDegreeWords, previous.term)) {
      side = -1;
      return factor;
    }
  }

  if (filter != nullptr && contains(*filter, next.term)) return 1.0;

  if (!StandardLexcionSentiScorer::degreeFactor(next.tag, factor)) return 1.0;
  if (isErasingOrNegation(next.tag) && contains(m_beforeOnlyDegreeWords, next.term)) return 1.0;
  side = 1;
  return factor;
}

double WeightedLexcionSentiScorer::baseValue(const Token& token) const {
  const int tag = token.tag;
  if (tag == Token::TG_NOT_POSITIVE) return -0.25;
  if (tag == Token::TG_NOT_NEGATIVE) return 0.25;
  if (tag != Token::TG_POSITIVE && tag != Token::TG_NEGATIVE && tag != Token::TG_SENTI_20 &&
      tag != Token::TG_ATTRIBUTE_22)
    return 0.0;
  // Only the tags that the lexicon can refine pay for a look-up.
  const auto found = m_lexcion.m_weights.find(token.term);
  const bool known = found != m_lexcion.m_weights.end();
  if (tag == Token::TG_POSITIVE) return known && found->second > 0.0 ? found->second : 1.0;
  // The lexicon refines a strong word's strength but never turns its sign.
  if (tag == Token::TG_NEGATIVE) return known && found->second < 0.0 ? found->second : -1.0;
  return known ? found->second : 0.0;
}

bool WeightedLexcionSentiScorer::getSentiScore(std::vector<Token>& tokens, double& score) {
  return this->score(tokens, score, nullptr);
}

bool WeightedLexcionSentiScorer::explainSentiScore(std::vector<Token>& tokens, double& score, ScoreTrace& trace) {
  trace = ScoreTrace();
  return this->score(tokens, score, &trace);
}

bool WeightedLexcionSentiScorer::score(std::vector<Token>& tokens, double& score, ScoreTrace* trace) {
  const size_t n = tokens.size();
  std::vector<double> weights;
  weighting(tokens, weights);
  std::vector<std::string> reasons;
  if (trace) startTrace(*trace, tokens, m_positionWeighterPtr.get(), reasons);
  std::vector<double> polarity(n, 0.0);
  if (n == 0) {
    score = 0.0;
    return true;
  }

  Token edge;  // stands in for the neighbour beyond either end of the text
  int countable = 0;
  int polar = 0;
  for (size_t i = 0; i < n; ++i) {
    const Token& token = tokens[i];
    if (isCountable(token)) ++countable;
    double value = baseValue(token);
    if (value == 0.0) continue;
    ++polar;
    int side = 0;
    double boost = 1.0;
    // Words the lexicon leaves near zero are not worth modifying.
    if (std::fabs(value) > 0.01) {
      const Token& previous = i > 0 ? tokens[i - 1] : edge;
      const Token& next = i + 1 < n ? tokens[i + 1] : edge;
      boost = boostFrom(previous, token, next, side);
    }
    if (trace) {
      ScoredWord w;
      w.token = token;
      w.index = i;
      w.value = value;
      const long at = static_cast<long>(i) + side;
      if (side != 0 && at >= 0 && at < static_cast<long>(n)) {
        w.modifierIndex = static_cast<int>(at);
        w.modifier = tokens[static_cast<size_t>(at)];
      }
      w.degree = boost;
      w.weight = weights[i];
      if (i < reasons.size()) w.weightReason = reasons[i];
      trace->words.push_back(w);
    }
    if (token.tag == Token::TG_NOT_POSITIVE || token.tag == Token::TG_NOT_NEGATIVE) {
      // Weak words are weakened further by a strengthening degree word and
      // ignore negations and erasing words.
      if (boost > 1.0) value /= boost;
    } else {
      value *= boost;
    }
    polarity[i] = value * weights[i];
  }

  double sum = 0.0;
  double absSum = 0.0;
  for (double p : polarity) {
    sum += p;
    absSum += std::fabs(p);
  }
  // Long texts and texts with little opinion for their length score lower.
  const double divisor = countable * 0.125 + 3.0 + absSum;
  const double half = absSum / divisor < 0.15 ? 0.5 : 1.0;
  score = sum / divisor * half;
  if (trace) {
    trace->sum = sum;
    trace->absSum = absSum;
    trace->polarCount = polar;
    trace->divisor = divisor;
    trace->damping = half;
    for (ScoredWord& w : trace->words) w.contribution = polarity[w.index] / divisor * half;
  }
  return true;
}

}  // namespace modular
}  // namespace vortm
