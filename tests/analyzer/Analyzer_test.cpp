#include <gtest/gtest.h>

#include <map>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/BasicTokenizer.h"
#include "analyzer/TrieDict.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "common/Singleton.h"

using namespace vortm::analyzer;
using namespace vortm::testing;
using vortm::common::AutoPtr;
using vortm::configure::Parameter;

namespace {

// Tags each token with 100 plus the count of tokens it has seen, per-text
// state that a clone must start afresh, and drops the term "drop".
class NumberingFilter : public TokenFilter {
 public:
  bool config(const Parameter& param) override {
    param["drop"].getStringValue(m_drop);
    return true;
  }
  bool filterInternal(Token& token) override {
    token.tag = static_cast<Token::TTag>(100 + m_seen++);
    return token.term == m_drop;
  }
  // Field by field: a copy constructor would also copy the link to the next
  // filter, an unlocked count shared with other threads.
  AutoPtr<TokenFilter> cloneIgnoringStateInternal() override {
    NumberingFilter* copy = new NumberingFilter();
    copy->m_drop = m_drop;
    return AutoPtr<TokenFilter>(copy, true);
  }

 private:
  std::string m_drop;
  int m_seen = 0;
};

VORTM_DECLARE_CREATOR(NumberingFilterCreator, TokenFilter, NumberingFilter, "testNumberingFilter");

// An analyzer configured from a "tokenizers" list; fails the test if config fails.
AutoPtr<Analyzer> makeAnalyzer(const std::string& tokenizers, const std::string& extra = "") {
  vortm::common::Singleton<vortm::common::InstanceCreatorHelper<NumberingFilterCreator>,
                           vortm::common::LazyInstantiation, vortm::common::FastMutex>::instance();
  AutoPtr<Parameter> root = parseXml("<tokenizers>" + tokenizers + "</tokenizers>" + extra);
  AutoPtr<Analyzer> analyzer(new Analyzer(), true);
  EXPECT_TRUE(root && analyzer->config(*root));
  return analyzer;
}

const std::string kUtf8 = "<encode>utf-8</encode>";

// The basic tokenizer in UTF-8 with test filters of the given settings.
std::string basicWithFilters(std::initializer_list<std::string> filterParams) {
  std::string filters;
  for (const std::string& param : filterParams) filters += chainItem("testNumberingFilter", param);
  return chainItem("basicTokenzier", kUtf8 + "<token_filters>" + filters + "</token_filters>");
}

}  // namespace

TEST(AnalyzerTest, ChainOffsetsAreRelativeToTheWholeText) {
  AutoPtr<Analyzer> utf8 = makeAnalyzer(chainItem("sentenceTokenzier", kUtf8) + chainItem("basicTokenzier", kUtf8));
  // Each span's start is the base of the basic tokenizer's offsets.
  EXPECT_EQ(Stream({"好的/0/5/6/1", "Hi/9/10/14/1", "there/12/16/14/1", "!/17/17/1/1", "再见/19/24/6/1",
                    "ok/28/29/14/1"}),
            analyze(*utf8, "好的，Hi there!\n再见？ok"));
  // A span is cut at a zero byte when it is handed on.
  EXPECT_EQ(Stream({"ab/0/1/14/1", "ef/8/9/14/1"}), analyze(*utf8, std::string("ab\0cd，ef", 10)));
  // A four-byte sequence fails the lexer: from there each byte stands alone,
  // and tokenizing goes on.
  EXPECT_EQ(Stream({"a/0/0/14/1", "\xF0/1/1/1/1", "\x9F/2/2/1/1", "\x98/3/3/1/1", "\x80/4/4/1/1", "b/5/5/14/1",
                    "\xE4/6/6/1/1", "\xB8/7/7/1/1", "\xAD/8/8/1/1"}),
            analyze(*utf8, "a\xF0\x9F\x98\x80" "b中"));
  EXPECT_EQ(Stream(), analyze(*utf8, ""));
  // GBK "你好，Hi", the encoding inherited by the tokenizers.
  AutoPtr<Analyzer> gbk = makeAnalyzer(chainItem("sentenceTokenzier", "") + chainItem("basicTokenzier", ""),
                                       "<encode>GB2312</encode>");
  EXPECT_EQ(Stream({"\xC4\xE3\xBA\xC3/0/3/6/1", "Hi/6/7/14/1"}), analyze(*gbk, "\xC4\xE3\xBA\xC3\xA3\xACHi"));
}

