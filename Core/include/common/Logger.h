#ifndef VORTM_COMMON_LOGGER_H
#define VORTM_COMMON_LOGGER_H

#include <fstream>
#include <ostream>
#include <string>

#include "common/FastMutex.h"

namespace vortm {
namespace common {

// The application name that every record carries: "Vor_Text_Mining".
extern const std::string& gfn_sAppName;

struct LoggerConfigure {
  LoggerConfigure(int mode, const std::string& path, int timeFlag)
      : m_appName(gfn_sAppName), m_logMode(mode), m_logPath(path), m_timeFlag(timeFlag) {}
  std::string m_appName;
  int m_logMode;
  std::string m_logPath;
  int m_timeFlag;
};

// Writes one record a call, to standard output (mode 0) or to a file that
// rolls over daily (mode 1). No locking here; LoggerProxy adds it.
class CLogger {
 public:
  CLogger();
  virtual ~CLogger();

  int Init(std::string appName, int mode, std::string path, int timeFlag);
  void setLogMode(int mode) { m_logMode = mode; }
  void setTimeFlag(int flag) { m_timeFlag = flag; }
  void setAppName(std::string name) { m_appName = name; }
  void setLogPath(std::string path) { m_logPath = formatPath(path); }
  void setOutputStream(std::streambuf* buf) { m_outStream.rdbuf(buf); }
  static std::string formatPath(std::string path);

  int LogDebug(std::string code, const std::string& message) { return writeLog(-1, code, message); }
  int LogInfo(std::string code, const std::string& message) { return writeLog(0, code, message); }
  int LogWarn(std::string code, const std::string& message) { return writeLog(1, code, message); }
  int LogError(std::string code, const std::string& message) { return writeLog(2, code, message); }

  int writeLog(int level, std::string code, const std::string& message);
  // Writes one line, without a record's frame, where the records go: the
  // few messages that the library prints directly use this.
  void writeLine(const std::string& line);

  // Applies the value of VORELIN_LOG to a logger in standard-output mode:
  // "stdout" (or no value) keeps standard output, "stderr" sends records to
  // standard error, "off" drops them, and any other value names a file that
  // records are appended to. A logger in file mode keeps its file.
  void applyLogTarget(const char* value);

  const std::string& getLogFile() const { return m_logFile; }

 protected:
  // The local date key (year*10000 + month*100 + day); tests replace it to
  // exercise the daily roll-over.
  virtual int currentDateKey() const;

 private:
  std::string m_appName;
  int m_logMode;
  std::string m_logPath;
  int m_timeFlag;
  std::string m_logFile;
  std::ofstream m_fileStream;
  std::ostream m_outStream;
  int m_logDate;
  // Where standard-output mode really writes, as chosen by applyLogTarget.
  enum Target { TO_STDOUT, TO_STDERR, TO_NOWHERE, TO_FILE };
  Target m_target;
  std::ofstream m_targetFile;
  // Points m_outStream at the target; false when nothing is to be written.
  bool selectTarget();
};

// The logger that components use: each whole record is written under a lock,
// so records of several threads never interleave.
class LoggerProxy : public CLogger {
 public:
  explicit LoggerProxy(LoggerConfigure& config);

  int LogDebug(std::string code, const std::string& message);
  int LogInfo(std::string code, const std::string& message);
  int LogWarn(std::string code, const std::string& message);
  int LogError(std::string code, const std::string& message);
  void writeLine(const std::string& line);

 private:
  FastMutex m_mutex;
};

// The process-wide logger. Only the first call's arguments count; the library
// itself always calls gfn_pLoggerInstance(0, "", 0), so a host that wants a
// log file must make the first call itself. That first call also reads the
// environment variable VORELIN_LOG once (see applyLogTarget).
LoggerProxy* gfn_pLoggerInstance(int mode, std::string path, int timeFlag);

// A line that the library prints outside the record format ("Failed to Parse
// Params", ...): to standard output by default, else where VORELIN_LOG says.
void gfn_libraryLine(const std::string& line);

}  // namespace common
}  // namespace vortm

#endif
