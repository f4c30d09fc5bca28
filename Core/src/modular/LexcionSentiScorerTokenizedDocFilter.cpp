#include "modular/LexcionSentiScorerTokenizedDocFilter.h"

#include "utility/Utility.h"

namespace vortm {
namespace modular {

const double LexcionSentiScorerTokenizedDocFilter::kPositiveBound = 0.25;
const double LexcionSentiScorerTokenizedDocFilter::kNegativeBound = -0.25;

LexcionSentiScorerTokenizedDocFilter::LexcionSentiScorerTokenizedDocFilter(common::AutoPtr<ILexcionSentiScorer> scorer)
    : m_scorerPtr(scorer) {}

namespace {

void assignLabel(trainset::TokenizedDoc& doc, const std::string& name) {
  doc.label.parts.clear();
  utility::Utility::strTokenize(name, "/", doc.label.parts);
  doc.label.assignIdentifier("/");
}

}  // namespace

bool LexcionSentiScorerTokenizedDocFilter::filter(trainset::TokenizedDoc& doc) {
  if (!m_scorerPtr) return true;
  if (!doc.label.parts.empty()) {
    const std::string identifier = doc.label.identifier;
    if (identifier == "neg" || identifier == "pos") return false;
  }
  double score = 0.0;
  m_scorerPtr.get()->getSentiScore(doc.tokens, score);
  if (score > kPositiveBound) {
    assignLabel(doc, "pos");
    return false;
  }
  if (score < kNegativeBound) {
    assignLabel(doc, "neg");
    return false;
  }
  // In between, or not a number.
  return true;
}

}  // namespace modular
}  // namespace vortm
