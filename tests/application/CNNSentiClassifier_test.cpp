#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "application/CNNSentiClassifier.h"
#include "configure/BasicParamParser.h"

using namespace vortm::testing;
using vortm::application::CNNSentiClassifier;

namespace {

const std::string kData = VORELIN_TEST_DATA_DIR;

// The analyzer block of the parity fixtures, with absolute paths.
std::string analyzerXml() {
  std::string xml = readFile(kData + "/cnn/parity_analyzer.xml");
  const size_t from = xml.find("<text_analyzer>");
  const size_t to = xml.find("</text_analyzer>") + std::string("</text_analyzer>").size();
  std::string block = xml.substr(from, to - from);
  for (size_t at = 0; (at = block.find(">../words/", at)) != std::string::npos; at += 10)
    block.replace(at + 1, 3, kData + "/");
  return block;
}

std::string classifierXml(const std::string& identifier, const std::string& prefix, const std::string& paramFile,
                          double weight = 1.0) {
  return "<classifier><identifier>cnn_senti_classifier</identifier><number_weight type=\"numeric\">" +
         std::to_string(weight) + "</number_weight><param><cnn_doc_vec_builder><identifier>" + identifier +
         "</identifier><param><word_vec_file>" + prefix + ".wordvec</word_vec_file><model_file>" + prefix +
         ".model</model_file></param></cnn_doc_vec_builder>" + analyzerXml() + "<param_file>" + paramFile +
         "</param_file></param></classifier>";
}

class CnnClassifierTest : public ::testing::Test {
 protected:
  std::string config(const std::string& members) {
    writeFile(m_dir.file("c.xml"), "<number_senti_classifiers>" + members + "</number_senti_classifiers>");
    return m_dir.file("c.xml");
  }
  // Configures a lone classifier from the first member of `members`.
  bool configure(CNNSentiClassifier& c, const std::string& members, std::string* log = nullptr) {
    vortm::configure::BasicParamParser parser;
    vortm::common::AutoPtr<vortm::configure::Parameter> root;
    EXPECT_TRUE(parser.doParse(config(members), root));
    StdoutCapture capture;
    bool ok = c.config((*root)["number_senti_classifiers"][0]["param"]);
    if (log) *log = capture.str();
    return ok;
  }
  TempDir m_dir;
};

std::vector<std::string> readLines(const std::string& path) { return splitLines(readFile(path)); }

TEST_F(CnnClassifierTest, ScoreFormula) {
  // Outputs (0, 0): e0 = e1 = 1, r = 3.5 / 7, score 0.
  EXPECT_EQ(0.0, CNNSentiClassifier::scoreOf(0.0, 0.0));
  // Output 1 is the positive class; 2.5 on both exponentials pulls towards 0.
  const double e = std::exp(std::tanh(1.0));
  EXPECT_NEAR(2 * ((e + 2.5) / (e + 1 + 5.0)) - 1, CNNSentiClassifier::scoreOf(0.0, 1.0), 1e-15);
  EXPECT_NEAR(-CNNSentiClassifier::scoreOf(0.0, 1.0), CNNSentiClassifier::scoreOf(1.0, 0.0), 1e-15);
  // The bound: tanh saturates, so even huge gaps stay well inside (-1, 1).
  const double top = (std::exp(1.0) + 2.5) / (std::exp(1.0) + std::exp(-1.0) + 5.0);
  EXPECT_NEAR(2 * top - 1, CNNSentiClassifier::scoreOf(-30.0, 30.0), 1e-12);
}

TEST_F(CnnClassifierTest, ConfigFailuresAndMessages) {
  const std::string prefix = kData + "/cnn/parity_std";
  double score = 4.0;
  {
    CNNSentiClassifier c;
    EXPECT_FALSE(c.classify("good", score));  // before config
    EXPECT_EQ(4.0, score);
  }
  struct Case {
    std::string members;
    std::string message;
  };
  writeFile(m_dir.file("short.param"), "0.1 0.2 0.3\n");
  const Case cases[] = {
      {"<classifier><identifier>cnn_senti_classifier</identifier><param><param_file>x</param_file></param>"
       "</classifier>",
       "No \"cnn_doc_vec_builder\" item in config file"},
      {classifierXml("standard_doc_vec_builder", prefix, prefix + ".param"), "Failed to Init Doc Vector Builder"},
      {classifierXml("no_such_builder", prefix, prefix + ".param"), "Failed to Init Doc Vector Builder"},
      {classifierXml("std_conv", prefix + "_missing", prefix + ".param"), "Failed to Init Doc Vector Builder"},
      {classifierXml("std_conv", prefix, m_dir.file("short.param")),
       "Failed to Load Params from " + m_dir.file("short.param")},
      {classifierXml("std_conv", prefix, m_dir.file("none.param")),
       "Failed to Load Params from " + m_dir.file("none.param")},
  };
  for (const Case& c : cases) {
    CNNSentiClassifier classifier;
    std::string log;
    EXPECT_FALSE(configure(classifier, c.members, &log)) << c.message;
    auto lines = splitLines(log);
    ASSERT_FALSE(lines.empty());
    EXPECT_TRUE(isLogRecord(lines.back(), "Warn", "101", c.message)) << lines.back();
    EXPECT_FALSE(classifier.classify("good", score));
    EXPECT_EQ(4.0, score);
  }
  // A good configuration, and "update" changes nothing.
  CNNSentiClassifier classifier;
  ASSERT_TRUE(configure(classifier, classifierXml("std_conv", prefix, prefix + ".param")));
  EXPECT_TRUE(classifier.update(vortm::configure::ParameterNULL));
  ASSERT_TRUE(classifier.classify("", score));  // no tokens: the output bias alone
  EXPECT_TRUE(classifier.classify("the film is good", score));
}

// The trainer's own forward pass wrote the expected scores of 100 texts for
// two small models; the library must agree to 1e-6 through the exported API,
// alone and as members of a combined classifier that four threads share.
TEST_F(CnnClassifierTest, ParityWithTrainer) {
  const std::vector<std::string> texts = readLines(kData + "/cnn/parity_texts.txt");
  ASSERT_EQ(100u, texts.size());
  std::vector<double> sums(texts.size(), 0.0);
  const std::string prefixA = kData + "/cnn/parity_std", prefixB = kData + "/cnn/parity_dcnn";
  for (const std::string kind : {"std_conv", "dcnn"}) {
    const std::string prefix = kind == "std_conv" ? prefixA : prefixB;
    const std::vector<std::string> expected = readLines(prefix + ".expected");
    ASSERT_EQ(texts.size(), expected.size());
    const std::vector<double> scores = scoreThroughApi(config(classifierXml(kind, prefix, prefix + ".param")), texts);
    ASSERT_EQ(texts.size(), scores.size());
    int distinct = 0;
    for (size_t i = 0; i < texts.size(); ++i) {
      const double want = std::strtod(expected[i].c_str(), nullptr);
      EXPECT_NEAR(want, scores[i], 1e-6) << kind << ": " << texts[i];
      distinct += i > 0 && std::fabs(want - std::strtod(expected[i - 1].c_str(), nullptr)) > 1e-9;
      sums[i] += (kind == "std_conv" ? 0.5 : 2.0) * want;
    }
    EXPECT_GT(distinct, 50) << "the fixture should tell texts apart";
  }
  const std::vector<double> both = scoreThroughApi(config(classifierXml("std_conv", prefixA, prefixA + ".param", 0.5) +
                                                          classifierXml("dcnn", prefixB, prefixB + ".param", 2.0)),
                                                   texts, 4, 5);
  ASSERT_EQ(texts.size(), both.size());
  for (size_t i = 0; i < texts.size(); ++i) EXPECT_NEAR(sums[i], both[i], 2e-6) << texts[i];
}

}  // namespace

#ifdef VORELIN_CNN_MODEL_DIR
// The shipped models score GBK text through their GBK configurations as they
// score the same text in UTF-8.
TEST(CnnShippedModelTest, GbkConfigurationsScoreAsUtf8) {
  const std::vector<std::pair<std::string, std::vector<std::string> > > cases = {
      {"zh", {"质量很好，非常满意", "太差了，再也不会买了", "物流很快，但是包装破损"}},
      {"en", {"a gorgeous , witty and moving film", "a dull , lifeless mess"}},
  };
  for (const auto& c : cases) {
    const std::string config = std::string(VORELIN_CNN_MODEL_DIR) + "/cnn_" + c.first;
    const std::vector<double> scores = scoreThroughApi(config + ".xml", c.second);
    EXPECT_EQ(scores, scoreThroughApi(config + "_gbk.xml", toGbk(c.second))) << c.first;
    for (double s : scores) EXPECT_NE(0.0, s) << c.first;
  }
}
#endif
