#ifndef VORTM_ANALYZER_TRIEDICT_H
#define VORTM_ANALYZER_TRIEDICT_H

#include <sys/stat.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "analyzer/CharacterLexer.h"
#include "analyzer/Dict.h"
#include "analyzer/Token.h"
#include "analyzer/TokenBuffer.h"
#include "common/Assert.h"
#include "common/AutoPtr.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "common/Logger.h"
#include "utility/BufferedFileReader.h"
#include "utility/BufferedFileWriter.h"
#include "utility/HashTable.h"
#include "utility/KVOrderVector.h"

namespace vortm {
namespace analyzer {

// A character trie whose nodes carry a 16-bit word value (type in the high
// byte, tag in the low byte, 0 for "no word ends here"). CHAR is a character's
// bytes packed big-endian: unsigned short for GBK, unsigned int for UTF-8.
//
// The TrieDict owns its whole tree. match() only reads it and may run on many
// threads at once; insert(), find() and contain() share the member lexer as a
// cursor and belong to one thread at a time, with nothing matching meanwhile.
template <class CHAR>
class TrieDict : public Dict {
 public:
  class TrieTreeNode {
   public:
    struct CharNodePair {
      CharNodePair(const CHAR& c, TrieTreeNode* n) : ch(c), node(n) {}
      CHAR ch;
      TrieTreeNode* node;
    };

    TrieTreeNode() : weight(0) {}

    // Frees the subtree without recursion: a tree loaded from a file may be
    // as deep as the file is long.
    virtual ~TrieTreeNode() {
      std::vector<TrieTreeNode*> doomed;
      takeChildren(doomed);
      while (!doomed.empty()) {
        TrieTreeNode* node = doomed.back();
        doomed.pop_back();
        node->takeChildren(doomed);
        delete node;
      }
    }

    TrieTreeNode(const TrieTreeNode&) = delete;
    TrieTreeNode& operator=(const TrieTreeNode&) = delete;

    TrieTreeNode* getBranch(const CHAR& ch) const {
      if (m_orderBranches.size() > 0) {
        bool found = false;
        return m_orderBranches.getValueByKey(ch, found);
      }
      TrieTreeNode* child = nullptr;
      m_hashBranches.get(ch, child);
      return child;
    }

    // True if `ch` already had a child; `node` then refers to that child and
    // the caller still owns what it passed in.
    bool addBranchNoReplace(const CHAR& ch, TrieTreeNode*& node) {
      if (useOrderBranches()) {
        bool found = false;
        TrieTreeNode* existing = m_orderBranches.getValueByKey(ch, found);
        if (found) {
          node = existing;
          return true;
        }
        m_orderBranches.add(ch, node);
        return false;
      }
      return m_hashBranches.putNoReplace(ch, node);
    }

    // True if an old child was replaced; the old child is deleted.
    bool addBranchReplace(const CHAR& ch, TrieTreeNode* node) {
      TrieTreeNode* old = nullptr;
      if (useOrderBranches()) {
        bool found = false;
        TrieTreeNode*& slot = m_orderBranches.getValueByKey(ch, found);
        if (!found) {
          m_orderBranches.add(ch, node);
          return false;
        }
        old = slot;
        slot = node;
      } else {
        if (!m_hashBranches.get(ch, old)) {
          m_hashBranches.putReplace(ch, node);
          return false;
        }
        m_hashBranches.putReplace(ch, node);
      }
      if (old != node) delete old;
      return true;
    }

    // In character order while the children sit in the vector, otherwise in
    // the hash table's iteration order.
    void getAllCharNodePairs(std::vector<CharNodePair>& pairs) {
      for (int i = 0; i < m_orderBranches.size(); ++i)
        pairs.push_back(CharNodePair(m_orderBranches[i].first, m_orderBranches[i].second));
      if (!m_hashBranches.empty()) {
        typename utility::HashTable<CHAR, TrieTreeNode*>::Iterator it(&m_hashBranches);
        CHAR ch;
        TrieTreeNode* child;
        while (it.hasNext()) {
          it.next(ch, child);
          pairs.push_back(CharNodePair(ch, child));
        }
      }
    }

