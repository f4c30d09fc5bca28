#ifndef VORTM_ANALYZER_COMPLEXMATCHTRIEDICT_H
#define VORTM_ANALYZER_COMPLEXMATCHTRIEDICT_H

#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "analyzer/Token.h"
#include "analyzer/TokenBuffer.h"
#include "analyzer/TrieDict.h"
#include "common/Assert.h"

namespace vortm {
namespace analyzer {

// Segments by looking three words ahead: at each position every cut of the
// next three words is a candidate chunk, the chunks are ranked by greatest
// total length, then greatest mean word length, then smallest variance of
// word lengths, and only the first word of the winner is committed. Longest
// match alone cannot see that its word spoils what follows (研究生|命 where
// 研究|生命 is meant); the look-ahead can.
//
// match() keeps its state in locals and only reads the tree, so it may run
// on many threads at once, as the base's does.
template <class CHAR>
class ComplexMatchTrieDict : public TrieDict<CHAR> {
 public:
  struct MatchWord {
    MatchWord() : byteLength(0), charCount(0), weight(0) {}
    std::string word;
    unsigned int byteLength;
    unsigned int charCount;
    // The trie value; 0 for a lone character that no word starts with.
    unsigned short weight;
  };

  typedef std::vector<MatchWord> WordChunk;

  explicit ComplexMatchTrieDict(const std::string& lexerIdentifier) : TrieDict<CHAR>(lexerIdentifier) {}
  virtual ~ComplexMatchTrieDict() {}

  bool match(const char* text, unsigned int length, unsigned int* pForwardRefBuf, TokenBuffer& out,
             unsigned int base) override {
    VOR_ASSERT(pForwardRefBuf);
    // A ranking of its own needs the chunks as word lists; the rules of this
    // class are applied on the fly.
    if (typeid(*this) == typeid(ComplexMatchTrieDict)) return matchByRules(text, length, pForwardRefBuf, out, base);
    unsigned int pending = 0;
    unsigned int i = 0;
    MatchWord previous;
    Scratch& scratch = threadScratch();
    std::vector<WordChunk>& nWordChunks = scratch.candidates;
    while (i < length) {
      scratch.recycle();
      matchNWordChunk(text, length, pForwardRefBuf, i, 3, nWordChunks);
      VOR_ASSERT(nWordChunks.size() > 0);
      unsigned int picked = pickOptimizationWordChunk(nWordChunks, previous);
      if (picked >= nWordChunks.size() || nWordChunks[picked].empty()) return false;
      const MatchWord& word = nWordChunks[picked][0];
      if (word.weight != 0) {
        if (pending < i) TrieDict<CHAR>::writeSpan(out, text, pending, i, base);
        appendToken(out, text + i, word.byteLength, static_cast<int>(base + i),
                    static_cast<int>(base + i + word.byteLength - 1), static_cast<Token::TType>(word.weight >> 8),
                    static_cast<Token::TTag>(word.weight & 0xFF));
        pending = i + word.byteLength;
      }
      // Unknown characters are skipped here and gather into the next span.
      i += word.byteLength;
      previous = word;
    }
    scratch.recycle();
    if (pending < length) TrieDict<CHAR>::writeSpan(out, text, pending, length, base);
    return true;
  }

  // Calls `word(end, charCount, weight)` for each dictionary word that starts
  // at `position`, by rising length; false if there is none.
  template <typename OnWord>
  bool forEachWordAt(const char* text, unsigned int length, const unsigned int* pForwardRefBuf,
                     unsigned int position, OnWord&& word) const {
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text);
    const typename TrieDict<CHAR>::TrieTreeNode* node = this->getRoot();
    unsigned int j = position;
    unsigned int charCount = 0;
    bool found = false;
    while (j < length) {
      unsigned int charLength = TrieDict<CHAR>::charLengthAt(pForwardRefBuf, j, length);
      node = node->getBranch(TrieDict<CHAR>::packChar(bytes + j, charLength));
      if (!node) break;
      j += charLength;
      ++charCount;
      if (node->weight != 0) {
        found = true;
        word(j, charCount, node->weight);
      }
    }
    return found;
  }

