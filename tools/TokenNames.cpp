#include "TokenNames.h"

#include <cctype>
#include <cstdlib>
#include <utility>

namespace vorelin {
namespace cli {

namespace {

const std::pair<int, const char*> kTypes[] = {
    {0, "UNSET"},        {1, "SYMBOL"},        {2, "CH_WORD"},    {3, "TEXT_SPAN"},   {4, "USER_WORD"},
    {6, "CH_RUN"},       {8, "NGRAM"},         {9, "SEN_PUNC"},   {10, "CLAUSE_PUNC"}, {11, "QUOTE_BEGIN"},
    {12, "QUOTE_END"},   {13, "QUESTION_MARK"}, {14, "EN_WORD"},  {19, "NEWLINE"},    {20, "TOPIC"},
    {21, "MENTION"},
};

const std::pair<int, const char*> kTags[] = {
    {0, "NONE"},          {1, "PLAIN"},        {6, "POSITIVE"},     {7, "NEGATIVE"},      {8, "NOT_POSITIVE"},
    {9, "NOT_NEGATIVE"},  {10, "DEGREE_10"},   {11, "DEGREE_11"},   {12, "DEGREE_12"},    {13, "DEGREE_13"},
    {14, "DEGREE_14"},    {15, "NEGATION"},    {16, "EN_NEGATION"}, {17, "STOPWORD"},     {18, "BUT_CONJ"},
    {19, "THOUGH_CONJ"},  {20, "SENTI_20"},    {21, "ATTRIBUTE_21"}, {22, "ATTRIBUTE_22"}, {23, "SENTI_23"},
    {25, "TARGET"},
};

template <size_t N>
std::string nameOf(const std::pair<int, const char*> (&table)[N], int value) {
  for (const auto& entry : table)
    if (entry.first == value) return entry.second;
  return std::to_string(value);
}

template <size_t N>
bool parse(const std::pair<int, const char*> (&table)[N], const std::string& prefix, const std::string& text,
           int& value) {
  if (text.empty()) return false;
  char* end = nullptr;
  long number = std::strtol(text.c_str(), &end, 10);
  if (*end == 0 && std::isdigit(static_cast<unsigned char>(text[0]))) {
    if (number < 0 || number > 255) return false;
    value = static_cast<int>(number);
    return true;
  }
  std::string upper;
  for (char c : text) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  if (upper.compare(0, prefix.size(), prefix) == 0) upper = upper.substr(prefix.size());
  for (const auto& entry : table) {
    if (upper == entry.second) {
      value = entry.first;
      return true;
    }
  }
  return false;
}

}  // namespace

std::string typeName(int type) { return nameOf(kTypes, type); }
std::string tagName(int tag) { return nameOf(kTags, tag); }
bool parseType(const std::string& text, int& type) { return parse(kTypes, "TT_", text, type); }
bool parseTag(const std::string& text, int& tag) { return parse(kTags, "TG_", text, tag); }

}  // namespace cli
}  // namespace vorelin
