#ifndef VORTM_UTILITY_KVORDERVECTOR_H
#define VORTM_UTILITY_KVORDERVECTOR_H

#include <utility>
#include <vector>

#include "utility/OrderVector.h"

namespace vortm {
namespace utility {

// Key-value pairs kept sorted by key; holds the few children of a trie node.
template <class K, class V, class Compare>
class KVOrderVector {
 public:
  typedef std::pair<K, V> Pair;

  struct LessThan {
    bool operator()(const Pair& a, const Pair& b) const { return Compare()(a.first, b.first); }
  };

  int size() const { return m_vector.size(); }
  void clear() { m_vector.clear(); }
  Pair& operator[](int index) { return m_vector[index]; }
  const Pair& operator[](int index) const { return m_vector[index]; }

  // Takes `pairs`, sorted by key and free of equal keys, as the whole
  // content; the former content is left in `pairs`.
  void swapSorted(std::vector<Pair>& pairs) { m_vector.swapSorted(pairs); }

  // A key already present keeps its first value.
  void add(const K& key, const V& value) { m_vector.add(Pair(key, value), false); }

  // On a miss the result is a shared null value that callers must not write.
  V& getValueByKey(const K& key, bool& found) {
    found = false;
    int index = find(key);
    if (index < 0) return valueNULL();
    found = true;
    return m_vector[index].second;
  }
  const V& getValueByKey(const K& key, bool& found) const {
    found = false;
    int index = find(key);
    if (index < 0) return valueNULL();
    found = true;
    return m_vector[index].second;
  }

 private:
  static V& valueNULL() {
    static V value = V();
    return value;
  }

  int find(const K& key) const {
    if (m_vector.size() == 0) return -1;
    return m_vector.indexOf(Pair(key, V()));
  }

  OrderVector<Pair, LessThan> m_vector;
};

}  // namespace utility
}  // namespace vortm

#endif
