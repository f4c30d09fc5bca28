#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "TestSupport.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "utility/BasicXMLParser.h"
#include "utility/CharIterator.h"

using vortm::common::AutoPtr;
using vortm::configure::BasicParamParser;
using vortm::configure::Parameter;
using vortm::utility::BasicXMLParser;
using vortm::utility::CharIterator;
using vortm::utility::CharIteratorText;
using vortm::utility::HashTable;
using vortm::utility::Listener;

namespace {

// Writes every event as one line; attributes sorted by name.
class RecordingListener : public Listener {
 public:
  using Listener::onTagEnd;
  void onTagBegin(const std::string& tag, HashTable<std::string, std::string>& attributes) override {
    std::map<std::string, std::string> sorted;
    AutoPtr<HashTable<std::string, std::string>::Iterator> it = attributes.iterator();
    std::string k, v;
    while (it->hasNext()) {
      it->next(k, v);
      sorted[k] = v;
    }
    std::string line = "B:" + tag;
    for (auto& kv : sorted) line += " " + kv.first + "=[" + kv.second + "]";
    events.push_back(line);
  }
  void onTagEnd(const std::string& tag) override { events.push_back("E:" + tag); }
  void onTextEnd(const std::string& text) override { events.push_back("T:" + text); }
  void onTagEnd(const std::string& tag, bool& stop) override {
    stop = (tag == stopTag);
    onTagEnd(tag);
  }
  std::vector<std::string> events;
  std::string stopTag;
};

AutoPtr<CharIterator> textInput(const std::string& text) {
  CharIteratorText* in = new CharIteratorText();
  in->setText(text);
  return AutoPtr<CharIterator>(in, true);
}

// Runs the parser over `text`; returns the result of doParse.
bool runParser(const std::string& text, RecordingListener& listener, BasicXMLParser* keep = nullptr) {
  BasicXMLParser local;
  BasicXMLParser& parser = keep ? *keep : local;
  parser.setCharIterator(textInput(text));
  parser.addListener(AutoPtr<Listener>(&listener, false));
  return parser.doParse();
}

typedef std::vector<std::string> Events;

}  // namespace

TEST(XMLParserTest, TagsTextAndComments) {
  RecordingListener l1;
  // Self-closing forms; text behind a closing tag is skipped; a parent gets an
  // empty text from its own closing tag.
  EXPECT_TRUE(runParser("<r><a/> <b /> <c>v\n</c> junk </r> tail", l1));
  EXPECT_EQ(Events({"B:r", "B:a", "E:a", "B:b", "E:b", "B:c", "T:v\n", "E:c", "T:", "E:r"}), l1.events);

  // A comment ends at its first ">", and is one only with a blank after "<!--".
  RecordingListener l2;
  EXPECT_TRUE(runParser("<!-- a > b --><!--x--><a>1</a>", l2));
  EXPECT_EQ(Events({"B:!--x--", "B:a", "T:1", "E:a"}), l2.events);

  // Input ending on a comment or an open tag fails; no "<" at all succeeds.
  RecordingListener l3;
  EXPECT_FALSE(runParser("<a>1</a><!-- end -->", l3));
  EXPECT_FALSE(runParser("<a>1", l3));
  EXPECT_FALSE(runParser("", l3));
  EXPECT_TRUE(runParser("just text", l3));
}

TEST(XMLParserTest, AttributesAndDeclaration) {
  RecordingListener l1;
  BasicXMLParser parser;
  EXPECT_TRUE(runParser(
      "<?xml version=\"1.0\" encoding='gbk'?>\n"
      "<t a=\"x'y\" b='1>2' c=plain d =\"lost\" e= \"v\" f=\"1\" f=\"2\">x</t>"
      "<u k=v/><w k=\"v\" />",
      l1, &parser));
  // The declaration is kept but not reported; blanks before "=" lose the
  // attribute, blanks after it don't; the later of two equal names wins.
  EXPECT_EQ("1.0", parser.getVersion());
  EXPECT_EQ("gbk", parser.getEncoding());
  EXPECT_EQ(Events({"B:t a=[x'y] b=[1>2] c=[plain] e=[v] f=[2]", "T:x", "E:t", "B:u k=[v]", "E:u",
                    "B:w k=[v]", "E:w"}),
            l1.events);

  // A file of only a declaration succeeds; an unquoted value runs up to "/",
  // which must then close the tag.
  RecordingListener l2;
  EXPECT_TRUE(runParser("<?xml version=\"1.0\"?>", l2));
  EXPECT_TRUE(l2.events.empty());
  EXPECT_FALSE(runParser("<a href=http://x>1</a>", l2));
  EXPECT_FALSE(runParser("<a k=\"open>1</a>", l2));
}

TEST(XMLParserTest, StepByStepStopsAfterEachRecord) {
  RecordingListener listener;
  listener.stopTag = "doc";
  BasicXMLParser parser(textInput("<docs><doc>one</doc>\n<doc>two</doc></docs>"));
  parser.addListener(AutoPtr<Listener>(&listener, false));

  EXPECT_TRUE(parser.doParseStepByStep());
  EXPECT_FALSE(parser.isDone());
  EXPECT_EQ(Events({"B:docs", "B:doc", "T:one", "E:doc"}), listener.events);
  listener.events.clear();
  EXPECT_TRUE(parser.doParseStepByStep());
  EXPECT_EQ(Events({"B:doc", "T:two", "E:doc"}), listener.events);
  EXPECT_FALSE(parser.isDone());
  EXPECT_TRUE(parser.doParseStepByStep());
  EXPECT_TRUE(parser.isDone());
  EXPECT_FALSE(parser.doParseStepByStep());
}

TEST(BasicParamParserTest, PairingFailures) {
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  // A closing tag at top level pops the implicit root.
  EXPECT_FALSE(parser.doParseFromText("</a>", root));
  EXPECT_EQ("Tags not in Pairs", parser.getErrorText());
  EXPECT_FALSE(parser.doParseFromText("<a>1</a></a>", root));
  EXPECT_EQ("Tags not in Pairs", parser.getErrorText());
  EXPECT_FALSE(parser.doParseFromText("<a>1</b>", root));
  EXPECT_EQ("Tag not Matched, with  Begining Tag: a Ending Tag: b", parser.getErrorText());
  // The parser is reusable: a good parse clears the error.
  EXPECT_TRUE(parser.doParseFromText("no tags here", root));
  EXPECT_EQ("", parser.getErrorText());
  EXPECT_EQ(0u, root->size());
}

TEST(BasicParamParserTest, ReadsFiles) {
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  ASSERT_TRUE(parser.doParse(std::string(VORELIN_TEST_DATA_DIR) + "/configure/classifier.xml", root));
  const Parameter& p = *root;
  const Parameter& list = p["number_senti_classifiers"];
  int n = 0;
  double w = 0;
  EXPECT_EQ(2u, list.size());
  EXPECT_TRUE(list[1]["number_weight"].getFloatValue(w));
  EXPECT_DOUBLE_EQ(0.4, w);
  // A block's own setting wins over the outer one, which serves the rest.
  EXPECT_TRUE(list[1]["param.max_n"].getIntValue(n));
  EXPECT_EQ(2, n);
  EXPECT_TRUE(list[0]["param.max_n"].getIntValue(n));
  EXPECT_EQ(3, n);

  // Empty and missing files fail.
  vortm::testing::TempDir dir;
  vortm::testing::writeFile(dir.file("empty.xml"), "");
  EXPECT_FALSE(parser.doParse(dir.file("empty.xml"), root));
  EXPECT_FALSE(parser.doParse(dir.file("missing.xml"), root));
}
