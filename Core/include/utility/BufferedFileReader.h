#ifndef VORTM_UTILITY_BUFFEREDFILEREADER_H
#define VORTM_UTILITY_BUFFEREDFILEREADER_H

#include <cstdint>
#include <fstream>
#include <string>

#include "common/ObjectReader.h"
#include "utility/BufferPool.h"

namespace vortm {
namespace utility {

// Reads a file in 1 MiB blocks through a BufferPool. With `encoded` true,
// non-empty strings are stored as Base64 text.
//
// state: 0 error, 1 no file yet, 2 open, 3 file fully read into the pool
// (which may still hold unread data), 4 closed.
class BufferedFileReader : public common::ObjectReader {
 public:
  static const unsigned int BLOCK_SIZE = 1048576;

  explicit BufferedFileReader(bool encoded);
  BufferedFileReader(const std::string& path, bool encoded);
  virtual ~BufferedFileReader();

  BufferedFileReader(const BufferedFileReader&) = delete;
  BufferedFileReader& operator=(const BufferedFileReader&) = delete;

  // Only a regular file opens: anything else fails at once, so that a FIFO
  // cannot block and a device cannot feed endless data. Reading stops at the
  // size the file had when it was opened.
  bool open(const std::string& path);
  bool close();
  bool readBlockToBuffer();
  // Bytes up to `delimiter` (consumed, not stored); false when the data ends
  // before a delimiter, and then the gathered bytes are lost.
  bool readUtil(std::string& out, char delimiter);
  bool readCompressInteger(unsigned int& value);

  bool readString(std::string& value) override;
  bool readLine(std::string& value) override;
  bool readUint64(unsigned long& value) override;
  bool readUint32(unsigned int& value) override;
  bool readUint16(unsigned short& value) override;
  bool readInt64(long& value) override;
  bool readInt32(int& value) override;
  bool readInt16(short& value) override;
  bool readDouble(double& value) override;
  bool readByte(unsigned char& value) override;

  // False when the file could not be opened or the input is exhausted.
  bool good() const { return m_good; }
  int getState() const { return state; }
  bool isEncoded() const { return encoded; }
  // Why the last open failed (see Utility::checkRegularFile); empty after a
  // successful one.
  const std::string& getOpenError() const { return m_openError; }

 private:
  BufferPool pool;
  std::ifstream file;
  bool encoded;
  int state;
  bool m_good;
  // Bytes of the file not yet read into the pool.
  uint64_t m_unread;
  std::string m_openError;
};

}  // namespace utility
}  // namespace vortm

#endif
