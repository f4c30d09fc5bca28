#include "utility/GBKCharacterUtility.h"

namespace vortm {
namespace utility {

// 。！？
const char GBKCharacterUtility::chSenPunc[3][3] = {"\xA1\xA3", "\xA3\xA1", "\xA3\xBF"};
// ：；，
const char GBKCharacterUtility::chClauSenPunc[3][3] = {"\xA3\xBA", "\xA3\xBB", "\xA3\xAC"};
// ？
const char GBKCharacterUtility::chQuestionMark[1][3] = {"\xA3\xBF"};
// “
const char GBKCharacterUtility::chQMB[1][3] = {"\xA1\xB0"};
// ”
const char GBKCharacterUtility::chQME[1][3] = {"\xA1\xB1"};

bool GBKCharacterUtility::isChineseWordCharacter(const std::string& ch) {
  if (ch.size() <= 1) return false;
  unsigned char lead = static_cast<unsigned char>(ch[0]);
  return lead >= 0xB0 && lead <= 0xF7;
}

bool GBKCharacterUtility::isChSentencePunction(const std::string& ch) { return inTable(ch, chSenPunc); }

bool GBKCharacterUtility::isChClausePunction(const std::string& ch) {
  return isChSentencePunction(ch) || inTable(ch, chClauSenPunc);
}

bool GBKCharacterUtility::isChQuestionMark(const std::string& ch) { return inTable(ch, chQuestionMark); }

bool GBKCharacterUtility::isChQuotationMarkBegin(const std::string& ch) { return inTable(ch, chQMB); }

bool GBKCharacterUtility::isChQuotationMarkEnd(const std::string& ch) { return inTable(ch, chQME); }

}  // namespace utility
}  // namespace vortm
