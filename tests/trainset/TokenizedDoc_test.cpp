#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "common/thread/SimpleThreadPool.h"
#include "modular/LexcionSentiScorerTokenizedDocFilter.h"
#include "modular/ParallelTokenizedDocIterator.h"
#include "modular/StandardTokenizedDocIterator.h"

using namespace vortm::modular;
using namespace vortm::trainset;
using vortm::analyzer::Token;
using vortm::common::AutoPtr;
using vortm::common::SimpleThreadPool;

namespace {

// Hands out prepared documents.
class VectorDocReader : public DocReader {
 public:
  explicit VectorDocReader(std::vector<Doc> docs) : m_docs(std::move(docs)) {}
  bool hasNextDoc() override { return m_next < m_docs.size() && (m_doc = m_docs[m_next++], true); }
  Doc getNextDoc() override { return m_doc; }
  void getNextDoc(Doc& doc) override { doc = m_doc; }
  size_t m_next = 0;

 private:
  std::vector<Doc> m_docs;
  Doc m_doc;
};

Doc makeDoc(const std::string& content, const std::string& label = "", const std::string& title = "",
            const std::string& subTitle = "") {
  Doc d;
  d.content = content;
  d.label = label;
  d.title = title;
  d.subTitle = subTitle;
  d.source = "src";
  return d;
}

// A basic tokenizer tagging the test word lists: "good" 6, "bad" 7.
AutoPtr<TextAnalyzer> makeAnalyzer() {
  const std::string words = VORELIN_TEST_DATA_DIR "/words/";
  const std::string xml =
      "<analyzer><encode>utf-8</encode><tokenizers><tokenizer><identifier>basicTokenzier</identifier><param>"
      "<encode>utf-8</encode><token_filters><filter><identifier>defaultEnFilter</identifier><param>"
      "<en_pos_senti_file>" + words + "en_positive.txt</en_pos_senti_file><en_neg_senti_file>" + words +
      "en_negative.txt</en_neg_senti_file></param></filter></token_filters></param></tokenizer></tokenizers>"
      "</analyzer>";
  AutoPtr<TextAnalyzer> analyzer;
  EXPECT_TRUE(TextAnalyzer::configTextAnalyzer(*vortm::testing::parseXml(xml), analyzer));
  return analyzer;
}

struct RejectAll : TokenizedDocFilter {
  bool filter(TokenizedDoc&) override { return true; }
};

TEST(TokenizedDocTest, StandardIteratorTextLabelsAndFilters) {
  AutoPtr<TextAnalyzer> analyzer = makeAnalyzer();
  std::vector<Doc> docs = {makeDoc("body", " top/sub \t", "Head", "Sub"), makeDoc("", "pos"), makeDoc("only")};
  VectorDocReader* raw = new VectorDocReader(docs);
  StandardTokenizedDocIterator it(AutoPtr<DocReader>(raw, true), analyzer);
  it.setFilter(AutoPtr<TokenizedDocFilter>(new StandardTokenizedDocFilter, true));

  ASSERT_TRUE(it.hasNext());
  std::vector<std::string> terms;
  for (const Token& t : it.current().tokens)
    if (t.type == Token::TT_EN_WORD) terms.push_back(t.term);
  EXPECT_EQ((std::vector<std::string>{"head", "sub", "body"}), terms);  // lower-cased by the filter
  // "Head\nSub\nbody": the line feeds sit between the fields.
  EXPECT_EQ(9, it.current().tokens.back().startOffset);
  EXPECT_EQ("top/sub", it.current().label.identifier);
  EXPECT_EQ((std::vector<std::string>{"top", "sub"}), it.current().label.parts);
  EXPECT_EQ("src", it.current().source);
  // The empty document is dropped by the filter; content alone is the text.
  ASSERT_TRUE(it.hasNext());
  EXPECT_EQ(0, it.current().tokens.front().startOffset);
  EXPECT_EQ("only", it.current().tokens.front().term);
  EXPECT_TRUE(it.current().label.parts.empty());
  EXPECT_FALSE(it.hasNext());

  // A filter that rejects everything drains the reader and yields nothing.
  VectorDocReader* all = new VectorDocReader(docs);
  StandardTokenizedDocIterator rejecting(AutoPtr<DocReader>(all, true), analyzer);
  rejecting.setFilter(AutoPtr<TokenizedDocFilter>(new RejectAll, true));
  EXPECT_FALSE(rejecting.hasNext());
  EXPECT_EQ(3u, all->m_next);
  // No reader or no analyzer: nothing.
  StandardTokenizedDocIterator empty((AutoPtr<DocReader>()), analyzer);
  EXPECT_FALSE(empty.hasNext());
}

// Answers a fixed score and counts its calls.
class FixedScorer : public ILexcionSentiScorer {
 public:
  explicit FixedScorer(double s) : score(s) {}
  bool config(const vortm::configure::Parameter&) override { return true; }
  bool getSentiScore(std::vector<Token>&, double& out) override {
    ++calls;
    out = score;
    return true;
  }
  double score;
  int calls = 0;
};

TEST(TokenizedDocTest, LexiconFilterLabelsOnlyBeyondStrictBounds) {
  struct Case {
    double score;
    bool dropped;
    std::string label;
  } cases[] = {{0.25, true, ""},
               {-0.25, true, ""},
               {0.0, true, ""},
               {std::nextafter(0.25, 1.0), false, "pos"},
               {std::nextafter(-0.25, -1.0), false, "neg"},
               {1.0, false, "pos"},
               {std::numeric_limits<double>::quiet_NaN(), true, ""}};
  for (const Case& c : cases) {
    FixedScorer* scorer = new FixedScorer(c.score);
    LexcionSentiScorerTokenizedDocFilter filter((AutoPtr<ILexcionSentiScorer>(scorer, true)));
    TokenizedDoc doc;
    EXPECT_EQ(c.dropped, filter.filter(doc)) << c.score;
    EXPECT_EQ(c.label, doc.label.identifier) << c.score;
    EXPECT_EQ(c.label.empty() ? 0u : 1u, doc.label.parts.size());
    EXPECT_EQ(1, scorer->calls);
  }
  // "pos" and "neg" pass unscored; any other label is scored over.
  FixedScorer* scorer = new FixedScorer(-0.9);
  LexcionSentiScorerTokenizedDocFilter filter((AutoPtr<ILexcionSentiScorer>(scorer, true)));
  TokenizedDoc pos;
  pos.label = Label("pos", "/");
  EXPECT_FALSE(filter.filter(pos));
  EXPECT_EQ("pos", pos.label.identifier);
  EXPECT_EQ(0, scorer->calls);
  TokenizedDoc other;
  other.label = Label("pos/x", "/");
  EXPECT_FALSE(filter.filter(other));
  EXPECT_EQ("neg", other.label.identifier);
  EXPECT_EQ(1, scorer->calls);
  // No scorer: every document is dropped, unchanged.
  LexcionSentiScorerTokenizedDocFilter none((AutoPtr<ILexcionSentiScorer>()));
  EXPECT_TRUE(none.filter(pos));
  EXPECT_EQ("pos", pos.label.identifier);
}

std::vector<Doc> manyDocs(size_t n) {
  static const char* words[] = {"good", "bad", "plain", "room", "staff", "late"};
  std::vector<Doc> docs;
  for (size_t i = 0; i < n; ++i) {
    std::string text;
    for (size_t w = 0; w < 1 + i % 7; ++w) text += std::string(words[(i * 7 + w * 3) % 6]) + " ";
    docs.push_back(makeDoc(i % 11 == 0 ? "" : text + std::to_string(i), i % 3 ? "pos" : ""));
  }
  return docs;
}

// The pooled pipeline gives exactly what the one-thread one gives, in the
// same order, with the worker filter applied, under any batch size.
TEST(TokenizedDocTest, ParallelPipelineMatchesSequential) {
  AutoPtr<TextAnalyzer> analyzer = makeAnalyzer();
  std::vector<Doc> docs = manyDocs(500);
  AutoPtr<TokenizedDocFilter> stdFilter(new StandardTokenizedDocFilter, true);

  StandardTokenizedDocIterator seq(AutoPtr<DocReader>(new VectorDocReader(docs), true), analyzer);
  seq.setFilter(stdFilter);
  std::vector<TokenizedDoc> expected;
  while (seq.hasNext()) expected.push_back(seq.current());
  ASSERT_GT(expected.size(), 400u);

  SimpleThreadPool pool(2, 4);
  for (size_t batch : {1u, 7u, 64u, 1000u}) {
    ParallelTokenizedDocIterator par(AutoPtr<DocReader>(new VectorDocReader(docs), true), analyzer, pool, stdFilter,
                                     batch);
    size_t i = 0;
    while (par.hasNext()) {
      ASSERT_LT(i, expected.size());
      const TokenizedDoc& got = par.current();
      ASSERT_EQ(expected[i].tokens.size(), got.tokens.size()) << "doc " << i << " batch " << batch;
      for (size_t t = 0; t < got.tokens.size(); ++t) ASSERT_EQ(expected[i].tokens[t].term, got.tokens[t].term);
      EXPECT_EQ(expected[i].label.identifier, got.label.identifier);
      ++i;
    }
    EXPECT_EQ(expected.size(), i);
    EXPECT_EQ(docs.size(), par.readCount());
    EXPECT_EQ(docs.size() - expected.size(), par.droppedCount());
    EXPECT_FALSE(par.hadError());
  }

  // A worker filter that rejects everything: nothing comes out, all is read.
  ParallelTokenizedDocIterator none(AutoPtr<DocReader>(new VectorDocReader(docs), true), analyzer, pool,
                                    AutoPtr<TokenizedDocFilter>(new RejectAll, true), 16);
  EXPECT_FALSE(none.hasNext());
  EXPECT_EQ(docs.size(), none.droppedCount());

  // Abandoned half way: the destructor waits for the batches in flight.
  {
    ParallelTokenizedDocIterator partial(AutoPtr<DocReader>(new VectorDocReader(docs), true), analyzer, pool,
                                         stdFilter, 8);
    ASSERT_TRUE(partial.hasNext());
  }
  pool.waitIdle();
}

struct Throwing : TokenizedDocFilter {
  bool filter(TokenizedDoc& doc) override {
    if (doc.tokens.size() > 3) throw std::runtime_error("filter broke");
    return false;
  }
};

TEST(TokenizedDocTest, ParallelPipelineReportsAFailingBatch) {
  vortm::testing::StdoutCapture capture;
  AutoPtr<TextAnalyzer> analyzer = makeAnalyzer();
  std::vector<Doc> docs = {makeDoc("alpha"), makeDoc("beta"), makeDoc("gamma delta eps zeta eta"),
                           makeDoc("theta"), makeDoc("iota")};
  SimpleThreadPool pool(2);
  ParallelTokenizedDocIterator it(AutoPtr<DocReader>(new VectorDocReader(docs), true), analyzer, pool,
                                  AutoPtr<TokenizedDocFilter>(new Throwing, true), 2);
  std::vector<std::string> got;
  while (it.hasNext()) got.push_back(it.current().tokens.empty() ? "" : it.current().tokens[0].term);
  // The batch of the long document and "theta" is lost; the others come through.
  EXPECT_EQ((std::vector<std::string>{"alpha", "beta", "iota"}), got);
  EXPECT_TRUE(it.hadError());
  pool.waitIdle();
  std::vector<std::string> errors;
  EXPECT_EQ(1u, pool.takeErrors(errors));
  EXPECT_EQ("filter broke", errors[0]);
}

}  // namespace
