#include "modular/SentiLabelSentiScorer.h"

#include <algorithm>
#include <cmath>

#include "common/CreatorRegister.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/BufferedFileReader.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;

const std::string SentiLabelSentiScorer::PARAM_SENTI_LABEL_EXTRACTOR = "senti_label_extractor";
const std::string SentiLabelSentiScorer::PARAM_SENTI_LABEL_LEXICON_FILE = "senti_label_lexcion_file";
const std::string SentiLabelSentiScorer::PARAM_BEFORE_ONLY_DEGREE_WORDS_FILE = "before_only_degree_words_file";
const std::string SentiLabelSentiScorer::PARAM_AFTER_ONLY_DEGREE_WORDS_FILE = "after_only_degree_words_file";

namespace {

const double kZero = 1e-05;

bool isNonZero(double v) { return v > kZero || v < -kZero; }

bool isNegationTag(int tag) { return tag == Token::TG_NEGATION || tag == Token::TG_EN_NEGATION; }

double singleFactor(int tag) {
  switch (tag) {
    case Token::TG_DEGREE_10:
      return 1.5;
    case Token::TG_DEGREE_11:
      return 1.2;
    case Token::TG_DEGREE_13:
      return 0.5;
    case Token::TG_DEGREE_14:
      return 0.0;
    case Token::TG_NEGATION:
    case Token::TG_EN_NEGATION:
      return -0.5;
    default:
      return 1.0;
  }
}

// Two modifiers: a negation and a degree word do not simply multiply, and
// which of them comes first matters ("not very good" against "very not
// good").
double pairFactor(int t0, int t1) {
  if (isNegationTag(t0)) {
    if (isNegationTag(t1)) return 0.5;
    switch (t1) {
      case Token::TG_DEGREE_10:
        return -0.16666666666666666;
      case Token::TG_DEGREE_11:
        return -0.20833333333333334;
      case Token::TG_DEGREE_12:
      case Token::TG_DEGREE_13:
      case Token::TG_DEGREE_14:
        return -0.5;
      default:
        break;
    }
  } else if (isNegationTag(t1)) {
    switch (t0) {
      case Token::TG_DEGREE_10:
        return -0.75;
      case Token::TG_DEGREE_11:
        return -0.6;
      case Token::TG_DEGREE_12:
        return -0.5;
      case Token::TG_DEGREE_13:
        return -0.25;
      case Token::TG_DEGREE_14:
        return -0.0;
      default:
        break;
    }
  }
  return std::max(singleFactor(t0), singleFactor(t1));
}

// Lists whose key is absent leave the set empty; a named file that cannot
// be read is no failure either.
void loadOptionalWords(const Parameter& param, const std::string& key, std::set<std::string>& words) {
  std::string path;
  if (param[key].getStringValue(path) && !path.empty()) utility::Utility::loadWords(path, words, -1);
}

}  // namespace

bool SentiLabelSentiScorer::SentiLabelLexcion::writeSelf(common::ObjectWriter& writer) {
  if (!writer.writeUint32(static_cast<unsigned int>(m_lexcion.size()))) return false;
  for (const auto& entry : m_lexcion) {
    if (!writer.writeString(entry.first) || !writer.writeDouble(entry.second)) return false;
  }
  return true;
}

bool SentiLabelSentiScorer::SentiLabelLexcion::readSelf(common::ObjectReader& reader) {
  unsigned int count = 0;
  if (!reader.readUint32(count)) return false;
  // Nothing is reserved by the count: a forged one just runs the stream dry.
  for (unsigned int i = 0; i < count; ++i) {
    std::string key;
    double value = 0.0;
    if (!reader.readString(key) || !reader.readDouble(value)) return false;
    m_lexcion.emplace(key, value);
  }
  return true;
}

bool SentiLabelSentiScorer::SentiLabelLexcion::find(const std::string& key, double& value) const {
  std::map<std::string, double>::const_iterator it = m_lexcion.find(key);
  if (it == m_lexcion.end()) return false;
  value = it->second;
  return true;
}

SentiLabelSentiScorer::SentiLabelSentiScorer() : m_bConfigured(false) {}

SentiLabelSentiScorer::~SentiLabelSentiScorer() {}

bool SentiLabelSentiScorer::config(const Parameter& param) {
  if (!StandardLexcionSentiScorer::config(param)) return false;
  if (!m_extractorPtr) {
    common::gfn_creatorRegister();
    const Parameter& extractorParam = param[PARAM_SENTI_LABEL_EXTRACTOR];
    std::string identifier;
    extractorParam["identifier"].getStringValue(identifier);
    m_extractorPtr = common::InstanceCreator<SentiLabelExtractor>::getCreation(identifier);
    if (!m_extractorPtr || !m_extractorPtr->config(extractorParam["param"])) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Sentiment Label Extractor with Identifier " +
                                                        identifier);
      return false;
    }
  }
  std::string path;
  if (!param[PARAM_SENTI_LABEL_LEXICON_FILE].getStringValue(path) || !loadSentiLabelLexcion(path)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Load Sentiment Label Dict from File " + path);
    return false;
  }
  loadOptionalWords(param, PARAM_BEFORE_ONLY_DEGREE_WORDS_FILE, m_beforeOnlyWords);
  loadOptionalWords(param, PARAM_AFTER_ONLY_DEGREE_WORDS_FILE, m_afterOnlyWords);
  m_bConfigured = true;
  return true;
}

bool SentiLabelSentiScorer::loadSentiLabelLexcion(const std::string& path) {
  utility::BufferedFileReader reader(path, true);
  if (!reader.good()) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Fail to Open File " + path + " for Loading Sentiment Label Dict");
    return false;
  }
  return m_lexcion.readSelf(reader);
}

