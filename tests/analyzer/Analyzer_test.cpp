#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/Analyzer.h"
#include "analyzer/BasicTokenizer.h"
#include "analyzer/DictTokenizer.h"
#include "common/InstanceCreator.h"
#include "common/Singleton.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::configure::Parameter;
using vortm::testing::parseConfig;
using vortm::testing::tokenStream;

typedef std::vector<std::string> Stream;

namespace {

std::vector<std::string> g_filterLog;

// Logs its "name" when it sees a token, drops by "drop_term" or "drop_type",
// and with "number" true rewrites each tag to 100 plus the count of tokens
// it has seen: per-text state that a clone must start afresh.
class RecordingFilter : public TokenFilter {
 public:
  bool config(const Parameter& param) override {
    param["name"].getStringValue(m_name);
    param["drop_term"].getStringValue(m_dropTerm);
    param["drop_type"].getIntValue(m_dropType);
    std::string number;
    m_number = param["number"].getStringValue(number) && number == "true";
    return true;
  }
  bool filterInternal(Token& token) override {
    if (!m_name.empty()) g_filterLog.push_back(m_name + ":" + token.term);
    if (m_number) token.tag = static_cast<Token::TTag>(100 + m_seen++);
    return token.term == m_dropTerm || token.type == m_dropType;
  }
  // Field by field: a copy constructor would also copy the link to the next
  // filter, an unlocked count shared with other threads.
  AutoPtr<TokenFilter> cloneIgnoringStateInternal() override {
    RecordingFilter* copy = new RecordingFilter();
    copy->m_name = m_name;
    copy->m_dropTerm = m_dropTerm;
    copy->m_dropType = m_dropType;
    copy->m_number = m_number;
    return AutoPtr<TokenFilter>(copy, true);
  }

 private:
  std::string m_name, m_dropTerm;
  int m_dropType = -1;
  bool m_number = false;
  int m_seen = 0;
};

VORTM_DECLARE_CREATOR(RecordingFilterCreator, TokenFilter, RecordingFilter, "testRecordingFilter");

// A dictionary tokenizer over a plain set; "bad" is refused.
class SetDictTokenizer : public DictTokenizer {
 public:
  bool config(const Parameter&) override { return true; }
  bool isInDict(const std::string& word) override { return m_words.count(word) || Tokenizer::isInDict(word); }
  bool doTokenizeInternal(const char*, unsigned int*, unsigned int, TokenBuffer&, unsigned int) override {
    return true;
  }
  bool insertWord(const std::string& word, Token::TType, Token::TTag) override {
    if (word == "bad") return false;
    return m_words.insert(word).second;
  }
  std::set<std::string> m_words;
};

std::string tokenizerXml(const std::string& identifier, const std::string& param) {
  return "<t><identifier>" + identifier + "</identifier><param>" + param + "</param></t>";
}

// An analyzer configured from a "tokenizers" list; fails the test if config fails.
AutoPtr<Analyzer> makeAnalyzer(const std::string& tokenizers, const std::string& extra = "") {
  vortm::common::Singleton<vortm::common::InstanceCreatorHelper<RecordingFilterCreator>,
                           vortm::common::LazyInstantiation, vortm::common::FastMutex>::instance();
  AutoPtr<Parameter> root = parseConfig("<tokenizers>" + tokenizers + "</tokenizers>" + extra);
  AutoPtr<Analyzer> analyzer(new Analyzer(), true);
  EXPECT_TRUE(root && analyzer->config(*root));
  return analyzer;
}

Stream analyze(Analyzer& analyzer, const std::string& text, bool isolated = false) {
  TokenBuffer out;
  EXPECT_TRUE(analyzer.doTokenize(text, out, isolated));
  return tokenStream(out);
}

}  // namespace

