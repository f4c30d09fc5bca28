#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "utility/HashTable.h"
#include "utility/Utility.h"

using vortm::utility::HashTable;
using vortm::utility::Utility;

namespace {

TEST(HashTableTest, GrowthIsAdditive) {
  HashTable<std::string, int> table;
  int v = 0;
  // A table never written finds and iterates nothing, and allocates nothing.
  EXPECT_FALSE(table.get("x", v) || table.iterator()->hasNext() || table.bucketCount() > 0);
  // Buckets and threshold once n keys are in: the table grows on passing its threshold.
  typedef std::pair<uint32_t, uint32_t> Size;
  auto sizeAfter = [&table](int n) {
    for (int i = table.entryCount(); i < n; ++i) EXPECT_FALSE(table.putReplace("k" + std::to_string(i), i));
    return Size(table.bucketCount(), table.threshold());
  };
  EXPECT_EQ(Size(3, 2), sizeAfter(2));
  EXPECT_EQ(Size(8, 24), sizeAfter(3));
  EXPECT_EQ(Size(8, 24), sizeAfter(24));
  EXPECT_EQ(Size(13, 39), sizeAfter(25));

  // Replacing keeps the count; every key survives the resizes, for look-up and iteration alike.
  EXPECT_TRUE(table.putReplace("k5", 500) && table.entryCount() == 25);
  std::map<std::string, int> expected, seen;
  for (int i = 0; i < 25; ++i) expected["k" + std::to_string(i)] = i == 5 ? 500 : i;
  for (const auto& kv : expected) EXPECT_TRUE(table.get(kv.first, v) && v == kv.second) << kv.first;
  std::string key;
  for (auto it = table.iterator(); it->hasNext();) {
    it->next(key, v);
    EXPECT_TRUE(seen.emplace(key, v).second) << key;
  }
  EXPECT_EQ(expected, seen);
  table.destroy();
  EXPECT_EQ(Size(3, 2), sizeAfter(1));
}

TEST(HashTableTest, PutNoReplaceAndBucketOrder) {
  HashTable<unsigned int, int> table;
  int v = 7, w = 9;
  EXPECT_FALSE(table.putNoReplace(10, v));
  EXPECT_TRUE(table.putNoReplace(10, w));
  EXPECT_EQ(7, w);  // the stored value comes back and is kept
  // Integer keys go to bucket key % bucketCount, newest first: 10 and 1 share bucket 1 of 3.
  table.putNoReplace(1, v);
  std::vector<unsigned int> order;
  unsigned int key;
  for (auto it = table.iterator(); it->hasNext(); order.push_back(key)) it->next(key, v);
  EXPECT_EQ((std::vector<unsigned int>{1, 10}), order);
}

TEST(HashTableTest, SuperFastHashValues) {
  // Reference values of the published algorithm, covering every tail length and a tail byte with the
  // top bit set (read as a signed char: 0xFF cancels the length seed entirely).
  const std::pair<std::string, uint32_t> known[] = {
      {"", 0u},           {"a", 0x115ea782u},           {"ab", 0x516b8b44u},          {"abc", 0xd2be198au},
      {"abcd", 0xdad8b8dbu}, {"hello world", 0xa68c6882u}, {"\xe5\xa5\xbd", 0xc6d35193u}, {"\xff", 0u}};
  for (const auto& k : known) EXPECT_EQ(k.second, Utility::hash(k.first)) << k.first;
}

}  // namespace
