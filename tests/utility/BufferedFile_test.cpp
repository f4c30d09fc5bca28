#include <gtest/gtest.h>

#include <sys/stat.h>

#include <set>
#include <string>

#include "TestSupport.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"
#include "utility/Utility.h"

using namespace vortm::testing;
using vortm::utility::BufferedFileReader;
using vortm::utility::BufferedFileWriter;
using vortm::utility::Utility;

TEST(BufferedFileTest, EncodedRoundTripAndFileLayout) {
  TempDir dir;
  std::string path = dir.file("data.bin");
  {
    BufferedFileWriter writer(path, true);
    EXPECT_TRUE(writer.writeString("Man") && writer.writeString("") && writer.writeLine("  plain line  ") &&
                writer.writeInt16(-3) && writer.writeCompressInteger(256) && writer.close());
    EXPECT_FALSE(writer.writeInt32(1));
  }
  // Strings hold their Base64 text and its length, an empty one only a zero length; lines are not encoded.
  EXPECT_EQ(readFile(path), std::string("\x04\0\0\0TWFu\0\0\0\0plain line\n\xFD\xFF\x82\x01\x00", 28));

  BufferedFileReader reader(path, true);
  std::string s, empty = "x", line;
  short i16 = 0;
  unsigned int ci = 0;
  EXPECT_TRUE(reader.readString(s) && reader.readString(empty) && reader.readLine(line) && reader.readInt16(i16) &&
              reader.readCompressInteger(ci));
  EXPECT_EQ(s + "|" + empty + "|" + line, "Man||plain line");
  EXPECT_EQ(i16, -3);
  EXPECT_EQ(ci, 256u);
}

TEST(BufferedFileTest, ValuesAndStringsAcrossBlocks) {
  TempDir dir;
  std::string path = dir.file("big.bin");
  const std::string filler(1048566, 'x');  // with its length: 1048570 bytes
  std::string large(2600000, 'y');
  large[1300000] = 'z';
  {
    // No close(): the destructor must flush what is left.
    BufferedFileWriter writer(path, false);
    EXPECT_TRUE(writer.writeString(filler) && writer.writeInt64(-1234567890123L) &&  // bytes 1048570..1048577
                writer.writeString(large) && writer.writeDouble(2.5));            // spans three blocks
  }
  EXPECT_EQ(readFile(path).size(), 1048570u + 8 + 4 + 2600000 + 8);

  BufferedFileReader reader(path, false);
  std::string s1, s2;
  long i64 = 0;
  double d = 0;
  ASSERT_TRUE(reader.readString(s1) && reader.readInt64(i64) && reader.readString(s2) && reader.readDouble(d));
  EXPECT_TRUE(s1 == filler && s2 == large);
  EXPECT_EQ(i64, -1234567890123L);
  EXPECT_EQ(d, 2.5);
  EXPECT_FALSE(reader.readDouble(d));
}

TEST(BufferedFileTest, ShortEmptyAndMissingFiles) {
  TempDir dir;
  // A file ending inside a String body.
  std::string cut = dir.file("cut.bin"), empty = dir.file("empty.bin");
  writeFile(cut, std::string("\x0A\0\0\0abcde", 9));
  writeFile(empty, "");
  BufferedFileReader truncated(cut, false);
  std::string s = "untouched";
  EXPECT_FALSE(truncated.readString(s));
  EXPECT_EQ(s, "untouched");
  EXPECT_EQ(truncated.getState(), 3);

  // An empty file opens and the first read ends it; reopening a used reader starts afresh.
  BufferedFileReader reader(false);
  EXPECT_TRUE(reader.open(empty) && reader.good());
  unsigned int v;
  EXPECT_FALSE(reader.readUint32(v) || reader.good());
  EXPECT_TRUE(reader.open(cut) && reader.readUint32(v) && v == 10);

  EXPECT_EQ(BufferedFileReader(dir.file("none.bin"), false).getState(), 0);
  BufferedFileWriter writer(dir.file("no/such/dir.bin"), false);
  EXPECT_EQ(writer.getState(), 0);
  EXPECT_FALSE(writer.writeByte(1) || writer.flush());
}

TEST(BufferedFileTest, ReadLineKeepsLastLineButReadUtilDropsIt) {
  TempDir dir;
  std::string path = dir.file("lines.txt");
  writeFile(path, " first \r\n   \nsecond;third");
  BufferedFileReader lines(path, false), fields(path, false);
  std::string line, all, field;
  while (lines.readLine(line)) all += "[" + line + "]";
  EXPECT_EQ(all, "[first][][second;third]");
  // Fields are not trimmed, and one without its delimiter is lost.
  EXPECT_TRUE(fields.readUtil(field, ';'));
  EXPECT_EQ(field, " first \r\n   \nsecond");
  field = "kept";
  EXPECT_FALSE(fields.readUtil(field, ';'));
  EXPECT_EQ(field, "kept");
}

TEST(BufferedFileTest, LastBlockOfOneByteIsReadToTheEnd) {
  TempDir dir;
  for (size_t size : {size_t(1), size_t(BufferedFileReader::BLOCK_SIZE) + 1}) {
    std::string content(size, 'a');
    content.back() = 'z';
    writeFile(dir.file("f"), content);
    BufferedFileReader reader(dir.file("f"), false);
    unsigned char c = 0;
    size_t count = 0;
    while (reader.readByte(c)) ++count;
    EXPECT_EQ(size, count);
    EXPECT_EQ('z', c);
    EXPECT_EQ(3, reader.getState());
  }
}

TEST(BufferedFileTest, OnlyRegularFilesOpen) {
  TempDir dir;
  const std::string fifo = dir.file("fifo");
  ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
  // None of these may block, grow without end or read as an empty file.
  const std::pair<std::string, std::string> cases[] = {{"/dev/zero", "not a regular file"},
                                                        {fifo, "not a regular file"},
                                                        {dir.path(), "is a directory"},
                                                        {dir.file("none"), "No such file or directory"}};
  for (const auto& c : cases) {
    BufferedFileReader reader(c.first, false);
    EXPECT_FALSE(reader.good());
    EXPECT_EQ(0, reader.getState());
    EXPECT_EQ(c.second, reader.getOpenError());
    std::set<std::string> words;
    EXPECT_FALSE(Utility::loadWords(c.first, words, -1)) << c.first;
    EXPECT_EQ("Failed to Load X From" + c.first + ": " + c.second, Utility::fileFailureText("Failed to Load X From", c.first));
  }
  writeFile(dir.file("ok"), "w\n");
  EXPECT_EQ("Failed" + dir.file("ok"), Utility::fileFailureText("Failed", dir.file("ok")));
  BufferedFileReader reader(dir.file("ok"), false);
  EXPECT_TRUE(reader.good() && reader.getOpenError().empty());
}
