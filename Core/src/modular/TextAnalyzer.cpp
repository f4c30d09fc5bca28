#include "modular/TextAnalyzer.h"

#include <utility>

#include "common/Logger.h"
#include "configure/Parameter.h"

namespace vortm {
namespace modular {

using analyzer::Analyzer;
using analyzer::Token;
using analyzer::TokenBuffer;
using common::AutoPtr;
using configure::Parameter;

const std::string TextAnalyzer::PARAM_ANALYZER = "analyzer";

TextAnalyzer::TextAnalyzer() {}

TextAnalyzer::~TextAnalyzer() {}

bool TextAnalyzer::config(const Parameter& param) {
  if (m_analyzerPtr) return true;
  const Parameter& analyzerParam = param[PARAM_ANALYZER];
  if (analyzerParam.isNull()) return false;
  m_analyzerPtr = new Analyzer();
  if (!m_analyzerPtr->config(analyzerParam)) {
    // The analyzer is kept even so; callers rely on a second config being a
    // no-op.
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Failed to Configure Analyzer");
    return false;
  }
  return true;
}

bool TextAnalyzer::configTextAnalyzer(const Parameter& param, AutoPtr<TextAnalyzer>& out) {
  out = new TextAnalyzer();
  return out->config(param);
}

bool TextAnalyzer::tokenizeText(const std::string& text, TokenBuffer& buffer, bool isolated) {
  if (!m_analyzerPtr) return false;
  return m_analyzerPtr->doTokenize(text, buffer, isolated);
}

bool TextAnalyzer::tokenizeText(const std::string& text, std::vector<Token>& tokens, bool isolated) {
  tokens.clear();
  // The records are only a way station to the vector, so the buffer is one
  // per thread and reused; one that a long text grew is not kept.
  thread_local TokenBuffer reused;
  struct Rewind {
    TokenBuffer& buffer;
    ~Rewind() {
      if (buffer.getCapacity() > (1UL << 22)) buffer.reInit();
      buffer.reset();
    }
  } rewind{reused};
  TokenBuffer& buffer = reused;
  buffer.reset();
  if (!tokenizeText(text, buffer, isolated)) return false;
  // Counting the records first costs one cheap pass; growing the vector by
  // doubling would hold up to three times the tokens at the last move, which
  // for a long text is most of the memory the whole analysis takes.
  // Each record is decoded in its place in the vector, without a way
  // station; the count covers exactly the records that decode.
  tokens.resize(buffer.countRecords());
  TokenBuffer::Iterator it(&buffer);
  size_t decoded = 0;
  while (decoded < tokens.size() && it.readNext(tokens[decoded])) ++decoded;
  tokens.resize(decoded);
  return true;
}

}  // namespace modular
}  // namespace vortm
