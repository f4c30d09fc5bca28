#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "SavedBytes.h"
#include "TestSupport.h"
#include "modular/Centroid.h"

using namespace vortm;
using namespace vortm::testing;
using common::AutoPtr;
using modular::Centroid;
using trainset::Label;
using utility::MySparseVector;

namespace {

AutoPtr<Centroid> twoClass(const std::string& first, const std::string& second, std::vector<double> a,
                           std::vector<double> b, std::vector<double> biases = {0.0, 0.0}) {
  AutoPtr<Centroid> c(new Centroid(), true);
  c->labels = {Label(first, "/"), Label(second, "/")};
  c->weights = {a, b};
  c->biases = biases;
  return c;
}

MySparseVector<double, int> doc(std::vector<std::pair<int, double> > entries) {
  MySparseVector<double, int> v;
  for (auto& e : entries) v[e.first] = e.second;
  return v;
}

}  // namespace

TEST(CentroidTest, SavedFormByteForByte) {
  TempDir dir;
  SavedBytes b;
  b.u32(2).u32(3).str("bmVn").str("cG9z");
  b.u32(0).f64(0.5).u32(2).f64(-0.25).u32(3).byte(0x0A);  // neg row: columns 0 and 2
  b.u32(1).f64(0.75).u32(3).byte(0x0A);                   // pos row: column 1
  b.u64(42).u32(7).f64(0.125).f64(-0.125);
  writeFile(dir.file("c"), b.bytes());

  Centroid c;
  ASSERT_TRUE(c.loadFrom(dir.file("c")));
  ASSERT_TRUE(c.isValid());
  EXPECT_EQ(c.labels[1].identifier, "pos");
  EXPECT_EQ(c.weights[0], std::vector<double>({0.5, 0.0, -0.25}));
  EXPECT_EQ(c.weights[1], std::vector<double>({0.0, 0.75, 0.0}));
  EXPECT_EQ(c.stamp, 42u);
  EXPECT_EQ(c.sampleCount, 7u);
  EXPECT_EQ(c.biases, std::vector<double>({0.125, -0.125}));
  ASSERT_TRUE(c.writeTo(dir.file("w")));
  EXPECT_EQ(readFile(dir.file("w")), b.bytes());

  // An end mark above D also ends a row; a file that stops after the rows
  // still loads, without stamp, count and biases.
  SavedBytes old;
  old.u32(2).u32(3).str("bmVn").str("cG9z").u32(9).byte(0x0A).u32(1).f64(1.0).u32(3).byte(0x0A);
  writeFile(dir.file("old"), old.bytes());
  ASSERT_TRUE(c.loadFrom(dir.file("old")));
  EXPECT_EQ(c.weights[1][1], 1.0);
  EXPECT_EQ(c.biases, std::vector<double>({0.0, 0.0}));

  // Tiny weights are not stored.
  AutoPtr<Centroid> tiny = twoClass("neg", "pos", {1e-11, 1.0}, {0.0, 2.0});
  ASSERT_TRUE(tiny->writeTo(dir.file("t")));
  ASSERT_TRUE(c.loadFrom(dir.file("t")));
  EXPECT_EQ(c.weights[0][0], 0.0);
  EXPECT_EQ(c.weights[0][1], 1.0);
}

TEST(CentroidTest, DamagedFilesFail) {
  TempDir dir;
  StdoutCapture capture;
  Centroid c;
  writeFile(dir.file("one"), SavedBytes().u32(1).u32(3).str("cG9z").u32(3).byte(0x0A).bytes());
  EXPECT_FALSE(c.loadFrom(dir.file("one")));
  writeFile(dir.file("nodim"), SavedBytes().u32(2).u32(0).bytes());
  EXPECT_FALSE(c.loadFrom(dir.file("nodim")));
  // Forged sizes end at the data, not in an allocation.
  writeFile(dir.file("labels"), SavedBytes().u32(0xffffffffu).u32(3).str("bmVn").bytes());
  EXPECT_FALSE(c.loadFrom(dir.file("labels")));
  writeFile(dir.file("dim"),
            SavedBytes().u32(2).u32(0xffffffffu).str("bmVn").str("cG9z").u32(0xffffffffu).byte(10).u32(0xffffffffu).bytes());
  EXPECT_FALSE(c.loadFrom(dir.file("dim")));
  writeFile(dir.file("cut"), SavedBytes().u32(2).u32(3).str("bmVn").str("cG9z").u32(0).bytes());
  EXPECT_FALSE(c.loadFrom(dir.file("cut")));
  EXPECT_FALSE(c.loadFrom(dir.file("absent")));
  Centroid empty;
  EXPECT_FALSE(empty.writeTo(dir.file("empty")));
  EXPECT_FALSE(twoClass("neg", "pos", {1.0}, {1.0})->writeTo(dir.file("no/dir")));
  std::vector<std::string> lines = capture.lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(isLogRecord(lines[0], "Warn", "101", "Failed to Open " + dir.file("absent") + " for Reading Centroid"));
  EXPECT_TRUE(isLogRecord(lines[1], "Warn", "101", "Failed to Open " + dir.file("no/dir") + " for Writting Centroid"));
}

