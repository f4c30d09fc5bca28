#ifndef VORTM_MODULAR_WORDVECDOCVECTORBUILDERS_H
#define VORTM_MODULAR_WORDVECDOCVECTORBUILDERS_H

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "common/AutoPtr.h"
#include "common/InstanceCreator.h"
#include "modular/StandardDocVectorBuilder.h"

namespace vortm {
namespace modular {

// A dense document vector: the average of the word embeddings, each word
// weighted as the inner bag-of-words builder weighs it. Words without an
// embedding are left out of the average.
class WordVecDocVectorBuilder : public IDocVectorBuilder {
 public:
  WordVecDocVectorBuilder();
  ~WordVecDocVectorBuilder() override;

  // Keys of the standard builder, plus "word_vec_file" (text: a header line
  // "ROWS DIM", then "WORD V1 .. VDIM" per line).
  bool config(const configure::Parameter& param) override;
  bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  bool buildDocVec(Text& text, utility::MySparseVector<double, int>& docVec) override;
  int getFeatureCount() override { return wordDim; }
  // Keeps only the words the inner vocabulary knows; `normalize` scales each
  // embedding to unit length.
  bool loadWordVec(const std::string& path, bool normalize);

  static const std::string PARAM_WORD_VEC_FILE;

 protected:
  // Adds weight * embedding of row `row` to `sum`; false for no row (-1).
  bool accumulate(int row, double weight, std::vector<double>& sum) const;
  void average(const std::vector<double>& sum, double total, utility::MySparseVector<double, int>& docVec) const;

  std::vector<std::vector<double> > wordVecs;
  std::map<std::string, unsigned int> wordIds;
  int wordDim;
  bool normalizeWordVec;
  bool initialized;
  common::AutoPtr<StandardDocVectorBuilder> docVecBuilder;
  // Row of each vocabulary id, or -1: spares a string look-up per word.
  std::vector<int> rowOfId;
};

// The bag of words, where each word also lends a damped share of its weight
// to the related words of an expansion file ("WORD rel1:0.8;rel2:0.5").
class WordExpandDocVectorBuilder : public StandardDocVectorBuilder {
 public:
  WordExpandDocVectorBuilder();
  ~WordExpandDocVectorBuilder() override;

  bool config(const configure::Parameter& param) override;
  bool buildDocVec(std::vector<analyzer::Token>& tokens, utility::MySparseVector<double, int>& docVec) override;
  bool buildDocVec(Text& text, utility::MySparseVector<double, int>& docVec) override;
  bool loadWordExpandLib(const std::string& path);

  static const std::string PARAM_WORD_EXPAND_FILE;
  // Share of a word's weight that goes to each related word, times its
  // relatedness.
  static const double kExpandFactor;
  static const size_t kMaxRelated = 15;

 protected:
  void expand(int id, const std::string& word, double weight, utility::MySparseVector<double, int>& docVec) const;

  std::vector<std::vector<std::pair<int, double> > > expansions;
  std::map<std::string, unsigned int> expansionIds;
};

VORTM_DECLARE_CREATOR(WordVecDocVectorBuilderCreator, IDocVectorBuilder, WordVecDocVectorBuilder,
                      "word_vec_doc_vec_builder");
VORTM_DECLARE_CREATOR(WordExpandDocVectorBuilderCreator, IDocVectorBuilder, WordExpandDocVectorBuilder,
                      "word_expand_doc_vec_builder");

}  // namespace modular
}  // namespace vortm

#endif
