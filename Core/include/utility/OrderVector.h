#ifndef VORTM_UTILITY_ORDERVECTOR_H
#define VORTM_UTILITY_ORDERVECTOR_H

#include <stdexcept>
#include <vector>

namespace vortm {
namespace utility {

// A sorted array with binary search. Chosen over a map because the vectors
// are small, walked end to end far more often than searched, and must be
// addressable by position as well as by key. No two items compare equal.
template <class Item, class LessThan>
class OrderVector {
 public:
  OrderVector() {}
  virtual ~OrderVector() {}

  int size() const { return static_cast<int>(m_items.size()); }
  void clear() { m_items.clear(); }

  Item& operator[](int index) { return getByIndex(index); }
  const Item& operator[](int index) const { return getByIndex(index); }

  Item& getByIndex(int index) {
    if (index < 0 || index >= size())
      throw std::runtime_error("OrderVector<Item, LessThan>::getByIndex: invalid index");
    return m_items[index];
  }
  const Item& getByIndex(int index) const {
    if (index < 0 || index >= size())
      throw std::runtime_error("OrderVector<Item, LessThan>::getByIndex: invalid index");
    return m_items[index];
  }

  // An item equal to one already present is dropped: the first one stays.
  // Callers pass allowDuplicate false; with true the new item goes behind
  // the equal one it met.
  void add(const Item& item, bool allowDuplicate) {
    int low = 0;
    int found = search(item, low);
    if (found >= 0) {
      if (!allowDuplicate) return;
      low = found + 1;
    }
    m_items.insert(m_items.begin() + low, item);
  }

  // Position of the item after insertion, or of the equal item already there.
  int addAndReturnIndex(const Item& item) {
    if (m_items.empty()) {
      m_items.push_back(item);
      return 0;
    }
    int low = 0;
    int found = search(item, low);
    if (found >= 0) return found;
    m_items.insert(m_items.begin() + low, item);
    return low;
  }

  // Takes `items`, which must already be sorted and free of equal items, as
  // the whole content; the former content is left in `items`.
  void swapSorted(std::vector<Item>& items) { m_items.swap(items); }

  int indexOf(const Item& item) const {
    int low = 0;
    return search(item, low);
  }

 private:
  // Returns the position of the equal item or -1; in the latter case `low`
  // ends on the insertion position.
  int search(const Item& item, int& low) const {
    LessThan less;
    low = 0;
    int high = size() - 1;
    while (low <= high) {
      int mid = (low + high) / 2;
      if (less(item, m_items[mid]))
        high = mid - 1;
      else if (less(m_items[mid], item))
        low = mid + 1;
      else
        return mid;
    }
    return -1;
  }

  std::vector<Item> m_items;
};

}  // namespace utility
}  // namespace vortm

#endif
