#include "utility/BufferPool.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "TestSupport.h"

using vortm::utility::BufferPool;

namespace {

std::vector<unsigned char> storedBytes(const BufferPool& pool) {
  return std::vector<unsigned char>(pool.getBuffer() + pool.getReadOffset(), pool.getBuffer() + pool.getWriteOffset());
}

std::vector<unsigned char> compressed(unsigned int v) {
  BufferPool pool(true);
  pool.writeCompressInteger(v);
  return storedBytes(pool);
}

}  // namespace

TEST(BufferPoolTest, CompressIntegerEncodingsAndRoundTrip) {
  typedef std::vector<unsigned char> Bytes;
  EXPECT_EQ(compressed(0), Bytes({0x00}));
  EXPECT_EQ(compressed(127), Bytes({0x7F}));
  // 128..132 would collide with headers, so they get one.
  EXPECT_EQ(compressed(128), Bytes({0x81, 0x80}));
  EXPECT_EQ(compressed(132), Bytes({0x81, 0x84}));
  EXPECT_EQ(compressed(133), Bytes({0x85}));
  EXPECT_EQ(compressed(255), Bytes({0xFF}));
  EXPECT_EQ(compressed(256), Bytes({0x82, 0x01, 0x00}));
  EXPECT_EQ(compressed(65536), Bytes({0x83, 0x01, 0x00, 0x00}));
  EXPECT_EQ(compressed(4294967295u), Bytes({0x84, 0xFF, 0xFF, 0xFF, 0xFF}));

  BufferPool pool(true);
  const unsigned int values[] = {0, 127, 128, 132, 133, 255, 256, 65535, 65536, 16777216, 4294967295u};
  for (unsigned int v : values) pool.writeCompressInteger(v);
  for (unsigned int v : values) {
    unsigned int got = 1;
    ASSERT_TRUE(pool.readCompressInteger(got));
    EXPECT_EQ(got, v);
  }

  // A header of exactly 128 reads as zero.
  unsigned char bare[] = {0x80};
  BufferPool wrapped(bare, 1);
  unsigned int zero = 7;
  EXPECT_TRUE(wrapped.readCompressInteger(zero));
  EXPECT_EQ(zero, 0u);

  // A missing trailing byte steps back before the header.
  unsigned char cut[] = {0x82, 0x01};
  BufferPool partial(cut, 2);
  unsigned int v = 0;
  EXPECT_FALSE(partial.readCompressInteger(v));
  EXPECT_EQ(partial.getReadOffset(), 0u);
}

TEST(BufferPoolTest, NumericLayoutsAreLittleEndianAndReadBack) {
  BufferPool pool(true);
  pool.writeUint16(0x0102);
  pool.writeInt32(-2);
  pool.writeUint64(0x0102030405060708UL);
  pool.writeDouble(1.0);
  pool.write<unsigned int>(0xA1B2C3D4u);
  std::vector<unsigned char> expected = {0x02, 0x01, 0xFE, 0xFF, 0xFF, 0xFF, 0x08, 0x07, 0x06, 0x05, 0x04,
                                         0x03, 0x02, 0x01, 0,    0,    0,    0,    0,    0,    0xF0, 0x3F,
                                         0xD4, 0xC3, 0xB2, 0xA1};
  EXPECT_EQ(storedBytes(pool), expected);

  unsigned short u16 = 0;
  int i32 = 0;
  unsigned long u64 = 0;
  double d = 0;
  unsigned int raw = 0;
  EXPECT_TRUE(pool.readUint16(u16));
  EXPECT_TRUE(pool.readInt32(i32));
  EXPECT_TRUE(pool.readUint64(u64));
  EXPECT_TRUE(pool.readDouble(d));
  EXPECT_TRUE(pool.read(raw));
  EXPECT_EQ(u16, 0x0102);
  EXPECT_EQ(i32, -2);
  EXPECT_EQ(u64, 0x0102030405060708UL);
  EXPECT_EQ(d, 1.0);
  EXPECT_EQ(raw, 0xA1B2C3D4u);

  // Nothing left: a short read fails and leaves the position alone.
  short s = 5;
  EXPECT_FALSE(pool.readInt16(s));
  EXPECT_EQ(s, 5);

  // readBytesTry delivers what is there.
  pool.writeBytes("abc", 3);
  char buf[8] = {0};
  unsigned int got = 99;
  EXPECT_TRUE(pool.readBytesTry(buf, 8, got));
  EXPECT_EQ(got, 3u);
  EXPECT_EQ(std::string(buf), "abc");
  got = 99;
  EXPECT_FALSE(pool.readBytesTry(buf, 8, got));
  EXPECT_EQ(got, 99u);
}

