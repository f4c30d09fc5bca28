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

namespace {

bool parseConfig(const std::string& path, AutoPtr<Parameter>& root, std::string& error) {
  vortm::configure::BasicParamParser parser;
  if (parser.doParse(path, root) && root) return true;
  error = "cannot read the configuration " + path;
  return false;
}

// The "param" block of the first member classifier with a text analyzer
// (and a lexicon scorer when asked), or null.
const Parameter* classifierBlock(const Parameter& root, bool needScorer) {
  const Parameter& members = root["number_senti_classifiers"];
  for (int i = 0; !members[i].isNull(); ++i) {
    const Parameter& param = members[i]["param"];
    if (param["text_analyzer"].isNull()) continue;
    if (needScorer && param["lexcion_senti_scorer"].isNull()) continue;
    return &param;
  }
  return nullptr;
}

}  // namespace

bool findClassifierBlock(const std::string& path, bool needScorer, AutoPtr<Parameter>& root, const Parameter*& block,
                         std::string& error) {
  if (!parseConfig(path, root, error)) return false;
  block = classifierBlock(*root, needScorer);
  if (block) return true;
  error = path + " has no classifier with a text analyzer" + (needScorer ? " and a lexicon scorer" : "");
  return false;
}

bool findTextAnalyzer(const std::string& path, AutoPtr<Parameter>& root, const Parameter*& analyzer,
                      std::string& error) {
  if (!parseConfig(path, root, error)) return false;
  analyzer = &(*root)["text_analyzer"];
  if (!analyzer->isNull()) return true;
  const Parameter* block = classifierBlock(*root, false);
  if (block) {
    analyzer = &(*block)["text_analyzer"];
    return true;
  }
  error = path + " has no <text_analyzer> element";
  return false;
}

std::string parameterXml(const Parameter& node, const std::string& name, const std::string& indent) {
  std::string value;
  std::string xml = indent + "<" + name;
  if (node.getParamType() == 1) {
    int i = 0;
    if (node.getIntValue(i)) value = std::to_string(i);
    xml += " type=\"int\"";
  } else if (node.getParamType() == 2) {
    double d = 0.0;
    char text[32] = "";
    if (node.getFloatValue(d)) std::snprintf(text, sizeof(text), "%.17g", d);
    value = text;
    xml += " type=\"numeric\"";
  } else {
    node.getStringValue(value);
  }
  xml += ">" + value;
  if (node.size() == 0) return xml + "</" + name + ">\n";
  xml += "\n";
  for (unsigned int i = 0; i < node.size(); ++i)
    xml += parameterXml(node[static_cast<int>(i)], node.getSubParamName(i), indent + "  ");
  return xml + indent + "</" + name + ">\n";
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
