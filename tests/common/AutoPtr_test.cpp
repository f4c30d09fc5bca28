#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "common/AutoPtr.h"
#include "common/SharedObj.h"

using vortm::common::AutoPtr;

namespace {

struct Tracked {
  explicit Tracked(int* alive) : m_alive(alive) { ++*m_alive; }
  ~Tracked() { --*m_alive; }
  int* m_alive;
};

TEST(AutoPtrTest, OwnershipCountingAndNull) {
  int alive = 0;
  {
    AutoPtr<Tracked> a(new Tracked(&alive), true), b(a);
    // Self-assignment and assignment from a sharer leave the count alone.
    b = a;
    a = a;
    EXPECT_EQ(2, a.useCount());
    b = AutoPtr<Tracked>();
    EXPECT_EQ(1, a.useCount());
    // The held raw pointer again changes nothing; another one frees the old object.
    a = a.get();
    EXPECT_EQ(1, alive);
    a = new Tracked(&alive);
    EXPECT_EQ(1, alive);
  }
  EXPECT_EQ(0, alive);
  Tracked stack(&alive);
  { AutoPtr<Tracked> weak(&stack, false); }  // not owned: left alive at a count of zero
  EXPECT_EQ(1, alive);

  AutoPtr<Tracked> empty;
  try {
    *empty;
    FAIL() << "dereferencing a null AutoPtr must throw";
  } catch (const std::runtime_error& e) {
    EXPECT_STREQ("null point error", e.what());
  }
}

TEST(AutoPtrTest, SafeHolderCountsUnderContention) {
  AutoPtr<int, vortm::common::SafeSharedObj<int> > shared(new int(0), true);
  auto copyMany = [&shared] { for (int i = 0; i < 100000; ++i) auto copy = shared; };
  std::thread t1(copyMany), t2(copyMany), t3(copyMany);
  copyMany();
  for (std::thread* t : {&t1, &t2, &t3}) t->join();
  EXPECT_EQ(1, shared.useCount());
}

TEST(AutoPtrDeathTest, AssigningSeparateHoldersOfOneObjectAborts) {
  int obj = 0;
  AutoPtr<int> a(&obj, false), b(&obj, false);
  EXPECT_DEATH(a = b,
               "!m_pSharedObj->getObjPtr\\(\\) \\|\\| m_pSharedObj->getObjPtr\\(\\) != "
               "rhs.m_pSharedObj->getObjPtr\\(\\)");
}

}  // namespace
