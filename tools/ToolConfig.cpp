#include "ToolConfig.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include "ModelPaths.h"

#include "configure/BasicParamParser.h"
#include "utility/BasicKeyValueParser.h"

namespace vorelin {
namespace cli {

using vortm::common::AutoPtr;
using vortm::configure::Parameter;

bool findClassifierBlock(const std::string& path, bool needScorer, AutoPtr<Parameter>& root, const Parameter*& block,
                         std::string& error) {
  vortm::configure::BasicParamParser parser;
  if (!parser.doParse(path, root) || !root) {
    error = "cannot read the configuration " + path;
    return false;
  }
  const Parameter& members = (*root)["number_senti_classifiers"];
  for (int i = 0; !members[i].isNull(); ++i) {
    const Parameter& param = members[i]["param"];
    if (param["text_analyzer"].isNull()) continue;
    if (needScorer && param["lexcion_senti_scorer"].isNull()) continue;
    block = &param;
    return true;
  }
  error = path + " has no classifier with a text analyzer" + (needScorer ? " and a lexicon scorer" : "");
  return false;
}

bool ToolOptions::load(std::string& error) {
  if (!m_cl.has("options")) return true;
  vortm::utility::BasicKeyValueParser parser;
  if (parser.parseFile(m_cl.get("options"), m_file)) return true;
  error = m_cl.get("options") + ": " + parser.getError();
  return false;
}

std::string ToolOptions::get(const std::string& name, const std::string& fallback) const {
  if (m_cl.has(name)) return m_cl.get(name, fallback);
  std::map<std::string, std::string>::const_iterator it = m_file.find(name);
  return it != m_file.end() ? it->second : fallback;
}

long ToolOptions::number(const std::string& name, long fallback, long low, long high) const {
  if (!has(name)) return fallback;
  std::string text = get(name);
  char* end = nullptr;
  long value = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || value < low || value > high) return -1;
  return value;
}

std::string configOrDefault(const ToolOptions& options, const std::string& command) {
  std::string config = options.get("config");
  if (config.empty()) config = defaultModelConfig("utf-8");
  if (config.empty())
    std::fprintf(stderr, "vorelin %s: no default model found; build it or give --config FILE\n", command.c_str());
  return config;
}

std::istream* openInput(const ToolOptions& options, std::ifstream& file, const std::string& command) {
  if (!options.has("input")) return &std::cin;
  file.open(options.get("input"), std::ios::binary);
  if (file) return &file;
  std::fprintf(stderr, "vorelin %s: cannot read %s\n", command.c_str(), options.get("input").c_str());
  return nullptr;
}

bool readTextLine(std::istream& in, std::string& line, bool first) {
  if (!std::getline(in, line)) return false;
  if (first && line.compare(0, 3, "\xEF\xBB\xBF") == 0) line.erase(0, 3);
  if (!line.empty() && line.back() == '\r') line.pop_back();
  return true;
}

}  // namespace cli
}  // namespace vorelin
