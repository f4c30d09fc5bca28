#include <gtest/gtest.h>

#include <string>

#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "utility/BufferPool.h"

using vortm::common::AutoPtr;
using vortm::configure::BasicParamParser;
using vortm::configure::Parameter;
using vortm::configure::ParameterInt;
using vortm::configure::ParameterNULL;

namespace {

AutoPtr<Parameter> parseText(const std::string& text) {
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  EXPECT_TRUE(parser.doParseFromText(text, root)) << parser.getErrorText();
  return root;
}

}  // namespace

TEST(ParameterTest, TypeAttributeChoosesTheGetters) {
  AutoPtr<Parameter> root = parseText(
      "<i type=\"INT\">7</i><f type=\"numeric\">0.5</f><g type=\"Float\">2.5kg</g>"
      "<s>7</s><e></e><w>  x  </w>");
  const Parameter& p = *root;
  int i = -1;
  double d = -1;
  std::string s;

  // The type is compared in lower case; int nodes answer only getIntValue.
  EXPECT_TRUE(p["i"].getIntValue(i));
  EXPECT_EQ(7, i);
  EXPECT_FALSE(p["i"].getFloatValue(d));

  // "numeric" and "float" make float nodes; trailing garbage is ignored.
  EXPECT_TRUE(p["f"].getFloatValue(d));
  EXPECT_DOUBLE_EQ(0.5, d);
  EXPECT_FALSE(p["f"].getIntValue(i));
  EXPECT_TRUE(p["g"].getFloatValue(d));
  EXPECT_DOUBLE_EQ(2.5, d);

  // Untyped nodes answer only getStringValue and leave the output alone.
  i = -1;
  EXPECT_TRUE(p["s"].getStringValue(s));
  EXPECT_FALSE(p["s"].getIntValue(i));
  EXPECT_EQ(-1, i);

  // An empty element stays null; leading blanks go, trailing ones stay.
  EXPECT_TRUE(p["e"].isNull());
  EXPECT_FALSE(p["e"].getStringValue(s));
  EXPECT_TRUE(p["w"].getStringValue(s));
  EXPECT_EQ("x  ", s);
}

TEST(ParameterTest, LookupByNameIndexAndPath) {
  AutoPtr<Parameter> root = parseText(
      "<y>outer</y>"
      "<x><z>inner</z></x>"
      "<list><item>first</item><item>second</item></list>");
  const Parameter& p = *root;
  std::string s;

  // Duplicate names: the table keeps the later one, positions keep both.
  const Parameter& list = p["list"];
  EXPECT_EQ(2u, list.size());
  EXPECT_TRUE(list["item"].getStringValue(s));
  EXPECT_EQ("second", s);
  EXPECT_TRUE(list[0].getStringValue(s));
  EXPECT_EQ("first", s);

  // Out of range positions and failed look-ups give ParameterNULL, which
  // chains on.
  EXPECT_EQ(&ParameterNULL, &list[-1]);
  EXPECT_EQ(&ParameterNULL, &list[2]);
  EXPECT_EQ(&ParameterNULL, &p["nothing"]);
  EXPECT_EQ(&ParameterNULL, &ParameterNULL["anything.at.all"]);

  // Each step of a path resolves upwards: x lacks y, the root has it.
  EXPECT_TRUE(p["x.z"].getStringValue(s));
  EXPECT_EQ("inner", s);
  EXPECT_TRUE(p["x.y"].getStringValue(s));
  EXPECT_EQ("outer", s);
}

TEST(ParameterDeathTest, BlockAskedForItsOwnNameAborts) {
  AutoPtr<Parameter> root = parseText("<x><z>1</z></x>");
  const Parameter& x = (*root)["x"];
  // The upward look-up finds x itself, held by another holder than the walk's.
  EXPECT_DEATH(x["x"], "m_pSharedObj->getObjPtr\\(\\) != rhs.m_pSharedObj->getObjPtr\\(\\)");
}

TEST(ParameterTest, CopiesAreDeepAndAppendIgnoresNull) {
  AutoPtr<Parameter> root = parseText("<a><n type=\"int\">4</n><t>text</t></a>");
  int i = 0;
  AutoPtr<Parameter> copy = (*root)["a"].clone();
  Parameter assigned;
  assigned = *copy;
  copy->appendSubParam("extra", AutoPtr<Parameter>(new Parameter(), true));
  EXPECT_EQ(2u, (*root)["a"].size());
  EXPECT_EQ(2u, assigned.size());
  // Children keep their class in copies, and resolve upwards in the copy.
  EXPECT_TRUE(assigned["n"].getIntValue(i));
  EXPECT_EQ(4, i);
  EXPECT_TRUE(assigned["t.n"].getIntValue(i));

  // Null pointers and ParameterNULL are never appended.
  Parameter empty;
  empty.appendSubParam("a", AutoPtr<Parameter>());
  empty.appendSubParam("b", AutoPtr<Parameter>(&ParameterNULL, false));
  EXPECT_EQ(0u, empty.size());
  EXPECT_TRUE(empty.isNull());
}

TEST(ParameterTest, ToStringWritesElementsWithoutTypes) {
  AutoPtr<Parameter> root = parseText("<a><b type=\"int\">1</b><e></e></a><c>x  </c>");
  const std::string text = root->toString();
  EXPECT_EQ("<a>\n<b>\n1\n</b>\n<e>\n</e>\n</a>\n<c>\nx  \n</c>\n", text);
}

TEST(ParameterTest, SaveAndLoadKeepOnlyTheParentsType) {
  vortm::utility::BufferPool pool(true);
  int i = 0;
  std::string s;

  // Plain root: its typed child comes back plain but keeps its text.
  AutoPtr<Parameter> root = parseText("<n type=\"int\">5</n><blk><v>text</v></blk>");
  ASSERT_TRUE(root->writeSelf(pool));
  Parameter loaded;
  ASSERT_TRUE(loaded.readSelf(pool));
  EXPECT_FALSE(loaded["n"].getIntValue(i));
  EXPECT_TRUE(loaded["n"].getStringValue(s));
  EXPECT_EQ("5", s);
  EXPECT_EQ(root->toString(), loaded.toString());

  // Under an int node every child comes back as an int node.
  ParameterInt typed;
  AutoPtr<Parameter> child(new Parameter(), true);
  child->setValue("12");
  typed.appendSubParam("c", child);
  ASSERT_TRUE(typed.writeSelf(pool));
  Parameter typedLoaded;
  ASSERT_TRUE(typedLoaded.readSelf(pool));
  EXPECT_TRUE(typedLoaded["c"].getIntValue(i));
  EXPECT_EQ(12, i);

  // An unknown type code fails the load.
  pool.writeString(std::string(""));
  pool.writeUint32(1);
  pool.writeString(std::string("k"));
  pool.writeInt16(7);
  Parameter broken;
  EXPECT_FALSE(broken.readSelf(pool));
}
