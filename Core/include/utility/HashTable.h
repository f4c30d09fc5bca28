#ifndef VORTM_UTILITY_HASHTABLE_H
#define VORTM_UTILITY_HASHTABLE_H

#include <cstdint>
#include <string>
#include <vector>

#include "common/AutoPtr.h"
#include "utility/Utility.h"

namespace vortm {
namespace utility {

// Bucket choice: strings by SuperFastHash, integer keys by their own value.
inline uint32_t hashTableHash(const std::string& key) { return Utility::hash(key); }
inline uint32_t hashTableHash(unsigned short key) { return key; }
inline uint32_t hashTableHash(unsigned int key) { return key; }

// Chained hash table. It allocates nothing until the first insertion, starts
// with 3 buckets and grows by 5 buckets at a time, so that a table holds chains
// of about three entries; the trie keeps one table per node, which is why the
// empty and small cases are kept this cheap.
template <class K, class V>
class HashTable {
 public:
  struct Entry {
    Entry(const K& k, const V& v) : key(k), value(v), next(nullptr) {}
    K key;
    V value;
    Entry* next;
  };

  class Iterator {
   public:
    explicit Iterator(HashTable* table)
        : m_index(0), m_entry(nullptr), m_table(table) {
      if (m_table && m_table->m_buckets && m_table->m_bucketCount > 0) m_entry = m_table->m_buckets[0];
    }

    bool hasNext() {
      if (!m_table || !m_table->m_buckets || m_index >= m_table->m_bucketCount) return false;
      if (m_entry) return true;
      while (++m_index < m_table->m_bucketCount) {
        m_entry = m_table->m_buckets[m_index];
        if (m_entry) return true;
      }
      return false;
    }

    // Copies out the current entry and moves on; hasNext() comes first.
    void next(K& key, V& value) {
      key = m_entry->key;
      value = m_entry->value;
      m_entry = m_entry->next;
    }

   private:
    uint32_t m_index;
    Entry* m_entry;
    HashTable* m_table;
  };

  HashTable() : m_bucketCount(0), m_entryCount(0), m_threshold(0), m_buckets(nullptr) {}
  virtual ~HashTable() { destroy(); }

  HashTable(const HashTable&) = delete;
  HashTable& operator=(const HashTable&) = delete;

  bool get(const K& key, V& value) const {
    if (!m_buckets) return false;
    for (Entry* e = m_buckets[hashTableHash(key) % m_bucketCount]; e; e = e->next) {
      if (e->key == key) {
        value = e->value;
        return true;
      }
    }
    return false;
  }

  // True if the key was present and its value overwritten.
  bool putReplace(const K& key, const V& value) {
    Entry* e = find(key);
    if (e) {
      e->value = value;
      return true;
    }
    insertNew(key, value);
    return false;
  }

  // True if the key was present; value then receives the stored one.
  bool putNoReplace(const K& key, V& value) {
    Entry* e = find(key);
    if (e) {
      value = e->value;
      return true;
    }
    insertNew(key, value);
    return false;
  }

  // Where the value of `key` is stored, or null; for filling in values that
  // were not known when the keys went in.
  V* lookup(const K& key) {
    Entry* e = find(key);
    return e ? &e->value : nullptr;
  }

