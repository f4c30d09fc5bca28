#ifndef VORTM_UTILITY_UTF8CHARACTERUTILITY_H
#define VORTM_UTILITY_UTF8CHARACTERUTILITY_H

#include "utility/CharacterUtility.h"

namespace vortm {
namespace utility {

// UTF-8: a word character is any multi-byte character not listed in chPunc,
// so accented Latin, Cyrillic and Kana count as word characters as well.
class UTF8CharacterUtility : public CharacterUtility {
 public:
  bool isChineseWordCharacter(const std::string& ch) override;
  bool isChSentencePunction(const std::string& ch) override;
  bool isChClausePunction(const std::string& ch) override;
  bool isChQuestionMark(const std::string& ch) override;
  bool isChQuotationMarkBegin(const std::string& ch) override;
  bool isChQuotationMarkEnd(const std::string& ch) override;

  static const char chSenPunc[3][4];
  static const char chClauSenPunc[3][4];
  static const char chQuestionMark[1][4];
  static const char chQMB[1][4];
  static const char chQME[1][4];
  static const char chPunc[24][4];
};

}  // namespace utility
}  // namespace vortm

#endif
