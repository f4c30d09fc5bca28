#include "analyzer/FilterWordSet.h"

#include "analyzer/TokenFilter.h"
#include "common/Logger.h"
#include "configure/Parameter.h"
#include "utility/Utility.h"

namespace vortm {
namespace analyzer {

bool FilterWordSet::load(const configure::Parameter& param, const std::string& key, WordSetPtr& words,
                         const std::string& failText) {
  if (words.get() != nullptr) return true;
  std::string file;
  if (!param[key].getStringValue(file)) return true;
  // The set is kept only once it loaded, so a failed file can be retried by
  // a later config.
  WordSetPtr loaded(new std::set<std::string>(), true);
  if (!utility::Utility::loadWords(file, *loaded, -1)) {
    common::gfn_pLoggerInstance(0, "", 0)->LogWarn("101", utility::Utility::fileFailureText(failText, file));
    return false;
  }
  words = loaded;
  TokenFilter::noteChainsChanged();
  return true;
}

}  // namespace analyzer
}  // namespace vortm
