#ifndef VORTM_TRAINSET_TOKENIZEDDOC_H
#define VORTM_TRAINSET_TOKENIZEDDOC_H

#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "trainset/Label.h"

namespace vortm {
namespace trainset {

// A training document as tokens, with its class and where it came from.
struct TokenizedDoc {
  std::vector<analyzer::Token> tokens;
  Label label;
  std::string source;
};

// Decides on one tokenized document; true drops it. May also change the
// document, for example give it a label.
class TokenizedDocFilter {
 public:
  virtual ~TokenizedDocFilter() {}
  virtual bool filter(TokenizedDoc& doc) = 0;
};

// Yields tokenized documents one at a time, through an optional filter:
//   while (it.hasNext()) use(it.current());
// An iterator belongs to one thread.
class TokenizedDocIterator {
 public:
  virtual ~TokenizedDocIterator() {}

  // Moves to the next document that the filter keeps; false at the end.
  bool hasNext();
  TokenizedDoc& current() { return m_current; }

  void setFilter(common::AutoPtr<TokenizedDocFilter> filter) { m_filterPtr = filter; }

 protected:
  // Moves to the next document before filtering.
  virtual bool hasNextInternal() = 0;

  TokenizedDoc m_current;
  common::AutoPtr<TokenizedDocFilter> m_filterPtr;
};

}  // namespace trainset
}  // namespace vortm

#endif