  // Appends to `chunks` every cut of up to `n` words from `position`, by
  // rising length of the first word. Where no dictionary word starts, the
  // single character stands in as a word of value 0, so a position inside
  // the text always yields at least one chunk.
  bool matchNWordChunk(const char* text, unsigned int length, unsigned int* pForwardRefBuf, unsigned int position,
                       unsigned int n, std::vector<WordChunk>& chunks) {
    if (n == 0 || position >= length) return true;
    const bool found = forEachWordAt(text, length, pForwardRefBuf, position,
                                     [&](unsigned int end, unsigned int charCount, unsigned short weight) {
                                       appendChunks(makeWord(text, position, end, charCount, weight), end, text,
                                                    length, pForwardRefBuf, n, chunks);
                                     });
    if (found) return true;
    unsigned int end = position + TrieDict<CHAR>::charLengthAt(pForwardRefBuf, position, length);
    appendChunks(makeWord(text, position, end, 1, 0), end, text, length, pForwardRefBuf, n, chunks);
    return true;
  }

  // The index of the chunk whose first word is to be committed. `previous`,
  // the word committed before, is not looked at here.
  virtual unsigned int pickOptimizationWordChunk(std::vector<WordChunk>& chunks, const MatchWord& previous) {
    (void)previous;
    unsigned int picked = 0;
    std::vector<unsigned int> tied;
    if (pickByLength(chunks, tied, picked)) return picked;

    std::vector<unsigned int> best;
    double bestVariance = 10000000.0;
    for (unsigned int index : tied) {
      double variance = varianceOf(chunks[index]);
      if (variance < bestVariance) {
        bestVariance = variance;
        best.clear();
        best.push_back(index);
      } else if (variance == bestVariance) {
        best.push_back(index);
      }
    }
    // Among equal variances the latest chunk, the one of the longest first
    // word, wins. Should every variance exceed the starting bound (words of
    // thousands of characters), the latest of the tie still wins.
    return best.empty() ? tied.back() : best.back();
  }

 protected:
  // The rules on length that every ranking starts with. True if they decide
  // alone, with `picked` set. Otherwise `tied` holds, in order, the indices
  // of the chunks of greatest total and greatest mean, at least two.
  static bool pickByLength(const std::vector<WordChunk>& chunks, std::vector<unsigned int>& tied,
                           unsigned int& picked) {
    picked = 0;
    tied.clear();
    if (chunks.empty()) return true;

    // Same length of the first word means the same first word: whatever
    // follows it, the committed word is the same.
    bool sameFirst = true;
    for (size_t k = 0; k < chunks.size() && sameFirst; ++k)
      sameFirst = !chunks[k].empty() && chunks[k][0].charCount == chunks[0][0].charCount;
    if (sameFirst) return true;

    long long bestTotal = -1;
    for (unsigned int k = 0; k < chunks.size(); ++k) {
      if (chunks[k].empty()) continue;
      long long total = totalOf(chunks[k]);
      if (total > bestTotal) {
        bestTotal = total;
        tied.clear();
      }
      if (total == bestTotal) tied.push_back(k);
    }
    if (tied.size() <= 1) {
      picked = tied.empty() ? 0 : tied[0];
      return true;
    }

    std::vector<unsigned int> byMean;
    double bestMean = -1.0;
    for (unsigned int index : tied) {
      double mean = meanOf(chunks[index]);
      if (mean > bestMean) {
        bestMean = mean;
        byMean.clear();
        byMean.push_back(index);
      } else if (mean == bestMean) {
        byMean.push_back(index);
      }
    }
    tied.swap(byMean);
    if (tied.size() == 1) {
      picked = tied[0];
      return true;
    }
    return false;
  }

  static long long totalOf(const WordChunk& chunk) {
    long long total = 0;
    for (const MatchWord& w : chunk) total += w.charCount;
    return total;
  }

  static double meanOf(const WordChunk& chunk) {
    return static_cast<double>(totalOf(chunk)) / static_cast<double>(chunk.size());
  }

  static double varianceOf(const WordChunk& chunk) {
    unsigned int counts[3];
    size_t n = 0;
    for (const MatchWord& w : chunk) {
      if (n == 3) return varianceOfLong(chunk);
      counts[n++] = w.charCount;
    }
    return varianceOf(counts, n);
  }

