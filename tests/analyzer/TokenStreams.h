#ifndef VORELIN_TESTS_ANALYZER_TOKENSTREAMS_H
#define VORELIN_TESTS_ANALYZER_TOKENSTREAMS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "analyzer/Analyzer.h"
#include "analyzer/Dict.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "TestSupport.h"

namespace vortm {
namespace testing {

typedef std::vector<std::string> Stream;

// Each record of the buffer as "term/start/end/type/tag".
inline Stream tokenStream(analyzer::TokenBuffer& buffer) {
  Stream out;
  common::AutoPtr<analyzer::TokenBuffer::Iterator> it = buffer.iterator();
  for (analyzer::Token t; it->hasNext();) {
    it->next(t);
    out.push_back(t.term + "/" + std::to_string(t.startOffset) + "/" + std::to_string(t.endOffset) + "/" +
                  std::to_string(t.type) + "/" + std::to_string(t.tag));
  }
  return out;
}

// One entry of a "tokenizers" or "token_filters" list.
inline std::string chainItem(const std::string& identifier, const std::string& param) {
  return "<item><identifier>" + identifier + "</identifier><param>" + param + "</param></item>";
}

inline Stream analyze(analyzer::Analyzer& analyzer, const std::string& text, bool isolated = true) {
  analyzer::TokenBuffer out;
  EXPECT_TRUE(analyzer.doTokenize(text, out, isolated));
  return tokenStream(out);
}

// Each character's byte length at its first byte, as a tokenizer hands it on.
inline std::vector<unsigned int> forwardRefs(const std::string& lexerId, const std::string& text) {
  common::gfn_creatorRegister();
  std::vector<unsigned int> ref(text.size() + 1, 1);
  common::AutoPtr<analyzer::CharacterLexer> lexer(
      common::InstanceCreator<analyzer::CharacterLexer>::getCreation(lexerId), true);
  lexer->setText(text);
  unsigned int offset, length;
  while (lexer->doLexer(offset, length) == 1) ref[offset] = length;
  return ref;
}

inline Stream matchText(analyzer::Dict& dict, const std::string& lexerId, const std::string& text) {
  std::vector<unsigned int> ref = forwardRefs(lexerId, text);
  analyzer::TokenBuffer out;
  EXPECT_TRUE(dict.match(text.data(), static_cast<unsigned int>(text.size()), ref.data(), out, 0));
  return tokenStream(out);
}

}  // namespace testing
}  // namespace vortm

#endif