TEST(AnalyzerTest, ChainOffsetsAreRelativeToTheWholeText) {
  AutoPtr<Analyzer> utf8 = makeAnalyzer(tokenizerXml("sentenceTokenzier", "<encode>utf-8</encode>") +
                                        tokenizerXml("basicTokenzier", "<encode>utf-8</encode>"));
  // Each span's start is the base of the basic tokenizer's offsets; the last
  // tokenizer writes its runs out as they stand.
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

  // GBK "你好，Hi"
  AutoPtr<Analyzer> gbk = makeAnalyzer(tokenizerXml("sentenceTokenzier", "") + tokenizerXml("basicTokenzier", ""),
                                       "<encode>GB2312</encode>");
  EXPECT_EQ("GB2312", gbk->getEncode());  // inherited by the tokenizers, kept as written here
  EXPECT_EQ(Stream({"\xC4\xE3\xBA\xC3/0/3/6/1", "Hi/6/7/14/1"}), analyze(*gbk, "\xC4\xE3\xBA\xC3\xA3\xACHi"));
}

TEST(AnalyzerTest, ConfigRules) {
  using vortm::testing::StdoutCapture;
  Analyzer analyzer;
  EXPECT_FALSE(analyzer.config(vortm::configure::ParameterNULL));

  // No tokenizer: configured, but tokenizing fails; default encode.
  AutoPtr<Analyzer> empty = makeAnalyzer("");
  EXPECT_EQ("utf-8", empty->getEncode());
  TokenBuffer out;
  EXPECT_FALSE(empty->doTokenize("x", out, false));

  // An entry without identifier is passed over; the next one still counts.
  AutoPtr<Analyzer> skipped =
      makeAnalyzer("<t><param><encode>utf-8</encode></param></t>" + tokenizerXml("basicTokenzier", "<encode>utf8</encode>"));
  EXPECT_FALSE(skipped->getTokenizer()->getPostTokenizer());
  EXPECT_EQ(Stream({"Hi/0/1/14/1"}), analyze(*skipped, "Hi"));

  // An unknown identifier fails the whole configuration.
  AutoPtr<Parameter> root = parseConfig("<tokenizers>" + tokenizerXml("noSuchTokenzier", "<encode>utf-8</encode>") +
                                        "</tokenizers>");
  EXPECT_FALSE(analyzer.config(*root));

  // Encodings are lower-cased first; others warn. An unknown lexer fails.
  BasicTokenizer t;
  EXPECT_TRUE(t.config(*parseConfig("<encode>GB2312</encode>")));
  EXPECT_EQ("gb2312", t.getEncode());
  EXPECT_EQ("basicGBKLexer", t.getLexerIdentifier());
  EXPECT_FALSE(t.config(*parseConfig("<encode>utf-8</encode><lexer_identifier>noLexer</lexer_identifier>")));
  {
    StdoutCapture capture;
    EXPECT_FALSE(t.config(*parseConfig("<encode>ascii</encode>")));
    std::map<std::string, std::string> param = {{"encode", "latin1"}};
    EXPECT_FALSE(t.config(param));
    param.clear();
    EXPECT_FALSE(t.config(param));  // no encode at all: no utility, no message
    std::vector<std::string> lines = capture.lines();
    ASSERT_EQ(2u, lines.size());
    EXPECT_TRUE(vortm::testing::isLogRecord(lines[0], "Warn", "101", "Unsupported Encode ascii")) << lines[0];
    EXPECT_TRUE(vortm::testing::isLogRecord(lines[1], "Warn", "101", "Unsupported Encode latin1")) << lines[1];
  }
}

