#ifndef VORTM_UTILITY_BUFFERPOOL_H
#define VORTM_UTILITY_BUFFERPOOL_H

#include "common/ObjectReader.h"
#include "common/ObjectWriter.h"

namespace vortm {
namespace utility {

// A growing memory block that is a reader and a writer at once. Values are
// stored as their raw little-endian images; the unread bytes are those in
// [readOffset, writeOffset).
class BufferPool : public common::ObjectReader, public common::ObjectWriter {
 public:
  static const unsigned long INITIAL_SIZE = 102400;
  // Consumed bytes that a pool with keepRead false tolerates before compacting.
  static const unsigned long ERASE_THRESHOLD = 50000000;

  explicit BufferPool(bool keepRead);
  // Wraps foreign memory without copying; the pool starts full and never
  // frees it. The first growth moves the content to a block of its own.
  BufferPool(unsigned char* data, unsigned long length);
  virtual ~BufferPool();

  BufferPool(const BufferPool&) = delete;
  BufferPool& operator=(const BufferPool&) = delete;

  void reset();
  void reInit();
  // Hands the current block to the caller and starts over with a new one.
  unsigned char* releaseBuffer();
  void destroy();
  void resize();
  void eraseRead();

  bool readBytesFully(void* dst, unsigned int length);
  bool readBytesTry(void* dst, unsigned int length, unsigned int& got);
  bool writeBytes(const void* data, unsigned int length);
  // Makes room for `length` more bytes, counts them as written and returns
  // where they go, so that a record of several fields grows the pool once.
  unsigned char* claimWrite(unsigned long length) {
    while (length + writeOffset > capacity) resize();
    unsigned char* at = writePtr;
    writePtr += length;
    writeOffset += length;
    return at;
  }
  bool writeString(const char* str, int length);
  // On success `out` is a new[] block of length + 1 bytes, zero-terminated.
  bool readString(char*& out, int& length);
  bool readByte_(unsigned char& value);
  bool readCompressInteger(unsigned int& value);
  bool writeCompressInteger(unsigned int value);

  // Raw sizeof(T) bytes of a plain value.
  template <class T>
  bool read(T& value) {
    if (!readBytesFully(&value, sizeof(T))) return false;
    afterRead();
    return true;
  }
  template <class T>
  bool write(const T& value) {
    return writeBytes(&value, sizeof(T));
  }

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

  unsigned long getReadOffset() const { return readOffset; }
  unsigned long getWriteOffset() const { return writeOffset; }
  unsigned long getCapacity() const { return capacity; }
  unsigned char* getBuffer() const { return buffer; }
  bool getOwnsBuffer() const { return ownsBuffer; }
  bool getKeepRead() const { return keepRead; }

 protected:
  // Compaction test run after every successful public read.
  void afterRead() {
    if (!keepRead && readOffset > ERASE_THRESHOLD) eraseRead();
  }
  void syncPointers() {
    readPtr = buffer + readOffset;
    writePtr = buffer + writeOffset;
  }

  unsigned char* buffer;
  unsigned long capacity;
  unsigned long readOffset;
  unsigned char* writePtr;
  unsigned char* readPtr;
  unsigned long writeOffset;
  bool ownsBuffer;
  bool keepRead;
};

}  // namespace utility
}  // namespace vortm

#endif
