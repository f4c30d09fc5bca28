#ifndef VORELIN_TESTS_ANALYZER_TOKENSTREAMS_H
#define VORELIN_TESTS_ANALYZER_TOKENSTREAMS_H

#include <string>
#include <vector>

#include "analyzer/TokenBuffer.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"

namespace vortm {
namespace testing {

// Each record of the buffer as "term/start/end/type/tag".
inline std::vector<std::string> tokenStream(analyzer::TokenBuffer& buffer) {
  std::vector<std::string> out;
  common::AutoPtr<analyzer::TokenBuffer::Iterator> it = buffer.iterator();
  for (analyzer::Token t; it->hasNext();) {
    it->next(t);
    out.push_back(t.term + "/" + std::to_string(t.startOffset) + "/" + std::to_string(t.endOffset) + "/" +
                  std::to_string(t.type) + "/" + std::to_string(t.tag));
  }
  return out;
}

// The root of a parameter tree read from XML text; null if it does not parse.
inline common::AutoPtr<configure::Parameter> parseConfig(const std::string& xml) {
  configure::BasicParamParser parser;
  common::AutoPtr<configure::Parameter> root;
  if (!parser.doParseFromText(xml, root)) return common::AutoPtr<configure::Parameter>();
  return root;
}

}  // namespace testing
}  // namespace vortm

#endif
