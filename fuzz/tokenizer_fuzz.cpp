// Feeds arbitrary bytes through UTF-8 and GBK tokenizer chains in isolated
// mode and stops when a token breaks the offset rules: inside the text, end
// not before start, and the term equal to the bytes it claims (no filter is
// configured, so nothing rewrites a term).
#include <utility>

#include "FuzzSupport.h"
#include "analyzer/Analyzer.h"
#include "configure/BasicParamParser.h"

using namespace vortm::analyzer;
using namespace vortm::fuzzing;
using vortm::common::AutoPtr;

namespace {

std::string item(const std::string& identifier, const std::string& settings) {
  return "<t><identifier>" + identifier + "</identifier><param>" + settings + "</param></t>";
}

// For each encoding: sentence and basic tokenizer, the weibo tokenizer (the
// flag), and n-grams.
std::vector<std::pair<AutoPtr<Analyzer>, bool> > build() {
  silenceOutput();
  std::vector<std::pair<AutoPtr<Analyzer>, bool> > analyzers;
  for (const std::string encode : {"utf-8", "gbk"}) {
    const std::string enc = "<encode>" + encode + "</encode>";
    const std::string chains[] = {item("sentenceTokenzier", enc) + item("basicTokenzier", enc),
                                  item("basicWeiboTokenzier", enc),
                                  item("chNGramTokenzier", enc + "<max_n type=\"int\">3</max_n>")};
    for (int k = 0; k < 3; ++k) {
      AutoPtr<vortm::configure::Parameter> root;
      vortm::configure::BasicParamParser parser;
      FUZZ_CHECK(parser.doParseFromText("<tokenizers>" + chains[k] + "</tokenizers>", root));
      AutoPtr<Analyzer> analyzer(new Analyzer(), true);
      FUZZ_CHECK(analyzer->config(*root));
      analyzers.push_back(std::make_pair(analyzer, k == 1));
    }
  }
  return analyzers;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static std::vector<std::pair<AutoPtr<Analyzer>, bool> > analyzers = build();
  const std::string text(reinterpret_cast<const char*>(data), std::min<size_t>(size, 64 * 1024));
  const long end = static_cast<long>(text.size());
  for (auto& entry : analyzers) {
    TokenBuffer out;
    FUZZ_CHECK(entry.first->doTokenize(text, out, true));  // no tokenizer here can fail with the shipped lexers
    AutoPtr<TokenBuffer::Iterator> it = out.iterator();
    for (Token t; it->hasNext();) {
      it->next(t);
      // The weibo tokenizer always ends in a mention of what follows the last
      // open mark; with no mark open it is empty and ends before it starts.
      if (entry.second && t.type == Token::TT_MENTION && t.term.empty() && t.startOffset == end &&
          t.endOffset == end - 1)
        continue;
      checkToken(t, text.data(), text.size(), 0);
    }
  }
  return 0;
}
