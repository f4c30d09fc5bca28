#ifndef VORTM_UTILITY_GBKCHARACTERUTILITY_H
#define VORTM_UTILITY_GBKCHARACTERUTILITY_H

#include "utility/CharacterUtility.h"

namespace vortm {
namespace utility {

// GBK: a word character is any two-byte character whose lead byte lies in
// the hanzi rows 0xB0 to 0xF7; full-width punctuation and symbols fall below.
class GBKCharacterUtility : public CharacterUtility {
 public:
  bool isChineseWordCharacter(const std::string& ch) override;
  bool isChSentencePunction(const std::string& ch) override;
  bool isChClausePunction(const std::string& ch) override;
  bool isChQuestionMark(const std::string& ch) override;
  bool isChQuotationMarkBegin(const std::string& ch) override;
  bool isChQuotationMarkEnd(const std::string& ch) override;

  static const char chSenPunc[3][3];
  static const char chClauSenPunc[3][3];
  static const char chQuestionMark[1][3];
  static const char chQMB[1][3];
  static const char chQME[1][3];
};

}  // namespace utility
}  // namespace vortm

#endif
