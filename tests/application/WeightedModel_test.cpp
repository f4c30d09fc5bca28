// The shipped weighted model through the exported functions, in both
// encodings.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "TestSupport.h"

using namespace vortm::testing;

TEST(WeightedModelTest, ScoresAlikeInUtf8AndGbk) {
  const std::string dir = VORELIN_WEIGHTED_MODEL_DIR;
  // Sign expected: +1, -1, or 0 for no opinion at all.
  const std::vector<std::pair<std::string, int> > cases = {
      {"质量很好，非常满意", 1},
      {"太差了，再也不会买了", -1},
      {"价格便宜，但是质量太差", -1},
      {"服务态度缺乏热情", 0},  // "lack" cancels the positive word beside it
      {"一点都不好", -1},
      {"a gorgeous , witty and moving film", 1},
      {"a dull , lifeless mess", -1},
      {"the cast is fine , but the script is a disaster", -1},
      {"the film is not good", -1},
      {"今天星期二", 0},
  };
  std::vector<std::string> texts;
  for (const auto& c : cases) texts.push_back(c.first);
  const std::vector<double> utf8 = scoreThroughApi(dir + "/weighted_utf8.xml", texts);
  ASSERT_EQ(texts.size(), utf8.size());
  EXPECT_EQ(utf8, scoreThroughApi(dir + "/weighted_gbk.xml", toGbk(texts)));
  // Both defaults add the trained members, which read GBK text through
  // converted vocabularies: the same scores, and not the lexicon's alone
  // (it has no word in the last text, the n-gram members do).
  const std::vector<double> defaults = scoreThroughApi(dir + "/../default/default_utf8.xml", texts);
  EXPECT_EQ(defaults, scoreThroughApi(dir + "/../default/default_gbk.xml", toGbk(texts)));
  ASSERT_EQ(texts.size(), defaults.size());
  EXPECT_NE(0.0, defaults.back());
  for (size_t i = 0; i < cases.size(); ++i) {
    const double s = utf8[i];
    const int sign = s > 1e-9 ? 1 : (s < -1e-9 ? -1 : 0);
    EXPECT_EQ(cases[i].second, sign) << cases[i].first << " scored " << s;
    EXPECT_LE(std::abs(s), 1.0) << cases[i].first;
  }
}
