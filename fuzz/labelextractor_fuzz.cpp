// Arbitrary tag sequences through the label machine and the label scorer:
// every label's words and modifiers are tokens of the text, labels come in
// text order, a second walk gives the same labels, and the score stays in
// [-1, 1].
#include <cmath>
#include <vector>

#include "FuzzSupport.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "modular/SentiLabelSentiScorer.h"
#include "modular/SimpleSentiLabelExtractor.h"
#include "utility/BufferedFileWriter.h"

using namespace vortm;
using namespace vortm::fuzzing;
using analyzer::Token;
using modular::SentiLabel;
using modular::Unit;

namespace {

// Words of every word list, a lexicon pair and plain words.
const char* const kTerms[] = {"of", "no", "lack", "very", "price", "high", "good", "bad", "x", "room", "pricehigh", ""};
// Every class of the grammar, with the tags that matter within it.
const int kTags[] = {1, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 21, 22, 23};

struct Setup {
  Setup() : inter("le_inter"), negsenti("le_negsenti"), sentineg("le_sentineg"), degree("le_degree"), lex("le_lex") {
    auto put = [](const TempFile& f, const std::string& s) {
      f.write(reinterpret_cast<const uint8_t*>(s.data()), s.size());
    };
    put(inter, "of\n");
    put(negsenti, "no\n");
    put(sentineg, "lack\n");
    put(degree, "very 1\nhigh 6\n");
    modular::SentiLabelSentiScorer::SentiLabelLexcion lexicon;
    lexicon.entries() = {{"pricehigh", -0.5}, {"high", 1.0}, {"price", -0.3}, {"good", -0.2}};
    {
      utility::BufferedFileWriter writer(lex.path, true);
      lexicon.writeSelf(writer);
    }
    configure::BasicParamParser parser;
    common::AutoPtr<configure::Parameter> param;
    parser.doParseFromText(
        "<position_weighter><x/></position_weighter><senti_label_extractor><identifier>simple_senti_label_extractor"
        "</identifier><param><inter_words_file>" + inter.path + "</inter_words_file><negation_senti_words_file>" +
            negsenti.path + "</negation_senti_words_file><senti_negation_words_file>" + sentineg.path +
            "</senti_negation_words_file><senti_degree_words_file>" + degree.path +
            "</senti_degree_words_file></param></senti_label_extractor><senti_label_lexcion_file>" + lex.path +
            "</senti_label_lexcion_file>",
        param);
    FUZZ_CHECK(scorer.config(*param));
  }
  TempFile inter, negsenti, sentineg, degree, lex;
  modular::SentiLabelSentiScorer scorer;
};

bool isTextToken(const Token& t, const std::vector<Token>& tokens) {
  for (const Token& s : tokens)
    if (s.startOffset == t.startOffset && s.endOffset == t.endOffset && s.term == t.term) return true;
  return false;
}

void checkUnit(const Unit& u, const std::vector<Token>& tokens) {
  if (u.isEmpty()) return;
  FUZZ_CHECK(u.position >= 0 && u.position < static_cast<int>(tokens.size()));
  const Token& t = tokens[u.position];
  FUZZ_CHECK(t.term == u.term && t.startOffset == u.startOffset && t.tag == u.tag);
  for (const Token& m : u.before) FUZZ_CHECK(isTextToken(m, tokens) && m.startOffset < u.startOffset);
  for (const Token& m : u.after) FUZZ_CHECK(isTextToken(m, tokens) && m.startOffset > u.startOffset);
}

std::string describe(const std::vector<SentiLabel>& labels) {
  std::string out;
  for (const SentiLabel& l : labels) out += l.att.toString() + "|" + l.senti.toString() + ";";
  return out;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static Setup setup;
  if (size > 4096) return 0;
  // One token a byte: low bits pick the tag, high bits the term; terms are
  // laid end to end with a blank between.
  std::vector<Token> tokens;
  int offset = 0;
  for (size_t i = 0; i < size; ++i) {
    const std::string term = kTerms[(data[i] >> 5) % (sizeof(kTerms) / sizeof(kTerms[0]))];
    const int tag = kTags[(data[i] & 31) % (sizeof(kTags) / sizeof(kTags[0]))];
    const int end = offset + static_cast<int>(term.size()) - 1;
    tokens.emplace_back(term, offset, end, (data[i] & 16) ? Token::TT_EN_WORD : Token::TT_CH_WORD,
                        static_cast<Token::TTag>(tag));
    offset = end + 2;
  }
  std::vector<SentiLabel> labels, again;
  FUZZ_CHECK(setup.scorer.extractLabels(tokens, labels));
  FUZZ_CHECK(setup.scorer.extractLabels(tokens, again));
  FUZZ_CHECK(describe(labels) == describe(again));
  int last = -1;
  for (const SentiLabel& l : labels) {
    FUZZ_CHECK(!l.att.isEmpty() || !l.senti.isEmpty());
    checkUnit(l.att, tokens);
    checkUnit(l.senti, tokens);
    const int main = l.senti.isEmpty() ? l.att.position : l.senti.position;
    FUZZ_CHECK(main >= last);
    last = main;
    FUZZ_CHECK(l.getStartOffsetInternal() <= l.getEndOffsetInternal());
  }
  double score = 2.0;
  FUZZ_CHECK(setup.scorer.getSentiScore(tokens, score));
  FUZZ_CHECK(std::isfinite(score) && score >= -1.0 && score <= 1.0);
  return 0;
}
