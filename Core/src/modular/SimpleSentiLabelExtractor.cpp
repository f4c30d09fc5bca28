#include "modular/SimpleSentiLabelExtractor.h"

#include <cstdlib>
#include <fstream>

#include "common/FastMutex.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace modular {

using analyzer::Token;
using common::AutoPtr;
using common::gfn_pLoggerInstance;
using configure::Parameter;

const std::string SimpleSentiLabelExtractor::PARAM_TEXT_ANALYZER = "text_analyzer_for_senti_label_extract";
const std::string SimpleSentiLabelExtractor::PARAM_INTER_WORDS_FILE = "inter_words_file";
const std::string SimpleSentiLabelExtractor::PARAM_NEGATION_SENTI_WORDS_FILE = "negation_senti_words_file";
const std::string SimpleSentiLabelExtractor::PARAM_SENTI_NEGATION_WORDS_FILE = "senti_negation_words_file";
const std::string SimpleSentiLabelExtractor::PARAM_SENTI_DEGREE_WORDS_FILE = "senti_degree_words_file";

namespace {

// Loads one word set unless some extractor already did. The pointer is set
// before the load, so a list that failed is not tried again.
bool loadWordSet(const Parameter& param, const std::string& key, State::WordSetPtr& words,
                 const std::string& failText) {
  if (words.get() != nullptr) return true;
  std::string path;
  if (!param[key].getStringValue(path)) return true;
  words = new std::set<std::string>();
  if (!utility::Utility::loadWords(path, *words, -1)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", failText + path);
    return false;
  }
  return true;
}

// Lines "word level", level 1 to 6; a later line for a word wins, and lines
// without a valid level are skipped.
bool loadDegreeMap(const Parameter& param, const std::string& key, State::DegreeMapPtr& degrees,
                   const std::string& failText) {
  if (degrees.get() != nullptr) return true;
  std::string path;
  if (!param[key].getStringValue(path)) return true;
  degrees = new std::map<std::string, int>();
  std::ifstream in(path.c_str());
  if (!in) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", failText + path);
    return false;
  }
  std::string line;
  std::vector<std::string> fields;
  while (std::getline(in, line)) {
    fields.clear();
    utility::Utility::strTokenize(line, fields, ' ');
    if (fields.size() < 2) continue;
    const long level = std::strtol(fields[1].c_str(), nullptr, 10);
    if (level >= 1 && level <= 6) (*degrees)[fields[0]] = static_cast<int>(level);
  }
  return true;
}

// Clones made in several threads share the analyzer, whose holder counts
// without a lock; taking and dropping a share goes through this mutex.
common::FastMutex& analyzerShareMutex() {
  static common::FastMutex* mutex = new common::FastMutex();
  return *mutex;
}

}  // namespace

SimpleSentiLabelExtractor::SimpleSentiLabelExtractor() {}

SimpleSentiLabelExtractor::~SimpleSentiLabelExtractor() {
  if (m_textAnalyzerPtr) {
    common::FastMutex::ScopedLock lock(analyzerShareMutex());
    m_textAnalyzerPtr = AutoPtr<TextAnalyzer>();
  }
}

bool SimpleSentiLabelExtractor::config(const Parameter& param) {
  if (m_statePtr) return true;
  const Parameter& analyzerParam = param[PARAM_TEXT_ANALYZER];
  if (!analyzerParam.isNull() && !m_textAnalyzerPtr) {
    if (!TextAnalyzer::configTextAnalyzer(analyzerParam, m_textAnalyzerPtr)) {
      gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Init Text Analyzer for Sentiment Label Extract");
      return false;
    }
  }
  if (!loadWordSet(param, PARAM_INTER_WORDS_FILE, State::_intermediaryWordsPtr, "Failed to Load Inter Words From"))
    return false;
  if (!loadWordSet(param, PARAM_NEGATION_SENTI_WORDS_FILE, State::_negationSentimentalWordsPtr,
                   "Failed to Load  Negation Sentimental Words From"))
    return false;
  if (!loadWordSet(param, PARAM_SENTI_NEGATION_WORDS_FILE, State::_sentimentalNegationWordsPtr,
                   "Failed to Load Sentimental Negation Words From"))
    return false;
  if (!loadDegreeMap(param, PARAM_SENTI_DEGREE_WORDS_FILE, State::_sentimentalDegreeWordsPtr,
                     "Failed to Load Sentimental Degree Words From"))
    return false;
  m_statePtr = StateFactory::instance(State::INIT);
  return true;
}

bool SimpleSentiLabelExtractor::extract(std::vector<Token>& tokens, std::vector<SentiLabel>& labels) {
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (!m_statePtr) break;
    m_statePtr->processToken(tokens[i], static_cast<int>(i), this);
  }
  if (m_statePtr) {
    // Tag 1 belongs to no word class, so this closes whatever is open.
    static Token s_flush;
    Token flush = s_flush;
    m_statePtr->processToken(flush, static_cast<int>(tokens.size()), this);
  }
  labels.insert(labels.end(), m_labels.begin(), m_labels.end());
  m_labels.clear();
  return m_statePtr.get() != nullptr;
}

bool SimpleSentiLabelExtractor::extract(const std::string& text, std::vector<SentiLabel>& labels) {
  if (!m_textAnalyzerPtr) return false;
  std::vector<Token> tokens;
  if (!m_textAnalyzerPtr->tokenizeText(text, tokens, true)) return false;
  return extract(tokens, labels);
}

AutoPtr<SentiLabelExtractor> SimpleSentiLabelExtractor::clone() {
  SimpleSentiLabelExtractor* copy = new SimpleSentiLabelExtractor();
  if (m_textAnalyzerPtr) {
    common::FastMutex::ScopedLock lock(analyzerShareMutex());
    copy->m_textAnalyzerPtr = m_textAnalyzerPtr;
  }
  copy->m_statePtr = StateFactory::instance(State::INIT);
  return AutoPtr<SentiLabelExtractor>(copy, true);
}

}  // namespace modular
}  // namespace vortm
