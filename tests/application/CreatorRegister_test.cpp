#include <gtest/gtest.h>

#include <string>

#include "analyzer/CharacterLexer.h"
#include "analyzer/TokenFilter.h"
#include "analyzer/Tokenizer.h"
#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "modular/ILexcionSentiScorer.h"

using namespace vortm;

namespace {

template <class T>
bool resolves(const std::string& identifier) {
  common::AutoPtr<T> made(common::InstanceCreator<T>::getCreation(identifier), true);
  return made.get() != nullptr;
}

TEST(CreatorRegisterTest, EveryShippedIdentifierResolves) {
  common::gfn_creatorRegister();
  common::gfn_creatorRegister();  // a second call changes nothing
  for (const char* id : {"defaultEnFilter", "negationFilter", "skipNegationFilter", "defaultNgramFilter",
                         "simple_en_negationFilter"})
    EXPECT_TRUE(resolves<analyzer::TokenFilter>(id)) << id;
  for (const char* id : {"basicTokenzier", "basicWeiboTokenzier", "trieDictMaxForwardTokenzier",
                         "complexMaxMatchTokenzier", "chNGramTokenzier", "sentenceTokenzier"})
    EXPECT_TRUE(resolves<analyzer::Tokenizer>(id)) << id;
  for (const char* id : {"basicGBKLexer", "basicUTF8Lexer"}) EXPECT_TRUE(resolves<analyzer::CharacterLexer>(id)) << id;
  EXPECT_TRUE(resolves<modular::ILexcionSentiScorer>("std_lexcion_senti_scorer"));
  EXPECT_TRUE(resolves<application::ISentiClassifier>("combine_senti_classifier"));
  EXPECT_TRUE(resolves<application::ISentiClassifier>("lexcion_senti_classifier"));

  // Each interface has a registry of its own.
  EXPECT_FALSE(resolves<analyzer::Tokenizer>("defaultEnFilter"));
}

}  // namespace
