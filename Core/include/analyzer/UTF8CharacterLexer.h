#ifndef VORTM_ANALYZER_UTF8CHARACTERLEXER_H
#define VORTM_ANALYZER_UTF8CHARACTERLEXER_H

#include "analyzer/CharacterLexer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// The lead byte alone decides the length: one, two or three bytes, with
// continuation bytes taken unchecked. Four-byte sequences are a failure, so
// the analysis never sees characters outside the basic plane.
class UTF8CharacterLexer : public CharacterLexer {
 public:
  int doLexer(unsigned int& offset, unsigned int& length) override;
};

VORTM_DECLARE_CREATOR(UTF8CharacterLexerCreator, CharacterLexer, UTF8CharacterLexer, "basicUTF8Lexer");

}  // namespace analyzer
}  // namespace vortm

#endif