    utility::HashTable<CHAR, TrieTreeNode*> m_hashBranches;
    utility::KVOrderVector<CHAR, TrieTreeNode*, std::less<CHAR> > m_orderBranches;
    unsigned short weight;

    // Gives a node without branches the branches for `chars`, distinct and
    // in file order, with null children: the same vector or table, in the
    // same order, as adding them one by one would leave, allocated at once.
    void allocateBranches(const std::vector<CHAR>& chars) {
      const size_t n = chars.size();
      if (n == 0) return;
      thread_local std::vector<CHAR> keys;
      keys.assign(chars.begin(), chars.end());
      const size_t inVector = n < 3 ? n : 3;
      std::sort(keys.begin(), keys.begin() + inVector);
      if (n <= 3) {
        std::vector<typename Branches::Pair> pairs;
        pairs.reserve(n);
        for (size_t k = 0; k < n; ++k) pairs.push_back(typename Branches::Pair(keys[k], nullptr));
        m_orderBranches.swapSorted(pairs);
        return;
      }
      // The fourth child moves the first three, in character order, into the
      // table; the rest follow in file order.
      thread_local std::vector<TrieTreeNode*> nulls;
      nulls.assign(n, nullptr);
      m_hashBranches.fill(keys.data(), nulls.data(), static_cast<uint32_t>(n));
    }

    // Where the child of `ch` is stored; `ch` must have one.
    TrieTreeNode** branchSlot(const CHAR& ch) {
      for (int k = 0; k < m_orderBranches.size(); ++k)
        if (m_orderBranches[k].first == ch) return &m_orderBranches[k].second;
      return m_hashBranches.lookup(ch);
    }

   private:
    typedef utility::KVOrderVector<CHAR, TrieTreeNode*, std::less<CHAR> > Branches;

    // A node keeps up to 3 children in the sorted vector; the fourth moves
    // them all to the hash table for good.
    bool useOrderBranches() {
      if (m_hashBranches.empty() && m_orderBranches.size() < 3) return true;
      if (m_orderBranches.size() > 0) {
        for (int i = 0; i < m_orderBranches.size(); ++i) {
          TrieTreeNode* child = m_orderBranches[i].second;
          m_hashBranches.putNoReplace(m_orderBranches[i].first, child);
        }
        m_orderBranches.clear();
      }
      return false;
    }

    // Moves the children to `out` and leaves this node without any.
    void takeChildren(std::vector<TrieTreeNode*>& out) {
      for (int i = 0; i < m_orderBranches.size(); ++i) out.push_back(m_orderBranches[i].second);
      m_orderBranches.clear();
      if (!m_hashBranches.empty()) {
        typename utility::HashTable<CHAR, TrieTreeNode*>::Iterator it(&m_hashBranches);
        CHAR ch;
        TrieTreeNode* child;
        while (it.hasNext()) {
          it.next(ch, child);
          out.push_back(child);
        }
      }
      m_hashBranches.destroy();
    }
  };

  // A node as it stands in a file; chars and nextIds run in parallel.
  struct NodeStoreInfo {
    NodeStoreInfo() : weight(0) {}
    unsigned short weight;
    std::vector<CHAR> chars;
    std::vector<unsigned int> nextIds;
  };

  explicit TrieDict(const std::string& lexerIdentifier)
      : m_root(new TrieTreeNode()), m_lexerIdentifier(lexerIdentifier) {
    common::gfn_creatorRegister();
    makeLexer();
  }

  virtual ~TrieDict() { delete m_root; }

  TrieDict(const TrieDict&) = delete;
  TrieDict& operator=(const TrieDict&) = delete;

