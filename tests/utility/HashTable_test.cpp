#include <gtest/gtest.h>

#include <map>
#include <string>

#include "utility/HashTable.h"
#include "utility/Utility.h"

using vortm::utility::HashTable;
using vortm::utility::Utility;

namespace {

TEST(HashTableTest, GrowthIsAdditive) {
  HashTable<std::string, int> table;
  int v = 0;
  // A table never written allocates nothing.
  EXPECT_FALSE(table.get("x", v));
  EXPECT_EQ(0u, table.bucketCount());
  EXPECT_TRUE(table.empty());

  EXPECT_FALSE(table.putReplace("k0", 0));
  EXPECT_EQ(3u, table.bucketCount());
  EXPECT_EQ(2u, table.threshold());
  table.putReplace("k1", 1);
  EXPECT_EQ(3u, table.bucketCount());
  // The third insertion exceeds the threshold of 2.
  table.putReplace("k2", 2);
  EXPECT_EQ(8u, table.bucketCount());
  EXPECT_EQ(24u, table.threshold());
  for (int i = 3; i < 24; ++i) table.putReplace("k" + std::to_string(i), i);
  EXPECT_EQ(8u, table.bucketCount());
  // The 25th goes past 24.
  table.putReplace("k24", 24);
  EXPECT_EQ(13u, table.bucketCount());
  EXPECT_EQ(39u, table.threshold());

  // Replacing keeps the count; every key survives the resizes.
  EXPECT_TRUE(table.putReplace("k5", 500));
  EXPECT_EQ(25u, table.entryCount());
  for (int i = 0; i < 25; ++i) {
    ASSERT_TRUE(table.get("k" + std::to_string(i), v));
    EXPECT_EQ(i == 5 ? 500 : i, v);
  }

  table.destroy();
  EXPECT_TRUE(table.empty());
  EXPECT_EQ(0u, table.bucketCount());
  table.putReplace("again", 1);
  EXPECT_EQ(3u, table.bucketCount());
}

TEST(HashTableTest, PutNoReplaceAndIteration) {
  HashTable<unsigned int, int> table;
  int v = 7;
  EXPECT_FALSE(table.putNoReplace(10, v));
  v = 9;
  EXPECT_TRUE(table.putNoReplace(10, v));
  EXPECT_EQ(7, v);  // the stored value comes back and is kept

  // Integer keys go to bucket key % bucketCount, head first within a bucket:
  // with 3 buckets, 10 and 1 share bucket 1, and 1 was inserted last.
  int one = 1;
  table.putNoReplace(1, one);
  std::vector<unsigned int> order;
  auto it = table.iterator();
  unsigned int key;
  int value;
  while (it->hasNext()) {
    it->next(key, value);
    order.push_back(key);
  }
  EXPECT_EQ((std::vector<unsigned int>{1, 10}), order);

  // Iteration visits every entry exactly once after many resizes.
  HashTable<std::string, int> big;
  std::map<std::string, int> reference;
  for (int i = 0; i < 500; ++i) {
    big.putReplace("w" + std::to_string(i * 7), i);
    reference["w" + std::to_string(i * 7)] = i;
  }
  std::map<std::string, int> seen;
  auto bit = big.iterator();
  std::string skey;
  while (bit->hasNext()) {
    bit->next(skey, value);
    EXPECT_TRUE(seen.emplace(skey, value).second);
  }
  EXPECT_EQ(reference, seen);

  HashTable<std::string, int> empty;
  EXPECT_FALSE(empty.iterator()->hasNext());
}

TEST(HashTableTest, SuperFastHashValues) {
  EXPECT_EQ(0u, Utility::hash(""));
  // Reference values of the published algorithm, covering every tail length
  // and a tail byte with the top bit set (read as a signed char).
  EXPECT_EQ(0x115ea782u, Utility::hash("a"));
  EXPECT_EQ(0x516b8b44u, Utility::hash("ab"));
  EXPECT_EQ(0xd2be198au, Utility::hash("abc"));
  EXPECT_EQ(0xdad8b8dbu, Utility::hash("abcd"));
  EXPECT_EQ(0xa68c6882u, Utility::hash("hello world"));
  EXPECT_EQ(0xc6d35193u, Utility::hash("\xe5\xa5\xbd"));
  // 0xFF read as -1 cancels the length seed entirely.
  EXPECT_EQ(0u, Utility::hash("\xff"));
}

}  // namespace
