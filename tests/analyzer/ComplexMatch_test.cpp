#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cmath>
#include <map>
#include <thread>

#include "TestSupport.h"
#include "TokenStreams.h"
#include "analyzer/ComplexMaxMatchTokenizer.h"
#include "analyzer/LMBasedMatchTrieDict.h"

using namespace vortm::analyzer;
using namespace vortm::testing;

typedef ComplexMatchTrieDict<unsigned int> Utf8Complex;
typedef LMBasedMatchTrieDict<unsigned int> Utf8LM;
typedef Utf8Complex::MatchWord MatchWord;

namespace {

// An ASCII word as a chunk holds it.
MatchWord word(const std::string& text, unsigned short weight = 0x0206) {
  MatchWord w;
  w.word = text;
  w.byteLength = w.charCount = static_cast<unsigned int>(text.size());
  w.weight = weight;
  return w;
}

void fill(Dict& dict, const std::vector<std::string>& words) {
  for (const std::string& w : words) dict.insert(w, 0x0206);
}

// a, ab, bc, c, de over "abcde" give two chunks of equal total, mean and
// variance: a|bc|de (1, 2, 2) and ab|c|de (2, 1, 2).
const std::vector<std::string> kTieWords = {"a", "ab", "bc", "c", "de"};
// Rows are normalised on loading: bc is (0.6, 0.8), c (0, 1), de (s, s).
const char* kVectors = "5 2\na 1 0\nab 0 1\nbc 3 4\nc 0 2\nde 1 1\n";
const char* kWeights = "5 2\na 1 0\nab 0 1\nbc 1 0\nc 0 1\nde 0 1\n";

}  // namespace

TEST(ComplexMatchTest, TiesAndLanguageModel) {
  Utf8Complex complex("basicUTF8Lexer");
  Utf8LM lm("basicUTF8Lexer");
  fill(complex, kTieWords);
  fill(lm, kTieWords);
  // Equal variance: the later chunk, with the longer first word, wins.
  const Stream late = {"ab/0/1/2/6", "c/2/2/2/6", "de/3/4/2/6"};
  EXPECT_EQ(late, matchText(complex, "basicUTF8Lexer", "abcde"));
  // Chunks are three words long: abc|de|f covers only two words with a
  // dictionary entry, ab|cd|ef covers the whole text in three.
  Utf8Complex three("basicUTF8Lexer");
  fill(three, {"ab", "abc", "cd", "de", "ef"});
  EXPECT_EQ(Stream({"ab/0/1/2/6", "cd/2/3/2/6", "ef/4/5/2/6"}), matchText(three, "basicUTF8Lexer", "abcdef"));
  // Without a model every chunk scores -1.0, which still joins the list, and
  // the earlier chunk wins.
  EXPECT_EQ(Stream({"a/0/0/2/6", "bc/1/2/2/6", "de/3/4/2/6"}), matchText(lm, "basicUTF8Lexer", "abcde"));

  TempDir dir;
  writeFile(dir.file("vec"), kVectors);
  writeFile(dir.file("net"), kWeights);
  StdoutCapture quiet;
  ASSERT_TRUE(lm.init(dir.file("vec"), dir.file("net")));
  const double s = std::sqrt(0.5);
  const MatchWord none;
  auto score = [&](std::vector<MatchWord> chunk, const MatchWord& previous) { return lm.getLMScore(chunk, previous); };
  // a|bc|de: a predicted from bc alone, bc from the mean of a and de; de is
  // only a neighbour. The sum is divided by all three words.
  EXPECT_NEAR((0.6 + (1 + s) / 2) / 3, score({word("a"), word("bc"), word("de")}, none), 1e-12);
  EXPECT_NEAR((1.0 + (1 + s) / 2) / 3, score({word("ab"), word("c"), word("de")}, none), 1e-12);
  // So the model settles the tie for the later chunk this time.
  EXPECT_EQ(late, matchText(lm, "basicUTF8Lexer", "abcde"));
  // The word committed before is the first word's left neighbour.
  EXPECT_NEAR(s / 2, score({word("bc"), word("de")}, none), 1e-12);
  EXPECT_NEAR((1 + s) / 4, score({word("bc"), word("de")}, word("a")), 1e-12);
  // Words of value 0 cost 0.025 once, however many.
  EXPECT_NEAR((s / 2) / 3 - 0.025, score({word("a", 0), word("c", 0), word("de")}, none), 1e-12);
  // One word: 1.0; a word the model lacks, or no known neighbour: -1.0.
  EXPECT_EQ(1.0, score({word("a")}, none));
  EXPECT_EQ(-1.0, score({word("zz"), word("a")}, none));
  EXPECT_EQ(-1.0, score({word("a"), word("zz")}, none));
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
  // Special files are refused before they are opened: a FIFO would block,
  // /dev/zero would never end its first line.
  ASSERT_EQ(0, mkfifo(dir.file("fifo").c_str(), 0600));
  for (const std::string& special : std::vector<std::string>{"/dev/zero", dir.file("fifo"), dir.path()})
    EXPECT_FALSE(lm.loadWordvec(special, dim, rows, ids)) << special;
  EXPECT_FALSE(load("2\na 1 0\n"));  // header of one field
  EXPECT_FALSE(load("2 1\na 1\n"));  // dimension 1
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
  // drops the model loaded before, so every chunk scores as unknown.
  writeFile(dir.file("vec"), kVectors);
  auto init = [&](const std::string& net) {
    writeFile(dir.file("m"), net);
    return lm.init(dir.file("vec"), dir.file("m"));
  };
  std::vector<MatchWord> chunk = {word("a"), word("bc")};
  ASSERT_TRUE(init(kWeights));
  EXPECT_LT(0.0, lm.getLMScore(chunk, MatchWord()));
  EXPECT_FALSE(init("4 2\na 1 0\nab 0 1\nbc 1 0\nc 0 1\n"));
  EXPECT_EQ(-1.0, lm.getLMScore(chunk, MatchWord()));
  EXPECT_TRUE(lm.getWordCount() == 0 && lm.getDimension() == 0);
  EXPECT_FALSE(init("5 3\na 1 0 0\nab 0 1 0\nbc 1 0 0\nc 0 1 0\nde 0 1 0\n"));
}

