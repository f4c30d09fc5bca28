#ifndef VORTM_MODULAR_SENTILABELEXTRACTOR_H
#define VORTM_MODULAR_SENTILABELEXTRACTOR_H

#include <string>
#include <vector>

#include "analyzer/Token.h"
#include "common/AutoPtr.h"
#include "configure/Configurable.h"
#include "modular/SentiLabel.h"

namespace vortm {
namespace modular {

// Finds the opinions of a text. An extractor keeps its walk in the object,
// so each thread works on its own clone.
class SentiLabelExtractor : public configure::Configurable {
 public:
  virtual ~SentiLabelExtractor() {}
  bool config(const configure::Parameter& param) override = 0;
  // Appends the labels of the tokens to `labels`.
  virtual bool extract(std::vector<analyzer::Token>& tokens, std::vector<SentiLabel>& labels) = 0;
  // Tokenizes with the extractor's own analyzer first.
  virtual bool extract(const std::string& text, std::vector<SentiLabel>& labels) = 0;
  // A fresh extractor at the start of a walk, sharing the configuration.
  virtual common::AutoPtr<SentiLabelExtractor> clone() = 0;
};

}  // namespace modular
}  // namespace vortm

#endif
