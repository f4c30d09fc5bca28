#ifndef VORELIN_TESTS_APPLICATION_WORDDICT_H
#define VORELIN_TESTS_APPLICATION_WORDDICT_H

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "TestSupport.h"
#include "analyzer/Token.h"
#include "analyzer/TrieDict.h"

namespace vortm {
namespace testing {

// Saves Chinese words with their tags as a dictionary in UTF-8 or GBK.
inline void saveWordDict(const std::vector<std::pair<std::string, int> >& words, bool gbk, const std::string& path) {
  using analyzer::Token;
  if (gbk) {
    analyzer::TrieDict<unsigned short> trie("basicGBKLexer");
    for (const auto& w : words) ASSERT_TRUE(trie.insert(toGbk(w.first), (Token::TT_CH_WORD << 8) | w.second));
    ASSERT_TRUE(trie.saveTo(path));
  } else {
    analyzer::TrieDict<unsigned int> trie("basicUTF8Lexer");
    for (const auto& w : words) ASSERT_TRUE(trie.insert(w.first, (Token::TT_CH_WORD << 8) | w.second));
    ASSERT_TRUE(trie.saveTo(path));
  }
}

}  // namespace testing
}  // namespace vortm

#endif