TEST(BufferPoolTest, StringsAndLines) {
  BufferPool pool(true);
  // An embedded zero byte cuts the string read back.
  pool.writeString(std::string("ab\0cd", 5));
  std::string s;
  EXPECT_TRUE(pool.readString(s));
  EXPECT_EQ(s, "ab");
  EXPECT_EQ(pool.getReadOffset(), pool.getWriteOffset());

  // An incomplete body steps back to the length, and succeeds once the rest arrives.
  pool.writeUint32(6);
  pool.writeBytes("abc", 3);
  s = "untouched";
  unsigned long before = pool.getReadOffset();
  EXPECT_FALSE(pool.readString(s));
  EXPECT_EQ(s, "untouched");
  EXPECT_EQ(pool.getReadOffset(), before);
  pool.writeBytes("def", 3);
  EXPECT_TRUE(pool.readString(s));
  EXPECT_EQ(s, "abcdef");

  // A negative length fails with its 4 bytes consumed.
  pool.writeInt32(-1);
  before = pool.getReadOffset();
  EXPECT_FALSE(pool.readString(s));
  EXPECT_EQ(pool.getReadOffset(), before + 4);

  // Lines: written trimmed, read trimmed, an empty line is still a line.
  BufferPool lines(true);
  lines.writeLine("  hello world \t");
  lines.writeBytes("\n  \r\nlast", 9);
  std::vector<unsigned char> first(lines.getBuffer(), lines.getBuffer() + 12);
  EXPECT_EQ(std::string(first.begin(), first.end()), "hello world\n");
  std::string line;
  EXPECT_TRUE(lines.readLine(line));
  EXPECT_EQ(line, "hello world");
  EXPECT_TRUE(lines.readLine(line));
  EXPECT_EQ(line, "");
  EXPECT_TRUE(lines.readLine(line));
  EXPECT_EQ(line, "");
  EXPECT_TRUE(lines.readLine(line));
  EXPECT_EQ(line, "last");
  EXPECT_FALSE(lines.readLine(line));
}

TEST(BufferPoolTest, ForeignMemoryIsCopiedOnGrowthAndNeverFreed) {
  // On the stack: freeing it would crash the test.
  unsigned char foreign[4] = {1, 2, 3, 4};
  {
    BufferPool pool(foreign, sizeof(foreign));
    EXPECT_FALSE(pool.getOwnsBuffer());
    EXPECT_EQ(pool.getWriteOffset(), 4u);
    unsigned char b = 0;
    EXPECT_TRUE(pool.readByte(b));
    EXPECT_EQ(b, 1);
    EXPECT_TRUE(pool.writeByte(5));
    EXPECT_TRUE(pool.getOwnsBuffer());
    EXPECT_NE(pool.getBuffer(), foreign);
    EXPECT_EQ(pool.getCapacity(), 8u);
    EXPECT_EQ(storedBytes(pool), std::vector<unsigned char>({2, 3, 4, 5}));
    pool.writeBytes("0123456789", 10);
    EXPECT_EQ(pool.getCapacity(), 16u);
  }
  EXPECT_EQ(foreign[3], 4);

  // releaseBuffer hands the block over and starts afresh.
  BufferPool pool(true);
  pool.writeUint32(42);
  unsigned char* block = pool.releaseBuffer();
  EXPECT_EQ(pool.getWriteOffset(), 0u);
  EXPECT_EQ(pool.getCapacity(), 102400u);
  EXPECT_EQ(block[0], 42);
  delete[] block;
}

TEST(BufferPoolTest, ConsumedBytesAreErasedPastTheThreshold) {
  BufferPool pool(false);
  std::vector<unsigned char> chunk(1 << 20);
  for (size_t i = 0; i < chunk.size(); ++i) chunk[i] = static_cast<unsigned char>(i % 251);
  const unsigned long total = 50000000UL + 100;
  for (unsigned long written = 0; written < total;) {
    unsigned int n = static_cast<unsigned int>(std::min<unsigned long>(chunk.size(), total - written));
    pool.writeBytes(chunk.data(), n);
    written += n;
  }
  EXPECT_EQ(pool.getCapacity(), 52428800u);

  // readBytesFully runs no compaction test; the next public read does.
  std::vector<unsigned char> sink(1 << 20);
  unsigned long consumed = 0;
  while (consumed < 50000000UL) {
    unsigned int n = static_cast<unsigned int>(std::min<unsigned long>(sink.size(), 50000000UL - consumed));
    ASSERT_TRUE(pool.readBytesFully(sink.data(), n));
    consumed += n;
  }
  vortm::testing::StdoutCapture capture;
  unsigned char b = 0;
  ASSERT_TRUE(pool.readByte(b));
  ASSERT_EQ(capture.lines().size(), 1u);
  EXPECT_EQ(capture.lines()[0], "eraseRead() : new pool size 2428799");
  EXPECT_EQ(pool.getReadOffset(), 0u);
  EXPECT_EQ(pool.getWriteOffset(), 99u);
  EXPECT_EQ(pool.getCapacity(), 2428799u);

  // The unread bytes survive the move.
  unsigned long pos = 50000001UL;
  for (int i = 0; i < 99; ++i, ++pos) {
    ASSERT_TRUE(pool.readByte(b));
    EXPECT_EQ(b, static_cast<unsigned char>((pos % chunk.size()) % 251));
  }
  EXPECT_FALSE(pool.readByte(b));
}
