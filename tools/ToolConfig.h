#ifndef VORELIN_TOOLS_TOOLCONFIG_H
#define VORELIN_TOOLS_TOOLCONFIG_H

#include <cstddef>
#include <fstream>
#include <functional>
#include <istream>
#include <map>
#include <string>

#include "CommandLine.h"
#include "common/AutoPtr.h"
#include "common/thread/IThreadPool.h"
#include "configure/Parameter.h"

namespace vorelin {
namespace cli {

// The settings block ("param") of the first member classifier of a
// configuration that has a "text_analyzer" and, when `needScorer` is set, a
// "lexcion_senti_scorer". `root` keeps the tree alive. False with a message
// in `error` otherwise.
bool findClassifierBlock(const std::string& path, bool needScorer,
                         vortm::common::AutoPtr<vortm::configure::Parameter>& root,
                         const vortm::configure::Parameter*& block, std::string& error);

// The "text_analyzer" block of a configuration: the document's own when it is
// one, else that of its first member classifier that has one. `root` keeps
// the tree alive. False with a message in `error` otherwise.
bool findTextAnalyzer(const std::string& path, vortm::common::AutoPtr<vortm::configure::Parameter>& root,
                      const vortm::configure::Parameter*& analyzer, std::string& error);

// A configuration block as XML, one element a line indented by two blanks
// a level, with the types of typed values; it reads back as the same tree.
std::string parameterXml(const vortm::configure::Parameter& node, const std::string& name,
                         const std::string& indent = "");

// Options of a command, from its command line or else from a key-value
// file named by --options (keys are option names without the dashes).
class ToolOptions {
 public:
  explicit ToolOptions(const CommandLine& cl) : m_cl(cl) {}
  // Reads the --options file if one was given; false with `error` set.
  bool load(std::string& error);
  bool has(const std::string& name) const { return m_cl.has(name) || m_file.count(name); }
  std::string get(const std::string& name, const std::string& fallback = "") const;
  // A whole number in [low, high], or -1 when it is none.
  long number(const std::string& name, long fallback, long low, long high) const;

 private:
  const CommandLine& m_cl;
  std::map<std::string, std::string> m_file;
};

// The model configuration of --config, else the shipped UTF-8 model's;
// empty (with a message naming `command`) when there is none.
std::string configOrDefault(const ToolOptions& options, const std::string& command);

// Standard input, or the file of --input opened into `file`; null (with a
// message naming `command`) when the file cannot be read.
std::istream* openInput(const ToolOptions& options, std::ifstream& file, const std::string& command);

// Reads the next line without its line feed, carriage return or (on the
// first line) UTF-8 byte order mark.
bool readTextLine(std::istream& in, std::string& line, bool first);

}  // namespace cli
}  // namespace vorelin

#endif
