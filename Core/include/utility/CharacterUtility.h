#ifndef VORTM_UTILITY_CHARACTERUTILITY_H
#define VORTM_UTILITY_CHARACTERUTILITY_H

#include <string>

namespace vortm {
namespace utility {

// Classifies one whole character (the run of its bytes) of a given encoding.
// None of the tests knows ASCII: the tokenizers look at ASCII themselves.
class CharacterUtility {
 public:
  // Virtual so that an owning AutoPtr of the base may delete either utility.
  virtual ~CharacterUtility() {}
  virtual bool isChineseWordCharacter(const std::string& ch) = 0;
  virtual bool isChSentencePunction(const std::string& ch) = 0;
  // Sentence punctuation counts as clause punctuation too.
  virtual bool isChClausePunction(const std::string& ch) = 0;
  virtual bool isChQuestionMark(const std::string& ch) = 0;
  virtual bool isChQuotationMarkBegin(const std::string& ch) = 0;
  virtual bool isChQuotationMarkEnd(const std::string& ch) = 0;

 protected:
  // Exact comparison with the entries of a table of NUL-terminated slots.
  template <unsigned int N, unsigned int W>
  static bool inTable(const std::string& ch, const char (&table)[N][W]) {
    // Almost every character differs from every entry in its first byte,
    // so that byte is compared before the whole string.
    const char first = ch.empty() ? '\0' : ch[0];
    for (unsigned int i = 0; i < N; ++i)
      if (table[i][0] == first && ch == table[i]) return true;
    return false;
  }
};

}  // namespace utility
}  // namespace vortm

#endif
