#include "utility/Utility.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>

#include "utility/BufferedFileReader.h"
#include "utility/StrTokenizer.h"

namespace vortm {
namespace utility {

namespace {

const char* const kWhitespace = "\r \t\n";

const char kBase64Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

bool isAsciiLetter(unsigned char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

// Value of a Base64 character; anything outside the alphabet counts as 0.
unsigned int base64Value(unsigned char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  if (c == '+') return 62;
  if (c == '/') return 63;
  return 0;
}

}  // namespace

void Utility::trim(std::string& str) {
  std::string::size_type first = str.find_first_not_of(kWhitespace);
  if (first == std::string::npos) {
    str.clear();
    return;
  }
  str.erase(0, first);
  std::string::size_type last = str.find_last_not_of(kWhitespace);
  str.erase(last + 1);
}

void Utility::toLowcase(std::string& str) {
  for (std::string::size_type i = 0; i < str.size(); ++i) {
    str[i] = static_cast<char>(std::tolower(static_cast<unsigned char>(str[i])));
  }
}

void Utility::replaceAll(std::string& str, const std::string& from, const std::string& to) {
  if (from.empty()) return;
  std::string::size_type pos = 0;
  while ((pos = str.find(from, pos)) != std::string::npos) {
    str.replace(pos, from.size(), to);
    pos += to.size();
  }
}

void Utility::eraseAll(std::string& str, const std::string& what) {
  if (what.empty()) return;
  std::string::size_type pos;
  // Restart from the front: the erasure may close up a new occurrence.
  while ((pos = str.find(what)) != std::string::npos) str.erase(pos, what.size());
}

bool Utility::isAllDigit(std::string& str) {
  // Callers have always received true here, whatever the text; kept so.
  for (std::string::size_type i = 0; i < str.size(); ++i) {
  }
  return true;
}

bool Utility::isAllEngLett(const std::string& str) {
  for (std::string::size_type i = 0; i < str.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(str[i]);
    if (!isAsciiLetter(c) && c != '-') return false;
  }
  return true;
}

bool Utility::isEnWord(const char* str, unsigned int length) {
  if (str == nullptr || length == 0) return false;
  bool hasLetter = false;
  for (unsigned int i = 0; i < length; ++i) {
    unsigned char c = static_cast<unsigned char>(str[i]);
    if (isAsciiLetter(c)) {
      hasLetter = true;
    } else if (c != '-' && c != '\'') {
      return false;
    }
  }
  return hasLetter;
}

bool Utility::strFltPairCmp(const std::pair<std::string, double>& a, const std::pair<std::string, double>& b) {
  return a.second > b.second;
}

void Utility::strTokenize(const std::string& text, const std::string& delimiter, std::vector<std::string>& out) {
  out.clear();
  if (delimiter.empty()) {
    if (!text.empty()) out.push_back(text);
    return;
  }
  std::string::size_type start = 0;
  std::string::size_type pos;
  while ((pos = text.find(delimiter, start)) != std::string::npos) {
    out.push_back(text.substr(start, pos - start));
    start = pos + delimiter.size();
  }
  if (start < text.size()) out.push_back(text.substr(start));
}

void Utility::strTokenize(const std::string& text, std::vector<std::string>& out, char delimiter) {
  std::string field;
  for (std::string::size_type i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c == '\r' || c == ' ' || c == '\t' || c == '\n' || c == delimiter) {
      if (!field.empty()) out.push_back(field);
      field.clear();
    } else {
      field.push_back(c);
    }
  }
  if (!field.empty()) out.push_back(field);
}

bool Utility::checkRegularFile(const std::string& path, std::string& reason, uint64_t* size) {
  struct stat st;
  if (stat(path.c_str(), &st) != 0) {
    reason = std::strerror(errno);
    return false;
  }
  if (S_ISDIR(st.st_mode)) {
    reason = "is a directory";
    return false;
  }
  if (!S_ISREG(st.st_mode)) {
    reason = "not a regular file";
    return false;
  }
  if (access(path.c_str(), R_OK) != 0) {
    reason = std::strerror(errno);
    return false;
  }
  if (size) *size = static_cast<uint64_t>(st.st_size);
  return true;
}

std::string Utility::fileFailureText(const std::string& text, const std::string& path) {
  std::string reason;
  if (checkRegularFile(path, reason)) return text + path;
  return text + path + ": " + reason;
}

bool Utility::loadWords(std::string file, std::vector<std::string>& words, int limit) {
  BufferedFileReader reader(file, false);
  if (!reader.good()) return false;
  std::string separators = " \r\t";
  std::string line;
  while (reader.readLine(line)) {
    strtokenizer tokenizer(line, separators);
    if (tokenizer.count_tokens() == 0) continue;
    words.push_back(tokenizer.token(0));
    if (limit > 0 && words.size() >= static_cast<std::vector<std::string>::size_type>(limit)) break;
  }
  return true;
}

bool Utility::loadWords(std::string file, std::set<std::string>& words, int limit) {
  std::vector<std::string> loaded;
  if (!loadWords(file, loaded, limit)) return false;
  words.insert(loaded.begin(), loaded.end());
  return true;
}

std::string Utility::chCharToHexStr(const std::string& str) {
  static const char digits[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(str.size() * 7 + 5);
  for (std::string::size_type i = 0; i < str.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(str[i]);
    out += "0x";
    out.push_back(digits[c >> 4]);
    out.push_back(digits[c & 15]);
    out += ",  ";
  }
  out += "0x0}\n";
  return out;
}

void Utility::listFiles(const std::string& dir, std::vector<std::string>& names) {
  DIR* handle = opendir(dir.c_str());
  if (handle == nullptr) return;
  while (struct dirent* entry = readdir(handle)) {
    if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0) continue;
    names.push_back(entry->d_name);
  }
  closedir(handle);
}

std::string Utility::getFormatedTime(long time) {
  time_t t = static_cast<time_t>(time);
  struct tm* local = localtime(&t);
  if (local == nullptr) return std::string();
  char text[64];
  std::snprintf(text, sizeof(text), "%4d-%02d-%02d %02d:%02d:%02d", local->tm_year + 1900, local->tm_mon + 1,
                local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec);
  return text;
}

std::string Utility::getCurFormatedTime() { return getFormatedTime(static_cast<long>(std::time(nullptr))); }

std::string Utility::getFormatedDate(long time) {
  time_t t = static_cast<time_t>(time);
  struct tm* local = localtime(&t);
  if (local == nullptr) return std::string();
  char text[32];
  std::snprintf(text, sizeof(text), "%4d-%02d-%02d", local->tm_year + 1900, local->tm_mon + 1, local->tm_mday);
  return text;
}

std::string Utility::getCurFormatedDate() { return getFormatedDate(static_cast<long>(std::time(nullptr))); }

long Utility::getTime(int days, int hours, int minutes, int seconds) {
  return static_cast<long>(std::time(nullptr)) + static_cast<long>(days) * 86400 + static_cast<long>(hours) * 3600 +
         static_cast<long>(minutes) * 60 + seconds;
}

std::string Utility::encrypt(const std::string& plain) {
  const unsigned char* data = reinterpret_cast<const unsigned char*>(plain.data());
  std::string::size_type length = plain.size();
  std::string out;
  out.reserve(length / 3 * 4 + length / 57 * 2 + 4);
  unsigned int lineLength = 0;
  std::string::size_type i = 0;
  for (; i + 3 <= length; i += 3) {
    unsigned int group = (data[i] << 16) | (data[i + 1] << 8) | data[i + 2];
    out.push_back(kBase64Alphabet[(group >> 18) & 63]);
    out.push_back(kBase64Alphabet[(group >> 12) & 63]);
    out.push_back(kBase64Alphabet[(group >> 6) & 63]);
    out.push_back(kBase64Alphabet[group & 63]);
    // The line break follows full groups only, so it may end the text.
    lineLength += 4;
    if (lineLength == 76) {
      out += "\r\n";
      lineLength = 0;
    }
  }
  std::string::size_type rest = length - i;
  if (rest == 1) {
    unsigned int group = data[i] << 16;
    out.push_back(kBase64Alphabet[(group >> 18) & 63]);
    out.push_back(kBase64Alphabet[(group >> 12) & 63]);
    out += "==";
  } else if (rest == 2) {
    unsigned int group = (data[i] << 16) | (data[i + 1] << 8);
    out.push_back(kBase64Alphabet[(group >> 18) & 63]);
    out.push_back(kBase64Alphabet[(group >> 12) & 63]);
    out.push_back(kBase64Alphabet[(group >> 6) & 63]);
    out.push_back('=');
  }
  return out;
}

std::string Utility::decrypt(const std::string& coded) {
  std::string out;
  out.reserve(coded.size() / 4 * 3);
  std::string::size_type length = coded.size();
  std::string::size_type i = 0;
  while (i < length) {
    char c = coded[i];
    if (c == '\r' || c == '\n') {
      ++i;
      continue;
    }
    // A group cut short by the end of the text counts as padded.
    char c1 = i + 1 < length ? coded[i + 1] : '=';
    char c2 = i + 2 < length ? coded[i + 2] : '=';
    char c3 = i + 3 < length ? coded[i + 3] : '=';
    unsigned int value = (base64Value(static_cast<unsigned char>(c)) << 18) |
                         (base64Value(static_cast<unsigned char>(c1)) << 12);
    out.push_back(static_cast<char>((value >> 16) & 0xFF));
    if (c2 != '=') {
      value |= base64Value(static_cast<unsigned char>(c2)) << 6;
      out.push_back(static_cast<char>((value >> 8) & 0xFF));
      if (c3 != '=') {
        value |= base64Value(static_cast<unsigned char>(c3));
        out.push_back(static_cast<char>(value & 0xFF));
      }
    }
    i += 4;
  }
  return out;
}

}  // namespace utility
}  // namespace vortm
