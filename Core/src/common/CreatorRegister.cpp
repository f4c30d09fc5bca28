#include "common/CreatorRegister.h"

#include <atomic>

#include "common/InstanceCreator.h"
#include "common/Singleton.h"

// Components that are not part of this build yet are left out.
#if __has_include("analyzer/BasicEWordTokenFilter.h")
#include "analyzer/BasicEWordTokenFilter.h"
#define VORTM_HAVE_CREATOR_0
#endif
#if __has_include("analyzer/NegationTokenFilter.h")
#include "analyzer/NegationTokenFilter.h"
#define VORTM_HAVE_CREATOR_1
#endif
#if __has_include("analyzer/SkipNegationTokenFilter.h")
#include "analyzer/SkipNegationTokenFilter.h"
#define VORTM_HAVE_CREATOR_2
#endif
#if __has_include("analyzer/BasicNgramTokenFilter.h")
#include "analyzer/BasicNgramTokenFilter.h"
#define VORTM_HAVE_CREATOR_3
#endif
#if __has_include("analyzer/SimpleEnNegationTokenFilter.h")
#include "analyzer/SimpleEnNegationTokenFilter.h"
#define VORTM_HAVE_CREATOR_4
#endif
#if __has_include("analyzer/BasicTokenizer.h")
#include "analyzer/BasicTokenizer.h"
#define VORTM_HAVE_CREATOR_5
#endif
#if __has_include("analyzer/BasicWeiboTokenizer.h")
#include "analyzer/BasicWeiboTokenizer.h"
#define VORTM_HAVE_CREATOR_6
#endif
#if __has_include("analyzer/TrieDictMaxForwardTokenizer.h")
#include "analyzer/TrieDictMaxForwardTokenizer.h"
#define VORTM_HAVE_CREATOR_7
#endif
#if __has_include("analyzer/ComplexMaxMatchTokenizer.h")
#include "analyzer/ComplexMaxMatchTokenizer.h"
#define VORTM_HAVE_CREATOR_8
#endif
#if __has_include("analyzer/ChNGramTokenizer.h")
#include "analyzer/ChNGramTokenizer.h"
#define VORTM_HAVE_CREATOR_9
#endif
#if __has_include("analyzer/SentenceTokenizer.h")
#include "analyzer/SentenceTokenizer.h"
#define VORTM_HAVE_CREATOR_10
#endif
#if __has_include("analyzer/GBKCharacterLexer.h")
#include "analyzer/GBKCharacterLexer.h"
#define VORTM_HAVE_CREATOR_11
#endif
#if __has_include("analyzer/UTF8CharacterLexer.h")
#include "analyzer/UTF8CharacterLexer.h"
#define VORTM_HAVE_CREATOR_12
#endif
#if __has_include("modular/StandardLexcionSentiScorer.h")
#include "modular/StandardLexcionSentiScorer.h"
#define VORTM_HAVE_CREATOR_13
#endif
#if __has_include("application/CombineSentiClassifier.h")
#include "application/CombineSentiClassifier.h"
#define VORTM_HAVE_CREATOR_14
#endif
#if __has_include("application/SentiLexcionSentiClassifier.h")
#include "application/SentiLexcionSentiClassifier.h"
#define VORTM_HAVE_CREATOR_15
#endif

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
  // Each creator registers itself when its helper singleton is built.
#ifdef VORTM_HAVE_CREATOR_0
  build<analyzer::BasicEWordTokenFilterCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_1
  build<analyzer::NegationTokenFilterCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_2
  build<analyzer::SkipNegationTokenFilterCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_3
  build<analyzer::BasicNgramTokenFilterCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_4
  build<analyzer::SimpleEnNegationTokenFilterCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_5
  build<analyzer::BasicTokenizerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_6
  build<analyzer::BasicWeiboTokenizerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_7
  build<analyzer::TrieDictMaxForwardTokenizerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_8
  build<analyzer::ComplexMaxMatchTokenizerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_9
  build<analyzer::ChNGramTokenizerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_10
  build<analyzer::SentenceTokenizerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_11
  build<analyzer::GBKCharacterLexerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_12
  build<analyzer::UTF8CharacterLexerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_13
  build<modular::StandardLexcionSentiScorerCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_14
  build<application::CombineSentiClassifierCreator>();
#endif
#ifdef VORTM_HAVE_CREATOR_15
  build<application::SentiLexcionSentiClassifierCreator>();
#endif
  s_registered.store(true, std::memory_order_release);
}

}  // namespace common
}  // namespace vortm
