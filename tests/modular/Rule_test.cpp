#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "analyzer/TokenBuffer.h"
#include "modular/RuleParser.h"
#include "modular/RuleSet.h"

using namespace vortm::modular;
using vortm::analyzer::Token;
using vortm::analyzer::TokenBuffer;
using vortm::common::AutoPtr;
using Words = std::map<std::string, unsigned int>;

namespace {

// One rule in XML: a top operator over "OP:kw kw" subrules, "|" between them.
std::string ruleXml(const std::string& classId, const std::string& top, const std::string& subs) {
  std::string xml = "<rules><rule><classid>" + classId + "</classid><toprule>" + top + "</toprule><subrules>";
  size_t from = 0;
  while (from <= subs.size()) {
    size_t bar = subs.find('|', from);
    if (bar == std::string::npos) bar = subs.size();
    std::string sub = subs.substr(from, bar - from);
    size_t colon = sub.find(':');
    xml += "<s><operator>" + sub.substr(0, colon) + "/TEXT/x</operator><value>" + sub.substr(colon + 1) +
           "</value></s>";
    from = bar + 1;
  }
  return xml + "</subrules></rule></rules>";
}

AutoPtr<Rule> parseOne(const std::string& xml) {
  std::vector<AutoPtr<Rule> > rules;
  BasicRuleParser parser;
  EXPECT_TRUE(parser.parseRuleFromText(xml, rules)) << xml;
  EXPECT_EQ(1u, rules.size());
  return rules.empty() ? AutoPtr<Rule>() : rules[0];
}

TEST(RuleTest, MatchStrengthsAsTables) {
  const double s1 = 1.0, s3 = 3.0 / 2.0;  // f / log2(f + 1) for f = 1 and 3
  struct Case {
    std::string top, subs;
    Words words;
    int count;
    double expected;
  } cases[] = {
      // AND takes the weakest keyword: min(1.0, 1.5) / sqrt(3 + 1).
      {"OR", "AND:a b", {{"a", 1}, {"b", 3}}, 3, s1 / 2.0},
      {"OR", "AND:a b", {{"a", 1}}, 3, 0.0},
      // OR sums, then divides by sqrt(keywords + 1) and sqrt(count + 1).
      {"OR", "OR:a b", {{"a", 1}}, 5, (s1 / std::sqrt(3.0)) / std::sqrt(6.0)},
      {"OR", "OR:a,b", {{"a", 1}, {"b", 3}}, 8, ((s1 + s3) / std::sqrt(3.0)) / 3.0},
      {"OR", "OR:a b", {{"c", 1}}, 5, 0.0},
      // Top AND takes the weaker subrule, top OR the stronger.
      {"AND", "OR:a|OR:b", {{"a", 1}, {"b", 3}}, 3, (s1 / std::sqrt(2.0)) / 2.0},
      {"OR", "OR:a|OR:b", {{"a", 1}, {"b", 3}}, 3, (s3 / std::sqrt(2.0)) / 2.0},
      {"and", "OR:a|OR:b", {{"a", 1}, {"b", 3}}, 3, (s3 / std::sqrt(2.0)) / 2.0},  // only "AND" is AND
      // A NOT whose keyword is present vetoes; one that holds adds nothing.
      {"OR", "OR:a|NOT:x", {{"a", 1}, {"x", 1}}, 3, 0.0},
      {"OR", "OR:a|NOT:x", {{"a", 1}}, 3, (s1 / std::sqrt(2.0)) / 2.0},
      {"OR", "NOT:x|NOT:y", {}, 3, 0.0},
      // An AND subrule after a leading NOT never rises above the score 0 it found.
      {"AND", "NOT:x|OR:a", {{"a", 1}}, 0, 0.0},
      {"OR", "XOR:a", {{"a", 1}}, 0, s1 / std::sqrt(2.0)},  // unknown operators read as OR
  };
  for (const Case& c : cases) {
    AutoPtr<Rule> rule = parseOne(ruleXml("c", c.top, c.subs));
    ASSERT_TRUE(rule);
    Words words = c.words;
    double score = -1.0;
    EXPECT_TRUE(rule->match(words, c.count, score));
    EXPECT_NEAR(c.expected, score, 1e-12) << c.top << " " << c.subs;
  }
}

TEST(RuleTest, ParsingKeepsSkipsAndRefuses) {
  BasicRuleParser parser;
  std::vector<AutoPtr<Rule> > rules;
  // Field TITLE is fine; a field of another name or an operator of two parts
  // is skipped; the rule still stands on what is left.
  const std::string mixed =
      "<rules><rule><classid> a/b</classid><toprule>OR</toprule><subrules>"
      "<s><operator>OR/TITLE/x</operator><value>k1 k2</value></s>"
      "<s><operator>OR/BODY/x</operator><value>k3</value></s>"
      "<s><operator>OR/TEXT</operator><value>k4</value></s>"
      "</subrules></rule></rules>";
  ASSERT_TRUE(parser.parseRuleFromText(mixed, rules));
  std::set<std::string> keywords;
  EXPECT_TRUE(rules[0]->getKeywords(keywords));
  EXPECT_EQ((std::set<std::string>{"k1", "k2"}), keywords);
  EXPECT_EQ("a/b", rules[0]->getLabel().identifier);
  EXPECT_EQ(2u, rules[0]->getLabel().parts.size());

  struct Bad {
    const char* why;
    std::string xml;
  } bads[] = {
      {"all subrules skipped", ruleXml("c", "OR", "OR:a").replace(ruleXml("c", "OR", "OR:a").find("/TEXT/"), 6, "/BODY/")},
      {"no classid", "<rules><rule><toprule>OR</toprule><subrules><s><operator>OR/TEXT/x</operator><value>a</value></s>"
                     "</subrules></rule></rules>"},
      {"no toprule", "<rules><rule><classid>c</classid><subrules><s><operator>OR/TEXT/x</operator><value>a</value>"
                     "</s></subrules></rule></rules>"},
      {"empty value", "<rules><rule><classid>c</classid><toprule>OR</toprule><subrules><s><operator>OR/TEXT/x"
                      "</operator><value></value></s></subrules></rule></rules>"},
      {"no subrules", "<rules><rule><classid>c</classid><toprule>OR</toprule></rule></rules>"},
      {"no rules", "<rules></rules>"},
      {"broken XML", "<rules><rule><classid>c</classid></rules>"},
      {"empty text", ""},
  };
  for (const Bad& b : bads) {
    std::vector<AutoPtr<Rule> > none;
    EXPECT_FALSE(parser.parseRuleFromText(b.xml, none)) << b.why;
    EXPECT_TRUE(none.empty()) << b.why;
  }
  // Rules before a failing entry stay.
  std::string two = ruleXml("good", "OR", "OR:a");
  two.insert(two.size() - 8, "<rule><classid>bad</classid></rule>");
  std::vector<AutoPtr<Rule> > kept;
  EXPECT_FALSE(parser.parseRuleFromText(two, kept));
  ASSERT_EQ(1u, kept.size());
  EXPECT_EQ("good", kept[0]->getLabel().identifier);
  EXPECT_FALSE(parser.parseRuleFromFile("/nonexistent/rules.xml", kept));
}

TEST(RuleTest, BufferCountsWordsButOnlyTaggedKeywords) {
  AutoPtr<Rule> rule = parseOne(ruleXml("c", "OR", "OR:late slow"));
  ASSERT_TRUE(rule);
  TokenBuffer buffer;
  auto add = [&buffer](const std::string& term, int type, int tag) {
    vortm::analyzer::appendToken(buffer, Token(term, 0, static_cast<int>(term.size()) - 1,
                                               static_cast<Token::TType>(type), static_cast<Token::TTag>(tag)));
  };
  add("late", Token::TT_EN_WORD, Token::TG_PLAIN);  // a word, yet no keyword: tag is not 25
  double score = -1.0;
  EXPECT_TRUE(rule->match(buffer, score));
  EXPECT_EQ(0.0, score);

  add("late", Token::TT_USER_WORD, Token::TG_TARGET);
  add("late", Token::TT_EN_WORD, Token::TG_TARGET);
  add("x", Token::TT_EN_WORD, Token::TG_PLAIN);          // one byte: not counted
  add("12", Token::TT_EN_WORD, Token::TG_PLAIN);         // no letter: not counted
  add("slow", Token::TT_SYMBOL, Token::TG_TARGET);       // wrong type: neither
  add("慢", Token::TT_CH_WORD, Token::TG_PLAIN);          // a Chinese word counts
  // Words: late, late, late, 慢 -> 4; keyword "late" twice.
  EXPECT_TRUE(rule->match(buffer, score));
  EXPECT_NEAR((2.0 / std::log2(3.0)) / std::sqrt(3.0) / std::sqrt(5.0), score, 1e-12);
  // The buffer is rewound, so a second match agrees.
  double again = 0.0;
  EXPECT_TRUE(rule->match(buffer, again));
  EXPECT_EQ(score, again);
}

TEST(RuleTest, RuleSetTagsKeywordsAndRanksClasses) {
  const std::string analyzerXml =
      "<text_analyzer><analyzer><encode>utf-8</encode><tokenizers><tokenizer><identifier>basicTokenzier"
      "</identifier><param><encode>utf-8</encode></param></tokenizer></tokenizers></analyzer></text_analyzer>";
  AutoPtr<vortm::configure::Parameter> root = vortm::testing::parseXml(analyzerXml);
  ASSERT_TRUE(root);
  std::string rulesXml = ruleXml("complaint/delivery", "OR", "OR:快递 物流 late") + ruleXml("complaint/price", "OR", "OR:贵");
  rulesXml.replace(rulesXml.find("</rules><rules>"), 15, "");
  std::vector<AutoPtr<Rule> > rules;
  BasicRuleParser parser;
  ASSERT_TRUE(parser.parseRuleFromText(rulesXml, rules));
  ASSERT_EQ(2u, rules.size());

  RuleSet set;
  ASSERT_TRUE(set.config((*root)["text_analyzer"], rules));
  EXPECT_EQ(4u, set.keywordCount());
  std::vector<RuleSet::Match> matches;
  // Chinese runs are not words here, but keywords become words of their own.
  ASSERT_TRUE(set.matchText("快递太慢，物流也慢，而且贵", matches));
  ASSERT_EQ(2u, matches.size());
  EXPECT_EQ("complaint/delivery", matches[0].classId);
  EXPECT_NEAR((2.0 / std::sqrt(4.0)) / std::sqrt(4.0), matches[0].strength, 1e-12);
  EXPECT_EQ("complaint/price", matches[1].classId);
  EXPECT_NEAR((1.0 / std::sqrt(2.0)) / std::sqrt(4.0), matches[1].strength, 1e-12);
  ASSERT_TRUE(set.matchText("the parcel came late, very late", matches));
  ASSERT_EQ(1u, matches.size());
  EXPECT_NEAR((2.0 / std::log2(3.0)) / 2.0 / std::sqrt(7.0), matches[0].strength, 1e-12);
  EXPECT_TRUE(set.matchText("", matches));
  EXPECT_TRUE(matches.empty());

  // The set's own matching (keyword numbers, only rules of a present
  // keyword) agrees exactly with each rule matching the buffer by itself,
  // a rule of another kind included.
  struct Fixed : BasicRule {
    Fixed() : BasicRule("fixed", OP_OR) { addSubRule(SubRule()); }
    bool match(Words& words, int, double& score) override {
      score = words.count("b") ? 0.3 : 0.0;
      return true;
    }
  };
  const char* subs[] = {"AND:a b", "OR:a b", "OR:a|OR:b|NOT:x", "NOT:x|OR:a", "AND:b c|OR:y", "OR:c,b,a|NOT:y"};
  std::vector<AutoPtr<Rule> > mixed;
  for (const char* top : {"AND", "OR"})
    for (const char* sub : subs) mixed.push_back(parseOne(ruleXml(std::string(top) + sub, top, sub)));
  mixed.push_back(AutoPtr<Rule>(new Fixed, true));
  RuleSet compiled;
  ASSERT_TRUE(compiled.config((*root)["text_analyzer"], mixed));
  std::mt19937 random(7);
  const char* terms[] = {"a", "b", "c", "x", "y", "w"};
  for (int doc = 0; doc < 300; ++doc) {
    TokenBuffer buffer;
    for (int n = random() % 12; n > 0; --n) {
      std::string term = terms[random() % 6];
      Token::TTag tag = term != "w" && random() % 4 ? Token::TG_TARGET : Token::TG_PLAIN;
      vortm::analyzer::appendToken(buffer, Token(term, 0, 0, Token::TT_USER_WORD, tag));
    }
    std::vector<RuleSet::Match> expected;
    for (const AutoPtr<Rule>& rule : mixed) {
      double score = 0.0;
      if (rule->match(buffer, score) && score > 1e-10) expected.push_back({rule->getLabel().identifier, score});
    }
    std::stable_sort(expected.begin(), expected.end(),
                     [](const RuleSet::Match& x, const RuleSet::Match& y) { return x.strength > y.strength; });
    compiled.matchTokens(buffer, matches);
    ASSERT_EQ(expected.size(), matches.size()) << doc;
    for (size_t i = 0; i < matches.size(); ++i) {
      EXPECT_EQ(expected[i].classId, matches[i].classId) << doc;
      EXPECT_EQ(expected[i].strength, matches[i].strength) << doc;
    }
  }

  vortm::testing::StdoutCapture capture;
  RuleSet missing;
  EXPECT_FALSE(missing.config((*root)["text_analyzer"], "/nonexistent/rules.xml"));
  EXPECT_FALSE(missing.matchText("快递", matches));
  // The file reader's warning with the reason comes first, then the rule set's.
  std::vector<std::string> lines = capture.lines();
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(vortm::testing::isLogRecord(lines.back(), "Warn", "101",
                                          "Failed to Parse Rule File/nonexistent/rules.xml"));
}

}  // namespace
