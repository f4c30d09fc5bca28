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
// ends the options; everything else is a positional argument. Every command
// knows --help (also -h) and --version, so neither is ever taken for a text.
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

// Handles --help and --version: true (with the exit code in `rc`) when one
// was given and printed.
bool standardOptions(const CommandLine& cl, const char* help, int& rc);
const char* versionText();

// "utf-8" or "gbk" from the spellings users type; false for anything else.
bool parseEncoding(const std::string& value, std::string& encoding);

// Opens a file to read texts from; "-" is standard input. -1 with a message
// naming the cause for a missing, unreadable or non-regular file.
int openInput(const std::string& command, const std::string& path);
// "cannot open PATH: reason" when PATH is not a readable regular file.
bool checkReadableFile(const std::string& path, std::string& error);

// The shipped model for the --encoding option, or --config; empty, with a
// message, when there is none.
std::string modelConfigFor(const CommandLine& cl, const std::string& command, const std::string& encoding);

// Sends the library's log records (written to std::cout) to standard error,
// or drops them, so that standard output carries only results.
void redirectLibraryOutput(bool quiet);

// Reads the next line of a text file and counts it in `number`, without a
// UTF-8 byte-order mark on the first line and without a CR at the end.
bool nextTextLine(std::istream& in, std::string& line, int& number);

// Writes to standard output, which the library no longer uses.
void writeOut(const std::string& text);
// Flushes standard output; false with "cannot write output: reason" on
// standard error when any write failed (a full disk, a closed pipe).
bool finishOutput(const std::string& command);

// Senti_Classify_Perform for a host that must survive a classifier that
// throws (a scorer configured without its position weighter does): false
// instead of an exception.
bool classifyText(void* handle, const std::string& text, double& score);

int runClassify(int argc, char** argv);
int runTokenize(int argc, char** argv);
int runDict(int argc, char** argv);
int runEval(int argc, char** argv);
int runLexicon(int argc, char** argv);
int runLabels(int argc, char** argv);
int runRules(int argc, char** argv);
int runCorpus(int argc, char** argv);
int runTrain(int argc, char** argv);
int runModel(int argc, char** argv);

}  // namespace cli
}  // namespace vorelin

#endif
