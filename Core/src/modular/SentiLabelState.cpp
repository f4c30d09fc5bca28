#include "modular/SentiLabelState.h"

#include "modular/SimpleSentiLabelExtractor.h"

namespace vortm {
namespace modular {

using analyzer::Token;

State::WordSetPtr State::_intermediaryWordsPtr;
State::WordSetPtr State::_negationSentimentalWordsPtr;
State::WordSetPtr State::_sentimentalNegationWordsPtr;
State::DegreeMapPtr State::_sentimentalDegreeWordsPtr;

bool State::processToken(Token& token, int position, SimpleSentiLabelExtractor* extractor) {
  if (extractor == nullptr) return false;
  // Every state keeps a modifier for the word that comes next.
  if (classOf(token) == CLASS_M) {
    extractor->m_pending.push_back(token);
    return true;
  }
  StateEnum next = processTokenInternal(token, position, extractor->m_senti, extractor->m_att,
                                        extractor->m_pending, extractor->m_sentis, extractor->m_labels);
  if (next == NONE) return false;
  // Most tokens leave the state as it is; swapping the holder would cost
  // locked count changes for nothing. Otherwise this may release this very
  // state's holder; `this` stays alive in the factory's table.
  if (next != stateOf()) extractor->m_statePtr = StateFactory::instance(next);
  return true;
}

State::StateEnum INITState::stateOf() const { return INIT; }
State::StateEnum SENTIState::stateOf() const { return SENTI; }
State::StateEnum GENSENTIState::stateOf() const { return GENSENTI; }
State::StateEnum SENTI_AFTER_ATTState::stateOf() const { return SENTI_AFTER_ATT; }
State::StateEnum ATTState::stateOf() const { return ATT; }
State::StateEnum ATT_AFTER_SENTIState::stateOf() const { return ATT_AFTER_SENTI; }

State::WordClass State::classOf(const Token& token) {
  const int tag = token.tag;
  if (tag >= Token::TG_DEGREE_10 && tag <= Token::TG_EN_NEGATION) return CLASS_M;
  if (tag == Token::TG_SENTI_20 || tag == Token::TG_SENTI_23) return CLASS_S;
  if (tag >= Token::TG_POSITIVE && tag <= Token::TG_NOT_NEGATIVE) return CLASS_G;
  if (tag == Token::TG_ATTRIBUTE_21 || tag == Token::TG_ATTRIBUTE_22) return CLASS_A;
  return CLASS_O;
}

bool State::isIntermediary(const std::string& word) {
  return _intermediaryWordsPtr.get() != nullptr && _intermediaryWordsPtr->count(word) > 0;
}

bool State::isModifierWord(const std::string& word) {
  return (_sentimentalNegationWordsPtr.get() != nullptr && _sentimentalNegationWordsPtr->count(word) > 0) ||
         (_sentimentalDegreeWordsPtr.get() != nullptr && _sentimentalDegreeWordsPtr->count(word) > 0) ||
         (_negationSentimentalWordsPtr.get() != nullptr && _negationSentimentalWordsPtr->count(word) > 0);
}

void State::storeSenti(Unit& senti, const Token& token, int position, std::vector<Token>& pending) {
  senti.setWord(token, position);
  senti.before = pending;
  pending.clear();
}

void State::pushSenti(Unit& senti, std::vector<Unit>& sentis) {
  sentis.push_back(senti);
  senti.reset();
}

void State::attach(std::vector<Token>& list, std::vector<Token>& pending) {
  list = pending;
  pending.clear();
}

void State::closeSenti(Unit& senti, Unit& att, std::vector<Token>& pending, std::vector<Unit>& sentis,
                       std::vector<SentiLabel>& labels) {
  attach(senti.after, pending);
  pushSenti(senti, sentis);
  addToSentiLabel(att, sentis, labels);
}

void State::closeSentiAtAttribute(const Token& token, int position, Unit& senti, Unit& att,
                                  std::vector<Token>& pending, std::vector<Unit>& sentis,
                                  std::vector<SentiLabel>& labels) {
  if (token.tag == Token::TG_ATTRIBUTE_21) {
    closeSenti(senti, att, pending, sentis, labels);
  } else {
    pushSenti(senti, sentis);
    addToSentiLabel(att, sentis, labels);
    attach(att.before, pending);
  }
  att.setWord(token, position);
}

void State::openAttribute(const Token& token, int position, Unit& att, std::vector<Token>& pending,
                          std::vector<Unit>& sentis, std::vector<SentiLabel>& labels) {
  addToSentiLabel(att, sentis, labels);
  att.setWord(token, position);
  attach(att.before, pending);
}

void State::addToSentiLabel(Unit& att, std::vector<Unit>& sentis, std::vector<SentiLabel>& labels) {
  if (att.isEmpty() && sentis.empty()) return;
  std::vector<Unit> revised;
  reviseSentis(sentis, revised);
  if (revised.empty()) {
    // An attribute alone stands only when it can carry a value itself.
    if (att.tag == Token::TG_ATTRIBUTE_22) {
      labels.emplace_back();
      labels.back().att = att;
    }
  } else {
    for (const Unit& s : revised) {
      // A tag-23 word says nothing without the attribute it describes.
      if (att.isEmpty() && s.tag == Token::TG_SENTI_23) continue;
      labels.emplace_back();
      labels.back().att = att;
      labels.back().senti = s;
    }
  }
  sentis.clear();
  att.reset();
}

namespace {

bool inSet(const State::WordSetPtr& set, const std::string& word) {
  return set.get() != nullptr && set->count(word) > 0;
}

Token asModifier(const Unit& unit, int tag) {
  Token t(unit.term, unit.startOffset, unit.endOffset, unit.type, static_cast<Token::TTag>(tag));
  return t;
}

}  // namespace

void State::reviseSentis(std::vector<Unit>& sentis, std::vector<Unit>& revised) {
  if (sentis.size() < 2) {
    revised = sentis;
    return;
  }
  for (size_t i = 0; i + 1 < sentis.size(); ++i) {
    Unit& entry = sentis[i];
    std::vector<Token>& nextBefore = sentis[i + 1].before;
    // A word that already has its own modifiers is a real sentiment word.
    if (!entry.before.empty()) {
      revised.push_back(entry);
      continue;
    }
    if (inSet(_negationSentimentalWordsPtr, entry.term)) {
      nextBefore.insert(nextBefore.begin(), asModifier(entry, Token::TG_NEGATION));
      revised.push_back(entry);
    } else if (inSet(_sentimentalNegationWordsPtr, entry.term)) {
      nextBefore.insert(nextBefore.begin(), asModifier(entry, Token::TG_NEGATION));
    } else if (_sentimentalDegreeWordsPtr.get() != nullptr) {
      std::map<std::string, int>::const_iterator it = _sentimentalDegreeWordsPtr->find(entry.term);
      if (it != _sentimentalDegreeWordsPtr->end()) {
        // Levels 1 to 6 map onto the degree tags 10 to 15.
        nextBefore.insert(nextBefore.begin(), asModifier(entry, Token::TG_DEGREE_10 + it->second - 1));
      } else {
        revised.push_back(entry);
      }
    } else {
      revised.push_back(entry);
    }
  }
  // The last word may still negate the one before it, and keeps its own
  // place as a sentiment word as well.
  Unit& last = sentis.back();
  if (inSet(_negationSentimentalWordsPtr, last.term) && !revised.empty())
    revised.back().after.push_back(asModifier(last, Token::TG_NEGATION));
  revised.push_back(last);
}

// Each table below handles one token class per branch, in the order
// S, G, A, O; modifiers (M) are kept by processToken.

State::StateEnum INITState::processTokenInternal(Token& token, int position, Unit& senti, Unit& att,
                                                 std::vector<Token>& pending, std::vector<Unit>&,
                                                 std::vector<SentiLabel>&) {
  switch (classOf(token)) {
    case CLASS_S:
      storeSenti(senti, token, position, pending);
      return SENTI;
    case CLASS_G:
      storeSenti(senti, token, position, pending);
      return GENSENTI;
    case CLASS_A:
      att.setWord(token, position);
      attach(att.before, pending);
      return ATT;
    default:
      if (!isIntermediary(token.term)) pending.clear();
      return INIT;
  }
}

State::StateEnum SENTIState::processTokenInternal(Token& token, int position, Unit& senti, Unit& att,
                                                  std::vector<Token>& pending, std::vector<Unit>& sentis,
                                                  std::vector<SentiLabel>& labels) {
  switch (classOf(token)) {
    case CLASS_S:
      pushSenti(senti, sentis);
      storeSenti(senti, token, position, pending);
      return SENTI;
    case CLASS_G: {
      // A modifier word stays open so that it can modify the word after it.
      const bool oldIsModifier = isModifierWord(senti.term);
      pushSenti(senti, sentis);
      if (!oldIsModifier) addToSentiLabel(att, sentis, labels);
      storeSenti(senti, token, position, pending);
      return GENSENTI;
    }
    case CLASS_A:
      att.setWord(token, position);
      // An attribute of tag 21 leaves the modifiers in between to the word
      // before it; one of tag 22 takes them itself.
      if (token.tag == Token::TG_ATTRIBUTE_21)
        attach(senti.after, pending);
      else
        attach(att.before, pending);
      pushSenti(senti, sentis);
      return ATT_AFTER_SENTI;
    default:
      if (isIntermediary(token.term)) return SENTI;
      closeSenti(senti, att, pending, sentis, labels);
      return INIT;
  }
}

State::StateEnum GENSENTIState::processTokenInternal(Token& token, int position, Unit& senti, Unit& att,
                                                     std::vector<Token>& pending, std::vector<Unit>& sentis,
                                                     std::vector<SentiLabel>& labels) {
  switch (classOf(token)) {
    case CLASS_S: {
      const bool oldIsModifier = isModifierWord(senti.term);
      pushSenti(senti, sentis);
      if (!oldIsModifier) addToSentiLabel(att, sentis, labels);
      storeSenti(senti, token, position, pending);
      return oldIsModifier ? GENSENTI : SENTI;
    }
    case CLASS_G:
      pushSenti(senti, sentis);
      storeSenti(senti, token, position, pending);
      return GENSENTI;
    case CLASS_A:
      closeSentiAtAttribute(token, position, senti, att, pending, sentis, labels);
      return ATT;
    default:
      // No intermediary case here: a general sentiment word ends at any
      // other word.
      closeSenti(senti, att, pending, sentis, labels);
      return INIT;
  }
}

State::StateEnum SENTI_AFTER_ATTState::processTokenInternal(Token& token, int position, Unit& senti, Unit& att,
                                                            std::vector<Token>& pending, std::vector<Unit>& sentis,
                                                            std::vector<SentiLabel>& labels) {
  switch (classOf(token)) {
    case CLASS_S:
      pushSenti(senti, sentis);
      storeSenti(senti, token, position, pending);
      return SENTI_AFTER_ATT;
    case CLASS_G:
      pushSenti(senti, sentis);
      addToSentiLabel(att, sentis, labels);
      storeSenti(senti, token, position, pending);
      return GENSENTI;
    case CLASS_A:
      closeSentiAtAttribute(token, position, senti, att, pending, sentis, labels);
      return ATT;
    default:
      closeSenti(senti, att, pending, sentis, labels);
      return INIT;
  }
}

State::StateEnum ATTState::processTokenInternal(Token& token, int position, Unit& senti, Unit& att,
                                                std::vector<Token>& pending, std::vector<Unit>& sentis,
                                                std::vector<SentiLabel>& labels) {
  switch (classOf(token)) {
    case CLASS_S:
      storeSenti(senti, token, position, pending);
      return SENTI_AFTER_ATT;
    case CLASS_G:
      addToSentiLabel(att, sentis, labels);
      storeSenti(senti, token, position, pending);
      return GENSENTI;
    case CLASS_A:
      if (token.tag == Token::TG_ATTRIBUTE_21) {
        attach(att.after, pending);
        addToSentiLabel(att, sentis, labels);
        att.setWord(token, position);
      } else {
        openAttribute(token, position, att, pending, sentis, labels);
      }
      return ATT;
    default:
      if (isIntermediary(token.term)) return ATT;
      attach(att.after, pending);
      senti.reset();
      addToSentiLabel(att, sentis, labels);
      return INIT;
  }
}

namespace {

// Modifiers behind the last sentiment word belong to it.
void attachToLastSenti(std::vector<Unit>& sentis, std::vector<Token>& pending) {
  if (!sentis.empty()) sentis.back().after = pending;
  pending.clear();
}

}  // namespace

State::StateEnum ATT_AFTER_SENTIState::processTokenInternal(Token& token, int position, Unit& senti, Unit& att,
                                                            std::vector<Token>& pending, std::vector<Unit>& sentis,
                                                            std::vector<SentiLabel>& labels) {
  switch (classOf(token)) {
    case CLASS_S:
      addToSentiLabel(att, sentis, labels);
      storeSenti(senti, token, position, pending);
      return SENTI;
    case CLASS_G:
      addToSentiLabel(att, sentis, labels);
      storeSenti(senti, token, position, pending);
      return GENSENTI;
    case CLASS_A:
      if (token.tag == Token::TG_ATTRIBUTE_21) {
        attachToLastSenti(sentis, pending);
        addToSentiLabel(att, sentis, labels);
        att.setWord(token, position);
      } else {
        openAttribute(token, position, att, pending, sentis, labels);
      }
      return ATT;
    default:
      attachToLastSenti(sentis, pending);
      addToSentiLabel(att, sentis, labels);
      return INIT;
  }
}

StatePtr StateFactory::instance(State::StateEnum state) {
  // Built once, under the run-time's guard for static initialisation.
  static const std::map<int, StatePtr> table = [] {
    std::map<int, StatePtr> t;
    t[State::INIT] = StatePtr(new INITState(), true);
    t[State::SENTI] = StatePtr(new SENTIState(), true);
    t[State::GENSENTI] = StatePtr(new GENSENTIState(), true);
    t[State::SENTI_AFTER_ATT] = StatePtr(new SENTI_AFTER_ATTState(), true);
    t[State::ATT] = StatePtr(new ATTState(), true);
    t[State::ATT_AFTER_SENTI] = StatePtr(new ATT_AFTER_SENTIState(), true);
    return t;
  }();
  std::map<int, StatePtr>::const_iterator it = table.find(state);
  if (it == table.end()) return StatePtr();
  return it->second;
}

}  // namespace modular
}  // namespace vortm
