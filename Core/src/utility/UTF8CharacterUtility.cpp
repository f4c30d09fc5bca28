#include "utility/UTF8CharacterUtility.h"

namespace vortm {
namespace utility {

// 。！？
const char UTF8CharacterUtility::chSenPunc[3][4] = {"\xE3\x80\x82", "\xEF\xBC\x81", "\xEF\xBC\x9F"};
// ：；，
const char UTF8CharacterUtility::chClauSenPunc[3][4] = {"\xEF\xBC\x9A", "\xEF\xBC\x9B", "\xEF\xBC\x8C"};
// ？
const char UTF8CharacterUtility::chQuestionMark[1][4] = {"\xEF\xBC\x9F"};
// “
const char UTF8CharacterUtility::chQMB[1][4] = {"\xE2\x80\x9C"};
// ”
const char UTF8CharacterUtility::chQME[1][4] = {"\xE2\x80\x9D"};

// Multi-byte characters that are not word characters:
// 。！？：；，“”【】、—（）‘’《》·…●～, U+3000 and ━.
const char UTF8CharacterUtility::chPunc[24][4] = {
    "\xE3\x80\x82", "\xEF\xBC\x81", "\xEF\xBC\x9F", "\xEF\xBC\x9A", "\xEF\xBC\x9B", "\xEF\xBC\x8C",
    "\xE2\x80\x9C", "\xE2\x80\x9D", "\xE3\x80\x90", "\xE3\x80\x91", "\xE3\x80\x81", "\xE2\x80\x94",
    "\xEF\xBC\x88", "\xEF\xBC\x89", "\xE2\x80\x98", "\xE2\x80\x99", "\xE3\x80\x8A", "\xE3\x80\x8B",
    "\xC2\xB7",     "\xE2\x80\xA6", "\xE2\x97\x8F", "\xEF\xBD\x9E", "\xE3\x80\x80", "\xE2\x94\x81"};

namespace {

// The lead bytes that some entry of chPunc starts with: a character with any
// other lead is in no entry, which settles almost every Chinese character
// without a scan of the table.
struct PuncLeads {
  PuncLeads() {
    for (unsigned int i = 0; i < 256; ++i) lead[i] = false;
    for (const auto& entry : UTF8CharacterUtility::chPunc) lead[static_cast<unsigned char>(entry[0])] = true;
  }
  bool lead[256];
};

}  // namespace

bool UTF8CharacterUtility::isChineseWordCharacter(const std::string& ch) {
  if (ch.size() <= 1) return false;
  const unsigned char first = static_cast<unsigned char>(ch[0]);
  if (!(first & 0x80)) return false;
  static const PuncLeads leads;
  if (!leads.lead[first]) return true;
  return !inTable(ch, chPunc);
}

bool UTF8CharacterUtility::isChSentencePunction(const std::string& ch) { return inTable(ch, chSenPunc); }

bool UTF8CharacterUtility::isChClausePunction(const std::string& ch) {
  return isChSentencePunction(ch) || inTable(ch, chClauSenPunc);
}

bool UTF8CharacterUtility::isChQuestionMark(const std::string& ch) { return inTable(ch, chQuestionMark); }

bool UTF8CharacterUtility::isChQuotationMarkBegin(const std::string& ch) { return inTable(ch, chQMB); }

bool UTF8CharacterUtility::isChQuotationMarkEnd(const std::string& ch) { return inTable(ch, chQME); }

}  // namespace utility
}  // namespace vortm
