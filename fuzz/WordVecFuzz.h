#ifndef VORELIN_FUZZ_WORDVECFUZZ_H
#define VORELIN_FUZZ_WORDVECFUZZ_H

#include <cmath>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "analyzer/Token.h"
#include "configure/BasicParamParser.h"
#include "modular/IDocVectorBuilder.h"
#include "modular/Vocabulary.h"

namespace vortm {
namespace fuzzing {

// Configures the builder `identifier` over a small vocabulary, with the fuzz
// input as the file under `fileKey`, and builds the vector of a document of
// every vocabulary word. Every value of the result must be finite.
inline void fuzzWordFileBuilder(const std::string& identifier, const std::string& fileKey, const uint8_t* data,
                                size_t size, utility::MySparseVector<double, int>& vector, bool& configured) {
  static bool once = (silenceOutput(), true);
  (void)once;
  static const char* const kWords[] = {"aaa", "bbb", "ccc", "good", "bad", "\xE5\xA5\xBD"};
  static const TempFile vocabularyFile(identifier + "_vocabulary"), input(identifier + "_input");
  static common::AutoPtr<configure::Parameter> root = [&] {
    modular::Vocabulary vocabulary;
    for (const char* w : kWords) vocabulary.addUserWord(w, 30, 40);
    vocabulary.setDocCount(100);
    FUZZ_CHECK(vocabulary.writeTo(vocabularyFile.path));
    common::AutoPtr<configure::Parameter> parsed;
    configure::BasicParamParser parser;
    FUZZ_CHECK(parser.doParseFromText("<b><identifier>" + identifier + "</identifier><param><vocabulary_file>" +
                                          vocabularyFile.path + "</vocabulary_file><" + fileKey + ">" + input.path +
                                          "</" + fileKey + "></param></b>",
                                      parsed));
    return parsed;
  }();
  configured = false;
  vector.clear();
  if (size > (1 << 16) || !input.write(data, size)) return;
  common::AutoPtr<modular::IDocVectorBuilder> builder;
  if (!modular::IDocVectorBuilder::configDocVectorBuilder((*root)["b"], builder)) return;
  configured = true;
  std::vector<analyzer::Token> tokens;
  for (const char* w : kWords) tokens.push_back(analyzer::Token(w, 0, 0, analyzer::Token::TT_EN_WORD));
  FUZZ_CHECK(builder->buildDocVec(tokens, vector));
  for (int i = 0; i < vector.size(); ++i) {
    std::pair<int, double*> item = vector.getIdValuePairByIndex(i);
    FUZZ_CHECK(item.first >= 0 && std::isfinite(*item.second));
  }
  FUZZ_CHECK(vector.size() == 0 || vector.size() <= builder->getFeatureCount());
}

}  // namespace fuzzing
}  // namespace vortm

#endif
