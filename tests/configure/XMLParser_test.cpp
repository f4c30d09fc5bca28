#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "utility/BasicXMLParser.h"
#include "utility/CharIterator.h"

using namespace vortm::common;
using namespace vortm::configure;
using namespace vortm::utility;

namespace {

typedef std::vector<std::string> Events;

// Writes every event as one line, attributes sorted by name; stops after a closing stopTag.
struct RecordingListener : Listener {
  using Listener::onTagEnd;
  void onTagBegin(const std::string& tag, HashTable<std::string, std::string>& attributes) override {
    std::map<std::string, std::string> sorted;
    std::string k, v;
    for (auto it = attributes.iterator(); it->hasNext(); sorted[k] = v) it->next(k, v);
    events.push_back("B:" + tag);
    for (auto& kv : sorted) events.back() += " " + kv.first + "=[" + kv.second + "]";
  }
  void onTagEnd(const std::string& tag) override { events.push_back("E:" + tag); }
  void onTextEnd(const std::string& text) override { events.push_back("T:" + text); }
  void onTagEnd(const std::string& tag, bool& stop) override {
    onTagEnd(tag);
    stop = tag == stopTag;
  }
  Events events;
  std::string stopTag;
};

AutoPtr<CharIterator> textInput(const std::string& text) {
  CharIteratorText* in = new CharIteratorText();
  in->setText(text);
  return AutoPtr<CharIterator>(in, true);
}

// The events of parsing `text`, then "ok" or "failed".
Events parse(const std::string& text, BasicXMLParser* keep = nullptr) {
  BasicXMLParser local;
  BasicXMLParser& parser = keep ? *keep : local;
  RecordingListener listener;
  parser.setCharIterator(textInput(text));
  parser.addListener(AutoPtr<Listener>(&listener, false));
  listener.events.push_back(parser.doParse() ? "ok" : "failed");
  return listener.events;
}

}  // namespace

TEST(XMLParserTest, TagsTextCommentsAndAttributes) {
  // Self-closing forms; text behind a closing tag is skipped; a parent gets an empty text from its own closing tag.
  EXPECT_EQ(Events({"B:r", "B:a", "E:a", "B:b", "E:b", "B:c", "T:v\n", "E:c", "T:", "E:r", "ok"}),
            parse("<r><a/> <b /> <c>v\n</c> junk </r> tail"));
  // A comment ends at its first ">", and is one only with a blank after "<!--".
  EXPECT_EQ(Events({"B:!--x--", "B:a", "T:1", "E:a", "ok"}), parse("<!-- a > b --><!--x--><a>1</a>"));
  // Input ending on a comment or an open tag fails, as does an unquoted value up to "/" that does not close the tag.
  for (const char* bad : {"<a>1</a><!-- end -->", "<a>1", "", "<a href=http://x>1</a>", "<a k=\"open>1</a>"})
    EXPECT_EQ("failed", parse(bad).back()) << bad;

  // The declaration is kept, not reported; a blank before "=" loses the attribute; the later of equal names wins.
  BasicXMLParser parser;
  EXPECT_EQ(Events({"B:t a=[x'y] b=[1>2] c=[plain] e=[v] f=[2]", "T:x", "E:t", "B:u k=[v]", "E:u", "B:w k=[v]", "E:w",
                    "ok"}),
            parse("<?xml version=\"1.0\" encoding='gbk'?>\n<t a=\"x'y\" b='1>2' c=plain d =\"lost\" e= \"v\" f=\"1\" "
                  "f=\"2\">x</t><u k=v/><w k=\"v\" />", &parser));
  EXPECT_EQ("1.0 gbk", parser.getVersion() + " " + parser.getEncoding());
  EXPECT_EQ(Events({"ok"}), parse("<?xml version=\"1.0\"?>"));
}

TEST(XMLParserTest, StepByStepStopsAfterEachRecord) {
  RecordingListener listener;
  listener.stopTag = "doc";
  BasicXMLParser parser(textInput("<docs><doc>one</doc>\n<doc>two</doc></docs>"));
  parser.addListener(AutoPtr<Listener>(&listener, false));
  EXPECT_TRUE(parser.doParseStepByStep() && !parser.isDone());
  EXPECT_EQ(Events({"B:docs", "B:doc", "T:one", "E:doc"}), listener.events);
  EXPECT_TRUE(parser.doParseStepByStep() && !parser.isDone());
  EXPECT_EQ(Events({"B:docs", "B:doc", "T:one", "E:doc", "B:doc", "T:two", "E:doc"}), listener.events);
  EXPECT_TRUE(parser.doParseStepByStep() && parser.isDone());
  EXPECT_FALSE(parser.doParseStepByStep());
}

TEST(BasicParamParserTest, PairingFailuresAndFiles) {
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  // A closing tag at top level pops the implicit root, so one too many is caught like a stray one.
  for (const char* extra : {"</a>", "<a>1</a></a>"}) {
    EXPECT_FALSE(parser.doParseFromText(extra, root));
    EXPECT_EQ("Tags not in Pairs", parser.getErrorText());
  }
  EXPECT_FALSE(parser.doParseFromText("<a>1</b>", root));
  EXPECT_EQ("Tag not Matched, with  Begining Tag: a Ending Tag: b", parser.getErrorText());
  // The parser is reusable: a good parse clears the error; text without tags gives an empty root.
  EXPECT_TRUE(parser.doParseFromText("no tags here", root));
  EXPECT_EQ("", parser.getErrorText());
  EXPECT_EQ(0u, root->size());

  // A block's own setting wins over the outer one, which serves the rest.
  ASSERT_TRUE(parser.doParse(std::string(VORELIN_TEST_DATA_DIR) + "/configure/classifier.xml", root));
  const Parameter& list = (*root)["number_senti_classifiers"];
  int n = 0;
  EXPECT_EQ(2u, list.size());
  EXPECT_TRUE(list[1]["param.max_n"].getIntValue(n) && n == 2);
  EXPECT_TRUE(list[0]["param.max_n"].getIntValue(n) && n == 3);
  // Empty and missing files fail.
  vortm::testing::TempDir dir;
  vortm::testing::writeFile(dir.file("empty.xml"), "");
  EXPECT_FALSE(parser.doParse(dir.file("empty.xml"), root) || parser.doParse(dir.file("missing.xml"), root));
}