  // Both ways of ranking compute the variance here, so that they agree to
  // the last bit.
  static double varianceOf(const unsigned int* counts, size_t n) {
    long long total = 0;
    for (size_t k = 0; k < n; ++k) total += counts[k];
    double mean = static_cast<double>(total) / static_cast<double>(n);
    double sum = 0.0;
    for (size_t k = 0; k < n; ++k) {
      double d = static_cast<double>(counts[k]) - mean;
      sum += d * d;
    }
    return sum / static_cast<double>(n);
  }

 private:
  static double varianceOfLong(const WordChunk& chunk) {
    double mean = meanOf(chunk);
    double sum = 0.0;
    for (const MatchWord& w : chunk) {
      double d = static_cast<double>(w.charCount) - mean;
      sum += d * d;
    }
    return sum / static_cast<double>(chunk.size());
  }

  // A dictionary word (or the lone character standing in for one) at some
  // position: where it ends, its characters and its value.
  struct Prefix {
    unsigned int end;
    unsigned int charCount;
    unsigned short weight;
  };

  // The words that start at each position, found once per text and shared by
  // every chunk that passes there; `first[p]` is the index of position p's
  // list in `prefixes`, `none` while it is not built.
  struct PrefixCache {
    static constexpr unsigned int none = 0xFFFFFFFFu;
    std::vector<unsigned int> first;
    std::vector<unsigned int> count;
    std::vector<Prefix> prefixes;
  };

  // Builds, if need be, the list of the words at `position` (< length), by
  // rising length as matchNWordChunk finds them, and returns its size.
  unsigned int wordsAt(PrefixCache& cache, const char* text, unsigned int length, const unsigned int* pForwardRefBuf,
                       unsigned int position) const {
    if (cache.first[position] == PrefixCache::none) {
      const unsigned int start = static_cast<unsigned int>(cache.prefixes.size());
      const bool found = forEachWordAt(text, length, pForwardRefBuf, position,
                                       [&](unsigned int end, unsigned int charCount, unsigned short weight) {
                                         cache.prefixes.push_back(Prefix{end, charCount, weight});
                                       });
      if (!found)
        cache.prefixes.push_back(
            Prefix{position + TrieDict<CHAR>::charLengthAt(pForwardRefBuf, position, length), 1, 0});
      cache.first[position] = start;
      cache.count[position] = static_cast<unsigned int>(cache.prefixes.size()) - start;
    }
    return cache.count[position];
  }

  // The best chunk so far under the rules of pickOptimizationWordChunk, as
  // the index of its first word. Chunks come in the order matchNWordChunk
  // lists them, and a later chunk that ties on every rule wins, as there.
  struct Ranking {
    long long total = -1;
    double mean = 0.0;
    bool haveVariance = false;
    double variance = 0.0;
    unsigned int best[3] = {0, 0, 0};
    size_t bestSize = 0;
    unsigned int index = 0;

    void consider(unsigned int first, const unsigned int* counts, size_t n) {
      long long sum = 0;
      for (size_t k = 0; k < n; ++k) sum += counts[k];
      if (sum < total) return;
      double m = static_cast<double>(sum) / static_cast<double>(n);
      if (sum > total || m > mean) {
        total = sum;
        mean = m;
        haveVariance = false;
        keep(first, counts, n);
        return;
      }
      if (m < mean) return;
      if (!haveVariance) {
        variance = boundedVariance(best, bestSize);
        haveVariance = true;
      }
      double v = boundedVariance(counts, n);
      if (v <= variance) {
        variance = v;
        keep(first, counts, n);
      }
    }

    // A variance above the rule's starting bound never wins there; when no
    // chunk of the tie stays within it, the latest one does.
    static double boundedVariance(const unsigned int* counts, size_t n) {
      double v = varianceOf(counts, n);
      return v <= 10000000.0 ? v : 1e300;
    }

    void keep(unsigned int first, const unsigned int* counts, size_t n) {
      index = first;
      for (size_t k = 0; k < n; ++k) best[k] = counts[k];
      bestSize = n;
    }
  };

