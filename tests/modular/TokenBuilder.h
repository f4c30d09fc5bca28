#ifndef VORELIN_TESTS_MODULAR_TOKENBUILDER_H
#define VORELIN_TESTS_MODULAR_TOKENBUILDER_H

#include <gtest/gtest.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "TestSupport.h"
#include "modular/ILexcionSentiScorer.h"

namespace vortm {
namespace testing {

// Hand-built tokens, laid end to end, from items such as "good/6 but/but , < q >".
// An item is a term with an optional tag (a number, or but, though, target).
// The terms . , ? < > are a sentence mark, clause mark, question mark and
// opening and closing quote; any other term is an English word.
inline std::vector<analyzer::Token> toks(const std::string& items) {
  using analyzer::Token;
  static const std::map<std::string, int> namedTags = {
      {"", Token::TG_PLAIN}, {"but", Token::TG_BUT_CONJ}, {"though", Token::TG_THOUGH_CONJ},
      {"target", Token::TG_TARGET}};
  static const std::string marks = ".,?<>";
  static const int markTypes[] = {Token::TT_SEN_PUNC, Token::TT_CLAUSE_PUNC, Token::TT_QUESTION_MARK,
                                  Token::TT_QUOTE_BEGIN, Token::TT_QUOTE_END};
  std::vector<Token> out;
  std::istringstream in(items);
  for (std::string item; in >> item;) {
    const size_t slash = item.find('/', 1);
    const std::string term = item.substr(0, slash);
    const std::string tag = slash == std::string::npos ? "" : item.substr(slash + 1);
    const auto name = namedTags.find(tag);
    const int tg = name != namedTags.end() ? name->second : std::stoi(tag);
    const size_t mark = term.size() == 1 ? marks.find(term[0]) : std::string::npos;
    const int start = out.empty() ? 0 : out.back().endOffset + 1;
    out.emplace_back(term, start, start + static_cast<int>(term.size()) - 1,
                     static_cast<Token::TType>(mark == std::string::npos ? Token::TT_EN_WORD : markTypes[mark]),
                     static_cast<Token::TTag>(tg));
  }
  return out;
}

// The score of hand-built tokens; a failed call fails the test.
template <class Scorer>
double scoreItems(Scorer& scorer, const std::string& items) {
  std::vector<analyzer::Token> tokens = toks(items);
  double s = 99.0;
  EXPECT_TRUE(scorer.getSentiScore(tokens, s)) << items;
  return s;
}

// The explanation of hand-built tokens; `score` takes the explained score.
template <class Scorer>
modular::ScoreTrace traceOf(Scorer& scorer, const std::string& items, double* score = nullptr) {
  std::vector<analyzer::Token> tokens = toks(items);
  double s = 0.0;
  modular::ScoreTrace trace;
  EXPECT_TRUE(scorer.explainSentiScore(tokens, s, trace)) << items;
  if (score) *score = s;
  return trace;
}

// The explanation comes from the scoring pass itself: the same score, one
// entry per polar word, and contributions that add up to the score.
template <class Scorer>
void expectExplanationMatchesScore(Scorer& scorer, const std::string& items) {
  std::vector<analyzer::Token> tokens = toks(items);
  double plain = 0.0, explained = 0.0;
  modular::ScoreTrace trace;
  ASSERT_TRUE(scorer.getSentiScore(tokens, plain));
  ASSERT_TRUE(scorer.explainSentiScore(tokens, explained, trace));
  EXPECT_EQ(plain, explained) << items;
  EXPECT_TRUE(trace.detailed);
  EXPECT_EQ(tokens.size(), trace.tokenCount);
  double sum = 0.0;
  for (const auto& w : trace.words) sum += w.contribution;
  EXPECT_NEAR(plain, sum, 1e-12) << items;
  EXPECT_EQ(trace.polarCount, static_cast<int>(trace.words.size()));
}

}  // namespace testing
}  // namespace vortm

#endif
