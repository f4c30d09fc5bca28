#include <gtest/gtest.h>

#include <string>

#include "common/AutoPtr.h"
#include "TestSupport.h"
#include "configure/Parameter.h"
#include "utility/BufferPool.h"

using vortm::common::AutoPtr;
using vortm::configure::Parameter;
using vortm::configure::ParameterNULL;

namespace {

// The node's text, or "-" when it answers none.
std::string text(const Parameter& node) {
  std::string s;
  return node.getStringValue(s) ? s : "-";
}

}  // namespace

TEST(ParameterTest, TypesAndLookups) {
  AutoPtr<Parameter> root = vortm::testing::parseXml(
      "<i type=\"INT\">7</i><f type=\"numeric\">0.5</f><g type=\"Float\">2.5kg</g><s>7</s><e></e><w>  x  </w>"
      "<x><z>inner</z></x><list><item>first</item><item>second</item></list>");
  const Parameter& p = *root;
  int i = -1;
  double d = -1;
  // The type is compared in lower case: "int" nodes answer only getIntValue, "numeric" and "float" ones only
  // getFloatValue (trailing garbage ignored), untyped ones only getStringValue; a failed getter leaves its output.
  EXPECT_TRUE(p["i"].getIntValue(i) && i == 7);
  EXPECT_FALSE(p["i"].getFloatValue(d) || p["f"].getIntValue(i) || p["s"].getIntValue(i));
  EXPECT_EQ(7, i);
  EXPECT_TRUE(p["f"].getFloatValue(d) && d == 0.5);
  EXPECT_TRUE(p["g"].getFloatValue(d) && d == 2.5);
  // An empty element stays null; leading blanks go, trailing ones stay.
  EXPECT_TRUE(p["e"].isNull() && text(p["e"]) == "-");
  EXPECT_EQ("x  ", text(p["w"]));

  // Duplicate names: the table keeps the later one, positions keep both.
  const Parameter& list = p["list"];
  EXPECT_EQ(2u, list.size());
  EXPECT_EQ("second", text(list["item"]));
  EXPECT_EQ("first", text(list[0]));
  // Out of range positions and failed look-ups give ParameterNULL, which chains on.
  for (const Parameter* miss : {&list[-1], &list[2], &p["nothing"], &ParameterNULL["anything.at.all"]})
    EXPECT_EQ(&ParameterNULL, miss);
  // Each step of a path resolves upwards: x lacks s, the root has it.
  EXPECT_EQ("inner", text(p["x.z"]));
  EXPECT_EQ("7", text(p["x.s"]));
}

TEST(ParameterDeathTest, BlockAskedForItsOwnNameAborts) {
  AutoPtr<Parameter> root = vortm::testing::parseXml("<x><z>1</z></x>");
  // The upward look-up finds x itself, held by another holder than the walk's.
  EXPECT_DEATH((*root)["x"]["x"], "m_pSharedObj->getObjPtr\\(\\) != rhs.m_pSharedObj->getObjPtr\\(\\)");
}

TEST(ParameterTest, TextCopiesAndSavedForm) {
  AutoPtr<Parameter> root =
      vortm::testing::parseXml("<a><n type=\"int\">4</n><t>text</t><e></e></a><c>x  </c><k type=\"int\"><m>12</m></k>");
  // The text form drops the types.
  EXPECT_EQ("<a>\n<n>\n4\n</n>\n<t>\ntext\n</t>\n<e>\n</e>\n</a>\n<c>\nx  \n</c>\n<k>\n<m>\n12\n</m>\n</k>\n",
            root->toString());
  // Copies are deep; their children keep their class and resolve upwards.
  AutoPtr<Parameter> copy = (*root)["a"].clone();
  Parameter assigned;
  assigned = *copy;
  copy->appendSubParam("extra", AutoPtr<Parameter>(new Parameter(), true));
  EXPECT_TRUE((*root)["a"].size() == 3 && assigned.size() == 3);
  int i = 0;
  EXPECT_TRUE(assigned["t.n"].getIntValue(i) && i == 4);
  // Null pointers and ParameterNULL are never appended.
  Parameter empty;
  empty.appendSubParam("a", AutoPtr<Parameter>());
  empty.appendSubParam("b", AutoPtr<Parameter>(&ParameterNULL, false));
  EXPECT_TRUE(empty.size() == 0 && empty.isNull());

  // Saved and loaded, a typed child of a plain node comes back plain, keeping its text; every child of an int
  // node comes back int; an unknown type code fails the load.
  vortm::utility::BufferPool pool(true);
  Parameter loaded, typedLoaded;
  ASSERT_TRUE(root->writeSelf(pool) && loaded.readSelf(pool));
  EXPECT_TRUE(!loaded["a.n"].getIntValue(i) && text(loaded["a.n"]) == "4");
  EXPECT_EQ(root->toString(), loaded.toString());
  ASSERT_TRUE(root->getSubParamPtr("k")->writeSelf(pool) && typedLoaded.readSelf(pool));
  EXPECT_TRUE(typedLoaded["m"].getIntValue(i) && i == 12);
  pool.writeString(std::string(""));
  pool.writeUint32(1);
  pool.writeString(std::string("k"));
  pool.writeInt16(7);
  pool.writeString(std::string("v"));
  pool.writeUint32(0);
  EXPECT_FALSE(Parameter().readSelf(pool));
}