TEST(ComplexMaxMatchTokenizerTest, LookAheadThroughAnalyzerAndConfig) {
  TempDir dir;
  TrieDict<unsigned int> dict("basicUTF8Lexer");
  fill(dict, {"研究", "研究生", "生命", "起源", "命"});
  ASSERT_TRUE(dict.saveTo(dir.file("dict")));
  writeFile(dir.file("vec"), kVectors);
  writeFile(dir.file("net"), kWeights);
  // The tokenizer's own block, with the model files if given.
  auto block = [&](const std::string& vec, const std::string& net) {
    return "<encode>utf-8</encode><dict_file>" + dir.file("dict") + "</dict_file>" +
           (vec.empty() ? "" : "<word_vec_file_for_LM_tokenizer>" + vec + "</word_vec_file_for_LM_tokenizer>") +
           (net.empty() ? "" : "<net_weight_file_for_LM_tokenizer>" + net + "</net_weight_file_for_LM_tokenizer>");
  };
  // Behind the rule-based tokenizer, which hands each Chinese run on. The
  // chunks from 研 tie on total and mean, and 研究|生命|起源 wins by variance
  // where longest match alone would take 研究生 and strand 命; characters of
  // no word gather into spans.
  Analyzer analyzer;
  ASSERT_TRUE(analyzer.config(*parseXml("<tokenizers>" + chainItem("basicTokenzier", "<encode>utf-8</encode>") +
                                           chainItem("complexMaxMatchTokenzier", block("", "")) + "</tokenizers>")));
  EXPECT_EQ(Stream({"ok/0/1/14/1", "他/2/4/3/1", "研究/5/10/2/6", "生命/11/16/2/6", "起源/17/22/2/6",
                    "他们好/24/32/3/1"}),
            analyze(analyzer, "ok他研究生命起源 他们好"));

  // The model files: both load, or the tokenizer fails without a message of
  // its own; the word vectors alone are refused before any loading.
  ComplexMaxMatchTokenizer t;
  StdoutCapture capture;
  EXPECT_TRUE(t.config(*parseXml(block(dir.file("vec"), dir.file("net")))));
  EXPECT_EQ(Stream({" dim 2", " dim 2"}), capture.lines());
  EXPECT_FALSE(t.config(*parseXml(block(dir.file("vec"), ""))));
  EXPECT_EQ(2u, capture.lines().size());
  EXPECT_FALSE(t.config(*parseXml(block(dir.file("vec"), dir.file("absent")))));
  EXPECT_EQ(3u, capture.lines().size());  // " dim 2" of the word vectors only
  EXPECT_FALSE(t.config(*parseXml("<encode>gbk</encode><dict_file>" + dir.file("absent") + "</dict_file>")));
  ASSERT_EQ(5u, capture.lines().size());
  EXPECT_TRUE(
      isLogRecord(capture.lines()[4], "Warn", "101", "Unable to Load TRIE Dict from File " + dir.file("absent")));
  EXPECT_FALSE(t.getDict());
}