  // File layout, breadth first from the root, all little-endian: weight (2),
  // child count n (4), n times (CHAR, child id (4)), then 0x0A. A node's id is
  // its place in the file. There is no header: the file ends where it ends.
  bool saveTo(const std::string& file) override {
    utility::BufferedFileWriter writer(true);
    if (!writer.open(file)) {
      warn("Unable to Open File" + file + "for Loading TrieTree");
      return false;
    }
    std::deque<TrieTreeNode*> queue;
    queue.push_back(m_root);
    unsigned int counter = 0;
    std::vector<typename TrieTreeNode::CharNodePair> pairs;
    while (!queue.empty()) {
      TrieTreeNode* node = queue.front();
      queue.pop_front();
      pairs.clear();
      node->getAllCharNodePairs(pairs);
      if (!writer.writeUint16(node->weight)) return false;
      if (!writer.writeUint32(static_cast<unsigned int>(pairs.size()))) return false;
      for (size_t i = 0; i < pairs.size(); ++i) {
        if (!writeChar(writer, pairs[i].ch)) return false;
        if (!writer.writeUint32(++counter)) return false;
        queue.push_back(pairs[i].node);
      }
      if (!writer.writeByte(0x0A)) return false;
    }
    if (!writer.flush()) return false;
    writer.close();
    return true;
  }

  // On any failure the tree in place stays as it was.
  bool loadFrom(const std::string& file) override {
    utility::BufferedFileReader reader(true);
    if (!reader.open(file)) {
      warn("Unable to Open File" + file + "for Loading TrieTree: " + reader.getOpenError());
      return false;
    }
    std::vector<NodeStoreInfo> infos;
    reserveRecords(file, infos);
    unsigned short weight;
    // A weight that cannot be read is the normal end of the file; every later
    // field must be there.
    while (reader.readUint16(weight)) {
      infos.push_back(NodeStoreInfo());
      NodeStoreInfo& info = infos.back();
      info.weight = weight;
      unsigned int n = 0;
      if (!reader.readUint32(n)) return false;
      // The count is not trusted for allocation: a hostile one simply runs
      // out of file.
      if (n <= 16) {
        info.chars.reserve(n);
        info.nextIds.reserve(n);
      }
      for (unsigned int k = 0; k < n; ++k) {
        CHAR ch;
        unsigned int id;
        if (!readChar(reader, ch) || !reader.readUint32(id)) return false;
        info.chars.push_back(ch);
        info.nextIds.push_back(id);
      }
      unsigned char end;
      if (!reader.readByte(end)) return false;
    }
    TrieTreeNode* root = nullptr;
    if (!recover(0, infos, root)) {
      warn("Recover TrieTree Error from " + file);
      return false;
    }
    delete m_root;
    m_root = root;
    reader.close();
    return true;
  }

  // An empty word is accepted and changes nothing. A lexer failure leaves the
  // nodes made so far in place, without a value.
  bool insert(const std::string& word, unsigned short weight) override {
    if (word.empty()) return true;
    if (!m_lexerPtr && !makeLexer()) return false;
    m_lexerPtr->setText(word);
    TrieTreeNode* node = m_root;
    unsigned int offset = 0, length = 0;
    while (true) {
      int result = m_lexerPtr->doLexer(offset, length);
      if (result == 0) break;
      if (result < 0) {
        warn("Character Lexer Error");
        return false;
      }
      CHAR ch = convertToCHAR(word.data() + offset, length);
      TrieTreeNode* child = node->getBranch(ch);
      if (!child) {
        child = new TrieTreeNode();
        node->addBranchNoReplace(ch, child);
      }
      node = child;
    }
    node->weight = weight;
    return true;
  }

  // The word's value, 0 for a mere prefix of other words, 0xFFFF if absent.
  unsigned short find(const std::string& word) {
    if (word.empty()) return 0xFFFF;
    if (!m_lexerPtr && !makeLexer()) return 0xFFFF;
    m_lexerPtr->setText(word);
    const TrieTreeNode* node = m_root;
    unsigned int offset = 0, length = 0;
    while (true) {
      int result = m_lexerPtr->doLexer(offset, length);
      if (result == 0) break;
      if (result < 0) return 0xFFFF;
      node = node->getBranch(convertToCHAR(word.data() + offset, length));
      if (!node) return 0xFFFF;
    }
    return node->weight;
  }