bool SentiLabelSentiScorer::extractLabels(std::vector<Token>& tokens, std::vector<SentiLabel>& labels) {
  if (!m_bConfigured || !m_extractorPtr) return false;
  // The clone carries the walk, so many threads can share this scorer.
  AutoPtr<SentiLabelExtractor> walker = m_extractorPtr->clone();
  return walker->extract(tokens, labels);
}

bool SentiLabelSentiScorer::getSentiScore(std::vector<Token>& tokens, double& score) {
  if (!m_bConfigured || !m_extractorPtr) return false;
  std::vector<double> weights;
  weighting(tokens, weights);

  int countable = 0;
  for (const Token& t : tokens) {
    if (t.type == Token::TT_CH_WORD || t.type == Token::TT_USER_WORD) {
      ++countable;
    } else if (t.type == Token::TT_EN_WORD && t.term.size() >= 2 && t.term.size() <= 50 &&
               utility::Utility::isEnWord(t.term.data(), static_cast<unsigned int>(t.term.size()))) {
      ++countable;
    }
  }

  std::vector<SentiLabel> labels;
  extractLabels(tokens, labels);
  double sum = 0.0;
  double absSum = 0.0;
  for (SentiLabel& label : labels) {
    double v = getSentiSocre(label);
    if (label.position < 0) label.position = label.senti.isEmpty() ? label.att.position : label.senti.position;
    if (label.position >= 0 && static_cast<size_t>(label.position) < weights.size()) v *= weights[label.position];
    sum += v;
    absSum += std::fabs(v);
  }
  score = sum / (countable * 0.05 + 3.0 + absSum);
  return true;
}

double SentiLabelSentiScorer::getSentiSocre(SentiLabel& label) {
  const bool noAtt = label.att.isEmpty();
  const bool noSenti = label.senti.isEmpty();
  if (noSenti) return getSentiSocreByAtt(label);
  if (noAtt) {
    double s = getSentiSocreBySenti(label);
    return isNonZero(s) ? s : getSentiSocreByAtt(label);
  }
  bool exact = false;
  double b = getSentiSocreByCombine(label, exact);
  double s = getSentiSocreBySenti(label);
  if (exact) return b;
  // When pair and word agree, the word's own value wins; when they differ,
  // the pair's does.
  if ((b > kZero && s > kZero) || (b < -kZero && s < -kZero)) return s;
  if (isNonZero(b)) return b;
  if (isNonZero(s)) return s;
  return getSentiSocreByAtt(label);
}

double SentiLabelSentiScorer::unitBoost(Unit& unit) {
  double m = unit.before.empty() ? 1.0 : modifyBoost(unit.before, true);
  if (!unit.after.empty()) m *= modifyBoost(unit.after, false);
  return m;
}

double SentiLabelSentiScorer::getSentiSocreByAtt(SentiLabel& label) {
  if (label.att.isEmpty() || label.att.tag != Token::TG_ATTRIBUTE_22) return 0.0;
  double v = 0.0;
  if (!m_lexcion.find(label.att.term, v)) return 0.0;
  const double m = unitBoost(label.att);
  return isNonZero(v) ? v * m : 0.0;
}

double SentiLabelSentiScorer::getSentiSocreBySenti(SentiLabel& label) {
  if (label.senti.isEmpty()) return 0.0;
  double m = unitBoost(label.senti);
  // A negation on the attribute turns the opinion as well.
  if (!label.att.isEmpty()) m *= unitBoost(label.att);
  const int tag = label.senti.tag;
  double v = 0.0;
  if (m_lexcion.find(label.senti.term, v)) {
    // A strong tag overrules a lexicon value of the other sign.
    if (v < -kZero && tag != Token::TG_POSITIVE) return v * m;
    if (v > kZero && tag != Token::TG_NEGATIVE) return v * m;
    if (v > kZero && tag == Token::TG_NEGATIVE) return -m;
  }
  if (tag == Token::TG_NEGATIVE) return -m;
  if (tag == Token::TG_POSITIVE) return m;
  return 0.0;
}

double SentiLabelSentiScorer::getSentiSocreByCombine(SentiLabel& label, bool& exact) {
  exact = false;
  if (label.att.isEmpty() || label.senti.isEmpty()) return 0.0;
  double v = 0.0;
  // The key with the modifiers: a fixed phrase whose value counts them.
  if (m_lexcion.find(label.att.toString() + label.senti.toString(), v)) {
    exact = v > -0.99 && v < 0.99;
    return v;
  }
  // Without modifiers the plain key is the one just missed.
  if (label.att.before.empty() && label.att.after.empty() && label.senti.before.empty() &&
      label.senti.after.empty())
    return 0.0;
  if (!m_lexcion.find(label.att.term + label.senti.term, v)) return 0.0;
  const double m = unitBoost(label.att) * unitBoost(label.senti);
  exact = v > -0.99 && v < 0.99;
  return v * m;
}

double SentiLabelSentiScorer::modifyBoost(std::vector<Token>& modifiers, bool isBefore) {
  // Some degree words modify only the word behind them, some only the one
  // before; an English negation never reaches back.
  std::vector<int> tags;
  for (const Token& t : modifiers) {
    if (isBefore) {
      if (m_afterOnlyWords.count(t.term)) continue;
    } else if (m_beforeOnlyWords.count(t.term) || t.tag == Token::TG_EN_NEGATION) {
      continue;
    }
    tags.push_back(t.tag);
  }
  if (tags.empty()) return 1.0;
  if (tags.size() == 1) return singleFactor(tags[0]);
  if (tags.size() == 2) return pairFactor(tags[0], tags[1]);
  double product = 1.0;
  for (int tag : tags) product *= singleFactor(tag);
  return product;
}

}  // namespace modular
}  // namespace vortm