// Candidate lists are built in storage kept per thread and reused. The cuts
// must come in the same order as ever, and a warm thread must segment every
// text as a fresh one does, whatever it segmented before.
TEST(ComplexMatchTest, ReusedCandidateStorage) {
  Utf8Complex dict("basicUTF8Lexer");
  fill(dict, {"a", "ab", "b", "bc", "c"});
  std::string text = "abc";
  std::vector<unsigned int> refs(text.size() + 1, 1);
  std::vector<Utf8Complex::WordChunk> chunks;
  dict.matchNWordChunk(text.data(), 3, refs.data(), 0, 3, chunks);
  std::vector<std::string> cuts;
  for (const auto& chunk : chunks) {
    std::string cut;
    for (const MatchWord& w : chunk) cut += w.word + "|";
    cuts.push_back(cut);
  }
  EXPECT_EQ(std::vector<std::string>({"a|b|c|", "a|bc|", "ab|c|"}), cuts);

  Utf8Complex random("basicUTF8Lexer");
  uint32_t x = 7;
  auto next = [&x](uint32_t n) {
    x = x * 1103515245u + 12345u;
    return (x >> 16) % n;
  };
  auto randomWord = [&](uint32_t maxLength) {
    std::string w;
    for (uint32_t k = 1 + next(maxLength); k > 0; --k) w += static_cast<char>('a' + next(4));
    return w;
  };
  // Ranking through pickOptimizationWordChunk, as a subclass's own ranking
  // does, must cut exactly as the built-in ranking.
  struct ThroughChunks : Utf8Complex {
    ThroughChunks() : Utf8Complex("basicUTF8Lexer") {}
    unsigned int pickOptimizationWordChunk(std::vector<WordChunk>& c, const MatchWord& p) override {
      return Utf8Complex::pickOptimizationWordChunk(c, p);
    }
  } through;
  for (int k = 0; k < 60; ++k) {
    std::string w = randomWord(4);
    random.insert(w, 0x0206);
    through.insert(w, 0x0206);
  }
  std::vector<std::string> texts;
  for (int k = 0; k < 40; ++k) texts.push_back(randomWord(30));
  std::vector<Stream> warm;
  for (const std::string& t : texts) warm.push_back(matchText(random, "basicUTF8Lexer", t));
  for (size_t k = 0; k < texts.size(); ++k) {
    Stream cold;
    std::thread([&] { cold = matchText(random, "basicUTF8Lexer", texts[k]); }).join();
    EXPECT_EQ(cold, warm[k]) << texts[k];
    EXPECT_EQ(warm[k], matchText(random, "basicUTF8Lexer", texts[k])) << texts[k];
    EXPECT_EQ(warm[k], matchText(through, "basicUTF8Lexer", texts[k])) << texts[k];
  }
}
