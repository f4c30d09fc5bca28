#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "common/AutoPtr.h"
#include "common/SharedObj.h"

using vortm::common::AutoPtr;
using vortm::common::SafeSharedObj;

namespace {

struct Tracked {
  explicit Tracked(int* alive) : m_alive(alive) { ++*m_alive; }
  ~Tracked() { --*m_alive; }
  int* m_alive;
};

TEST(AutoPtrTest, NullPointerBehaviour) {
  AutoPtr<Tracked> empty;
  EXPECT_FALSE(empty);
  EXPECT_TRUE(empty == nullptr);
  try {
    *empty;
    FAIL() << "dereferencing a null AutoPtr must throw";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ("null point error", e.what());
  }
}

TEST(AutoPtrTest, OwnershipAndCounting) {
  int alive = 0;
  {
    AutoPtr<Tracked> a(new Tracked(&alive), true);
    EXPECT_EQ(1, a.useCount());
    {
      AutoPtr<Tracked> b(a);
      EXPECT_EQ(2, a.useCount());
      // Self-assignment and assignment from a sharer leave the count alone.
      b = a;
      a = a;
      EXPECT_EQ(2, a.useCount());
    }
    EXPECT_EQ(1, a.useCount());
    EXPECT_EQ(1, alive);
    // Assigning the held raw pointer again changes nothing.
    Tracked* raw = a.get();
    a = raw;
    EXPECT_EQ(1, alive);
    EXPECT_EQ(raw, a.get());
    // Assigning another raw pointer frees the old object.
    a = new Tracked(&alive);
    EXPECT_EQ(1, alive);
  }
  EXPECT_EQ(0, alive);

  // A non-owning pointer leaves the object alive when its count reaches zero.
  Tracked stack(&alive);
  { AutoPtr<Tracked> weak(&stack, false); }
  EXPECT_EQ(1, alive);
}

TEST(AutoPtrTest, SafeHolderCountsUnderContention) {
  int alive = 0;
  AutoPtr<Tracked, SafeSharedObj<Tracked> > shared(new Tracked(&alive), true);
  {
    AutoPtr<Tracked, SafeSharedObj<Tracked> > copy(shared);
    EXPECT_EQ(2, shared.useCount());
  }
  EXPECT_EQ(1, shared.useCount());
}

TEST(AutoPtrDeathTest, AssigningSeparateHoldersOfOneObjectAborts) {
  int alive = 0;
  Tracked obj(&alive);
  EXPECT_DEATH(
      {
        AutoPtr<Tracked> a(&obj, false);
        AutoPtr<Tracked> b(&obj, false);
        a = b;
      },
      "!m_pSharedObj->getObjPtr\\(\\) \\|\\| m_pSharedObj->getObjPtr\\(\\) != "
      "rhs.m_pSharedObj->getObjPtr\\(\\)");
}

}  // namespace
