#ifndef VORTM_UTILITY_UTILITY_H
#define VORTM_UTILITY_UTILITY_H

#include <cstdint>
#include <cstring>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace vortm {
namespace utility {

// Stateless helpers on byte strings, word lists, dates and directories.
// Nothing here knows an encoding: multi-byte characters are left alone.
class Utility {
 public:
  static void trim(std::string& str);
  static void toLowcase(std::string& str);
  static void replaceAll(std::string& str, const std::string& from, const std::string& to);
  static void eraseAll(std::string& str, const std::string& what);
  static bool isAllDigit(std::string& str);
  static bool isAllEngLett(const std::string& str);
  static bool isEnWord(const char* str, unsigned int length);

  // Bytes before the first zero byte, or `size` when there is none: where a
  // span handed on as C text ends.
  static size_t bytesBeforeZero(const char* bytes, size_t size) {
    const void* zero = std::memchr(bytes, 0, size);
    return zero ? static_cast<size_t>(static_cast<const char*>(zero) - bytes) : size;
  }

  // SuperFastHash over the bytes, seeded with the length; 0 for "".
  static uint32_t hash(const std::string& str);

  static bool strFltPairCmp(const std::pair<std::string, double>& a,
                            const std::pair<std::string, double>& b);

  static void strTokenize(const std::string& text, const std::string& delimiter,
                          std::vector<std::string>& out);
  static void strTokenize(const std::string& text, std::vector<std::string>& out, char delimiter);

  static bool loadWords(std::string file, std::vector<std::string>& words, int limit);
  static bool loadWords(std::string file, std::set<std::string>& words, int limit);

  // Every file the library reads by path goes through this first: true for a
  // regular file (links followed), with its size in `size` when given.
  // Otherwise false, and `reason` says why: the system's error text ("No
  // such file or directory") or "is a directory" / "not a regular file", so
  // that a FIFO, a device such as /dev/zero or a directory is never opened.
  static bool checkRegularFile(const std::string& path, std::string& reason, uint64_t* size = nullptr);
  // A loader's failure message: `text` and `path` run together, followed by
  // ": " and the reason when the path is no readable regular file. A file
  // that opens but holds bad data gets the plain message.
  static std::string fileFailureText(const std::string& text, const std::string& path);

  static std::string chCharToHexStr(const std::string& str);
  static void listFiles(const std::string& dir, std::vector<std::string>& names);

  static std::string getFormatedTime(long time);
  static std::string getCurFormatedTime();
  static std::string getFormatedDate(long time);
  static std::string getCurFormatedDate();
  static long getTime(int days, int hours, int minutes, int seconds);

  // Base64 with "\r\n" after every 76 output characters, and its reverse.
  static std::string encrypt(const std::string& plain);
  static std::string decrypt(const std::string& coded);

  // Reads a "key = value" file into `values` (see BasicKeyValueParser for the
  // format). On failure logs the file and the line at fault, and answers false.
  static bool parseConfigFile(const std::string& path, std::map<std::string, std::string>& values);
};

}  // namespace utility
}  // namespace vortm

#endif
