#include "modular/InnerSenSentiOrientedPositionWeighter.h"

#include <iostream>

namespace vortm {
namespace modular {

using analyzer::Token;

namespace {

bool isSentenceMark(int type) {
  return type == Token::TT_SEN_PUNC || type == Token::TT_QUESTION_MARK || type == Token::TT_NEWLINE;
}

// Weights the run of tokens [begin, end): all but its last token rise with
// their place in the run. Runs of one token are left alone.
void weightRun(std::vector<Token>& tokens, size_t begin, size_t end, std::vector<double>& weights) {
  if (begin + 1 >= end) return;
  const double length = static_cast<double>(end - begin) + 1;
  for (size_t k = begin; k + 1 < end; ++k) {
    weights[k] = static_cast<double>(k - begin + 1) / length * 0.5 + 0.75;
    std::cout << tokens[k].term << " " << weights[k] << std::endl;
  }
}

}  // namespace

bool InnerSenSentiOrientedPositionWeighter::sentiPositionalWeighting(std::vector<Token>& tokens,
                                                                     std::vector<double>& weights) {
  if (tokens.empty()) {
    weights.clear();
    return true;
  }
  weights.resize(tokens.size(), 1.0);

  bool open = false;
  size_t begin = 0;
  for (size_t i = 0; i < tokens.size(); ++i) {
    if (isSentenceMark(tokens[i].type)) {
      if (open) weightRun(tokens, begin, i, weights);
      open = false;
    } else if (!open) {
      open = true;
      begin = i;
    }
  }
  if (open) weightRun(tokens, begin, tokens.size(), weights);
  return true;
}

}  // namespace modular
}  // namespace vortm