TEST(CentroidTest, Classify) {
  AutoPtr<Centroid> c = twoClass("neg", "pos", {1.0, 0.0}, {0.0, 1.0}, {0.0, 0.5});
  MySparseVector<double, int> d = doc({{0, 2.0}, {1, 1.0}});
  std::vector<double> scores;
  ASSERT_TRUE(c->classify(d, scores));
  EXPECT_EQ(scores, std::vector<double>({2.0, 1.5}));
  EXPECT_EQ(c->classify(d).identifier, "neg");
  // Equal scores: the first label wins.
  MySparseVector<double, int> tie = doc({{0, 1.5}, {1, 1.0}});
  EXPECT_EQ(c->classify(tie).identifier, "neg");
  // An id beyond the rows: the empty label, and false with partial sums.
  MySparseVector<double, int> wide = doc({{0, 1.0}, {5, 1.0}});
  EXPECT_TRUE(c->classify(wide).parts.empty());
  scores.clear();
  EXPECT_FALSE(c->classify(wide, scores));
  // Every score at or below -1000000: the empty label.
  AutoPtr<Centroid> low = twoClass("neg", "pos", {0.0}, {0.0}, {-1000000.0, -2000000.0});
  MySparseVector<double, int> any = doc({{0, 1.0}});
  EXPECT_TRUE(low->classify(any).identifier.empty());
}

TEST(CentroidTest, MergeAndShaping) {
  AutoPtr<Centroid> a = twoClass("neg", "pos", {1.0, -2.0}, {3.0, 4.0}, {1.0, 2.0});
  AutoPtr<Centroid> b = twoClass("neg", "pos", {3.0, 2.0}, {1.0, 0.0}, {3.0, 0.0});
  a->stamp = 5;
  b->stamp = 9;
  a->sampleCount = 1;
  b->sampleCount = 2;
  std::vector<AutoPtr<Centroid> > parts = {a, b};
  Centroid merged;
  ASSERT_TRUE(merged.merge(parts, false));
  EXPECT_EQ(merged.weights[0], std::vector<double>({2.0, 0.0}));
  EXPECT_EQ(merged.weights[1], std::vector<double>({2.0, 2.0}));
  EXPECT_EQ(merged.biases, std::vector<double>({2.0, 1.0}));
  EXPECT_EQ(merged.stamp, 9u);
  EXPECT_EQ(merged.sampleCount, 3u);
  ASSERT_TRUE(merged.merge(parts, true));
  EXPECT_EQ(merged.biases, std::vector<double>({0.0, 0.0}));
  EXPECT_DOUBLE_EQ(merged.weights[1][0], 1.0 / std::sqrt(2.0));
  EXPECT_EQ(merged.weights[0], std::vector<double>({1.0, 0.0}));

  std::vector<AutoPtr<Centroid> > one = {a};
  ASSERT_TRUE(merged.merge(one, false));
  EXPECT_EQ(merged.weights, a->weights);
  EXPECT_EQ(merged.biases, a->biases);

  std::vector<AutoPtr<Centroid> > swapped = {a, twoClass("pos", "neg", {1.0, 1.0}, {1.0, 1.0})};
  EXPECT_FALSE(merged.merge(swapped, false));
  std::vector<AutoPtr<Centroid> > shorter = {a, twoClass("neg", "pos", {1.0}, {1.0})};
  EXPECT_FALSE(merged.merge(shorter, false));
  std::vector<AutoPtr<Centroid> > withNull = {a, AutoPtr<Centroid>()};
  EXPECT_FALSE(merged.merge(withNull, false));
  std::vector<AutoPtr<Centroid> > none;
  EXPECT_FALSE(merged.merge(none, false));

  a->ensureNonNegative();
  EXPECT_EQ(a->weights[0], std::vector<double>({1.0, 0.0}));
  EXPECT_EQ(a->biases, std::vector<double>({0.0, 0.0}));
  AutoPtr<Centroid> zero = twoClass("neg", "pos", {0.0, 0.0}, {3.0, 4.0}, {1.0, 1.0});
  zero->L2Normalize();
  EXPECT_EQ(zero->weights[0], std::vector<double>({0.0, 0.0}));
  EXPECT_EQ(zero->weights[1], std::vector<double>({0.6, 0.8}));
  EXPECT_EQ(zero->biases, std::vector<double>({0.0, 0.0}));
}

TEST(CentroidTest, WordsThroughTheVocabulary) {
  TempDir dir;
  writeFile(dir.file("v"), SavedBytes().u32(10).u32(2).word("5aW9", 2, 2).word("5beu", 1, 1).bytes());
  modular::Vocabulary vocabulary;
  ASSERT_TRUE(vocabulary.loadFrom(dir.file("v")));
  AutoPtr<Centroid> c = twoClass("neg", "pos", {0.5, 2.0}, {3.0, -1.0});
  std::vector<std::vector<std::pair<std::string, double> > > top;
  std::vector<Label> labels;
  ASSERT_TRUE(c->getTopWord(vocabulary, top, labels));
  ASSERT_EQ(top.size(), 2u);
  EXPECT_EQ(labels[1].identifier, "pos");
  EXPECT_EQ(top[0][0].first, "差");
  EXPECT_EQ(top[1][0].first, "好");
  EXPECT_EQ(top[1][1].second, -1.0);

  std::vector<std::vector<std::string> > words = {{"好", "未知"}};
  std::vector<Label> which = {Label("pos", "/")};
  ASSERT_TRUE(c->ensureZero(vocabulary, words, which));
  EXPECT_EQ(c->weights[1], std::vector<double>({0.0, -1.0}));
  std::vector<Label> unknown = {Label("other", "/")};
  EXPECT_FALSE(c->ensureZero(vocabulary, words, unknown));
  AutoPtr<Centroid> wide = twoClass("neg", "pos", {1.0, 1.0, 1.0}, {1.0, 1.0, 1.0});
  EXPECT_FALSE(wide->ensureZero(vocabulary, words, which));
  EXPECT_FALSE(wide->getTopWord(vocabulary, top, labels));
}
