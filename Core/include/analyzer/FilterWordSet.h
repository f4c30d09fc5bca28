#ifndef VORTM_ANALYZER_FILTERWORDSET_H
#define VORTM_ANALYZER_FILTERWORDSET_H

#include <set>
#include <string>

#include "common/AutoPtr.h"
#include "common/SharedObj.h"

namespace vortm {
namespace configure {
class Parameter;
}

namespace analyzer {

// A word list of a token filter. Clones made for isolated tokenizing share
// the loaded set, and may be dropped on other threads, hence the locked count.
typedef common::AutoPtr<std::set<std::string>, common::SafeSharedObj<std::set<std::string> > > WordSetPtr;

// Loading and look-up shared by the filters that read word lists.
class FilterWordSet {
 public:
  // Loads the file named under `key` into `words` unless it is loaded
  // already, so a second config keeps the first list. An absent key is no
  // failure and leaves `words` null. An unreadable file logs `failText`
  // with the file name behind it and returns false.
  static bool load(const configure::Parameter& param, const std::string& key, WordSetPtr& words,
                   const std::string& failText);

  // A set that was never loaded holds nothing.
  static bool contains(const WordSetPtr& words, const std::string& word) {
    return words.get() != nullptr && words->find(word) != words->end();
  }
};

}  // namespace analyzer
}  // namespace vortm

#endif
