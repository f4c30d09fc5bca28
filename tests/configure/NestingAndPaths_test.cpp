// Hostile configurations: nesting far beyond any real file, special files
// given as the configuration, and file paths relative to the configuration.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

#include "TestSupport.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "utility/BufferPool.h"

using namespace vortm::common;
using namespace vortm::configure;
using namespace vortm::testing;

namespace {

TEST(NestingTest, DepthIsBoundedAndDeepTreesFreeWithoutRecursion) {
  ASSERT_TRUE(runOnSmallStack([] {
    BasicParamParser parser;
    AutoPtr<Parameter> root;
    // The deepest accepted file parses, copies and prints.
    ASSERT_TRUE(parser.doParseFromText(nestedConfig(Parameter::MAX_DEPTH), root));
    EXPECT_EQ(Parameter::MAX_DEPTH * 2 + 1, splitLines(root->clone()->toString()).size());
    // One level more fails cleanly, with a record, also far deeper.
    for (unsigned int depth : {Parameter::MAX_DEPTH + 1, 100000u}) {
      StdoutCapture capture;
      EXPECT_FALSE(parser.doParseFromText(nestedConfig(depth), root));
      EXPECT_EQ("Config Nested Deeper than 1000 Levels", parser.getErrorText());
      ASSERT_EQ(1u, capture.lines().size());
      EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101", "Config Nested Deeper than 1000 Levels"));
    }
    // A tree built in code may be deeper still; dropping it must not recurse.
    {
      AutoPtr<Parameter> top(new Parameter(), true);
      Parameter* node = top.get();
      for (int i = 0; i < 200000; ++i) {
        AutoPtr<Parameter> child(new Parameter(), true);
        node->appendSubParam("a", child);
        node = child.get();
      }
      // A subtree held elsewhere outlives the tree it came from.
      AutoPtr<Parameter> kept = top->getSubParamPtr("a");
      top = AutoPtr<Parameter>();
      EXPECT_EQ(1u, kept->size());
    }
    // A saved tree read back stops at the same depth.
    AutoPtr<Parameter> deep(new Parameter(), true);
    ASSERT_TRUE(parser.doParseFromText(nestedConfig(Parameter::MAX_DEPTH), deep));
    vortm::utility::BufferPool pool(true);
    ASSERT_TRUE(deep->writeSelf(pool));
    Parameter copy;
    EXPECT_TRUE(copy.readSelf(pool));
    vortm::utility::BufferPool deeper(true);
    Parameter wrapper;
    wrapper.appendSubParam("w", deep);
    ASSERT_TRUE(wrapper.writeSelf(deeper));
    EXPECT_FALSE(copy.readSelf(deeper));
  }));
}

TEST(ConfigFilesTest, SpecialFilesFailAtOnceWithTheReason) {
  TempDir dir;
  const std::string fifo = dir.file("fifo.xml");
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  // Each kind's reason is the file reader's (BufferedFileTest.OnlyRegularFilesOpen).
  const std::pair<std::string, std::string> cases[] = {{fifo, "not a regular file"},
                                                        {dir.file("none.xml"), "No such file or directory"}};
  for (const auto& c : cases) {
    StdoutCapture capture;
    EXPECT_FALSE(parser.doParse(c.first, root)) << c.first;
    ASSERT_EQ(1u, capture.lines().size()) << c.first;
    EXPECT_TRUE(isLogRecord(capture.lines()[0], "Warn", "101",
                            "Unable to Read Config File " + c.first + ": " + c.second))
        << capture.str();
  }
}

TEST(ConfigFilesTest, FilePathsAreRelativeToTheConfigurationFolder) {
  TempDir dir;
  ASSERT_EQ(0, mkdir(dir.file("model").c_str(), 0700));
  const std::string xml =
      "<dict_file>zh.dict</dict_file><en_pos_senti_file>en/pos.txt</en_pos_senti_file>"
      "<word_vec_file_for_LM_tokenizer>lm/w.txt</word_vec_file_for_LM_tokenizer>"
      "<senti_centroid_files><c>a.bin</c><c>/abs/b.bin</c></senti_centroid_files>"
      "<identifier>not/a/path</identifier><dict_dir>stays</dict_dir>";
  writeFile(dir.file("model/c.xml"), xml);
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  ASSERT_TRUE(parser.doParse(dir.file("model/c.xml"), root));
  const std::string base = dir.file("model/");
  auto value = [&root](const std::string& key, int index = -1) {
    std::string v;
    (index < 0 ? (*root)[key] : (*root)[key][index]).getStringValue(v);
    return v;
  };
  EXPECT_EQ(base + "zh.dict", value("dict_file"));
  EXPECT_EQ(base + "en/pos.txt", value("en_pos_senti_file"));
  EXPECT_EQ(base + "lm/w.txt", value("word_vec_file_for_LM_tokenizer"));
  EXPECT_EQ(base + "a.bin", value("senti_centroid_files", 0));
  EXPECT_EQ("/abs/b.bin", value("senti_centroid_files", 1));
  EXPECT_EQ("not/a/path", value("identifier"));
  EXPECT_EQ("stays", value("dict_dir"));
  // A text has no folder: its paths stay as written.
  ASSERT_TRUE(parser.doParseFromText(xml, root));
  EXPECT_EQ("zh.dict", value("dict_file"));
}

}  // namespace
