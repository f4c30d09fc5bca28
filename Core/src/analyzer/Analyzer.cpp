#include "analyzer/Analyzer.h"

#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"

namespace vortm {
namespace analyzer {

using common::AutoPtr;
using configure::Parameter;

bool Analyzer::config(const Parameter& param) {
  if (param.isNull()) return false;
  m_tokenizerPtr = AutoPtr<Tokenizer>();
  common::gfn_creatorRegister();

  const Parameter& tokenizers = param["tokenizers"];
  for (int i = 0; !tokenizers[i].isNull(); ++i) {
    const Parameter& entry = tokenizers[i];
    std::string identifier;
    if (!entry["identifier"].getStringValue(identifier)) continue;
    AutoPtr<Tokenizer> tokenizer(common::InstanceCreator<Tokenizer>::getCreation(identifier), true);
    if (!tokenizer || !tokenizer->config(entry["param"])) return false;
    if (!m_tokenizerPtr)
      m_tokenizerPtr = tokenizer;
    else
      m_tokenizerPtr->attachPostTokenizer(tokenizer);
  }

  m_encode = "utf-8";
  param["encode"].getStringValue(m_encode);
  return true;
}

bool Analyzer::doTokenize(const std::string& text, TokenBuffer& out, bool isolated) {
  if (!m_tokenizerPtr) return false;
  if (text.empty()) return true;
  return m_tokenizerPtr->doTokenize(text, out, isolated, 0);
}

}  // namespace analyzer
}  // namespace vortm
