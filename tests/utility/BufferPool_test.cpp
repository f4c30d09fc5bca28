#include "utility/BufferPool.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "TestSupport.h"

using vortm::utility::BufferPool;

namespace {

typedef std::vector<unsigned char> Bytes;

Bytes storedBytes(const BufferPool& pool) {
  return Bytes(pool.getBuffer() + pool.getReadOffset(), pool.getBuffer() + pool.getWriteOffset());
}

}  // namespace

TEST(BufferPoolTest, CompressIntegerEncodingsAndRoundTrip) {
  // 128..132 would collide with the length headers, so they get one.
  const std::pair<unsigned int, Bytes> cases[] = {
      {0, {0x00}}, {127, {0x7F}}, {128, {0x81, 0x80}}, {132, {0x81, 0x84}}, {133, {0x85}}, {255, {0xFF}},
      {256, {0x82, 0x01, 0x00}}, {65535, {0x82, 0xFF, 0xFF}}, {65536, {0x83, 0x01, 0x00, 0x00}},
      {16777216, {0x84, 0x01, 0x00, 0x00, 0x00}}, {4294967295u, {0x84, 0xFF, 0xFF, 0xFF, 0xFF}}};
  for (const auto& c : cases) {
    BufferPool pool(true);
    pool.writeCompressInteger(c.first);
    EXPECT_EQ(storedBytes(pool), c.second) << c.first;
    unsigned int got = 1;
    EXPECT_TRUE(pool.readCompressInteger(got));
    EXPECT_EQ(got, c.first);
    EXPECT_EQ(pool.getReadOffset(), c.second.size());
  }

  // A bare header of 128 reads as zero; a missing trailing byte steps back before the header.
  unsigned char bare[] = {0x80}, cut[] = {0x82, 0x01};
  BufferPool wrapped(bare, 1), partial(cut, 2);
  unsigned int v = 7;
  EXPECT_TRUE(wrapped.readCompressInteger(v) && v == 0);
  EXPECT_FALSE(partial.readCompressInteger(v));
  EXPECT_EQ(partial.getReadOffset(), 0u);
}

TEST(BufferPoolTest, NumericLayoutsAreLittleEndianAndReadBack) {
  BufferPool pool(true);
  pool.writeUint16(0x0102);
  pool.writeInt32(-2);
  pool.writeUint64(0x0102030405060708UL);
  pool.writeDouble(1.0);
  EXPECT_EQ(storedBytes(pool), Bytes({0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF, 0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02,
                                      0x01, 0, 0, 0, 0, 0, 0, 0xF0, 0x3F}));
  unsigned short u16 = 0;
  int i32 = 0;
  unsigned long u64 = 0;
  double d = 0;
  EXPECT_TRUE(pool.readUint16(u16) && pool.readInt32(i32) && pool.readUint64(u64) && pool.readDouble(d));
  EXPECT_EQ(std::make_tuple(u16, i32, u64, d),
            std::make_tuple(static_cast<unsigned short>(0x0102), -2, 0x0102030405060708UL, 1.0));

  // Short reads fail and leave the output alone; readBytesTry delivers what is there.
  short s = 5;
  EXPECT_FALSE(pool.readInt16(s));
  EXPECT_EQ(s, 5);
  pool.writeBytes("abc", 3);
  char buf[8] = {0};
  unsigned int got = 99;
  EXPECT_TRUE(pool.readBytesTry(buf, 8, got));
  EXPECT_EQ(std::string(buf, got), "abc");
  EXPECT_FALSE(pool.readBytesTry(buf, 8, got));
}

TEST(BufferPoolTest, StringsAndLines) {
  BufferPool pool(true);
  // An embedded zero byte cuts the string read back.
  pool.writeString(std::string("ab\0cd", 5));
  std::string s;
  EXPECT_TRUE(pool.readString(s));
  EXPECT_EQ(s, "ab");

  // An incomplete body steps back to the length, and succeeds once the rest arrives.
  pool.writeUint32(6);
  pool.writeBytes("abc", 3);
  s = "untouched";
  EXPECT_FALSE(pool.readString(s));
  EXPECT_EQ(s, "untouched");
  EXPECT_EQ(pool.getReadOffset(), 9u);
  pool.writeBytes("def", 3);
  EXPECT_TRUE(pool.readString(s));
  EXPECT_EQ(s, "abcdef");

  // A negative length fails with its 4 bytes consumed.
  pool.writeInt32(-1);
  EXPECT_FALSE(pool.readString(s));
  EXPECT_EQ(pool.getReadOffset(), pool.getWriteOffset());

  // Lines: written trimmed, read trimmed, an empty line is still a line.
  BufferPool lines(true);
  lines.writeLine("  hello world \t");
  EXPECT_EQ(std::string(lines.getBuffer(), lines.getBuffer() + lines.getWriteOffset()), "hello world\n");
  lines.writeBytes("  \r\n\nlast", 9);
  std::string line, all;
  while (lines.readLine(line)) all += "[" + line + "]";
  EXPECT_EQ(all, "[hello world][][][last]");
}

TEST(BufferPoolTest, ForeignMemoryIsCopiedOnGrowthAndNeverFreed) {
  // On the stack: freeing or writing into it would be caught.
  unsigned char foreign[4] = {1, 2, 3, 4};
  {
    BufferPool pool(foreign, sizeof(foreign));
    unsigned char b = 0;
    EXPECT_TRUE(pool.readByte(b) && b == 1 && pool.writeByte(5));
    EXPECT_NE(pool.getBuffer(), foreign);
    EXPECT_EQ(storedBytes(pool), Bytes({2, 3, 4, 5}));
  }
  EXPECT_EQ(foreign[3], 4);
}

TEST(BufferPoolTest, ConsumedBytesAreErasedPastTheThreshold) {
  BufferPool pool(false);
  Bytes data(50000000UL + 100), sink(1000000);
  for (size_t i = 0; i < data.size(); ++i) data[i] = static_cast<unsigned char>(i % 251);
  pool.writeBytes(data.data(), static_cast<unsigned int>(data.size()));
  EXPECT_EQ(pool.getCapacity(), 52428800u);

  // readBytesFully runs no compaction check; the next public read does, and keeps the unread bytes.
  for (int i = 0; i < 50; ++i) ASSERT_TRUE(pool.readBytesFully(sink.data(), 1000000u));
  vortm::testing::StdoutCapture capture;
  unsigned char b = 0;
  ASSERT_TRUE(pool.readByte(b));
  EXPECT_EQ(capture.str(), "eraseRead() : new pool size 2428799\n");
  EXPECT_EQ(pool.getCapacity(), 2428799u);
  EXPECT_EQ(storedBytes(pool), Bytes(data.begin() + 50000001, data.end()));
}
