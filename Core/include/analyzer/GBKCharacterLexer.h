#ifndef VORTM_ANALYZER_GBKCHARACTERLEXER_H
#define VORTM_ANALYZER_GBKCHARACTERLEXER_H

#include "analyzer/CharacterLexer.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

// A byte with the top bit set opens a two-byte character; the trail byte is
// taken as it is.
class GBKCharacterLexer : public CharacterLexer {
 public:
  int doLexer(unsigned int& offset, unsigned int& length) override;
};

VORTM_DECLARE_CREATOR(GBKCharacterLexerCreator, CharacterLexer, GBKCharacterLexer, "basicGBKLexer");

}  // namespace analyzer
}  // namespace vortm

#endif
