#ifndef VORTM_MODULAR_VOCABULARY_H
#define VORTM_MODULAR_VOCABULARY_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "common/Serializable.h"
#include "trainset/DocReader.h"

namespace vortm {

namespace analyzer {
// The default word filter of Vocabulary::build: punctuation, symbols, spans,
// stop words, conjunctions and implausible English words stay out.
bool isExcludeForVocab(Token& token);
}  // namespace analyzer

namespace modular {

// Corpus statistics of one word; the word's feature id is its position in
// the vocabulary.
struct WordInfo {
  WordInfo() : tf(0), df(0), idf(0.0f) {}
  std::string word;
  unsigned int tf;
  unsigned int df;
  float idf;
};

// The feature space of the document vectors: word to dense id, with the
// statistics that term weights come from. After build() or merge() the ids
// are stale until the vocabulary is saved and loaded again, or resized.
class Vocabulary : public common::Serializable {
 public:
  Vocabulary();
  ~Vocabulary() override;

  bool writeSelf(common::ObjectWriter& writer) override;
  bool readSelf(common::ObjectReader& reader) override;

  void clear();
  bool loadFrom(const std::string& path);
  bool writeTo(const std::string& path);
  // A null `exclude` means analyzer::isExcludeForVocab.
  bool build(common::AutoPtr<trainset::DocReader> reader, std::string analyzerConfigPath,
             bool (*exclude)(analyzer::Token&));
  // Words added here lie behind wordCount; only they can be deleted.
  // Counts one tokenized document into the statistics, as build() does;
  // `localIds` maps words to records across the calls of one build.
  void addDocument(std::vector<analyzer::Token>& tokens, bool (*exclude)(analyzer::Token&),
                   std::unordered_map<std::string, unsigned int>& localIds);
  // Sorts the records by falling df, as build() leaves them.
  void sortByDf();
  void addUserWord(const std::string& word, int df, int tf);
  void deleteUserWord(const std::string& word);
  void merge(Vocabulary& other, int minDf);
  void resize(int size);
  // Marks rare or implausible English words as dropped (df 0).
  void excludeUselessEnglishWord();
  static bool wordInfoCmp(const WordInfo& a, const WordInfo& b);

  // Id of `word`, or -1 when unknown. After a load or resize this is a hash
  // look-up; it reads the same ids as wordIds.
  int getWordId(const std::string& word) const;
  // The same for the `length` bytes at `data`, so that callers holding a
  // piece of a text need not copy it into a string first.
  int getWordId(const char* data, size_t length) const;
  // A token's term is looked up as a C string: anything from a zero byte on
  // is not part of the word.
  int getTermId(const std::string& term) const {
    size_t end = term.find('\0');
    return getWordId(term.data(), end == std::string::npos ? term.size() : end);
  }
  // getTermId of every token, into ids[i]; faster than one call per token.
  void getTermIds(const std::vector<analyzer::Token>& tokens, std::vector<int>& ids) const;
  // The same for words given as (bytes, length).
  typedef std::pair<const char*, size_t> WordPiece;
  void getWordIds(const std::vector<WordPiece>& words, std::vector<int>& ids) const;
  const std::map<std::string, unsigned int>& getWordIds() const { return wordIds; }
  std::vector<WordInfo>& getWordInfos() { return wordInfos; }
  const std::vector<WordInfo>& getWordInfos() const { return wordInfos; }
  int size() const { return static_cast<int>(wordInfos.size()); }
  unsigned int getDocCount() const { return docCount; }
  void setDocCount(unsigned int count) { docCount = count; }
  int getMinDf() const { return minDf; }
  void setMinDf(int value) { minDf = value; }
  int getWordCount() const { return wordCount; }

 private:
  bool passesSaveTest(const WordInfo& info) const;
  void rebuildIndex();

  unsigned int docCount;
  std::map<std::string, unsigned int> wordIds;
  std::vector<WordInfo> wordInfos;
  int minDf;
  int wordCount;
  // Open-addressed hash index of wordIds for the per-token look-ups of
  // classification. A slot is 8 bytes, the high half of the word's hash and
  // its id, so most misses are settled by one cache line and the word itself
  // is read from wordInfos only on a likely hit. Valid only while
  // m_indexValid, which also requires wordInfos[id].word to be the word of
  // every id in wordIds.
  struct IndexSlot {
    uint32_t tag;
    unsigned int id;
  };
  bool indexInsert(uint64_t hash, unsigned int id);
  int probe(uint64_t hash, const char* data, size_t length) const;
  std::vector<IndexSlot> m_index;
  size_t m_indexUsed;
  bool m_indexValid;
};

}  // namespace modular
}  // namespace vortm

#endif
