#include "common/CreatorRegister.h"

#include <atomic>

#include "analyzer/BasicEWordTokenFilter.h"
#include "analyzer/BasicNgramTokenFilter.h"
#include "analyzer/BasicTokenizer.h"
#include "analyzer/BasicWeiboTokenizer.h"
#include "analyzer/ChNGramTokenizer.h"
#include "analyzer/ComplexMaxMatchTokenizer.h"
#include "analyzer/GBKCharacterLexer.h"
#include "analyzer/NegationTokenFilter.h"
#include "analyzer/SentenceTokenizer.h"
#include "analyzer/SimpleEnNegationTokenFilter.h"
#include "analyzer/SkipNegationTokenFilter.h"
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#include "analyzer/UTF8CharacterLexer.h"
#include "application/CNNSentiClassifier.h"
#include "application/CentroidSentiClassifier.h"
#include "application/CombineSentiClassifier.h"
#include "application/SentiLexcionSentiClassifier.h"
#include "modular/DCNNDocVectorBuilder.h"
#include "modular/SentiLabelSentiScorer.h"
#include "modular/SimpleSentiLabelExtractor.h"
#include "modular/StandardDocVectorBuilder.h"
#include "modular/StdConvDocVectorBuilder.h"
#include "modular/WordVecDocVectorBuilders.h"
#include "modular/StandardLexcionSentiScorer.h"
#include "modular/TargetAwareLexcionSentiScorers.h"
#include "modular/WeightedLexcionSentiScorer.h"
#include "common/InstanceCreator.h"
#include "common/Singleton.h"

namespace vortm {
namespace common {

namespace {
template <class C>
void build() {
  Singleton<InstanceCreatorHelper<C>, LazyInstantiation, FastMutex>::instance();
}
}  // namespace

void gfn_creatorRegister() {
  static std::atomic<bool> s_registered(false);
  if (s_registered.load(std::memory_order_acquire)) return;
  // Each creator registers itself when its helper singleton is built; the
  // order is that of the interfaces: filters, tokenizers, lexers, extractors, scorers,
  // classifiers.
  build<analyzer::BasicEWordTokenFilterCreator>();
  build<analyzer::NegationTokenFilterCreator>();
  build<analyzer::SkipNegationTokenFilterCreator>();
  build<analyzer::BasicNgramTokenFilterCreator>();
  build<analyzer::SimpleEnNegationTokenFilterCreator>();
  build<analyzer::BasicTokenizerCreator>();
  build<analyzer::BasicWeiboTokenizerCreator>();
  build<analyzer::TrieDictMaxForwardTokenizerCreator>();
  build<analyzer::ComplexMaxMatchTokenizerCreator>();
  build<analyzer::ChNGramTokenizerCreator>();
  build<analyzer::SentenceTokenizerCreator>();
  build<analyzer::GBKCharacterLexerCreator>();
  build<analyzer::UTF8CharacterLexerCreator>();
  build<modular::StandardDocVectorBuilderCreator>();
  build<modular::WordVecDocVectorBuilderCreator>();
  build<modular::WordExpandDocVectorBuilderCreator>();
  build<modular::StdConvDocVectorBuilderCreator>();
  build<modular::DCNNDocVectorBuilderCreator>();
  build<modular::SimpleSentiLabelExtractorCreator>();
  build<modular::StandardLexcionSentiScorerCreator>();
  build<modular::SentiLabelSentiScorerCreator>();
  build<modular::WeightedLexcionSentiScorerCreator>();
  // The standard target-aware scorer has a creator too, but nothing builds
  // it here: only a host that constructs that creator can name it.
  build<modular::TargetAwareWeightedLexcionSentiScorerCreator>();
  build<application::CombineSentiClassifierCreator>();
  build<application::SentiLexcionSentiClassifierCreator>();
  build<application::CentroidSentiClassifierCreator>();
  build<application::CNNSentiClassifierCreator>();
  s_registered.store(true, std::memory_order_release);
}

}  // namespace common
}  // namespace vortm
