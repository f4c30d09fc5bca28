#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenBuilder.h"
#include "modular/Text.h"
#include "modular/TextAnalyzer.h"

using namespace vortm;
using namespace vortm::testing;
using namespace vortm::modular;
using analyzer::Token;
using common::AutoPtr;

namespace {

const char* kBasicAnalyzer =
    "<analyzer><tokenizers><item><identifier>basicTokenzier</identifier>"
    "<param><encode>utf-8</encode></param></item></tokenizers></analyzer>";

std::string describe(const std::vector<Token>& tokens) {
  std::string out;
  for (const Token& t : tokens)
    out += t.term + "/" + std::to_string(t.startOffset) + "-" + std::to_string(t.endOffset) + "/" +
           std::to_string(t.type) + "/" + std::to_string(t.tag) + " ";
  return out;
}

}  // namespace

TEST(TextAnalyzerTest, Tokenize) {
  // Terms, offsets, types and tags as analysed; stale tokens are replaced,
  // and an empty text yields none.
  AutoPtr<TextAnalyzer> text;
  ASSERT_TRUE(TextAnalyzer::configTextAnalyzer(*parseXml(kBasicAnalyzer), text));
  std::vector<Token> tokens(2);
  ASSERT_TRUE(text->tokenizeText("Nice day? \xE3\x80\x82ok", tokens, true));
  EXPECT_EQ("Nice/0-3/14/1 day/5-7/14/1 ?/8-8/13/1 \xE3\x80\x82/10-12/9/1 ok/13-14/14/1 ", describe(tokens));
  ASSERT_TRUE(text->tokenizeText("", tokens, true));
  EXPECT_TRUE(tokens.empty());
}

TEST(TextAnalyzerTest, FailedConfigIsKept) {
  AutoPtr<TextAnalyzer> text;
  {
    StdoutCapture capture;
    const char* unknown = "<analyzer><tokenizers><item><identifier>noSuchTokenzier</identifier></item></tokenizers>"
                          "</analyzer>";
    EXPECT_FALSE(TextAnalyzer::configTextAnalyzer(*parseXml(unknown), text));
    ASSERT_EQ(1u, capture.lines().size());
    EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Failed to Configure Analyzer"));
  }
  // The unconfigured object is handed out, a later config takes the early
  // exit, and tokenizing fails with the vector emptied.
  ASSERT_TRUE(text.get() != nullptr);
  EXPECT_TRUE(text->config(*parseXml(kBasicAnalyzer)));
  std::vector<Token> tokens(1);
  EXPECT_FALSE(text->tokenizeText("Nice", tokens, true));
  EXPECT_TRUE(tokens.empty());
}

TEST(TextTest, NormaliseAndDotProduct) {
  Text a, b, empty, tiny;
  a.m_terms = {TextTerm("x", 1, 3.0f), TextTerm("y", 3, 4.0f)};
  b.m_terms = {TextTerm("y", 3, 2.0f), TextTerm("z", 5, 1.0f)};
  // Only id 3 is shared: 4 x 2, not divided by the norms; an empty side gives 0.
  EXPECT_DOUBLE_EQ(8.0, a.cosSim(b));
  EXPECT_EQ(0.0, empty.cosSim(a));

  a.L2Normalize();
  EXPECT_FLOAT_EQ(0.6f, a.m_terms[0].weight);
  EXPECT_FLOAT_EQ(0.8f, a.m_terms[1].weight);
  // A squared sum of at most 1e-10 leaves the weights alone.
  tiny.m_terms = {TextTerm("t", 1, 1e-6f), TextTerm("u", 2, 5e-6f)};
  tiny.L2Normalize();
  EXPECT_EQ(1e-6f, tiny.m_terms[0].weight);
  EXPECT_EQ(5e-6f, tiny.m_terms[1].weight);
}
