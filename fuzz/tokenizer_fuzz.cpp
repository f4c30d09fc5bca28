// Feeds arbitrary bytes through UTF-8 and GBK tokenizer chains in isolated
// mode and traps when a token breaks the offset rules: inside the text, end
// not before start, and the term equal to the bytes it claims (no filter is
// configured, so nothing rewrites a term).
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "analyzer/Analyzer.h"
#include "analyzer/TokenBuffer.h"
#include "common/AutoPtr.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"

using vortm::analyzer::Analyzer;
using vortm::analyzer::Token;
using vortm::analyzer::TokenBuffer;
using vortm::common::AutoPtr;
using vortm::configure::Parameter;

namespace {

const size_t kMaxInput = 64 * 1024;

std::string tokenizer(const std::string& identifier, const std::string& settings) {
  return "<t><identifier>" + identifier + "</identifier><param>" + settings + "</param></t>";
}

std::string chains(const std::string& encode) {
  const std::string enc = "<encode>" + encode + "</encode>";
  return "<" + encode + "_chain><tokenizers>" + tokenizer("sentenceTokenzier", enc) +
         tokenizer("basicTokenzier", enc) + "</tokenizers></" + encode + "_chain>" + "<" + encode +
         "_weibo><tokenizers>" + tokenizer("basicWeiboTokenzier", enc) + "</tokenizers></" + encode + "_weibo>" +
         "<" + encode + "_ngram><tokenizers>" +
         tokenizer("chNGramTokenzier", enc + "<max_n type=\"int\">3</max_n>") + "</tokenizers></" + encode +
         "_ngram>";
}

struct Setup {
  std::vector<AutoPtr<Analyzer> > analyzers;
  std::vector<bool> weibo;
};

Setup* build() {
  // The logger writes to std::cout; keep it quiet for the whole run.
  vortm::fuzzing::silenceOutput();

  AutoPtr<Parameter> root;
  vortm::configure::BasicParamParser parser;
  if (!parser.doParseFromText(chains("utf-8") + chains("gbk"), root)) __builtin_trap();
  Setup* setup = new Setup();
  const char* encodes[] = {"utf-8", "gbk"};
  const char* kinds[] = {"_chain", "_weibo", "_ngram"};
  for (const char* encode : encodes) {
    for (const char* kind : kinds) {
      AutoPtr<Analyzer> analyzer(new Analyzer(), true);
      if (!analyzer->config((*root)[std::string(encode) + kind])) __builtin_trap();
      setup->analyzers.push_back(analyzer);
      setup->weibo.push_back(std::string(kind) == "_weibo");
    }
  }
  return setup;
}

void check(const std::string& text, TokenBuffer& out, bool weibo) {
  const long size = static_cast<long>(text.size());
  AutoPtr<TokenBuffer::Iterator> it = out.iterator();
  Token token;
  while (it->hasNext()) {
    it->next(token);
    const long start = token.startOffset, end = token.endOffset;
    // The weibo tokenizer always ends in a mention of what follows the last
    // open mark; with no mark open it is empty and ends before it starts.
    if (weibo && token.type == Token::TT_MENTION && token.term.empty() && start == size && end == start - 1)
      continue;
    if (start < 0 || end < start || end >= size) __builtin_trap();
    if (text.compare(static_cast<size_t>(start), static_cast<size_t>(end - start + 1), token.term) != 0)
      __builtin_trap();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static Setup* setup = build();
  if (size > kMaxInput) size = kMaxInput;
  const std::string text(reinterpret_cast<const char*>(data), size);
  for (size_t i = 0; i < setup->analyzers.size(); ++i) {
    TokenBuffer out;
    // With the shipped lexers no tokenizer here can fail.
    if (!setup->analyzers[i]->doTokenize(text, out, true)) __builtin_trap();
    check(text, out, setup->weibo[i]);
  }
  return 0;
}
