#ifndef VORTM_ANALYZER_LMBASEDMATCHTRIEDICT_H
#define VORTM_ANALYZER_LMBASEDMATCHTRIEDICT_H

#include <climits>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "analyzer/ComplexMatchTrieDict.h"
#include "common/Logger.h"
#include "utility/Utility.h"

namespace vortm {
namespace analyzer {

// Complex match whose last rule, where total and mean length leave a tie,
// is a small language model instead of the variance: each chunk is scored
// by how well the mean of every word's neighbours predicts the word, as in
// continuous bag of words, through one linear layer without activation.
//
// Both model files are word2vec text files of the same dimension and row
// count: the word vectors, and the output layer's rows in the same word
// order. After init() everything is read-only, so match() may run on many
// threads at once.
template <class CHAR>
class LMBasedMatchTrieDict : public ComplexMatchTrieDict<CHAR> {
 public:
  typedef typename ComplexMatchTrieDict<CHAR>::MatchWord MatchWord;
  typedef typename ComplexMatchTrieDict<CHAR>::WordChunk WordChunk;

  explicit LMBasedMatchTrieDict(const std::string& lexerIdentifier)
      : ComplexMatchTrieDict<CHAR>(lexerIdentifier), m_dimension(0) {}
  virtual ~LMBasedMatchTrieDict() {}

  // True only if both files load, with equal dimensions and row counts. On
  // failure the model is left empty, so that every chunk scores as unknown
  // and no row of one table is looked up by an id of the other.
  bool init(const std::string& wordVecFile, const std::string& netWeightFile) {
    int netDimension = 0;
    std::map<std::string, unsigned int> netIds;
    if (loadWordvec(wordVecFile, m_dimension, m_wordVectors, m_wordIds) &&
        loadWordvec(netWeightFile, netDimension, m_netWeights, netIds) && netDimension == m_dimension &&
        m_netWeights.size() == m_wordVectors.size())
      return true;
    m_wordVectors.clear();
    m_netWeights.clear();
    m_wordIds.clear();
    m_dimension = 0;
    return false;
  }

  // Reads a word2vec text file into `vectors`, one unit-length row per
  // record, and `ids`, each word's row. Fields are split at blanks, tabs
  // and line ends. The header holds two fields, of which only the second,
  // the dimension, is used; it must be above 1.
  //
  // A record with fewer numbers than the dimension fails the whole load:
  // a short row is a cut or damaged file, and padding it with zeros would
  // give a model that silently predicts nothing. Numbers beyond the
  // dimension are ignored, and a line without any field is no record. Rows
  // are allocated only as records of the full width arrive, so a header
  // that claims a huge dimension costs nothing until such lines exist.
  // `vectors` and `ids` are replaced, and left empty on failure.
  bool loadWordvec(const std::string& file, int& dimension, std::vector<std::vector<double> >& vectors,
                   std::map<std::string, unsigned int>& ids) {
    vectors.clear();
    ids.clear();
    // A FIFO would block the open and a device never end a line.
    std::string reason;
    if (!utility::Utility::checkRegularFile(file, reason)) return false;
    std::ifstream in(file.c_str(), std::ios::binary);
    if (!in) return false;
    std::string line;
    std::vector<std::string> fields;
    if (!std::getline(in, line)) return false;
    utility::Utility::strTokenize(line, fields, ' ');
    if (fields.size() != 2) return false;
    long claimed = std::strtol(fields[1].c_str(), nullptr, 10);
    dimension = (claimed > INT_MAX || claimed < INT_MIN) ? 0 : static_cast<int>(claimed);
    if (dimension <= 1) return false;
    common::gfn_libraryLine(" dim " + std::to_string(dimension));

    const size_t width = static_cast<size_t>(dimension);
    unsigned int id = 0;
    while (std::getline(in, line)) {
      fields.clear();
      utility::Utility::strTokenize(line, fields, ' ');
      if (fields.empty()) continue;
      if (fields.size() - 1 < width) {
        vectors.clear();
        ids.clear();
        return false;
      }
      ids[fields[0]] = id++;
      std::vector<double> row(width);
      double squares = 0.0;
      for (size_t d = 0; d < width; ++d) {
        row[d] = std::strtod(fields[d + 1].c_str(), nullptr);
        squares += row[d] * row[d];
      }
      // Rows of nearly zero length stay as they are rather than blow up.
      if (squares > 0.00001) {
        double norm = std::sqrt(squares);
        for (size_t d = 0; d < width; ++d) row[d] /= norm;
      }
      vectors.push_back(std::move(row));
    }
    return true;
  }