TEST(AnalyzerTest, FilterChain) {
  // Configured A then B: B sees each token first, and a drop by B hides the
  // token from A.
  g_filterLog.clear();
  AutoPtr<Analyzer> ordered = makeAnalyzer(tokenizerXml(
      "basicTokenzier",
      "<encode>utf-8</encode><token_filters>"
      "<f><identifier>testRecordingFilter</identifier><param><name>A</name></param></f>"
      "<f><identifier>testRecordingFilter</identifier><param><name>B</name><drop_term>ab</drop_term></param></f>"
      "</token_filters>"));
  EXPECT_EQ(Stream({"cd/3/4/14/1"}), analyze(*ordered, "ab cd"));
  EXPECT_EQ(Stream({"B:ab", "B:cd", "A:cd"}), g_filterLog);

  // A dropped run never reaches the next tokenizer.
  const std::string ngram = tokenizerXml("chNGramTokenzier", "<encode>utf-8</encode><max_n type=\"int\">1</max_n>");
  AutoPtr<Analyzer> plain = makeAnalyzer(tokenizerXml("basicTokenzier", "<encode>utf-8</encode>") + ngram);
  EXPECT_EQ(Stream({"hi/0/1/14/1", "你/2/4/8/1", "好/5/7/8/1"}), analyze(*plain, "hi你好"));
  AutoPtr<Analyzer> dropping = makeAnalyzer(
      tokenizerXml("basicTokenzier",
                   "<encode>utf-8</encode><token_filters><f><identifier>testRecordingFilter</identifier>"
                   "<param><drop_type type=\"int\">6</drop_type></param></f></token_filters>") +
      ngram);
  EXPECT_EQ(Stream({"hi/0/1/14/1"}), analyze(*dropping, "hi你好"));
}

TEST(AnalyzerTest, IsolatedModeOnManyThreads) {
  // The numbering filter carries state from token to token.
  AutoPtr<Analyzer> analyzer = makeAnalyzer(
      tokenizerXml("sentenceTokenzier", "<encode>utf-8</encode>") +
      tokenizerXml("basicTokenzier",
                   "<encode>utf-8</encode><token_filters><f><identifier>testRecordingFilter</identifier>"
                   "<param><number>true</number></param></f></token_filters>"));
  const std::vector<std::string> texts = {"好的，Hi there!\n再见？ok", "one two three", "“引号”里，a-b c"};
  std::vector<Stream> expected;
  for (const std::string& text : texts) expected.push_back(analyze(*analyzer, text, true));
  // Each isolated call, and each span within it, starts from fresh state.
  EXPECT_EQ(Stream({"好的/0/5/6/100", "Hi/9/10/14/100", "there/12/16/14/101", "!/17/17/1/102", "再见/19/24/6/100",
                    "ok/28/29/14/100"}),
            expected[0]);
  EXPECT_EQ(expected[1], analyze(*analyzer, texts[1], true));
  // The shared filter keeps counting across calls in the plain mode.
  analyze(*analyzer, texts[1], false);
  EXPECT_EQ(Stream({"one/0/2/14/103", "two/4/6/14/104", "three/8/12/14/105"}), analyze(*analyzer, texts[1], false));

  std::atomic<int> mismatches(0);
  std::vector<std::thread> threads;
  for (int n = 0; n < 4; ++n)
    threads.emplace_back([&, n] {
      for (int round = 0; round < 200; ++round) {
        size_t k = (round + n) % texts.size();
        TokenBuffer out;
        if (!analyzer->doTokenize(texts[k], out, true) || tokenStream(out) != expected[k]) ++mismatches;
      }
    });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(0, mismatches.load());
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
  SetDictTokenizer* dict = new SetDictTokenizer();
  head->attachPostTokenizer(middle);
  head->attachPostTokenizer(AutoPtr<Tokenizer>(dict, true));
  EXPECT_TRUE(middle->getPostTokenizer() == dict && dict->getPreTokenizer() == middle.get());
  EXPECT_EQ(2, middle.useCount());  // ours and the head's link, not the back link

  // The first dictionary tokenizer takes the words in order; a refusal stops.
  EXPECT_TRUE(head->insertUserWords({"x", "y"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_TRUE(head->isInDict("y"));
  EXPECT_FALSE(head->insertUserWords({"z", "bad", "w"}, Token::TT_USER_WORD, Token::TG_TARGET));
  EXPECT_EQ(std::set<std::string>({"x", "y", "z"}), dict->m_words);
}
