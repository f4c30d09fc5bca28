#include "modular/Vocabulary.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <iostream>
#include <utility>

#include "common/Logger.h"
#include "configure/BasicParamParser.h"
#include "modular/TextAnalyzer.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"
#include "utility/Utility.h"

namespace vortm {

namespace analyzer {

bool isExcludeForVocab(Token& token) {
  switch (static_cast<int>(token.type)) {
    case 1: case 3: case 6: case 7: case 9: case 10: case 11: case 12: case 13:
    case 15: case 16: case 17: case 18: case 20: case 21:
      return true;
    default:
      break;
  }
  int tag = static_cast<int>(token.tag);
  if (tag == Token::TG_STOPWORD || tag == Token::TG_BUT_CONJ || tag == Token::TG_THOUGH_CONJ) return true;
  if (token.type == Token::TT_EN_WORD) {
    size_t len = token.term.size();
    return !(len >= 2 && len <= 50 && utility::Utility::isEnWord(token.term.c_str(), len));
  }
  return false;
}

}  // namespace analyzer

namespace modular {

using common::AutoPtr;
using common::gfn_pLoggerInstance;

namespace {

// Base-2 idf; `extra` is 1.0 for records read from a file and 0.0 for
// merged and user words, which keeps files and in-memory words apart.
float idfOf(unsigned int docCount, unsigned int df, double extra) {
  return static_cast<float>(std::log10((docCount + 0.1) / (df + extra + 0.1)) / std::log10(2.0));
}

}  // namespace

Vocabulary::Vocabulary() : docCount(0), minDf(-1), wordCount(0), m_indexUsed(0), m_indexValid(false) {}

Vocabulary::~Vocabulary() {}

void Vocabulary::clear() {
  m_index.clear();
  m_indexUsed = 0;
  m_indexValid = false;
  docCount = 0;
  wordCount = 0;
  wordIds.clear();
  wordInfos.clear();
}

bool Vocabulary::wordInfoCmp(const WordInfo& a, const WordInfo& b) { return a.df > b.df; }

void Vocabulary::sortByDf() { std::stable_sort(wordInfos.begin(), wordInfos.end(), wordInfoCmp); }

namespace {

const unsigned int kEmptySlot = 0xFFFFFFFFu;

// 64-bit hash of a byte range, eight bytes per step; the words are short
// n-grams, so the mixing stays cheap and the tail is folded in one go.
uint64_t hashBytes(const char* data, size_t length) {
  const uint64_t k = 0x9E3779B97F4A7C15ull;
  uint64_t h = static_cast<uint64_t>(length) * k;
  while (length >= 8) {
    uint64_t w;
    std::memcpy(&w, data, 8);
    h = (h ^ w) * k;
    h ^= h >> 29;
    data += 8;
    length -= 8;
  }
  if (length > 0) {
    uint64_t w = 0;
    std::memcpy(&w, data, length);
    h = (h ^ w) * k;
    h ^= h >> 29;
  }
  h *= 0xBF58476D1CE4E5B9ull;
  return h ^ (h >> 32);
}

}  // namespace

bool Vocabulary::indexInsert(uint64_t hash, unsigned int id) {
  size_t mask = m_index.size() - 1;
  for (size_t i = static_cast<size_t>(hash) & mask;; i = (i + 1) & mask) {
    IndexSlot& slot = m_index[i];
    if (slot.id == kEmptySlot) {
      slot.tag = static_cast<uint32_t>(hash >> 32);
      slot.id = id;
      ++m_indexUsed;
      return true;
    }
    if (slot.tag == static_cast<uint32_t>(hash >> 32) && wordInfos[slot.id].word == wordInfos[id].word) return false;
  }
}

void Vocabulary::rebuildIndex() {
  m_indexValid = false;
  m_indexUsed = 0;
  // at most half full, so that probes stay short
  size_t capacity = 16;
  while (capacity < 2 * wordIds.size() + 2) capacity *= 2;
  m_index.assign(capacity, IndexSlot{0, kEmptySlot});
  for (const auto& entry : wordIds) {
    // The index reads words from wordInfos; ids that do not lead back to
    // their word (after a merge, before a reload) leave the map in charge.
    if (entry.second >= wordInfos.size() || wordInfos[entry.second].word != entry.first) return;
    indexInsert(hashBytes(entry.first.data(), entry.first.size()), entry.second);
  }
  m_indexValid = true;
}

int Vocabulary::getWordId(const std::string& word) const { return getWordId(word.data(), word.size()); }

int Vocabulary::getWordId(const char* data, size_t length) const {
  if (!m_indexValid) {
    std::map<std::string, unsigned int>::const_iterator it = wordIds.find(std::string(data, length));
    return it == wordIds.end() ? -1 : static_cast<int>(it->second);
  }
  return probe(hashBytes(data, length), data, length);
}

int Vocabulary::probe(uint64_t hash, const char* data, size_t length) const {
  uint32_t tag = static_cast<uint32_t>(hash >> 32);
  size_t mask = m_index.size() - 1;
  for (size_t i = static_cast<size_t>(hash) & mask;; i = (i + 1) & mask) {
    const IndexSlot& slot = m_index[i];
    if (slot.id == kEmptySlot) return -1;
    if (slot.tag != tag) continue;
    const std::string& word = wordInfos[slot.id].word;
    if (word.size() == length && (length == 0 || std::memcmp(word.data(), data, length) == 0))
      return static_cast<int>(slot.id);
  }
}

void Vocabulary::getTermIds(const std::vector<analyzer::Token>& tokens, std::vector<int>& ids) const {
  thread_local std::vector<WordPiece> words;
  words.resize(tokens.size());
  for (size_t i = 0; i < tokens.size(); ++i) {
    const std::string& term = tokens[i].term;
    size_t end = term.find('\0');
    words[i] = WordPiece(term.data(), end == std::string::npos ? term.size() : end);
  }
  getWordIds(words, ids);
}

void Vocabulary::getWordIds(const std::vector<WordPiece>& words, std::vector<int>& ids) const {
  ids.resize(words.size());
  if (!m_indexValid) {
    for (size_t i = 0; i < words.size(); ++i) ids[i] = getWordId(words[i].first, words[i].second);
    return;
  }
  // The look-ups of a text are independent and each is mostly one cache
  // miss, so the slots are fetched a few words ahead of their probes and the
  // misses overlap.
  thread_local std::vector<uint64_t> hashes;
  hashes.resize(words.size());
  const size_t mask = m_index.size() - 1;
  const size_t ahead = 8;
  for (size_t i = 0; i < words.size(); ++i) {
    hashes[i] = hashBytes(words[i].first, words[i].second);
    if (i < ahead) __builtin_prefetch(&m_index[static_cast<size_t>(hashes[i]) & mask]);
  }
  for (size_t i = 0; i < words.size(); ++i) {
    if (i + ahead < words.size()) __builtin_prefetch(&m_index[static_cast<size_t>(hashes[i + ahead]) & mask]);
    ids[i] = probe(hashes[i], words[i].first, words[i].second);
  }
}

bool Vocabulary::passesSaveTest(const WordInfo& info) const {
  if (info.df == 0) return false;
  return !(minDf > 0 && info.df < static_cast<unsigned int>(minDf));
}

void Vocabulary::excludeUselessEnglishWord() {
  for (size_t i = 0; i < wordInfos.size(); ++i) {
    WordInfo& info = wordInfos[i];
    if (!utility::Utility::isEnWord(info.word.c_str(), info.word.size())) continue;
    if (info.df <= 24 || info.word.size() < 3 || info.word.size() > 20) info.df = 0;
  }
}

bool Vocabulary::writeSelf(common::ObjectWriter& writer) {
  excludeUselessEnglishWord();
  int count = 0;
  for (size_t i = 0; i < wordInfos.size(); ++i) {
    if (passesSaveTest(wordInfos[i])) ++count;
  }
  wordCount = count;
  if (!writer.writeUint32(docCount) || !writer.writeUint32(static_cast<unsigned int>(count))) return false;
  for (size_t i = 0; i < wordInfos.size(); ++i) {
    const WordInfo& info = wordInfos[i];
    if (!passesSaveTest(info)) continue;
    if (!writer.writeString(info.word) || !writer.writeUint32(info.df) || !writer.writeUint32(info.tf)) return false;
    writer.writeByte(0x0A);
  }
  return true;
}

bool Vocabulary::readSelf(common::ObjectReader& reader) {
  m_indexValid = false;
  wordInfos.clear();
  wordIds.clear();
  docCount = 0;
  int count = 0;
  if (!reader.readUint32(docCount) || !reader.readInt32(count)) return false;
  wordCount = count;
  if (count < 1) return false;
  for (int i = 0; i < count; ++i) {
    WordInfo info;
    if (!reader.readString(info.word) || !reader.readUint32(info.df) || !reader.readUint32(info.tf)) return false;
    unsigned char separator;
    if (passesSaveTest(info)) {
      // one look-up both finds a duplicate, which means a damaged file, and
      // places the new word
      if (!wordIds.emplace(info.word, static_cast<unsigned int>(wordInfos.size())).second) return false;
      info.idf = idfOf(docCount, info.df, 1.0);
      wordInfos.push_back(std::move(info));
    } else if (wordIds.count(info.word) != 0) {
      return false;
    }
    reader.readByte(separator);
  }
  rebuildIndex();
  return true;
}

bool Vocabulary::loadFrom(const std::string& path) {
  clear();
  utility::BufferedFileReader reader(true);
  if (!reader.open(path)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Fail to Open File " + path + " for Loading Vocabulary");
    return false;
  }
  if (!readSelf(reader)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Fail to Load Vocabulary from " + path);
    return false;
  }
  return true;
}

bool Vocabulary::writeTo(const std::string& path) {
  utility::BufferedFileWriter writer(true);
  if (!writer.open(path)) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Fail to Open File " + path + " for Writting Vocabulary");
    return false;
  }
  if (!writeSelf(writer) || !writer.close()) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Fail to Write Vocabulary to " + path);
    return false;
  }
  return true;
}

