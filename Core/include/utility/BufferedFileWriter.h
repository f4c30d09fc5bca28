#ifndef VORTM_UTILITY_BUFFEREDFILEWRITER_H
#define VORTM_UTILITY_BUFFEREDFILEWRITER_H

#include <fstream>
#include <string>

#include "common/ObjectWriter.h"
#include "utility/BufferPool.h"

namespace vortm {
namespace utility {

// Writes a file through a BufferPool, flushed whenever it holds more than
// 1 MiB. With `encoded` true, non-empty strings are stored as Base64 text.
//
// state: 0 error, 1 no file yet, 2 open, 3 closed.
class BufferedFileWriter : public common::ObjectWriter {
 public:
  static const unsigned int BLOCK_SIZE = 1048576;

  explicit BufferedFileWriter(bool encoded);
  BufferedFileWriter(const std::string& path, bool encoded);
  // Flushes and closes a file still open, so nothing is lost without close().
  virtual ~BufferedFileWriter();

  BufferedFileWriter(const BufferedFileWriter&) = delete;
  BufferedFileWriter& operator=(const BufferedFileWriter&) = delete;

  bool open(const std::string& path);
  bool close();
  bool flush();
  bool writeBytes(const void* data, unsigned int length);
  bool writeCompressInteger(unsigned int value);

  bool writeString(const std::string& value) override;
  bool writeLine(const std::string& value) override;
  bool writeUint64(unsigned long value) override;
  bool writeUint32(unsigned int value) override;
  bool writeUint16(unsigned short value) override;
  bool writeInt64(long value) override;
  bool writeInt32(int value) override;
  bool writeInt16(short value) override;
  bool writeDouble(double value) override;
  bool writeByte(unsigned char value) override;

  int getState() const { return state; }
  bool good() const { return state == 2; }
  bool isEncoded() const { return encoded; }

 private:
  bool afterWrite();

  BufferPool pool;
  int state;
  std::ofstream file;
  bool encoded;
};

}  // namespace utility
}  // namespace vortm

#endif
