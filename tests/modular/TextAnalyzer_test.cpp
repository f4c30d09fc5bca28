#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/Text.h"
#include "modular/TextAnalyzer.h"

using namespace vortm;
using namespace vortm::testing;
using analyzer::Token;
using analyzer::TokenBuffer;
using common::AutoPtr;
using configure::Parameter;
using modular::Text;
using modular::TextAnalyzer;
using modular::TextTerm;

namespace {

const char* kBasicAnalyzer =
    "<analyzer><tokenizers><item><identifier>basicTokenzier</identifier>"
    "<param><encode>utf-8</encode></param></item></tokenizers></analyzer>";

std::string describe(const std::vector<Token>& tokens) {
  std::string out;
  for (const Token& t : tokens) {
    out += t.term + "/" + std::to_string(t.startOffset) + "-" + std::to_string(t.endOffset) + "/" +
           std::to_string(t.type) + "/" + std::to_string(t.tag) + " ";
  }
  return out;
}

}  // namespace

TEST(TextAnalyzerTest, ConfigAndTokenize) {
  std::vector<Token> tokens(1);
  TokenBuffer buffer;

  // Unconfigured: both forms fail, and the vector is emptied anyway.
  TextAnalyzer bare;
  EXPECT_FALSE(bare.tokenizeText("text", buffer, true));
  EXPECT_FALSE(bare.tokenizeText("text", tokens, true));
  EXPECT_TRUE(tokens.empty());

  // No "analyzer" element: false, nothing logged.
  {
    StdoutCapture capture;
    AutoPtr<Parameter> none = parseParam("<other>x</other>");
    EXPECT_FALSE(bare.config(*none));
    EXPECT_EQ("", capture.str());
  }

  AutoPtr<TextAnalyzer> text;
  AutoPtr<Parameter> good = parseParam(kBasicAnalyzer);
  ASSERT_TRUE(TextAnalyzer::configTextAnalyzer(*good, text));
  tokens.assign(2, Token());
  ASSERT_TRUE(text->tokenizeText("Nice day? \xE3\x80\x82ok", tokens, true));
  EXPECT_EQ("Nice/0-3/14/1 day/5-7/14/1 ?/8-8/13/1 \xE3\x80\x82/10-12/9/1 ok/13-14/14/1 ", describe(tokens));
  // The isolated flag reaches the analyzer unchanged; both modes work here.
  ASSERT_TRUE(text->tokenizeText("Nice", tokens, false));
  EXPECT_EQ("Nice/0-3/14/1 ", describe(tokens));

  // An empty text is accepted and yields no token, stale ones cleared.
  ASSERT_TRUE(text->tokenizeText("", tokens, true));
  EXPECT_TRUE(tokens.empty());

  // A second config looks at nothing: even an unusable element is accepted.
  AutoPtr<Parameter> none = parseParam("<other>x</other>");
  EXPECT_TRUE(text->config(*none));
  ASSERT_TRUE(text->tokenizeText("Nice", tokens, true));
  EXPECT_EQ(1u, tokens.size());
}

TEST(TextAnalyzerTest, FailedConfigIsKept) {
  AutoPtr<Parameter> bad =
      parseParam("<analyzer><tokenizers><item><identifier>noSuchTokenzier</identifier></item></tokenizers></analyzer>");
  AutoPtr<TextAnalyzer> text;
  {
    StdoutCapture capture;
    EXPECT_FALSE(TextAnalyzer::configTextAnalyzer(*bad, text));
    const std::vector<std::string> lines = capture.lines();
    ASSERT_EQ(1u, lines.size());
    EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Failed to Configure Analyzer")) << lines[0];
  }
  // The unconfigured object is handed out, and a later config takes the
  // early exit although the analyzer never configured.
  ASSERT_TRUE(text.get() != nullptr);
  AutoPtr<Parameter> good = parseParam(kBasicAnalyzer);
  EXPECT_TRUE(text->config(*good));
  std::vector<Token> tokens(1);
  EXPECT_FALSE(text->tokenizeText("Nice", tokens, true));
  EXPECT_TRUE(tokens.empty());
}

TEST(TextTest, NormaliseAndDotProduct) {
  Text a;
  a.m_terms = {TextTerm("x", 1, 3.0f), TextTerm("y", 3, 4.0f)};
  Text b;
  b.m_terms = {TextTerm("y", 3, 2.0f), TextTerm("z", 5, 1.0f)};
  // Only id 3 is shared: 4 x 2, not divided by the norms.
  EXPECT_DOUBLE_EQ(8.0, a.cosSim(b));

  a.L2Normalize();
  EXPECT_FLOAT_EQ(0.6f, a.m_terms[0].weight);
  EXPECT_FLOAT_EQ(0.8f, a.m_terms[1].weight);

  // No common id, or an empty side: 0.
  Text c;
  c.m_terms = {TextTerm("u", 2, 1.0f), TextTerm("v", 4, 1.0f)};
  EXPECT_EQ(0.0, a.cosSim(c));
  Text empty;
  EXPECT_EQ(0.0, empty.cosSim(a));
  EXPECT_EQ(0.0, a.cosSim(empty));

  // A squared sum of at most 1e-10 leaves the weights alone.
  Text tiny;
  tiny.m_terms = {TextTerm("t", 1, 1e-6f), TextTerm("u", 2, 5e-6f)};
  tiny.L2Normalize();
  EXPECT_EQ(1e-6f, tiny.m_terms[0].weight);
  EXPECT_EQ(5e-6f, tiny.m_terms[1].weight);
}