  bool contain(const std::string& word) override {
    unsigned short value = find(word);
    return value >= 1 && value <= 0xFFFE;
  }

  // Maximum forward match: at each position the longest word wins, and the
  // bytes between words come out in order as TT_TEXT_SPAN tokens. Reads the
  // tree only, and allocates nothing of its own.
  bool match(const char* text, unsigned int length, unsigned int* pForwardRefBuf, TokenBuffer& out,
             unsigned int base) override {
    VOR_ASSERT(pForwardRefBuf);
    if (length == 0) return true;
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(text);
    unsigned int i = 0;
    unsigned int pending = 0;
    while (i < length) {
      const TrieTreeNode* node = m_root;
      unsigned int j = i;
      unsigned int wordEnd = i;
      unsigned short wordWeight = 0;
      while (j < length) {
        unsigned int charLength = charLengthAt(pForwardRefBuf, j, length);
        node = node->getBranch(packChar(bytes + j, charLength));
        if (!node) break;
        j += charLength;
        if (node->weight != 0) {
          wordEnd = j;
          wordWeight = node->weight;
        }
      }
      if (wordWeight == 0) {
        i += charLengthAt(pForwardRefBuf, i, length);
        continue;
      }
      if (pending < i) writeSpan(out, text, pending, i, base);
      appendToken(out, text + i, wordEnd - i, static_cast<int>(base + i), static_cast<int>(base + wordEnd - 1),
                  static_cast<Token::TType>(wordWeight >> 8), static_cast<Token::TTag>(wordWeight & 0xFF));
      i = pending = wordEnd;
    }
    if (pending < length) writeSpan(out, text, pending, length, base);
    return true;
  }

  // Builds the subtree of record `id` into `node`. Child ids must lie behind
  // their parent and be used once, which every saved file satisfies; anything
  // else could cycle or multiply nodes. The whole subtree is checked before
  // anything is allocated, and nothing recurses, so a deep file cannot
  // exhaust the call stack. The records' lists are freed once the tree
  // stands.
  bool recover(unsigned int id, std::vector<NodeStoreInfo>& infos, TrieTreeNode*& node) {
    node = nullptr;
    if (id >= infos.size()) return false;
    std::vector<unsigned int> order(1, id);
    bool distinct = true;
    {
      std::vector<bool> used(infos.size(), false);
      std::vector<CHAR> sorted;
      for (size_t k = 0; k < order.size(); ++k) {
        const unsigned int parent = order[k];
        const NodeStoreInfo& info = infos[parent];
        if (info.chars.size() != info.nextIds.size()) return false;
        for (size_t j = 0; j < info.nextIds.size(); ++j) {
          unsigned int child = info.nextIds[j];
          if (child >= infos.size() || child <= parent || used[child]) return false;
          used[child] = true;
          order.push_back(child);
        }
        if (distinct && info.chars.size() > 1) {
          sorted.assign(info.chars.begin(), info.chars.end());
          std::sort(sorted.begin(), sorted.end());
          distinct = std::adjacent_find(sorted.begin(), sorted.end()) == sorted.end();
        }
      }
    }
    std::vector<TrieTreeNode*> nodes(infos.size(), nullptr);
    if (distinct) {
      // Breadth first, each node is allocated with its branches right
      // behind it (the sorted array, or the bucket array and the entries),
      // so that a step of the match finds both in neighbouring memory, and
      // the upper levels, which every match passes through, lie together.
      // Branches are filled in as if added one by one in file order, and
      // point at their children once those exist.
      for (size_t k = 0; k < order.size(); ++k) {
        const NodeStoreInfo& info = infos[order[k]];
        nodes[order[k]] = newNode(info.weight);
        nodes[order[k]]->allocateBranches(info.chars);
      }
      for (size_t k = 0; k < order.size(); ++k) {
        NodeStoreInfo& info = infos[order[k]];
        for (size_t j = 0; j < info.nextIds.size(); ++j)
          *nodes[order[k]]->branchSlot(info.chars[j]) = nodes[info.nextIds[j]];
      }
    } else {
      // A record that names one character twice: the later child replaces
      // the earlier, subtree and all. Links are made from the deepest level
      // up, so that a replaced child is complete by then.
      for (size_t k = 0; k < order.size(); ++k) nodes[order[k]] = newNode(infos[order[k]].weight);
      for (size_t k = order.size(); k-- > 0;) {
        NodeStoreInfo& info = infos[order[k]];
        TrieTreeNode* parent = nodes[order[k]];
        for (size_t j = 0; j < info.nextIds.size(); ++j)
          parent->addBranchReplace(info.chars[j], nodes[info.nextIds[j]]);
      }
    }
    for (size_t k = 0; k < order.size(); ++k) {
      std::vector<CHAR>().swap(infos[order[k]].chars);
      std::vector<unsigned int>().swap(infos[order[k]].nextIds);
    }
    node = nodes[id];
    return true;
  }

