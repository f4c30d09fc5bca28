#ifndef VORTM_MODULAR_SENTILABELSTATE_H
#define VORTM_MODULAR_SENTILABELSTATE_H

#include <map>
#include <set>
#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "common/SharedObj.h"
#include "modular/SentiLabel.h"

namespace vortm {
namespace modular {

class SimpleSentiLabelExtractor;

// A state of the opinion grammar. States hold no data: the walk's working
// record lives in the extractor, so one set of states serves every thread.
class State {
 public:
  enum StateEnum { NONE = 0, INIT = 1, SENTI = 2, GENSENTI = 3, SENTI_AFTER_ATT = 4, ATT = 5, ATT_AFTER_SENTI = 6 };

  typedef common::AutoPtr<std::set<std::string>, common::SafeSharedObj<std::set<std::string> > > WordSetPtr;
  typedef common::AutoPtr<std::map<std::string, int>, common::SafeSharedObj<std::map<std::string, int> > >
      DegreeMapPtr;

  virtual ~State() {}

  // Moves the extractor on by one token; false for a null extractor or a
  // state that gives no successor.
  bool processToken(analyzer::Token& token, int position, SimpleSentiLabelExtractor* extractor);

  // Closes the open opinion: one label per sentiment word, each with a copy
  // of the attribute. Empties `sentis` and resets `att`.
  void addToSentiLabel(Unit& att, std::vector<Unit>& sentis, std::vector<SentiLabel>& labels);
  // Turns sentiment words that are really modifiers of the next word into
  // modifiers of it.
  void reviseSentis(std::vector<Unit>& sentis, std::vector<Unit>& revised);

  // Process-wide word lists, filled by the first extractor's config and
  // read-only afterwards; each may stay empty.
  static WordSetPtr _intermediaryWordsPtr;
  static WordSetPtr _negationSentimentalWordsPtr;
  static WordSetPtr _sentimentalNegationWordsPtr;
  static DegreeMapPtr _sentimentalDegreeWordsPtr;

 protected:
  virtual StateEnum processTokenInternal(analyzer::Token& token, int position, Unit& senti, Unit& att,
                                         std::vector<analyzer::Token>& pending, std::vector<Unit>& sentis,
                                         std::vector<SentiLabel>& labels) = 0;
  // The value this object stands for.
  virtual StateEnum stateOf() const = 0;

  // Word classes by tag.
  enum WordClass { CLASS_M, CLASS_S, CLASS_G, CLASS_A, CLASS_O };
  static WordClass classOf(const analyzer::Token& token);
  static bool isIntermediary(const std::string& word);
  // The word is one of the lists that demote sentiment words to modifiers.
  static bool isModifierWord(const std::string& word);

  static void storeSenti(Unit& senti, const analyzer::Token& token, int position,
                         std::vector<analyzer::Token>& pending);
  static void pushSenti(Unit& senti, std::vector<Unit>& sentis);
  static void attach(std::vector<analyzer::Token>& list, std::vector<analyzer::Token>& pending);
  // The open sentiment word ends with the modifiers behind it, and the
  // opinion is emitted.
  void closeSenti(Unit& senti, Unit& att, std::vector<analyzer::Token>& pending, std::vector<Unit>& sentis,
                  std::vector<SentiLabel>& labels);
  // An attribute ends the open sentiment word: one of tag 21 leaves the
  // modifiers in between to the word, one of tag 22 takes them.
  void closeSentiAtAttribute(const analyzer::Token& token, int position, Unit& senti, Unit& att,
                             std::vector<analyzer::Token>& pending, std::vector<Unit>& sentis,
                             std::vector<SentiLabel>& labels);
  // Emits what is open and starts a new attribute with the pending
  // modifiers before it.
  void openAttribute(const analyzer::Token& token, int position, Unit& att, std::vector<analyzer::Token>& pending,
                     std::vector<Unit>& sentis, std::vector<SentiLabel>& labels);
};

// One class per state; each handles the token classes its own way.
#define VORTM_DECLARE_LABEL_STATE(Name)                                                                      \
  class Name : public State {                                                                                \
   protected:                                                                                                \
    StateEnum processTokenInternal(analyzer::Token& token, int position, Unit& senti, Unit& att,             \
                                   std::vector<analyzer::Token>& pending, std::vector<Unit>& sentis,         \
                                   std::vector<SentiLabel>& labels) override;                               \
    StateEnum stateOf() const override;                                                                      \
  }

VORTM_DECLARE_LABEL_STATE(INITState);
VORTM_DECLARE_LABEL_STATE(SENTIState);
VORTM_DECLARE_LABEL_STATE(GENSENTIState);
VORTM_DECLARE_LABEL_STATE(SENTI_AFTER_ATTState);
VORTM_DECLARE_LABEL_STATE(ATTState);
VORTM_DECLARE_LABEL_STATE(ATT_AFTER_SENTIState);

typedef common::AutoPtr<State, common::SafeSharedObj<State> > StatePtr;

class StateFactory {
 public:
  // The shared object of a state; empty for an unknown value.
  static StatePtr instance(State::StateEnum state);
};

}  // namespace modular
}  // namespace vortm

#endif
