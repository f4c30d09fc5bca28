#ifndef VORELIN_TOOLS_COMMANDLINE_H
#define VORELIN_TOOLS_COMMANDLINE_H

#include <istream>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vorelin {
namespace cli {

// Exit codes of every subcommand.
enum ExitCode { kOk = 0, kFailure = 1, kUsage = 2 };

// A small option parser: "--name value", "--name=value" and flags; "--"
// ends the options; everything else is a positional argument.
class CommandLine {
 public:
  CommandLine(const std::set<std::string>& valued, const std::set<std::string>& flags);

  // False with a message in error() on an unknown option or a missing value.
  bool parse(int argc, char** argv, int first);

  bool has(const std::string& name) const { return m_values.count(name) || m_flags.count(name); }
  std::string get(const std::string& name, const std::string& fallback = "") const;
  const std::vector<std::string>& positional() const { return m_positional; }
  const std::string& error() const { return m_error; }

 private:
  std::set<std::string> m_valued;
  std::set<std::string> m_knownFlags;
  std::map<std::string, std::string> m_values;
  std::set<std::string> m_flags;
  std::vector<std::string> m_positional;
  std::string m_error;
};

// Reports a usage error for a subcommand, with a pointer to its help.
int usageError(const std::string& command, const std::string& message);

// Sends the library's log records (written to std::cout) to standard error,
// or drops them, so that standard output carries only results.
void redirectLibraryOutput(bool quiet);

// Reads the next line of a text file and counts it in `number`, without a
// UTF-8 byte-order mark on the first line and without a CR at the end.
bool nextTextLine(std::istream& in, std::string& line, int& number);

// Writes to standard output, which the library no longer uses.
void writeOut(const std::string& text);

int runClassify(int argc, char** argv);
int runTokenize(int argc, char** argv);
int runDict(int argc, char** argv);
int runEval(int argc, char** argv);
int runTrain(int argc, char** argv);
int runModel(int argc, char** argv);
int runLexicon(int argc, char** argv);

}  // namespace cli
}  // namespace vorelin

#endif
