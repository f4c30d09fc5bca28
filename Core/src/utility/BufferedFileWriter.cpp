#include "utility/BufferedFileWriter.h"

#include "utility/Utility.h"

namespace vortm {
namespace utility {

const unsigned int BufferedFileWriter::BLOCK_SIZE;

BufferedFileWriter::BufferedFileWriter(bool encoded) : pool(true), state(1), encoded(encoded) {}

BufferedFileWriter::BufferedFileWriter(const std::string& path, bool encoded)
    : pool(true), state(1), encoded(encoded) {
  open(path);
}

BufferedFileWriter::~BufferedFileWriter() {
  if (file.is_open()) {
    flush();
    file.close();
  }
  state = 3;
  pool.destroy();
}

bool BufferedFileWriter::open(const std::string& path) {
  if (state != 1) {
    if (file.is_open()) file.close();
    pool.reInit();
  }
  file.clear();
  file.open(path.c_str(), std::ios::out | std::ios::binary | std::ios::trunc);
  if (!file.is_open() || file.fail()) {
    state = 0;
    return false;
  }
  file.clear();
  state = 2;
  return true;
}

bool BufferedFileWriter::close() {
  if (file.is_open()) {
    flush();
    file.close();
  }
  state = 3;
  pool.reInit();
  return true;
}

bool BufferedFileWriter::flush() {
  if (state != 2) return false;
  file.write(reinterpret_cast<const char*>(pool.getBuffer()),
             static_cast<std::streamsize>(pool.getWriteOffset()));
  if (!file.good()) {
    state = 0;
    return false;
  }
  pool.reset();
  file.flush();
  if (!file.good()) {
    state = 0;
    return false;
  }
  return true;
}

bool BufferedFileWriter::afterWrite() {
  if (pool.getWriteOffset() > BLOCK_SIZE) return flush();
  return true;
}

bool BufferedFileWriter::writeBytes(const void* data, unsigned int length) {
  if (state != 2) return false;
  pool.writeBytes(data, length);
  return afterWrite();
}

bool BufferedFileWriter::writeCompressInteger(unsigned int value) {
  if (state != 2) return false;
  pool.writeCompressInteger(value);
  return afterWrite();
}

bool BufferedFileWriter::writeString(const std::string& value) {
  if (state != 2) return false;
  std::string copy = value;
  if (encoded && !copy.empty()) copy = Utility::encrypt(copy);
  pool.writeString(copy.data(), static_cast<int>(copy.size()));
  return afterWrite();
}

bool BufferedFileWriter::writeLine(const std::string& value) {
  if (state != 2) return false;
  pool.writeLine(value);
  return afterWrite();
}

bool BufferedFileWriter::writeUint64(unsigned long value) {
  if (state != 2) return false;
  pool.writeUint64(value);
  return afterWrite();
}

bool BufferedFileWriter::writeUint32(unsigned int value) {
  if (state != 2) return false;
  pool.writeUint32(value);
  return afterWrite();
}

bool BufferedFileWriter::writeUint16(unsigned short value) {
  if (state != 2) return false;
  pool.writeUint16(value);
  return afterWrite();
}

bool BufferedFileWriter::writeInt64(long value) {
  if (state != 2) return false;
  pool.writeInt64(value);
  return afterWrite();
}

bool BufferedFileWriter::writeInt32(int value) {
  if (state != 2) return false;
  pool.writeInt32(value);
  return afterWrite();
}

bool BufferedFileWriter::writeInt16(short value) {
  if (state != 2) return false;
  pool.writeInt16(value);
  return afterWrite();
}

bool BufferedFileWriter::writeDouble(double value) {
  if (state != 2) return false;
  pool.writeDouble(value);
  return afterWrite();
}

bool BufferedFileWriter::writeByte(unsigned char value) {
  if (state != 2) return false;
  pool.writeByte(value);
  return afterWrite();
}

}  // namespace utility
}  // namespace vortm
