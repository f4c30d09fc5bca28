#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "trainset/Instance.h"
#include "trainset/Label.h"

using vortm::trainset::Instance;
using vortm::trainset::Label;

TEST(LabelTest, Hierarchy) {
  Label top("a", "/");
  Label two("a/b", "/");
  Label three(std::vector<std::string>({"a", "b", "c"}), "::");
  EXPECT_EQ(three.identifier, "a::b::c");
  EXPECT_EQ(two.parts, std::vector<std::string>({"a", "b"}));
  EXPECT_TRUE(two.isDirectSubLabelOf(top));
  EXPECT_TRUE(three.isSubLabelOf(top));
  EXPECT_FALSE(three.isDirectSubLabelOf(top));
  EXPECT_FALSE(top.isSubLabelOf(top));
  EXPECT_FALSE(top.isSubLabelOf(two));
  EXPECT_FALSE(Label("x/b", "/").isSubLabelOf(top));

  Label empty("", "/");
  EXPECT_TRUE(empty.identifier.empty());
  EXPECT_FALSE(empty == Label("", "/"));
  EXPECT_FALSE(empty == empty);
  EXPECT_TRUE(two == Label("a/b", "/"));
  EXPECT_FALSE(two == Label("a/c", "/"));

  std::vector<Label> supers = {Label("z", "/")};
  three.getSuperLabels(supers);
  ASSERT_EQ(supers.size(), 3u);
  EXPECT_EQ(supers[1].identifier, "a");
  EXPECT_EQ(supers[2].identifier, "a/b");
  Label parent("kept", "/");
  top.getDirectSuperLabel(parent);
  EXPECT_EQ(parent.identifier, "kept");
  three.getDirectSuperLabel(parent);
  EXPECT_EQ(parent.identifier, "a/b");
}

TEST(LabelTest, InstanceNormalises) {
  Instance instance;
  instance.vector[1] = 3.0;
  instance.vector[4] = 4.0;
  instance.L2Normal();
  EXPECT_DOUBLE_EQ(instance.vector[1], 0.6);
  EXPECT_DOUBLE_EQ(instance.vector[4], 0.8);
  Instance tiny;
  tiny.vector[0] = 0.001;
  tiny.L2Normal();
  EXPECT_DOUBLE_EQ(tiny.vector[0], 0.001);
}
