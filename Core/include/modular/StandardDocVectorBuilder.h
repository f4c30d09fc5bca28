#ifndef VORTM_MODULAR_STANDARDDOCVECTORBUILDER_H
#define VORTM_MODULAR_STANDARDDOCVECTORBUILDER_H

#include <string>
#include <vector>

#include "common/InstanceCreator.h"
#include "modular/IDocVectorBuilder.h"
#include "modular/IWordWeighter.h"
#include "modular/Vocabulary.h"

namespace vortm {
namespace modular {

// Bag of words: count the vocabulary words of a document, weight the counts,
// normalise.
class StandardDocVectorBuilder : public IDocVectorBuilder {
 public:
  StandardDocVectorBuilder();
  // With an injected weighter, config() does not choose one.
  explicit StandardDocVectorBuilder(common::AutoPtr<IWordWeighter> weighter);
  ~StandardDocVectorBuilder() override;

  bool config(const configure::Parameter& param) override;
  bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  // Takes the weights of `text` as they are; only normalises.
  bool buildDocVec(Text& text, utility::MySparseVector<double, int>& docVec) override;
  // What buildDocVec gives for tokens with these terms, from the words
  // alone: counts, weights and the norm of this class, whatever a subclass
  // overrides.
  // `weights`, when given, holds a count for each word in place of 1.
  bool buildDocVecOfWords(const std::vector<Vocabulary::WordPiece>& words, utility::MySparseVector<double, int>& docVec,
                          const std::vector<double>* weights = nullptr);
  int getFeatureCount() override;
  virtual bool buildWordFreVector(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec);
  virtual bool wordWeighting(utility::MySparseVector<double, int>& docVec);
  void norm(utility::MySparseVector<double, int>& docVec);

  const Vocabulary& getVocabulary() const { return vocabulary; }

  static const std::string PARAM_VOCABULARY_FILE;
  static const std::string PARAM_WORD_WEIGHTING_METHOD;
  static const std::string PARAM_NORMALIZE_METHOD;

 protected:
  common::AutoPtr<IWordWeighter> wordWeighter;
  std::string normMethod;
  Vocabulary vocabulary;
  bool initialized;
};

VORTM_DECLARE_CREATOR(StandardDocVectorBuilderCreator, IDocVectorBuilder, StandardDocVectorBuilder,
                      "standard_doc_vec_builder");

}  // namespace modular
}  // namespace vortm

#endif
