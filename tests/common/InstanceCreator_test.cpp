#include <gtest/gtest.h>

#include <string>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "common/Singleton.h"

using namespace vortm::common;

namespace {

struct Shape { virtual ~Shape() {} virtual std::string name() const = 0; };
struct Circle : Shape { std::string name() const override { return "circle"; } };
struct Square : Shape { std::string name() const override { return "square"; } };

VORTM_DECLARE_CREATOR(CircleCreator, Shape, Circle, "shape");
VORTM_DECLARE_CREATOR(SquareCreator, Shape, Square, "square");
VORTM_DECLARE_CREATOR(SquareAsShapeCreator, Shape, Square, "shape");

// The name of the object created for `id`, or "none".
std::string created(const std::string& id) {
  AutoPtr<Shape> shape(InstanceCreator<Shape>::getCreation(id), true);
  return shape ? shape->name() : "none";
}

TEST(InstanceCreatorTest, LookupReplaceAndUnknown) {
  EXPECT_EQ("none", created("shape"));
  Singleton<InstanceCreatorHelper<CircleCreator> >::instance();
  Singleton<InstanceCreatorHelper<SquareCreator> >::instance();
  EXPECT_EQ("circle", created("shape"));
  EXPECT_EQ("square", created("square"));
  EXPECT_EQ("none", created("triangle"));
  // A later creator under the same identifier replaces the earlier one.
  Singleton<InstanceCreatorHelper<SquareAsShapeCreator> >::instance();
  EXPECT_EQ("square", created("shape"));
}

}  // namespace