  // A character's bytes packed big-endian, as many as fit in CHAR.
  static CHAR convertToCHAR(const char* bytes, unsigned int length) {
    if (!bytes || length == 0) return 0;
    return packChar(reinterpret_cast<const unsigned char*>(bytes), length);
  }

  TrieTreeNode* getRoot() const { return m_root; }

 protected:
  // Shared with the dictionaries that derive from this one and cut the text
  // the same way.
  static CHAR packChar(const unsigned char* bytes, unsigned int length) {
    if (length > sizeof(CHAR)) length = sizeof(CHAR);
    CHAR ch = 0;
    for (unsigned int k = 0; k < length; ++k) ch = static_cast<CHAR>((ch << 8) | bytes[k]);
    return ch;
  }

  // A character never reaches past the text, and never has length 0, even if
  // the caller's table says otherwise.
  static unsigned int charLengthAt(const unsigned int* pForwardRefBuf, unsigned int at, unsigned int length) {
    unsigned int charLength = pForwardRefBuf[at];
    if (charLength == 0) return 1;
    if (charLength > length - at) return length - at;
    return charLength;
  }

  static void writeSpan(TokenBuffer& out, const char* text, unsigned int from, unsigned int to,
                        unsigned int base) {
    appendToken(out, text + from, to - from, static_cast<int>(base + from), static_cast<int>(base + to - 1),
                Token::TT_TEXT_SPAN, Token::TG_PLAIN);
  }

 private:
  static TrieTreeNode* newNode(unsigned short weight) {
    TrieTreeNode* node = new TrieTreeNode();
    node->weight = weight;
    return node;
  }

  static bool writeChar(utility::BufferedFileWriter& writer, unsigned short ch) { return writer.writeUint16(ch); }
  static bool writeChar(utility::BufferedFileWriter& writer, unsigned int ch) { return writer.writeUint32(ch); }
  static bool readChar(utility::BufferedFileReader& reader, unsigned short& ch) { return reader.readUint16(ch); }
  static bool readChar(utility::BufferedFileReader& reader, unsigned int& ch) { return reader.readUint32(ch); }

  // Records take at least 7 bytes, so the file size bounds their number;
  // reserving it spares the copies of a growing vector. Pages never touched
  // cost no memory.
  static void reserveRecords(const std::string& file, std::vector<NodeStoreInfo>& infos) {
    struct stat st;
    if (stat(file.c_str(), &st) != 0 || st.st_size <= 0) return;
    unsigned long records = static_cast<unsigned long>(st.st_size) / 7 + 1;
    const unsigned long cap = 1UL << 21;
    infos.reserve(records < cap ? records : cap);
  }

  bool makeLexer() {
    m_lexerPtr = common::InstanceCreator<CharacterLexer>::getCreation(m_lexerIdentifier);
    return m_lexerPtr.get() != nullptr;
  }

  static void warn(const std::string& text) { common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", text); }

  TrieTreeNode* m_root;
  std::string m_lexerIdentifier;
  common::AutoPtr<CharacterLexer> m_lexerPtr;
};

}  // namespace analyzer
}  // namespace vortm

#endif