TEST(AnalyzerTest, ConfigRules) {
  Analyzer analyzer;
  EXPECT_FALSE(analyzer.config(vortm::configure::ParameterNULL));
  // An unknown identifier fails the whole configuration.
  EXPECT_FALSE(analyzer.config(*parseXml("<tokenizers>" + chainItem("noSuchTokenzier", kUtf8) + "</tokenizers>")));
  // No tokenizer: configured, but tokenizing fails.
  AutoPtr<Analyzer> empty = makeAnalyzer("");
  TokenBuffer out;
  EXPECT_FALSE(empty->doTokenize("x", out, false));
  // An entry without identifier is passed over; the next one still counts.
  AutoPtr<Analyzer> skipped = makeAnalyzer("<t><param>" + kUtf8 + "</param></t>" +
                                           chainItem("basicTokenzier", "<encode>utf8</encode>"));
  EXPECT_FALSE(skipped->getTokenizer()->getPostTokenizer());
  EXPECT_EQ(Stream({"Hi/0/1/14/1"}), analyze(*skipped, "Hi"));

  // Unknown encodings warn; an unknown lexer fails.
  BasicTokenizer t;
  EXPECT_FALSE(t.config(*parseXml(kUtf8 + "<lexer_identifier>noLexer</lexer_identifier>")));
  StdoutCapture capture;
  EXPECT_FALSE(t.config(*parseXml("<encode>ascii</encode>")));
  std::map<std::string, std::string> param = {{"encode", "latin1"}}, none;
  EXPECT_FALSE(t.config(param));
  EXPECT_FALSE(t.config(none));  // no encode at all: no message
  const Stream lines = capture.lines();
  ASSERT_EQ(2u, lines.size());
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Unsupported Encode ascii")) << lines[0];
  EXPECT_TRUE(isLogRecord(lines[1], "Warn", "101", "Unsupported Encode latin1")) << lines[1];
}

TEST(AnalyzerTest, FilterChain) {
  // Configured A then B: B sees each token first, and its drop hides the
  // token from A, whose count starts at "cd".
  AutoPtr<Analyzer> ordered = makeAnalyzer(basicWithFilters({"", "<drop>ab</drop>"}));
  EXPECT_EQ(Stream({"cd/3/4/14/100"}), analyze(*ordered, "ab cd"));
  // A dropped run never reaches the next tokenizer; the one kept does.
  AutoPtr<Analyzer> dropping = makeAnalyzer(basicWithFilters({"<drop>你好</drop>"}) +
                                            chainItem("chNGramTokenzier", kUtf8 + "<max_n type=\"int\">1</max_n>"));
  EXPECT_EQ(Stream({"hi/0/1/14/100", "呀/9/11/8/1"}), analyze(*dropping, "hi你好 呀"));
}

TEST(AnalyzerTest, IsolatedModeOnManyThreads) {
  // Each isolated call, and each span within it, starts the numbering afresh.
  AutoPtr<Analyzer> analyzer = makeAnalyzer(chainItem("sentenceTokenzier", kUtf8) + basicWithFilters({""}));
  const Stream texts = {"好的，Hi there!\n再见？ok", "one two three", "“引号”里，a-b c"};
  std::vector<Stream> expected;
  for (const std::string& text : texts) expected.push_back(analyze(*analyzer, text, true));
  EXPECT_EQ(Stream({"好的/0/5/6/100", "Hi/9/10/14/100", "there/12/16/14/101", "!/17/17/1/102", "再见/19/24/6/100",
                    "ok/28/29/14/100"}),
            expected[0]);
  EXPECT_EQ(expected[1], analyze(*analyzer, texts[1], true));
  // The shared filter keeps counting across calls in the plain mode.
  analyze(*analyzer, texts[1], false);
  EXPECT_EQ(Stream({"one/0/2/14/103", "two/4/6/14/104", "three/8/12/14/105"}), analyze(*analyzer, texts[1], false));

  onThreads(4, [&](int n) {
    for (int round = 0; round < 200; ++round) {
      size_t k = (round + n) % texts.size();
      EXPECT_EQ(expected[k], analyze(*analyzer, texts[k], true));
    }
  });
}

TEST(AnalyzerTest, ChainLinksAndUserWords) {
  std::map<std::string, std::string> param = {{"encode", "utf-8"}};
  AutoPtr<Tokenizer> head(new BasicTokenizer(), true);
  ASSERT_TRUE(head->config(param));
  // Without a dictionary tokenizer there is nowhere to put words.
  EXPECT_FALSE(head->insertUserWords({"x"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_FALSE(head->isInDict("x"));
  // Appended at the end, linked back without ownership.
  AutoPtr<Tokenizer> middle(new BasicTokenizer(), true);
  AutoPtr<Tokenizer> dict(
      new TrieDictMaxForwardTokenizer(AutoPtr<Dict>(new TrieDict<unsigned int>("basicUTF8Lexer"), true)), true);
  head->attachPostTokenizer(middle);
  head->attachPostTokenizer(dict);
  EXPECT_TRUE(middle->getPostTokenizer() == dict && dict->getPreTokenizer().get() == middle.get());
  EXPECT_EQ(2, middle.useCount());  // ours and the head's link, not the back link
  // The words pass on to the dictionary tokenizer in order; a refusal, here
  // of a broken character, stops.
  StdoutCapture capture;
  EXPECT_FALSE(head->insertUserWords({"x", "ab\xF0", "w"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_TRUE(head->isInDict("x"));
  EXPECT_FALSE(head->isInDict("w"));
}
