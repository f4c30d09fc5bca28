#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

#include "utility/KVOrderVector.h"
#include "utility/MySparseVector.h"

using vortm::utility::KVOrderVector;
using vortm::utility::MySparseVector;
using vortm::utility::OrderVector;

namespace {

typedef MySparseVector<double, int> DocVec;

DocVec::Item item(int id, double value) { return DocVec::Item{id, value}; }

// The text of the runtime_error that f throws, or "" if none.
template <class F>
std::string errorText(F f) {
  try {
    f();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

}  // namespace

TEST(OrderVectorTest, InsertsInOrderAndKeepsFirstOfEqualItems) {
  OrderVector<DocVec::Item, DocVec::ItemLessThan> v;
  // 5, then 3, then 5 again: two items, and 5 keeps its first value.
  EXPECT_EQ(0, v.addAndReturnIndex(item(5, 1.5)));
  EXPECT_EQ(0, v.addAndReturnIndex(item(3, 2.0)));
  EXPECT_EQ(1, v.addAndReturnIndex(item(5, 9.0)));
  // add() lands at front, middle and back, and also keeps the first value.
  v.add(item(4, 0.0), false);
  v.add(item(1, 0.0), false);
  v.add(item(9, 0.0), false);
  v.add(item(4, 7.0), false);
  ASSERT_EQ(5, v.size());
  const int expected[] = {1, 3, 4, 5, 9};
  for (int i = 0; i < 5; ++i) EXPECT_EQ(expected[i], v[i].id) << i;
  EXPECT_DOUBLE_EQ(0.0, v[2].value);
  EXPECT_DOUBLE_EQ(1.5, v[3].value);
  EXPECT_EQ(3, v.indexOf(item(5, 0.0)));
  EXPECT_EQ(-1, v.indexOf(item(6, 0.0)));

  const char* msg = "OrderVector<Item, LessThan>::getByIndex: invalid index";
  EXPECT_EQ(msg, errorText([&] { v.getByIndex(v.size()); }));
  EXPECT_EQ(msg, errorText([&] { v.getByIndex(-1); }));
}

TEST(MySparseVectorTest, ValueAccessInsertsZeroAndLookupDoesNot) {
  DocVec v;
  EXPECT_EQ(-1, v.getIndexById(7));
  EXPECT_EQ(-1, v.getIndexById(-1));
  EXPECT_EQ(0, v.size());
  EXPECT_DOUBLE_EQ(0.0, v[7]);
  EXPECT_EQ(1, v.size());

  // Accumulation, the way the vector builders use it.
  v[7] += 2.0;
  v[2] += 1.0;
  v[7] += 0.5;
  ASSERT_EQ(2, v.size());
  EXPECT_DOUBLE_EQ(2.5, v.getValueById(7));
  std::pair<int, double*> p = v.getIdValuePairByIndex(0);
  EXPECT_EQ(2, p.first);
  EXPECT_DOUBLE_EQ(1.0, *p.second);

  // A negative id is an error for value access, and nothing is inserted.
  EXPECT_EQ("MySparseVector::getValueById: invalid id", errorText([&] { v.getValueById(-1); }));
  EXPECT_EQ(2, v.size());
  EXPECT_EQ("MySparseVector::getIdValuePairByIndex: invalid index", errorText([&] { v.getIdValuePairByIndex(2); }));

  // The iterator walks by id and reaches the stored values.
  auto it = v.iterator();
  ASSERT_TRUE(it->hasNext());
  DocVec::Item& first = it->next();
  EXPECT_EQ(2, first.id);
  first.value = 4.0;
  ASSERT_TRUE(it->hasNext());
  EXPECT_EQ(7, it->next().id);
  EXPECT_FALSE(it->hasNext());
  EXPECT_DOUBLE_EQ(4.0, v[2]);
  EXPECT_FALSE(DocVec().iterator()->hasNext());
}

TEST(KVOrderVectorTest, LookupByKey) {
  int a = 0, b = 0, c = 0;
  KVOrderVector<unsigned short, int*, std::less<unsigned short> > kv;
  bool found = true;
  // Empty: not found, and the shared null value.
  EXPECT_EQ(nullptr, kv.getValueByKey(0x4E2D, found));
  EXPECT_FALSE(found);

  kv.add(0x4E2D, &a);
  kv.add(0x0041, &b);
  kv.add(0x4E2D, &c);  // present: the first value stays
  ASSERT_EQ(2, kv.size());
  EXPECT_EQ(0x0041, kv[0].first);
  EXPECT_EQ(&a, kv[1].second);
  EXPECT_EQ(&b, kv.getValueByKey(0x0041, found));
  EXPECT_TRUE(found);
  EXPECT_EQ(nullptr, kv.getValueByKey(0x0042, found));
  EXPECT_FALSE(found);
}
