#ifndef VORTM_UTILITY_MYSPARSEVECTOR_H
#define VORTM_UTILITY_MYSPARSEVECTOR_H

#include <stdexcept>
#include <utility>

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
