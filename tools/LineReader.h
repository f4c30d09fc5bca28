#ifndef VORELIN_TOOLS_LINEREADER_H
#define VORELIN_TOOLS_LINEREADER_H

#include <string>

namespace vorelin {
namespace cli {

// Reads lines from a file descriptor with bounded memory: a line longer than
// the limit keeps its first `maxLine` bytes (cut at a UTF-8 character
// boundary) and the rest is skipped unread into memory. A trailing "\r" is
// dropped, so CRLF input reads like LF input.
class LineReader {
 public:
  LineReader(int fd, size_t maxLine) : m_fd(fd), m_maxLine(maxLine) {}

  // False at end of input (or on a read error, see error()).
  bool next(std::string& line, bool& cut);
  // True when a line can be returned without waiting on the input: a whole
  // line is buffered, or the descriptor has data or end of input ready.
  bool ready();
  int error() const { return m_errno; }

 private:
  bool fill();

  int m_fd;
  size_t m_maxLine;
  std::string m_buffer;
  size_t m_pos = 0;
  bool m_eof = false;
  int m_errno = 0;
};

}  // namespace cli
}  // namespace vorelin

#endif
