#include "utility/BufferedFileReader.h"

#include <memory>

#include "utility/Utility.h"

namespace vortm {
namespace utility {

const unsigned int BufferedFileReader::BLOCK_SIZE;

BufferedFileReader::BufferedFileReader(bool encoded)
    : pool(false), encoded(encoded), state(1), m_good(false), m_unread(0) {}

BufferedFileReader::BufferedFileReader(const std::string& path, bool encoded)
    : pool(false), encoded(encoded), state(1), m_good(false), m_unread(0) {
  open(path);
}

BufferedFileReader::~BufferedFileReader() {
  pool.destroy();
  if (file.is_open()) file.close();
}

bool BufferedFileReader::open(const std::string& path) {
  if (state != 1) {
    if (file.is_open()) file.close();
    pool.reInit();
  }
  file.clear();
  m_openError.clear();
  if (!Utility::checkRegularFile(path, m_openError, &m_unread)) {
    state = 0;
    m_good = false;
    return false;
  }
  file.open(path.c_str(), std::ios::in | std::ios::binary);
  if (!file.is_open() || file.fail()) {
    m_openError = "cannot be opened";
    state = 0;
    m_good = false;
    return false;
  }
  file.clear();
  state = 2;
  m_good = true;
  return true;
}

bool BufferedFileReader::close() {
  if (file.is_open()) file.close();
  state = 4;
  pool.reInit();
  m_good = false;
  return true;
}

bool BufferedFileReader::readBlockToBuffer() {
  if (state != 2) {
    m_good = false;
    return false;
  }
  // Never past the size seen at open: a file that grows meanwhile is read as
  // it was, and the last block may be short without being the end.
  const unsigned int want = m_unread < BLOCK_SIZE ? static_cast<unsigned int>(m_unread) : BLOCK_SIZE;
  std::unique_ptr<char[]> block(new char[BLOCK_SIZE]);
  if (want > 0) file.read(block.get(), want);
  if (want > 0 && file.good()) {
    m_unread -= want;
    pool.writeBytes(block.get(), want);
    return true;
  }
  if (want == 0 || file.eof()) {
    state = 3;
    std::streamsize got = want > 0 ? file.gcount() : 0;
    if (got > 0) {
      pool.writeBytes(block.get(), static_cast<unsigned int>(got));
      return true;
    }
    m_good = false;
    return false;
  }
  state = 0;
  m_good = false;
  return false;
}

// Tries the pool, refills it once and tries again. One block is larger than
// any primitive, and the unread tail of the previous block stays in the pool,
// so a value straddling two blocks is read whole.
#define VORTM_READ_WITH_REFILL(expr) \
  do {                               \
    if (expr) return true;           \
    if (!readBlockToBuffer()) return false; \
    if (expr) return true;           \
    m_good = false;                  \
    return false;                    \
  } while (0)

bool BufferedFileReader::readUint64(unsigned long& value) { VORTM_READ_WITH_REFILL(pool.readUint64(value)); }
bool BufferedFileReader::readUint32(unsigned int& value) { VORTM_READ_WITH_REFILL(pool.readUint32(value)); }
bool BufferedFileReader::readUint16(unsigned short& value) { VORTM_READ_WITH_REFILL(pool.readUint16(value)); }
bool BufferedFileReader::readInt64(long& value) { VORTM_READ_WITH_REFILL(pool.readInt64(value)); }
bool BufferedFileReader::readInt32(int& value) { VORTM_READ_WITH_REFILL(pool.readInt32(value)); }
bool BufferedFileReader::readInt16(short& value) { VORTM_READ_WITH_REFILL(pool.readInt16(value)); }
bool BufferedFileReader::readDouble(double& value) { VORTM_READ_WITH_REFILL(pool.readDouble(value)); }
bool BufferedFileReader::readByte(unsigned char& value) { VORTM_READ_WITH_REFILL(pool.readByte(value)); }
bool BufferedFileReader::readCompressInteger(unsigned int& value) {
  VORTM_READ_WITH_REFILL(pool.readCompressInteger(value));
}

#undef VORTM_READ_WITH_REFILL

bool BufferedFileReader::readString(std::string& value) {
  // A string may span any number of blocks: the pool steps back to its length
  // until the whole body has arrived.
  while (!pool.readString(value)) {
    if (!readBlockToBuffer()) return false;
  }
  if (encoded && !value.empty()) value = Utility::decrypt(value);
  return true;
}

bool BufferedFileReader::readLine(std::string& value) {
  std::string line;
  unsigned char c;
  while (true) {
    if (!readByte(c)) {
      // A last line without an end of line still counts.
      if (state == 3 && !line.empty()) break;
      return false;
    }
    if (c == 0x0A) break;
    line.push_back(static_cast<char>(c));
  }
  value = line;
  Utility::trim(value);
  return true;
}

bool BufferedFileReader::readUtil(std::string& out, char delimiter) {
  std::string gathered;
  unsigned char c;
  while (true) {
    if (!readByte(c)) return false;
    if (static_cast<char>(c) == delimiter) break;
    gathered.push_back(static_cast<char>(c));
  }
  out = gathered;
  return true;
}

}  // namespace utility
}  // namespace vortm