  // Puts `count` distinct keys into a table that has never been written.
  // Buckets, chains, counts and threshold end up exactly as inserting the
  // keys one by one in this order would leave them, so iteration order is
  // the same; but the growth is played out on indices first, and the entries
  // are then allocated once, bucket by bucket in chain order, right behind
  // the bucket array, so that a lookup walks neighbouring memory. A table
  // already written takes the keys one by one.
  void fill(const K* keys, const V* values, uint32_t count) {
    if (m_buckets) {
      for (uint32_t i = 0; i < count; ++i) putReplace(keys[i], values[i]);
      return;
    }
    if (count == 0) return;
    const uint32_t none = 0xFFFFFFFFu;
    // Kept per thread: scratch freed between tables would leave holes that
    // the next table's allocations fill, scattering them.
    thread_local std::vector<uint32_t> hashes, heads, next, list;
    hashes.resize(count);
    next.resize(count);
    for (uint32_t i = 0; i < count; ++i) hashes[i] = hashTableHash(keys[i]);
    uint32_t bucketCount = 3, threshold = 2;
    heads.assign(bucketCount, none);
    for (uint32_t i = 0; i < count; ++i) {
      uint32_t b = hashes[i] % bucketCount;
      next[i] = heads[b];
      heads[b] = i;
      while (i + 1 > threshold) {
        list.clear();
        for (uint32_t k = 0; k < bucketCount; ++k)
          for (uint32_t e = heads[k]; e != none; e = next[e]) list.push_back(e);
        bucketCount += 5;
        threshold = bucketCount * 3;
        heads.assign(bucketCount, none);
        for (uint32_t e : list) {
          uint32_t nb = hashes[e] % bucketCount;
          next[e] = heads[nb];
          heads[nb] = e;
        }
      }
    }
    m_bucketCount = bucketCount;
    m_threshold = threshold;
    m_entryCount = count;
    m_buckets = new Entry*[m_bucketCount]();
    for (uint32_t k = 0; k < bucketCount; ++k) {
      Entry** link = &m_buckets[k];
      for (uint32_t e = heads[k]; e != none; e = next[e]) {
        *link = new Entry(keys[e], values[e]);
        link = &(*link)->next;
      }
    }
  }

  bool empty() const { return !m_buckets || m_entryCount == 0; }

  void destroy() {
    if (m_buckets) {
      for (uint32_t i = 0; i < m_bucketCount; ++i) {
        Entry* e = m_buckets[i];
        while (e) {
          Entry* next = e->next;
          delete e;
          e = next;
        }
      }
      delete[] m_buckets;
    }
    m_buckets = nullptr;
    m_bucketCount = 0;
    m_entryCount = 0;
    m_threshold = 0;
  }

  common::AutoPtr<Iterator> iterator() { return common::AutoPtr<Iterator>(new Iterator(this), true); }

  uint32_t bucketCount() const { return m_bucketCount; }
  uint32_t entryCount() const { return m_entryCount; }
  uint32_t threshold() const { return m_threshold; }

 private:
  Entry* find(const K& key) const {
    if (!m_buckets) return nullptr;
    for (Entry* e = m_buckets[hashTableHash(key) % m_bucketCount]; e; e = e->next) {
      if (e->key == key) return e;
    }
    return nullptr;
  }

  void insertNew(const K& key, const V& value) {
    if (!m_buckets) {
      m_bucketCount = 3;
      m_threshold = 2;
      m_entryCount = 0;
      m_buckets = new Entry*[m_bucketCount]();
    }
    Entry* e = new Entry(key, value);
    uint32_t b = hashTableHash(key) % m_bucketCount;
    e->next = m_buckets[b];
    m_buckets[b] = e;
    ++m_entryCount;
    while (m_entryCount > m_threshold) resize();
  }

  // Entries move to the new array without being copied: first into a list in
  // bucket order (each chain from its head), then each to the head of its new
  // chain in that order.
  void resize() {
    Entry* head = nullptr;
    Entry* tail = nullptr;
    for (uint32_t i = 0; i < m_bucketCount; ++i) {
      Entry* e = m_buckets[i];
      while (e) {
        Entry* next = e->next;
        e->next = nullptr;
        if (tail) tail->next = e; else head = e;
        tail = e;
        e = next;
      }
    }
    delete[] m_buckets;
    m_bucketCount += 5;
    m_threshold = m_bucketCount * 3;
    m_buckets = new Entry*[m_bucketCount]();
    Entry* e = head;
    while (e) {
      Entry* next = e->next;
      uint32_t b = hashTableHash(e->key) % m_bucketCount;
      e->next = m_buckets[b];
      m_buckets[b] = e;
      e = next;
    }
  }

  uint32_t m_bucketCount;
  uint32_t m_entryCount;
  uint32_t m_threshold;
  Entry** m_buckets;

  friend class Iterator;
};

}  // namespace utility
}  // namespace vortm

#endif
