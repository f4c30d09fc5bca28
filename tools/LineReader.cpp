#include "LineReader.h"

#include <errno.h>
#include <poll.h>
#include <unistd.h>

#include <cstring>

namespace vorelin {
namespace cli {

namespace {
const size_t kChunk = 1 << 16;
}

bool LineReader::fill() {
  if (m_eof) return false;
  if (m_pos > 0) {
    m_buffer.erase(0, m_pos);
    m_pos = 0;
  }
  size_t old = m_buffer.size();
  m_buffer.resize(old + kChunk);
  ssize_t n;
  do {
    n = ::read(m_fd, &m_buffer[old], kChunk);
  } while (n < 0 && errno == EINTR);
  if (n <= 0) {
    if (n < 0) m_errno = errno;
    m_buffer.resize(old);
    m_eof = true;
    return false;
  }
  m_buffer.resize(old + static_cast<size_t>(n));
  return true;
}

bool LineReader::ready() {
  if (m_eof || m_buffer.find('\n', m_pos) != std::string::npos) return true;
  struct pollfd p = {m_fd, POLLIN, 0};
  return ::poll(&p, 1, 0) > 0;
}

bool LineReader::next(std::string& line, bool& cut) {
  line.clear();
  cut = false;
  for (;;) {
    size_t nl = m_buffer.find('\n', m_pos);
    size_t end = nl == std::string::npos ? m_buffer.size() : nl;
    size_t take = end - m_pos;
    if (line.size() + take > m_maxLine) {
      // Keep the first maxLine bytes, drop the rest of the line as it comes.
      if (!cut) line.append(m_buffer, m_pos, m_maxLine - line.size());
      cut = true;
    } else {
      line.append(m_buffer, m_pos, take);
    }
    if (nl != std::string::npos) {
      m_pos = nl + 1;
      break;
    }
    m_pos = m_buffer.size();
    if (!fill()) {
      if (line.empty() && !cut) return false;
      break;
    }
  }
  if (cut) {
    // Do not leave half a UTF-8 character at the cut.
    const size_t size = line.size();
    size_t k = size;
    while (k > 0 && (static_cast<unsigned char>(line[k - 1]) & 0xC0) == 0x80 && size - k < 3) --k;
    if (k > 0) {
      const unsigned char lead = static_cast<unsigned char>(line[k - 1]);
      const size_t need = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
      if (size - (k - 1) < need) line.resize(k - 1);
    }
  } else if (!line.empty() && line.back() == '\r') {
    line.pop_back();
  }
  return true;
}

}  // namespace cli
}  // namespace vorelin