void Vocabulary::addDocument(std::vector<analyzer::Token>& tokens, bool (*exclude)(analyzer::Token&),
                             std::unordered_map<std::string, unsigned int>& localIds) {
  if (exclude == nullptr) exclude = analyzer::isExcludeForVocab;
  std::vector<unsigned int> ids;
  ids.reserve(tokens.size());
  for (size_t i = 0; i < tokens.size(); ++i) {
    analyzer::Token& token = tokens[i];
    if (token.term.size() <= 1 || exclude(token)) continue;
    std::pair<std::unordered_map<std::string, unsigned int>::iterator, bool> placed =
        localIds.emplace(token.term, static_cast<unsigned int>(wordInfos.size()));
    if (placed.second) {
      WordInfo info;
      info.word = token.term;
      wordInfos.push_back(info);
    }
    ids.push_back(placed.first->second);
  }
  ++docCount;
  // Each distinct word of the document adds 1 to df and its count to tf.
  std::sort(ids.begin(), ids.end());
  for (size_t i = 0; i < ids.size();) {
    size_t j = i;
    while (j < ids.size() && ids[j] == ids[i]) ++j;
    wordInfos[ids[i]].df += 1;
    wordInfos[ids[i]].tf += static_cast<unsigned int>(j - i);
    i = j;
  }
}