  // How well the model predicts each word of the chunk but the last from its
  // neighbours, averaged over all the chunk's words; `previous`, the word
  // committed before, is the left neighbour of the first. A chunk of one
  // word scores 1.0, above any real score; a chunk with a word the model
  // lacks, or a word without any known neighbour, scores -1.0.
  double getLMScore(std::vector<MatchWord>& chunk, const MatchWord& previous) {
    if (chunk.size() < 2) return 1.0;
    double penalty = 0.0;
    double sum = 0.0;
    for (size_t k = 0; k + 1 < chunk.size(); ++k) {
      // Set, not added: a chunk pays once for holding unknown characters.
      if (chunk[k].weight == 0 || chunk[k].weight == 0xFFFF) penalty = 0.025;
      unsigned int wordId;
      if (!lookup(chunk[k].word, wordId)) return -1.0;

      const std::vector<double>* neighbours[2] = {nullptr, nullptr};
      int count = 0;
      unsigned int neighbourId;
      const MatchWord* left = k > 0 ? &chunk[k - 1] : (previous.word.empty() ? nullptr : &previous);
      if (left && lookup(left->word, neighbourId)) neighbours[count++] = &m_wordVectors[neighbourId];
      if (lookup(chunk[k + 1].word, neighbourId)) neighbours[count++] = &m_wordVectors[neighbourId];
      if (count == 0) return -1.0;

      // The context is the neighbours' mean, formed element by element.
      const std::vector<double>& weights = m_netWeights[wordId];
      double dot = 0.0;
      for (int d = 0; d < m_dimension; ++d) {
        double context = (*neighbours[0])[d];
        if (count == 2) context += (*neighbours[1])[d];
        dot += context / count * weights[d];
      }
      sum += dot;
    }
    return sum / static_cast<double>(chunk.size()) - penalty;
  }

  // The length rules first; what they leave tied goes to the model, and the
  // earliest of equal scores wins.
  unsigned int pickOptimizationWordChunk(std::vector<WordChunk>& chunks, const MatchWord& previous) override {
    unsigned int picked = 0;
    std::vector<unsigned int> tied;
    if (ComplexMatchTrieDict<CHAR>::pickByLength(chunks, tied, picked)) return picked;

    std::vector<unsigned int> best;
    double bestScore = -1.0;
    for (unsigned int index : tied) {
      double score = getLMScore(chunks[index], previous);
      if (score > bestScore) {
        bestScore = score;
        best.clear();
        best.push_back(index);
      } else if (score == bestScore) {
        best.push_back(index);
      }
    }
    // Scores below -1.0 or not numbers at all (a model file holding "nan")
    // join nothing; the earliest of the tie then stands.
    return best.empty() ? tied.front() : best.front();
  }

  int getDimension() const { return m_dimension; }
  size_t getWordCount() const { return m_wordVectors.size(); }

 protected:
  // A word known to the model, with a row in both tables.
  bool lookup(const std::string& word, unsigned int& id) const {
    std::map<std::string, unsigned int>::const_iterator it = m_wordIds.find(word);
    if (it == m_wordIds.end() || it->second >= m_wordVectors.size() || it->second >= m_netWeights.size())
      return false;
    id = it->second;
    return true;
  }

  std::vector<std::vector<double> > m_wordVectors;
  std::vector<std::vector<double> > m_netWeights;
  std::map<std::string, unsigned int> m_wordIds;
  int m_dimension;
};

}  // namespace analyzer
}  // namespace vortm

#endif
