#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/Analyzer.h"
#include "analyzer/ComplexMatchTrieDict.h"
#include "analyzer/ComplexMaxMatchTokenizer.h"
#include "analyzer/LMBasedMatchTrieDict.h"
#include "common/InstanceCreator.h"

using namespace vortm::analyzer;
using vortm::common::AutoPtr;
using vortm::common::InstanceCreator;
using vortm::configure::Parameter;
using vortm::testing::isLogRecord;
using vortm::testing::parseConfig;
using vortm::testing::StdoutCapture;
using vortm::testing::TempDir;
using vortm::testing::tokenStream;
using vortm::testing::writeFile;

typedef std::vector<std::string> Stream;
typedef ComplexMatchTrieDict<unsigned int> Utf8Complex;
typedef LMBasedMatchTrieDict<unsigned int> Utf8LM;
typedef Utf8Complex::MatchWord MatchWord;

namespace {

// Each character's byte length at its first byte, as the tokenizer passes it.
std::vector<unsigned int> forwardRefs(const std::string& lexerId, const std::string& text) {
  std::vector<unsigned int> ref(text.size() + 1, 1);
  AutoPtr<CharacterLexer> lexer(InstanceCreator<CharacterLexer>::getCreation(lexerId), true);
  lexer->setText(text);
  unsigned int offset, length;
  while (lexer->doLexer(offset, length) == 1) ref[offset] = length;
  return ref;
}

Stream matchText(Dict& dict, const std::string& lexerId, const std::string& text) {
  std::vector<unsigned int> ref = forwardRefs(lexerId, text);
  TokenBuffer out;
  EXPECT_TRUE(dict.match(text.data(), static_cast<unsigned int>(text.size()), ref.data(), out, 0));
  return tokenStream(out);
}

// The chunks at `position`, each as its words joined by "|".
Stream chunksAt(Utf8Complex& dict, const std::string& text, unsigned int position) {
  std::vector<unsigned int> ref = forwardRefs("basicUTF8Lexer", text);
  std::vector<std::vector<MatchWord> > chunks;
  EXPECT_TRUE(dict.matchNWordChunk(text.data(), static_cast<unsigned int>(text.size()), ref.data(), position, 3,
                                   chunks));
  Stream out;
  for (const auto& chunk : chunks) {
    std::string joined;
    for (const MatchWord& w : chunk) joined += (joined.empty() ? "" : "|") + w.word;
    out.push_back(joined);
  }
  return out;
}

MatchWord word(const std::string& text, unsigned short weight = 0x0206) {
  MatchWord w;
  w.word = text;
  w.byteLength = static_cast<unsigned int>(text.size());
  w.charCount = static_cast<unsigned int>(text.size());  // ASCII words only
  w.weight = weight;
  return w;
}

template <class DICT>
void fill(DICT& dict, const std::vector<std::string>& words) {
  for (const std::string& w : words) dict.insert(w, 0x0206);
}

// a, ab, bc, c, de over "abcde" give two chunks of equal total, mean and
// variance: a|bc|de (1, 2, 2) and ab|c|de (2, 1, 2).
const std::vector<std::string> kTieWords = {"a", "ab", "bc", "c", "de"};

// Rows are normalised on loading: bc is (0.6, 0.8), c (0, 1), de (s, s).
const char* kVectors = "5 2\na 1 0\nab 0 1\nbc 3 4\nc 0 2\nde 1 1\n";
const char* kWeights = "5 2\na 1 0\nab 0 1\nbc 1 0\nc 0 1\nde 0 1\n";

}  // namespace

TEST(ComplexMatchTest, LookAheadAndSpans) {
  // UTF-8: the two chunks from 0 tie on total and mean, 研究|生命|起源 wins by
  // variance; longest match alone takes 研究生 and strands 命.
  Utf8Complex utf8("basicUTF8Lexer");
  TrieDict<unsigned int> plain("basicUTF8Lexer");
  fill(utf8, {"研究", "研究生", "生命", "起源", "命"});
  fill(plain, {"研究", "研究生", "生命", "起源", "命"});
  const std::string text = "他研究生命起源";
  EXPECT_EQ(Stream({"他/0/2/3/1", "研究/3/8/2/6", "生命/9/14/2/6", "起源/15/20/2/6"}),
            matchText(utf8, "basicUTF8Lexer", text));
  EXPECT_EQ(Stream({"他/0/2/3/1", "研究生/3/11/2/6", "命/12/14/2/6", "起源/15/20/2/6"}),
            matchText(plain, "basicUTF8Lexer", text));
  // Candidates by rising length of the first word; near the end of the text
  // chunks hold fewer than 3 words.
  EXPECT_EQ(Stream({"研究|生命|起源", "研究生|命|起源"}), chunksAt(utf8, text, 3));
  EXPECT_EQ(Stream({"命|起源"}), chunksAt(utf8, text, 12));
  // No word at all: lone characters of value 0 gather into one span.
  EXPECT_EQ(Stream({"他们好/0/8/3/1"}), matchText(utf8, "basicUTF8Lexer", "他们好"));

  // GBK, the same words: 研究 D1D0 BEBF, 生 C9FA, 命 C3FC, 起源 C6F0 D4B4.
  ComplexMatchTrieDict<unsigned short> gbk("basicGBKLexer");
  fill(gbk, {"\xD1\xD0\xBE\xBF", "\xD1\xD0\xBE\xBF\xC9\xFA", "\xC9\xFA\xC3\xFC", "\xC6\xF0\xD4\xB4", "\xC3\xFC"});
  EXPECT_EQ(Stream({"\xD1\xD0\xBE\xBF/0/3/2/6", "\xC9\xFA\xC3\xFC/4/7/2/6", "\xC6\xF0\xD4\xB4/8/11/2/6", "x/12/12/3/1"}),
            matchText(gbk, "basicGBKLexer", "\xD1\xD0\xBE\xBF\xC9\xFA\xC3\xFC\xC6\xF0\xD4\xB4x"));
}

