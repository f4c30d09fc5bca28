#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <vector>

#include "utility/KVOrderVector.h"
#include "utility/MySparseVector.h"

using vortm::utility::KVOrderVector;
using vortm::utility::MySparseVector;
using vortm::utility::OrderVector;

typedef MySparseVector<double, int> DocVec;

static DocVec::Item item(int id, double value) { return DocVec::Item{id, value}; }

namespace {

// The exception's text is part of the behaviour: callers report it as is.
template <class F>
std::string thrown(F f) {
  try {
    f();
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "(nothing thrown)";
}
}  // namespace

TEST(OrderVectorTest, InsertsInOrderAndKeepsFirstOfEqualItems) {
  OrderVector<DocVec::Item, DocVec::ItemLessThan> v;
  // Both ways of adding keep the first of equal items; add() lands at front, middle and back.
  EXPECT_EQ(0, v.addAndReturnIndex(item(5, 1.5)));
  EXPECT_EQ(0, v.addAndReturnIndex(item(3, 2.0)));
  EXPECT_EQ(1, v.addAndReturnIndex(item(5, 9.0)));
  for (const auto& i : {item(4, 0), item(1, 0), item(9, 0), item(4, 7)}) v.add(i, false);
  std::vector<std::pair<int, double> > items;
  for (int i = 0; i < v.size(); ++i) items.emplace_back(v[i].id, v[i].value);
  EXPECT_EQ(items, (std::vector<std::pair<int, double> >{{1, 0}, {3, 2}, {4, 0}, {5, 1.5}, {9, 0}}));
  EXPECT_EQ(3, v.indexOf(item(5, 0.0)));
  EXPECT_EQ(-1, v.indexOf(item(6, 0.0)));
  for (int bad : {-1, 5})
    EXPECT_EQ("OrderVector<Item, LessThan>::getByIndex: invalid index", thrown([&] { v.getByIndex(bad); }));
}

TEST(MySparseVectorTest, ValueAccessInsertsZeroAndLookupDoesNot) {
  DocVec v;
  // Reading a value inserts a zero entry, which is what accumulation relies on; looking up an index does not.
  EXPECT_EQ(-1, v.getIndexById(3));
  EXPECT_DOUBLE_EQ(0.0, v[7]);
  v[7] += 2.0;
  v[2] += 1.0;
  v[7] += 0.5;
  ASSERT_EQ(2, v.size());
  EXPECT_DOUBLE_EQ(2.5, v.getValueById(7));
  std::pair<int, double*> p = v.getIdValuePairByIndex(0);
  EXPECT_EQ(std::make_pair(2, 1.0), std::make_pair(p.first, *p.second));
  // A negative id is an error for value access, and nothing is inserted.
  EXPECT_EQ("MySparseVector::getValueById: invalid id", thrown([&] { v.getValueById(-1); }));
  EXPECT_EQ("MySparseVector::getIdValuePairByIndex: invalid index", thrown([&] { v.getIdValuePairByIndex(2); }));
  EXPECT_EQ(2, v.size());

  // The iterator walks by id and writes through to the stored values.
  auto it = v.iterator();
  ASSERT_TRUE(it->hasNext());
  it->next().value = 4.0;
  EXPECT_TRUE(it->hasNext() && it->next().id == 7 && !it->hasNext());
  EXPECT_DOUBLE_EQ(4.0, v.getValueById(2));
}

TEST(MySparseVectorTest, AddAllSumsAsOneByOneAccumulation) {
  // Bit-equal sums need the same order of additions per id, merged with
  // entries already present; negative ids and ids past `count` are skipped.
  std::vector<int> ids = {9, 2, -1, 9, 4, 2, 9, 7};
  std::vector<double> values = {0.1, 1e16, 5.0, 0.2, -0.0, 1.0, 0.3, 8.0};
  DocVec batch, single;
  batch[4] = 0.5;
  single[4] = 0.5;
  batch[3] = 1.0;
  single[3] = 1.0;
  batch.addAll(ids, &values, 7);
  for (size_t i = 0; i < 7; ++i)
    if (ids[i] >= 0) single[ids[i]] += values[i];
  ASSERT_EQ(single.size(), batch.size());
  for (int i = 0; i < single.size(); ++i) {
    EXPECT_EQ(single.getIdValuePairByIndex(i).first, batch.getIdValuePairByIndex(i).first);
    EXPECT_EQ(*single.getIdValuePairByIndex(i).second, *batch.getIdValuePairByIndex(i).second);
  }
  EXPECT_EQ(-1, batch.getIndexById(7));
  // Without values each id counts 1.
  DocVec counts;
  counts.addAll(ids, nullptr, ids.size());
  EXPECT_EQ(3.0, counts.getValueById(9));
  EXPECT_EQ(4, counts.size());
}

TEST(KVOrderVectorTest, LookupByKey) {
  int a = 0, b = 0, c = 0;
  KVOrderVector<unsigned short, int*, std::less<unsigned short> > kv;
  kv.add(0x4E2D, &a);
  kv.add(0x0041, &b);
  kv.add(0x4E2D, &c);  // present: the first value stays
  ASSERT_EQ(2, kv.size());
  EXPECT_EQ(0x0041, kv[0].first);
  bool found = false;
  EXPECT_TRUE(kv.getValueByKey(0x4E2D, found) == &a && found);
  // A miss gives the shared null value.
  EXPECT_TRUE(kv.getValueByKey(0x0042, found) == nullptr && !found);
}
