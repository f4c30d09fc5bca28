#include <gtest/gtest.h>

#include <string>

#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "common/Singleton.h"

using namespace vortm::common;

namespace {

struct Shape {
  virtual ~Shape() {}
  virtual std::string name() const = 0;
};
struct Circle : Shape {
  std::string name() const override { return "circle"; }
};
struct Square : Shape {
  std::string name() const override { return "square"; }
};

VORTM_DECLARE_CREATOR(CircleCreator, Shape, Circle, "shape");
VORTM_DECLARE_CREATOR(SquareCreator, Shape, Square, "square");
VORTM_DECLARE_CREATOR(SquareAsShapeCreator, Shape, Square, "shape");

struct Counter {
  Counter() { ++constructed; }
  static int constructed;
};
int Counter::constructed = 0;

TEST(InstanceCreatorTest, LookupReplaceAndUnknown) {
  EXPECT_EQ(nullptr, InstanceCreator<Shape>::getCreation("shape"));
  Singleton<InstanceCreatorHelper<CircleCreator> >::instance();
  Singleton<InstanceCreatorHelper<SquareCreator> >::instance();

  AutoPtr<Shape> circle(InstanceCreator<Shape>::getCreation("shape"), true);
  ASSERT_TRUE(circle);
  EXPECT_EQ("circle", circle->name());
  AutoPtr<Shape> square(InstanceCreator<Shape>::getCreation("square"), true);
  ASSERT_TRUE(square);
  EXPECT_EQ("square", square->name());
  EXPECT_EQ(nullptr, InstanceCreator<Shape>::getCreation("triangle"));
  EXPECT_EQ(nullptr, InstanceCreator<Shape>::getCreation(""));

  // A later creator under the same identifier replaces the earlier one.
  Singleton<InstanceCreatorHelper<SquareAsShapeCreator> >::instance();
  AutoPtr<Shape> replaced(InstanceCreator<Shape>::getCreation("shape"), true);
  EXPECT_EQ("square", replaced->name());

  // Registering everything twice is harmless.
  gfn_creatorRegister();
  gfn_creatorRegister();
  AutoPtr<Shape> still(InstanceCreator<Shape>::getCreation("square"), true);
  EXPECT_TRUE(still);
}

TEST(SingletonTest, CreatesOnceAcrossCalls) {
  Counter* first = Singleton<Counter>::instance();
  Counter* second = Singleton<Counter>::instance();
  EXPECT_EQ(first, second);
  EXPECT_EQ(1, Counter::constructed);
}

}  // namespace