bool Vocabulary::build(AutoPtr<trainset::DocReader> reader, std::string analyzerConfigPath,
                       bool (*exclude)(analyzer::Token&)) {
  clear();
  TextAnalyzer analyzer;
  AutoPtr<configure::Parameter> root;
  configure::BasicParamParser parser;
  if (!parser.doParse(analyzerConfigPath, root)) {
    std::cout << "Failed to Parse Params" << std::endl;
    std::cout << "Failed to init text analyzer" << std::endl;
    return false;
  }
  if (!analyzer.config(*root)) {
    std::cout << "Failed to init text analyzer" << std::endl;
    return false;
  }
  std::unordered_map<std::string, unsigned int> localIds;
  std::vector<analyzer::Token> tokens;
  while (reader && reader->hasNextDoc()) {
    trainset::Doc doc = reader->getNextDoc();
    std::string text;
    if (!doc.title.empty()) text += doc.title + "\n";
    if (!doc.subTitle.empty()) text += doc.subTitle + "\n";
    text += doc.content;
    if (!analyzer.tokenizeText(text, tokens, true)) continue;
    addDocument(tokens, exclude, localIds);
  }
  sortByDf();
  return true;
}

void Vocabulary::addUserWord(const std::string& word, int df, int tf) {
  if (wordIds.count(word) != 0) return;
  unsigned int id = static_cast<unsigned int>(wordInfos.size());
  wordIds[word] = id;
  WordInfo info;
  info.word = word;
  info.df = static_cast<unsigned int>(df);
  info.tf = static_cast<unsigned int>(tf);
  info.idf = idfOf(docCount, info.df, 0.0);
  wordInfos.push_back(info);
  if (!m_indexValid) return;
  if (2 * (m_indexUsed + 1) > m_index.size())
    rebuildIndex();
  else
    indexInsert(hashBytes(word.data(), word.size()), id);
}

void Vocabulary::deleteUserWord(const std::string& word) {
  std::map<std::string, unsigned int>::iterator it = wordIds.find(word);
  if (it == wordIds.end()) return;
  int id = static_cast<int>(it->second);
  if (id < 0 || id < wordCount) return;
  wordIds.erase(it);
  m_indexValid = false;
  for (size_t i = static_cast<size_t>(id) + 1; i < wordInfos.size(); ++i) {
    wordInfos[i - 1] = wordInfos[i];
    wordIds[wordInfos[i - 1].word] -= 1;
  }
  wordInfos.pop_back();
}

void Vocabulary::merge(Vocabulary& other, int mergeMinDf) {
  m_indexValid = false;
  docCount += other.docCount;
  for (size_t i = 0; i < other.wordInfos.size(); ++i) {
    const WordInfo& info = other.wordInfos[i];
    std::map<std::string, unsigned int>::iterator it = wordIds.find(info.word);
    if (it == wordIds.end()) {
      if (static_cast<long>(info.df) < mergeMinDf) continue;
      wordIds[info.word] = static_cast<unsigned int>(wordInfos.size());
      wordInfos.push_back(info);
      ++wordCount;
    } else {
      wordInfos[it->second].tf += info.tf;
      wordInfos[it->second].df += info.df;
    }
  }
  for (size_t i = 0; i < wordInfos.size(); ++i) wordInfos[i].idf = idfOf(docCount, wordInfos[i].df, 0.0);
  sortByDf();
}

void Vocabulary::resize(int size) {
  if (size < 0 || static_cast<size_t>(size) >= wordInfos.size()) return;
  excludeUselessEnglishWord();
  sortByDf();
  wordInfos.resize(static_cast<size_t>(size));
  wordIds.clear();
  for (size_t i = 0; i < wordInfos.size(); ++i) wordIds[wordInfos[i].word] = static_cast<unsigned int>(i);
  rebuildIndex();
}

}  // namespace modular
}  // namespace vortm