  // Ranks every cut of the words from `position` on, behind the `depth`
  // words whose character counts are in `counts`, up to three words or the
  // end of the text; `first` is the index of the cut's first word.
  void rankCuts(PrefixCache& cache, const char* text, unsigned int length, const unsigned int* pForwardRefBuf,
                unsigned int position, unsigned int depth, unsigned int first, unsigned int* counts,
                Ranking& ranking) const {
    const unsigned int n = wordsAt(cache, text, length, pForwardRefBuf, position);
    for (unsigned int k = 0; k < n; ++k) {
      // Read by index: wordsAt() below may move the lists.
      const Prefix word = cache.prefixes[cache.first[position] + k];
      counts[depth] = word.charCount;
      const unsigned int index = depth == 0 ? k : first;
      if (depth == 2 || word.end >= length)
        ranking.consider(index, counts, depth + 1);
      else
        rankCuts(cache, text, length, pForwardRefBuf, word.end, depth + 1, index, counts, ranking);
    }
  }

  // match() for this class's own ranking: the same chunks in the same order
  // under the same rules, without building them as word lists.
  bool matchByRules(const char* text, unsigned int length, const unsigned int* pForwardRefBuf, TokenBuffer& out,
                    unsigned int base) const {
    thread_local PrefixCache cache;
    cache.first.assign(length, PrefixCache::none);
    cache.count.resize(length);
    cache.prefixes.clear();
    unsigned int pending = 0;
    unsigned int i = 0;
    while (i < length) {
      const unsigned int n1 = wordsAt(cache, text, length, pForwardRefBuf, i);
      unsigned int chosen = 0;
      // With one word at this position, whatever follows, it is the one taken.
      if (n1 > 1) {
        Ranking ranking;
        unsigned int counts[3];
        rankCuts(cache, text, length, pForwardRefBuf, i, 0, 0, counts, ranking);
        chosen = ranking.index;
      }
      const Prefix word = cache.prefixes[cache.first[i] + chosen];
      if (word.weight != 0) {
        if (pending < i) TrieDict<CHAR>::writeSpan(out, text, pending, i, base);
        appendToken(out, text + i, word.end - i, static_cast<int>(base + i), static_cast<int>(base + word.end - 1),
                    static_cast<Token::TType>(word.weight >> 8), static_cast<Token::TTag>(word.weight & 0xFF));
        pending = word.end;
      }
      // Unknown characters are skipped here and gather into the next span.
      i = word.end;
    }
    if (pending < length) TrieDict<CHAR>::writeSpan(out, text, pending, length, base);
    return true;
  }

  static MatchWord makeWord(const char* text, unsigned int from, unsigned int to, unsigned int charCount,
                            unsigned short weight) {
    MatchWord w;
    w.word.assign(text + from, to - from);
    w.byteLength = to - from;
    w.charCount = charCount;
    w.weight = weight;
    return w;
  }

  // Candidate lists are rebuilt at every position of every text; their
  // storage is kept per thread so that, once warm, segmenting allocates
  // nothing. `candidates` is match()'s list, `spare` the emptied chunks.
  struct Scratch {
    std::vector<WordChunk> candidates;
    std::vector<WordChunk> spare;

    void recycle() {
      for (WordChunk& chunk : candidates) {
        chunk.clear();
        spare.push_back(std::move(chunk));
      }
      candidates.clear();
    }

    WordChunk take() {
      if (spare.empty()) {
        WordChunk chunk;
        chunk.reserve(3);
        return chunk;
      }
      WordChunk chunk(std::move(spare.back()));
      spare.pop_back();
      return chunk;
    }
  };

  static Scratch& threadScratch() {
    thread_local Scratch scratch;
    return scratch;
  }

  // One chunk per cut of the text behind `word`, which ends at `next`, or
  // the word alone when nothing follows it within the look-ahead. The cuts
  // behind are appended in place and the word put in front of each, which
  // keeps their order and saves a list per level.
  void appendChunks(const MatchWord& word, unsigned int next, const char* text, unsigned int length,
                    unsigned int* pForwardRefBuf, unsigned int n, std::vector<WordChunk>& chunks) {
    size_t start = chunks.size();
    matchNWordChunk(text, length, pForwardRefBuf, next, n - 1, chunks);
    if (chunks.size() == start) {
      chunks.push_back(threadScratch().take());
      chunks.back().push_back(word);
      return;
    }
    for (size_t k = start; k < chunks.size(); ++k) chunks[k].insert(chunks[k].begin(), word);
  }
};

}  // namespace analyzer
}  // namespace vortm

#endif
