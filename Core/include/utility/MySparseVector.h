#ifndef VORTM_UTILITY_MYSPARSEVECTOR_H
#define VORTM_UTILITY_MYSPARSEVECTOR_H

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

#include "common/AutoPtr.h"
#include "common/SharedObj.h"
#include "utility/OrderVector.h"

namespace vortm {
namespace utility {

// Feature id to value pairs sorted by id: the document vector. Reading a
// value by id inserts a zero entry when the id is missing, so that callers
// can accumulate with vec[id] += w; a reader that only looks must use
// getIndexById.
template <class V, class I>
class MySparseVector {
 public:
  struct Item {
    I id;
    V value;
  };

  struct ItemLessThan {
    bool operator()(const Item& a, const Item& b) const { return a.id < b.id; }
  };

  typedef OrderVector<Item, ItemLessThan> Items;

  // Walks the items by position; borrows the vector.
  class Iterator {
   public:
    explicit Iterator(Items* items) : m_pItems(items), m_pos(0) {}
    bool hasNext() const { return m_pItems != nullptr && m_pos < m_pItems->size(); }
    Item& next() { return m_pItems->getByIndex(m_pos++); }

   private:
    Items* m_pItems;
    int m_pos;
  };

  MySparseVector() {}
  MySparseVector(const MySparseVector&) = default;
  MySparseVector& operator=(const MySparseVector&) = default;
  virtual ~MySparseVector() {}

  int size() const { return m_items.size(); }
  void clear() { m_items.clear(); }

  int getIndexById(I id) const { return m_items.indexOf(probe(id)); }

  // The reference is valid until the next insertion.
  V& getValueById(I id) {
    if (id < 0) throw std::runtime_error("MySparseVector::getValueById: invalid id");
    int index = getIndexById(id);
    if (index < 0) {
      Item item;
      item.id = id;
      item.value = 0;
      index = m_items.addAndReturnIndex(item);
    }
    return m_items.getByIndex(index).value;
  }

  V& operator[](I id) { return getValueById(id); }

  // For each i with ids[i] >= 0, in the order of i, does what
  // (*this)[ids[i]] += values[i] would (1 each without values), so sums come
  // out bit for bit the same; but one sort and one merge replace an insertion
  // into the sorted items per entry. Only the first `count` ids are read.
  void addAll(const std::vector<I>& ids, const std::vector<V>* values, size_t count) {
    // id in the high half, position in the low: sorting the keys groups the
    // ids and keeps each group in input order
    thread_local std::vector<uint64_t> keys;
    thread_local std::vector<Item> merged;
    keys.clear();
    count = std::min(count, ids.size());
    for (size_t i = 0; i < count; ++i)
      if (ids[i] >= 0) keys.push_back((static_cast<uint64_t>(ids[i]) << 32) | static_cast<uint32_t>(i));
    if (keys.empty()) return;
    std::sort(keys.begin(), keys.end());
    merged.clear();
    merged.reserve(static_cast<size_t>(size()) + keys.size());
    int old = 0;
    for (size_t k = 0; k < keys.size();) {
      I id = static_cast<I>(keys[k] >> 32);
      while (old < size() && m_items.getByIndex(old).id < id) merged.push_back(m_items.getByIndex(old++));
      Item item;
      item.id = id;
      item.value = V();
      if (old < size() && m_items.getByIndex(old).id == id) item.value = m_items.getByIndex(old++).value;
      for (; k < keys.size() && static_cast<I>(keys[k] >> 32) == id; ++k)
        item.value += values ? (*values)[static_cast<uint32_t>(keys[k])] : V(1);
      merged.push_back(item);
    }
    while (old < size()) merged.push_back(m_items.getByIndex(old++));
    m_items.swapSorted(merged);
  }

  std::pair<I, V*> getIdValuePairByIndex(int index) {
    if (index < 0 || index >= size())
      throw std::runtime_error("MySparseVector::getIdValuePairByIndex: invalid index");
    Item& item = m_items.getByIndex(index);
    return std::pair<I, V*>(item.id, &item.value);
  }
  std::pair<I, const V*> getIdValuePairByIndex(int index) const {
    if (index < 0 || index >= size())
      throw std::runtime_error("MySparseVector::getIdValuePairByIndex: invalid index");
    const Item& item = m_items.getByIndex(index);
    return std::pair<I, const V*>(item.id, &item.value);
  }

  common::AutoPtr<Iterator, common::SharedObj<Iterator> > iterator() {
    return common::AutoPtr<Iterator, common::SharedObj<Iterator> >(new Iterator(&m_items), true);
  }

 private:
  static Item probe(I id) {
    Item item;
    item.id = id;
    item.value = V();
    return item;
  }

  Items m_items;
};

}  // namespace utility
}  // namespace vortm

#endif
