// Arbitrary bytes as a saved weighted lexicon: a load either fails or gives
// a lexicon that saves and loads back to the same words and weights, and
// that a configured scorer can score with.
#include <cmath>
#include <cstring>
#include <map>

#include "FuzzSupport.h"
#include "configure/Parameter.h"
#include "modular/WeightedLexcionSentiScorer.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"

using namespace vortm::fuzzing;
using vortm::analyzer::Token;
using vortm::modular::WeightedLexcionSentiScorer;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const TempFile file("weighted_load"), resaved("weighted_resave");
  if (size > (1 << 20) || !file.write(data, size)) return 0;

  WeightedLexcionSentiScorer scorer;
  if (!scorer.loadWeightedLexcion(file.path)) return 0;
  const std::map<std::string, double>& weights = scorer.lexcion().m_weights;
  {
    vortm::utility::BufferedFileWriter writer(resaved.path, true);
    WeightedLexcionSentiScorer::WeightedSentiLexcion copy = scorer.lexcion();
    FUZZ_CHECK(copy.writeSelf(writer));
    FUZZ_CHECK(writer.close());
  }
  WeightedLexcionSentiScorer again;
  FUZZ_CHECK(again.loadWeightedLexcion(resaved.path));
  FUZZ_CHECK(again.lexcion().m_weights.size() == weights.size());
  auto a = weights.begin();
  for (auto b = again.lexcion().m_weights.begin(); b != again.lexcion().m_weights.end(); ++a, ++b) {
    FUZZ_CHECK(a->first == b->first);
    FUZZ_CHECK(std::memcmp(&a->second, &b->second, sizeof(double)) == 0);
  }

  // Score the loaded words under every polar tag; finite weights give a
  // score within what the scaling allows.
  std::vector<Token> tokens;
  int start = 0;
  const Token::TTag tags[] = {Token::TG_POSITIVE, Token::TG_NEGATIVE, Token::TG_SENTI_20, Token::TG_DEGREE_10,
                              Token::TG_NOT_POSITIVE};
  int i = 0;
  bool finite = true;
  for (const auto& entry : weights) {
    if (tokens.size() >= 64) break;
    finite = finite && std::isfinite(entry.second) && std::fabs(entry.second) < 1e100;
    const int length = static_cast<int>(entry.first.size());
    tokens.emplace_back(entry.first, start, start + length - 1, Token::TT_CH_WORD, tags[i++ % 5]);
    start += length;
  }
  scorer.config(vortm::configure::ParameterNULL);  // fails without a lexicon key; the weighter is set
  double score = 0.0;
  FUZZ_CHECK(scorer.getSentiScore(tokens, score));
  if (finite) FUZZ_CHECK(std::isfinite(score) && std::fabs(score) <= 1.0);
  return 0;
}