TEST(ComplexMatchTest, TiesAndLanguageModel) {
  const std::string text = "abcde";
  Utf8Complex complex("basicUTF8Lexer");
  Utf8LM lm("basicUTF8Lexer");
  fill(complex, kTieWords);
  fill(lm, kTieWords);
  ASSERT_EQ(Stream({"a|bc|de", "ab|c|de"}), chunksAt(complex, text, 0));
  // Equal variance: the later chunk, with the longer first word.
  EXPECT_EQ(Stream({"ab/0/1/2/6", "c/2/2/2/6", "de/3/4/2/6"}), matchText(complex, "basicUTF8Lexer", text));
  // Without a model every chunk scores -1.0, which still joins the list, and
  // the earlier chunk wins.
  EXPECT_EQ(Stream({"a/0/0/2/6", "bc/1/2/2/6", "de/3/4/2/6"}), matchText(lm, "basicUTF8Lexer", text));

  TempDir dir;
  writeFile(dir.file("vec"), kVectors);
  writeFile(dir.file("net"), kWeights);
  {
    StdoutCapture capture;
    ASSERT_TRUE(lm.init(dir.file("vec"), dir.file("net")));
    EXPECT_EQ(Stream({" dim 2", " dim 2"}), capture.lines());
  }
  const double s = std::sqrt(0.5);
  const MatchWord none;
  // a|bc|de: a predicted from bc alone, bc from the mean of a and de; de is
  // only a neighbour. The sum is divided by all three words.
  std::vector<MatchWord> early = {word("a"), word("bc"), word("de")};
  std::vector<MatchWord> late = {word("ab"), word("c"), word("de")};
  EXPECT_NEAR((0.6 + (1 + s) / 2) / 3, lm.getLMScore(early, none), 1e-12);
  EXPECT_NEAR((1.0 + (1 + s) / 2) / 3, lm.getLMScore(late, none), 1e-12);
  // So the model settles the tie for the later chunk this time.
  EXPECT_EQ(Stream({"ab/0/1/2/6", "c/2/2/2/6", "de/3/4/2/6"}), matchText(lm, "basicUTF8Lexer", text));

  // The word committed before is the first word's left neighbour.
  std::vector<MatchWord> pair = {word("bc"), word("de")};
  EXPECT_NEAR(s / 2, lm.getLMScore(pair, none), 1e-12);
  EXPECT_NEAR((1 + s) / 4, lm.getLMScore(pair, word("a")), 1e-12);
  // Words of value 0 cost 0.025 once, however many.
  std::vector<MatchWord> unknown = {word("a", 0), word("c", 0), word("de")};
  EXPECT_NEAR((s / 2) / 3 - 0.025, lm.getLMScore(unknown, none), 1e-12);
  // One word: 1.0; a word the model lacks, or no known neighbour: -1.0.
  std::vector<MatchWord> one = {word("a")}, missing = {word("zz"), word("a")}, alone = {word("a"), word("zz")};
  EXPECT_EQ(1.0, lm.getLMScore(one, none));
  EXPECT_EQ(-1.0, lm.getLMScore(missing, none));
  EXPECT_EQ(-1.0, lm.getLMScore(alone, none));
}

