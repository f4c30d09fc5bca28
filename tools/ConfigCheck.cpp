#include "ConfigCheck.h"

#include <errno.h>
#include <sys/stat.h>

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>

#include "CommandLine.h"
#include "analyzer/TokenFilter.h"
#include "analyzer/Tokenizer.h"
#include "application/ISentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/CreatorRegister.h"
#include "common/InstanceCreator.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "modular/ILexcionSentiScorer.h"

namespace vorelin {
namespace cli {

using vortm::configure::Parameter;

namespace {

// Keys the library reads with getFloatValue, which a plain node answers
// with false.
const std::set<std::string> kFloatKeys = {"number_weight", "quota_penalty", "but_conj_boost",
                                          "though_conj_penalty", "question_mark_penalty"};

template <class T>
bool known(const std::string& identifier) {
  T* object = vortm::common::InstanceCreator<T>::getCreation(identifier);
  delete object;
  return object != nullptr;
}

bool isNumber(const std::string& text, bool integer) {
  std::string t = text;
  while (!t.empty() && std::isspace(static_cast<unsigned char>(t.back()))) t.pop_back();
  if (t.empty()) return false;
  char* end = nullptr;
  errno = 0;
  if (integer)
    std::strtol(t.c_str(), &end, 10);
  else
    std::strtod(t.c_str(), &end);
  return errno == 0 && end && *end == 0;
}

class Checker {
 public:
  Checker(const std::string& command, const std::string& path) : m_command(command), m_path(path) {}

  void walk(const Parameter& node, const std::string& name, const std::string& where,
            const std::vector<std::string>& ancestors) {
    std::string text;
    node.getStringValue(text);
    if (node.size() == 0) checkValue(node, name, where, text, ancestors);
    std::vector<std::string> inner = ancestors;
    inner.push_back(name);
    for (unsigned int i = 0; i < node.size(); ++i) {
      const std::string child = node.getSubParamName(i);
      walk(node[static_cast<int>(i)], child, where.empty() ? child : where + "." + child, inner);
    }
  }

  void warn(const std::string& where, const std::string& what) {
    std::fprintf(stderr, "vorelin %s: warning: %s: '%s' %s\n", m_command.c_str(), m_path.c_str(), where.c_str(),
                 what.c_str());
  }

 private:
  void checkValue(const Parameter& node, const std::string& name, const std::string& where, const std::string& text,
                  const std::vector<std::string>& ancestors) {
    const int type = node.getParamType();
    if (type != 0 && !isNumber(text, type == 1)) {
      warn(where, "is read as a number, but '" + text + "' is not one; it counts as 0");
    } else if (type == 0 && kFloatKeys.count(name) && !text.empty()) {
      warn(where, "is read as a number but lacks type=\"numeric\", so it is not read");
    }
    if (name != "identifier" || ancestors.empty()) return;
    const std::string& parent = ancestors.back();
    const std::string grand = ancestors.size() > 1 ? ancestors[ancestors.size() - 2] : "";
    bool ok = true;
    if (grand == "number_senti_classifiers")
      ok = known<vortm::application::ISentiClassifier>(text);
    else if (parent == "lexcion_senti_scorer")
      ok = known<vortm::modular::ILexcionSentiScorer>(text);
    else if (grand == "tokenizers")
      ok = known<vortm::analyzer::Tokenizer>(text);
    else if (grand == "token_filters")
      ok = known<vortm::analyzer::TokenFilter>(text);
    if (!ok) warn(where, "names an unknown identifier '" + text + "'");
  }

  std::string m_command;
  std::string m_path;
};

std::string normalEncoding(std::string e) {
  for (char& c : e) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return e == "gbk" || e == "gb2312" ? "gbk" : "utf-8";
}

}  // namespace

bool checkConfig(const std::string& command, const std::string& path, ConfigInfo& info) {
  info = ConfigInfo();
  struct stat st;
  if (stat(path.c_str(), &st) != 0 || !S_ISREG(st.st_mode)) {
    const char* reason = stat(path.c_str(), &st) != 0 ? std::strerror(errno) : "not a regular file";
    std::fprintf(stderr, "vorelin %s: cannot open %s: %s\n", command.c_str(), path.c_str(), reason);
    return false;
  }
  FILE* probe = std::fopen(path.c_str(), "rb");
  if (!probe) {
    std::fprintf(stderr, "vorelin %s: cannot open %s: %s\n", command.c_str(), path.c_str(), std::strerror(errno));
    return false;
  }
  std::fclose(probe);

  vortm::common::gfn_creatorRegister();
  vortm::configure::BasicParamParser parser;
  vortm::common::AutoPtr<Parameter> root;
  if (!parser.doParse(path, root)) {
    std::fprintf(stderr, "vorelin %s: %s is not a well-formed configuration\n", command.c_str(), path.c_str());
    return true;  // readable: the library says the rest
  }
  Checker checker(command, path);
  checker.walk(*root, "", "", {});

  const Parameter& list = (*root)["number_senti_classifiers"];
  for (int i = 0; !list[i].isNull(); ++i) {
    const Parameter& member = list[i];
    std::string identifier;
    member["identifier"].getStringValue(identifier);
    info.members.push_back(identifier);
    const std::string where = "number_senti_classifiers." + list.getSubParamName(static_cast<unsigned int>(i));
    if (identifier != "lexcion_senti_classifier") continue;
    const Parameter& scorer = member["param"]["lexcion_senti_scorer"];
    std::string scorerId;
    scorer["identifier"].getStringValue(scorerId);
    if (scorer.isNull()) {
      checker.warn(where + ".param", "has no lexcion_senti_scorer block; every classification will fail");
    } else if (scorerId == "std_lexcion_senti_scorer" && scorer["param"]["position_weighter"].isNull()) {
      // The weighted scorer makes a default weighter of its own; only the
      // standard one is left without.
      checker.warn(where + ".param.lexcion_senti_scorer",
                   "has no position_weighter block; every classification will fail");
    }
  }
  std::string encoding;
  if (list[0]["param"]["text_analyzer"]["analyzer"]["encode"].getStringValue(encoding))
    info.encoding = normalEncoding(encoding);
  return true;
}

}  // namespace cli
}  // namespace vorelin
