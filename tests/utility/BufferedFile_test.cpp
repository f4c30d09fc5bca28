#include <gtest/gtest.h>

#include <string>

#include "TestSupport.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"

using vortm::testing::readFile;
using vortm::testing::TempDir;
using vortm::testing::writeFile;
using vortm::utility::BufferedFileReader;
using vortm::utility::BufferedFileWriter;

TEST(BufferedFileTest, EncodedRoundTripAndFileLayout) {
  TempDir dir;
  std::string path = dir.file("data.bin");
  {
    BufferedFileWriter writer(path, true);
    ASSERT_EQ(writer.getState(), 2);
    EXPECT_TRUE(writer.writeString("Man"));
    EXPECT_TRUE(writer.writeString(""));
    EXPECT_TRUE(writer.writeLine("  plain line  "));
    EXPECT_TRUE(writer.writeInt16(-3));
    EXPECT_TRUE(writer.writeCompressInteger(256));
    EXPECT_TRUE(writer.close());
    EXPECT_EQ(writer.getState(), 3);
    EXPECT_FALSE(writer.writeInt32(1));
  }
  // Strings hold their Base64 text and its length; an empty one is a bare zero length;
  // lines are not encoded.
  std::string expected("\x04\0\0\0TWFu\0\0\0\0plain line\n\xFD\xFF\x82\x01\x00", 28);
  EXPECT_EQ(readFile(path), expected);

  BufferedFileReader reader(path, true);
  ASSERT_TRUE(reader.good());
  std::string s, empty = "x", line;
  short i16 = 0;
  unsigned int ci = 0;
  EXPECT_TRUE(reader.readString(s));
  EXPECT_TRUE(reader.readString(empty));
  EXPECT_TRUE(reader.readLine(line));
  EXPECT_TRUE(reader.readInt16(i16));
  EXPECT_TRUE(reader.readCompressInteger(ci));
  EXPECT_EQ(s, "Man");
  EXPECT_EQ(empty, "");
  EXPECT_EQ(line, "plain line");
  EXPECT_EQ(i16, -3);
  EXPECT_EQ(ci, 256u);
  unsigned char b;
  EXPECT_FALSE(reader.readByte(b));
  EXPECT_FALSE(reader.good());
  EXPECT_EQ(reader.getState(), 3);
  EXPECT_TRUE(reader.close());
  EXPECT_EQ(reader.getState(), 4);
}

TEST(BufferedFileTest, ValuesAndStringsAcrossBlocks) {
  TempDir dir;
  std::string path = dir.file("big.bin");
  const std::string filler(1048566, 'x');  // with its length: 1048570 bytes
  std::string large(2600000, 'y');
  large[1300000] = 'z';
  {
    BufferedFileWriter writer(path, false);
    EXPECT_TRUE(writer.writeString(filler));
    EXPECT_TRUE(writer.writeInt64(-1234567890123L));  // bytes 1048570..1048577
    EXPECT_TRUE(writer.writeString(large));           // spans three blocks
    EXPECT_TRUE(writer.writeDouble(2.5));
    // No close(): the destructor must flush what is left.
  }
  EXPECT_EQ(readFile(path).size(), 1048570u + 8 + 4 + 2600000 + 8);

  BufferedFileReader reader(path, false);
  std::string s;
  long i64 = 0;
  double d = 0;
  ASSERT_TRUE(reader.readString(s));
  EXPECT_EQ(s, filler);
  ASSERT_TRUE(reader.readInt64(i64));
  EXPECT_EQ(i64, -1234567890123L);
  ASSERT_TRUE(reader.readString(s));
  EXPECT_EQ(s, large);
  ASSERT_TRUE(reader.readDouble(d));
  EXPECT_EQ(d, 2.5);
  EXPECT_FALSE(reader.readDouble(d));
  EXPECT_FALSE(reader.good());
}

TEST(BufferedFileTest, ShortEmptyAndMissingFiles) {
  TempDir dir;
  // A file ending inside a String body.
  std::string cut = dir.file("cut.bin");
  writeFile(cut, std::string("\x0A\0\0\0abcde", 9));
  BufferedFileReader truncated(cut, false);
  std::string s = "untouched";
  EXPECT_FALSE(truncated.readString(s));
  EXPECT_EQ(s, "untouched");
  EXPECT_FALSE(truncated.good());
  EXPECT_EQ(truncated.getState(), 3);

  // An empty file opens, and the first read ends it.
  std::string empty = dir.file("empty.bin");
  writeFile(empty, "");
  BufferedFileReader reader(false);
  EXPECT_EQ(reader.getState(), 1);
  EXPECT_FALSE(reader.good());
  EXPECT_TRUE(reader.open(empty));
  EXPECT_TRUE(reader.good());
  unsigned int v;
  EXPECT_FALSE(reader.readUint32(v));
  EXPECT_FALSE(reader.good());
  EXPECT_EQ(reader.getState(), 3);

  // Reopening a used reader starts afresh.
  EXPECT_TRUE(reader.open(cut));
  EXPECT_EQ(reader.getState(), 2);
  EXPECT_TRUE(reader.readUint32(v));
  EXPECT_EQ(v, 10u);

  BufferedFileReader missing(dir.file("none.bin"), false);
  EXPECT_FALSE(missing.good());
  EXPECT_EQ(missing.getState(), 0);

  BufferedFileWriter writer(dir.file("no/such/dir.bin"), false);
  EXPECT_EQ(writer.getState(), 0);
  EXPECT_FALSE(writer.writeByte(1));
  EXPECT_FALSE(writer.flush());
}

TEST(BufferedFileTest, ReadLineKeepsLastLineButReadUtilDropsIt) {
  TempDir dir;
  std::string path = dir.file("lines.txt");
  writeFile(path, " first \r\n   \nsecond;third");

  BufferedFileReader lines(path, false);
  std::string line;
  EXPECT_TRUE(lines.readLine(line));
  EXPECT_EQ(line, "first");
  EXPECT_TRUE(lines.readLine(line));  // only blanks
  EXPECT_EQ(line, "");
  EXPECT_TRUE(lines.readLine(line));  // no end of line
  EXPECT_EQ(line, "second;third");
  line = "kept";
  EXPECT_FALSE(lines.readLine(line));
  EXPECT_EQ(line, "kept");

  BufferedFileReader fields(path, false);
  std::string field;
  EXPECT_TRUE(fields.readUtil(field, ';'));
  EXPECT_EQ(field, " first \r\n   \nsecond");  // untrimmed
  field = "kept";
  EXPECT_FALSE(fields.readUtil(field, ';'));
  EXPECT_EQ(field, "kept");
}