TEST(ComplexMatchTest, ModelLoaderRejectsBadFiles) {
  TempDir dir;
  Utf8LM lm("basicUTF8Lexer");
  int dim = 0;
  std::vector<std::vector<double> > rows;
  std::map<std::string, unsigned int> ids;
  auto load = [&](const std::string& content) {
    writeFile(dir.file("m"), content);
    return lm.loadWordvec(dir.file("m"), dim, rows, ids);
  };
  StdoutCapture capture;
  EXPECT_FALSE(lm.loadWordvec(dir.file("absent"), dim, rows, ids));
  EXPECT_FALSE(load("2\na 1 0\n"));      // header of one field
  EXPECT_FALSE(load("2 1\na 1\n"));      // dimension 1
  EXPECT_TRUE(capture.lines().empty());
  // Short rows fail the load and leave nothing behind, even under a header
  // that claims a dimension no row could fill.
  EXPECT_FALSE(load("2 3\na 1 0 0\nb 1 0\n"));
  EXPECT_TRUE(rows.empty() && ids.empty());
  EXPECT_FALSE(load("1 2000000000\na 1 2\n"));
  EXPECT_EQ(Stream({" dim 3", " dim 2000000000"}), capture.lines());
  // Line ends of either kind, blank lines skipped, extra numbers ignored.
  ASSERT_TRUE(load("2 2\r\na 3 4 9\r\n\r\nb 0 1\r\n"));
  EXPECT_EQ(2, dim);
  EXPECT_EQ((std::map<std::string, unsigned int>{{"a", 0}, {"b", 1}}), ids);
  EXPECT_EQ((std::vector<std::vector<double> >{{0.6, 0.8}, {0.0, 1.0}}), rows);

  // The two files must agree in row count and dimension; a failed init
  // leaves no model, so every chunk scores as unknown.
  writeFile(dir.file("vec"), kVectors);
  writeFile(dir.file("fewer"), "4 2\na 1 0\nab 0 1\nbc 1 0\nc 0 1\n");
  writeFile(dir.file("wider"), "5 3\na 1 0 0\nab 0 1 0\nbc 1 0 0\nc 0 1 0\nde 0 1 0\n");
  EXPECT_FALSE(lm.init(dir.file("vec"), dir.file("fewer")));
  EXPECT_FALSE(lm.init(dir.file("vec"), dir.file("wider")));
  std::vector<MatchWord> chunk = {word("a"), word("bc")};
  EXPECT_EQ(-1.0, lm.getLMScore(chunk, MatchWord()));
}

TEST(ComplexMaxMatchTokenizerTest, ConfigThroughAnalyzer) {
  TempDir dir;
  {
    TrieDict<unsigned int> dict("basicUTF8Lexer");
    fill(dict, {"研究", "研究生", "生命", "起源", "命"});
    ASSERT_TRUE(dict.saveTo(dir.file("dict")));
  }
  writeFile(dir.file("vec"), kVectors);
  writeFile(dir.file("net"), kWeights);
  // The tokenizer's own block, and a whole analyzer around it.
  auto block = [&](const std::string& extra) {
    return "<encode>utf-8</encode><dict_file>" + dir.file("dict") + "</dict_file>" + extra;
  };
  auto xml = [&](const std::string& extra) {
    return "<tokenizers><item><identifier>basicTokenzier</identifier><param><encode>utf-8</encode></param></item>"
           "<item><identifier>complexMaxMatchTokenzier</identifier><param>" +
           block(extra) + "</param></item></tokenizers>";
  };

  // The rule-based tokenizer hands the Chinese run on; the look-ahead cuts it.
  Analyzer plain;
  ASSERT_TRUE(plain.config(*parseConfig(xml(""))));
  TokenBuffer out;
  ASSERT_TRUE(plain.doTokenize("ok研究生命起源", out, true));
  EXPECT_EQ(Stream({"ok/0/1/14/1", "研究/2/7/2/6", "生命/8/13/2/6", "起源/14/19/2/6"}), tokenStream(out));

  // The model files: both load, or the tokenizer fails without a message
  // of its own; the word vectors alone are refused before any loading.
  auto model = [&](const std::string& net) {
    return "<word_vec_file_for_LM_tokenizer>" + dir.file("vec") + "</word_vec_file_for_LM_tokenizer>" +
           (net.empty() ? "" : "<net_weight_file_for_LM_tokenizer>" + net + "</net_weight_file_for_LM_tokenizer>");
  };
  ComplexMaxMatchTokenizer t;
  StdoutCapture capture;
  Analyzer withModel;
  ASSERT_TRUE(withModel.config(*parseConfig(xml(model(dir.file("net"))))));
  EXPECT_EQ(Stream({" dim 2", " dim 2"}), capture.lines());
  EXPECT_FALSE(t.config(*parseConfig(block(model("")))));
  EXPECT_EQ(2u, capture.lines().size());
  EXPECT_FALSE(t.config(*parseConfig(block(model(dir.file("absent"))))));
  EXPECT_EQ(3u, capture.lines().size());  // " dim 2" of the word vectors only
  AutoPtr<Parameter> noDict = parseConfig("<encode>gbk</encode><dict_file>" + dir.file("absent") + "</dict_file>");
  EXPECT_FALSE(t.config(*noDict));
  ASSERT_EQ(5u, capture.lines().size());
  EXPECT_TRUE(isLogRecord(capture.lines()[4], "Warn", "101", "Unable to Load TRIE Dict from File " + dir.file("absent")));
  EXPECT_FALSE(t.getDict());
}
