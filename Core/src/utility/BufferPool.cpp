#include "utility/BufferPool.h"

#include <cstring>
#include <iostream>

#include "common/Logger.h"
#include "utility/Utility.h"

namespace vortm {
namespace utility {

const unsigned long BufferPool::INITIAL_SIZE;
const unsigned long BufferPool::ERASE_THRESHOLD;

BufferPool::BufferPool(bool keepRead)
    : buffer(new unsigned char[INITIAL_SIZE]),
      capacity(INITIAL_SIZE),
      readOffset(0),
      writePtr(nullptr),
      readPtr(nullptr),
      writeOffset(0),
      ownsBuffer(true),
      keepRead(keepRead) {
  syncPointers();
}

BufferPool::BufferPool(unsigned char* data, unsigned long length)
    : buffer(data),
      capacity(length),
      readOffset(0),
      writePtr(nullptr),
      readPtr(nullptr),
      writeOffset(length),
      ownsBuffer(false),
      keepRead(true) {
  syncPointers();
}

BufferPool::~BufferPool() { destroy(); }

void BufferPool::reset() {
  readOffset = 0;
  writeOffset = 0;
  syncPointers();
}

void BufferPool::reInit() {
  unsigned char* fresh = new unsigned char[INITIAL_SIZE];
  if (ownsBuffer) delete[] buffer;
  buffer = fresh;
  capacity = INITIAL_SIZE;
  readOffset = 0;
  writeOffset = 0;
  ownsBuffer = true;
  syncPointers();
}

unsigned char* BufferPool::releaseBuffer() {
  unsigned char* old = buffer;
  buffer = new unsigned char[INITIAL_SIZE];
  capacity = INITIAL_SIZE;
  readOffset = 0;
  writeOffset = 0;
  ownsBuffer = true;
  syncPointers();
  return old;
}

void BufferPool::destroy() {
  if (ownsBuffer) delete[] buffer;
  buffer = nullptr;
  capacity = 0;
  readOffset = 0;
  readPtr = nullptr;
  writeOffset = 0;
  writePtr = nullptr;
}

void BufferPool::resize() {
  // A destroyed pool has capacity 0; start again from the initial size.
  unsigned long newCapacity = capacity ? capacity * 2 : INITIAL_SIZE;
  unsigned char* fresh = new unsigned char[newCapacity];
  if (capacity) std::memcpy(fresh, buffer, capacity);
  if (ownsBuffer) delete[] buffer;
  buffer = fresh;
  capacity = newCapacity;
  ownsBuffer = true;
  syncPointers();
}

void BufferPool::eraseRead() {
  unsigned long newSize = capacity - readOffset;
  if (newSize < INITIAL_SIZE) newSize = INITIAL_SIZE;
  unsigned long unread = writeOffset - readOffset;
  unsigned char* fresh = new unsigned char[newSize];
  if (unread) std::memcpy(fresh, buffer + readOffset, unread);
  // Foreign memory is never freed here; such pools keep what they read anyway.
  if (buffer && ownsBuffer) delete[] buffer;
  buffer = fresh;
  capacity = newSize;
  ownsBuffer = true;
  readOffset = 0;
  writeOffset = unread;
  syncPointers();
  common::gfn_libraryLine("eraseRead() : new pool size " + std::to_string(newSize));
}

bool BufferPool::readBytesFully(void* dst, unsigned int length) {
  if (length == 0) return true;
  if (length + readOffset > writeOffset) return false;
  std::memcpy(dst, readPtr, length);
  readOffset += length;
  readPtr += length;
  return true;
}

bool BufferPool::readBytesTry(void* dst, unsigned int length, unsigned int& got) {
  if (length == 0) {
    got = 0;
    return true;
  }
  if (readOffset >= writeOffset) return false;
  unsigned long remaining = writeOffset - readOffset;
  unsigned int n = remaining < length ? static_cast<unsigned int>(remaining) : length;
  std::memcpy(dst, readPtr, n);
  readOffset += n;
  readPtr += n;
  got = n;
  return true;
}

bool BufferPool::writeBytes(const void* data, unsigned int length) {
  if (length == 0) return true;
  while (length + writeOffset > capacity) resize();
  std::memcpy(writePtr, data, length);
  writePtr += length;
  writeOffset += length;
  return true;
}

bool BufferPool::writeString(const char* str, int length) {
  writeUint32(static_cast<unsigned int>(length));
  writeBytes(str, static_cast<unsigned int>(length));
  return true;
}

bool BufferPool::readString(char*& out, int& length) {
  if (!readBytesFully(&length, 4)) return false;
  if (length < 0) return false;
  // The body is checked before allocating so that an incomplete string (the
  // rest of it still in the file) costs nothing; the length is read again.
  if (static_cast<unsigned long>(length) + readOffset > writeOffset) {
    readOffset -= 4;
    readPtr -= 4;
    out = nullptr;
    return false;
  }
  out = new char[static_cast<unsigned long>(length) + 1];
  if (!readBytesFully(out, static_cast<unsigned int>(length))) {
    readOffset -= 4;
    readPtr -= 4;
    delete[] out;
    out = nullptr;
    return false;
  }
  out[length] = '\0';
  afterRead();
  return true;
}

bool BufferPool::readString(std::string& value) {
  char* data = nullptr;
  int length = 0;
  if (!readString(data, length)) return false;
  // Cut at the first zero byte: saved files rely on this.
  value.assign(data, std::strlen(data));
  delete[] data;
  return true;
}

bool BufferPool::readByte_(unsigned char& value) {
  if (readOffset + 1 > writeOffset) return false;
  value = *readPtr;
  ++readPtr;
  ++readOffset;
  return true;
}

bool BufferPool::readLine(std::string& value) {
  std::string line;
  bool consumed = false;
  unsigned char c;
  while (readByte_(c)) {
    consumed = true;
    if (c == 0x0A) break;
    line.push_back(static_cast<char>(c));
  }
  value = line;
  Utility::trim(value);
  if (!consumed) return false;
  afterRead();
  return true;
}

bool BufferPool::readCompressInteger(unsigned int& value) {
  unsigned char b;
  if (!readByte_(b)) return false;
  if (b < 128 || (b & 127) > 4) {
    value = b;
    afterRead();
    return true;
  }
  unsigned int n = b & 127;
  unsigned int v = 0;
  for (unsigned int i = 0; i < n; ++i) {
    unsigned char next;
    if (!readByte_(next)) {
      readOffset -= i + 1;
      readPtr -= i + 1;
      return false;
    }
    v = (v << 8) | next;
  }
  value = v;
  afterRead();
  return true;
}

bool BufferPool::writeCompressInteger(unsigned int value) {
  if (value < 128 || (value < 256 && (value & 127) > 4)) {
    return writeByte(static_cast<unsigned char>(value));
  }
  unsigned int n = 1;
  if (value >= 0x1000000u) {
    n = 4;
  } else if (value >= 0x10000u) {
    n = 3;
  } else if (value >= 0x100u) {
    n = 2;
  }
  unsigned char bytes[5];
  bytes[0] = static_cast<unsigned char>(128 | n);
  for (unsigned int i = 0; i < n; ++i) {
    bytes[1 + i] = static_cast<unsigned char>(value >> (8 * (n - 1 - i)));
  }
  return writeBytes(bytes, n + 1);
}

bool BufferPool::readUint64(unsigned long& value) { return read(value); }
bool BufferPool::readUint32(unsigned int& value) { return read(value); }
bool BufferPool::readUint16(unsigned short& value) { return read(value); }
bool BufferPool::readInt64(long& value) { return read(value); }
bool BufferPool::readInt32(int& value) { return read(value); }
bool BufferPool::readInt16(short& value) { return read(value); }
bool BufferPool::readDouble(double& value) { return read(value); }

bool BufferPool::readByte(unsigned char& value) {
  if (!readByte_(value)) return false;
  afterRead();
  return true;
}

bool BufferPool::writeString(const std::string& value) {
  return writeString(value.data(), static_cast<int>(value.size()));
}

bool BufferPool::writeLine(const std::string& value) {
  std::string line = value;
  Utility::trim(line);
  static const unsigned char newline = 0x0A;
  bool ok = writeBytes(line.data(), static_cast<unsigned int>(line.size()));
  ok = writeBytes(&newline, 1) && ok;
  return ok;
}

bool BufferPool::writeUint64(unsigned long value) { return write(value); }
bool BufferPool::writeUint32(unsigned int value) { return write(value); }
bool BufferPool::writeUint16(unsigned short value) { return write(value); }
bool BufferPool::writeInt64(long value) { return write(value); }
bool BufferPool::writeInt32(int value) { return write(value); }
bool BufferPool::writeInt16(short value) { return write(value); }
bool BufferPool::writeDouble(double value) { return write(value); }

bool BufferPool::writeByte(unsigned char value) {
  if (writeOffset + 1 > capacity) resize();
  *writePtr = value;
  ++writePtr;
  ++writeOffset;
  return true;
}

}  // namespace utility
}  // namespace vortm
