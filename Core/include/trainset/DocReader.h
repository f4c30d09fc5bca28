#ifndef VORTM_TRAINSET_DOCREADER_H
#define VORTM_TRAINSET_DOCREADER_H

#include <string>

namespace vortm {
namespace trainset {

// One document of a training corpus.
struct Doc {
  Doc() : id(-1) {}
  long id;
  std::string title;
  std::string subTitle;
  std::string content;
  std::string label;
  std::string source;
};

// Walks a corpus one document at a time: hasNextDoc() fetches the next
// document and must be called once before each getNextDoc(). A source that
// cannot be opened is simply empty.
class DocReader {
 public:
  virtual ~DocReader() {}
  virtual bool hasNextDoc() = 0;
  virtual Doc getNextDoc() = 0;
  virtual void getNextDoc(Doc& doc) = 0;
};

}  // namespace trainset
}  // namespace vortm

#endif
