#include "common/Logger.h"

#include <atomic>
#include <cstdlib>
#include <ctime>
#include <iostream>

#include "common/Singleton.h"

namespace vortm {
namespace common {

namespace {
const std::string& appName() {
  static const std::string name("Vor_Text_Mining");
  return name;
}
}  // namespace

const std::string& gfn_sAppName = appName();

CLogger::CLogger()
    : m_logMode(0), m_timeFlag(0), m_outStream(nullptr), m_logDate(0), m_target(TO_STDOUT) {}

CLogger::~CLogger() {
  if (m_fileStream.is_open()) m_fileStream.close();
}

int CLogger::Init(std::string appName, int mode, std::string path, int timeFlag) {
  m_appName = appName;
  m_logMode = mode;
  m_logPath = formatPath(path);
  m_timeFlag = timeFlag;
  return 0;
}

std::string CLogger::formatPath(std::string path) {
  if (path.empty()) return path;
  char last = path[path.size() - 1];
  if (last == '/' || last == '\\') return path;
  return path + "/";
}

int CLogger::currentDateKey() const {
  time_t now = time(nullptr);
  struct tm local;
  localtime_r(&now, &local);
  return (local.tm_year + 1900) * 10000 + (local.tm_mon + 1) * 100 + local.tm_mday;
}

void CLogger::applyLogTarget(const char* value) {
  if (m_logMode != 0 || !value || !*value) return;
  const std::string target(value);
  if (target == "stdout") {
    m_target = TO_STDOUT;
  } else if (target == "stderr") {
    m_target = TO_STDERR;
  } else if (target == "off") {
    m_target = TO_NOWHERE;
  } else {
    m_target = TO_FILE;
    m_targetFile.open(target.c_str(), std::ios::out | std::ios::app);
    // A file that cannot be opened must not turn the log off unnoticed.
    if (!m_targetFile.is_open()) {
      std::cerr << "VORELIN_LOG: cannot open " << target << ", logging to standard error" << std::endl;
      m_target = TO_STDERR;
    }
  }
}

bool CLogger::selectTarget() {
  switch (m_target) {
    case TO_STDERR: m_outStream.rdbuf(std::cerr.rdbuf()); return true;
    case TO_NOWHERE: return false;
    case TO_FILE: m_outStream.rdbuf(m_targetFile.rdbuf()); return true;
    default: m_outStream.rdbuf(std::cout.rdbuf()); return true;
  }
}

void CLogger::writeLine(const std::string& line) {
  if (m_logMode == 1) {
    std::cout << line << std::endl;
    return;
  }
  if (!selectTarget()) return;
  m_outStream.clear();
  m_outStream << line << std::endl;
}

int CLogger::writeLog(int level, std::string code, const std::string& message) {
  if (m_logMode == 0) {
    if (!selectTarget()) return 0;
  } else if (m_logMode != 1) {
    std::cout << "Log mode error!" << std::endl;
    return -1;
  } else {
    int key = currentDateKey();
    if (key != m_logDate) {
      // Closing a stream that was never opened only sets its fail state.
      m_fileStream.close();
      m_logDate = key;
      m_logFile = m_logPath + m_appName + "_" + std::to_string(key) + ".log";
    }
    if (!m_fileStream.is_open()) {
      m_fileStream.open(m_logFile.c_str(), std::ios::out | std::ios::app);
      m_fileStream.clear();
      if (!m_fileStream.is_open()) {
        std::cout << "Open log file error" << std::endl;
        return -1;
      }
    }
    m_outStream.rdbuf(m_fileStream.rdbuf());
  }
  m_outStream.clear();

  if (m_timeFlag == 0) {
    time_t now = time(nullptr);
    struct tm local;
    localtime_r(&now, &local);
    char stamp[64];
    snprintf(stamp, sizeof(stamp), "<%4d-%02d-%02d %02d:%02d:%02d>", local.tm_year + 1900, local.tm_mon + 1,
             local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
    m_outStream << stamp;
  }
  m_outStream << "<[App][" << m_appName << "]><[";
  switch (level) {
    case -1: m_outStream << "DebugCode][" << code << "]><[DebugMsg]["; break;
    case 0: m_outStream << "InfoCode][" << code << "]><[InfoMsg]["; break;
    case 1: m_outStream << "WarnCode][" << code << "]><[WarnMsg]["; break;
    case 2: m_outStream << "ErrorCode][" << code << "]><[ErrorMsg]["; break;
    default: break;
  }
  m_outStream << message << "]>" << std::endl;
  if (m_logMode == 1) m_fileStream.flush();
  return 0;
}

LoggerProxy::LoggerProxy(LoggerConfigure& config) {
  Init(config.m_appName, config.m_logMode, config.m_logPath, config.m_timeFlag);
  applyLogTarget(std::getenv("VORELIN_LOG"));
}

void LoggerProxy::writeLine(const std::string& line) {
  FastMutex::ScopedLock lock(m_mutex);
  CLogger::writeLine(line);
}

void gfn_libraryLine(const std::string& line) { gfn_pLoggerInstance(0, "", 0)->writeLine(line); }

int LoggerProxy::LogDebug(std::string code, const std::string& message) {
  FastMutex::ScopedLock lock(m_mutex);
  return CLogger::LogDebug(code, message);
}

int LoggerProxy::LogInfo(std::string code, const std::string& message) {
  FastMutex::ScopedLock lock(m_mutex);
  return CLogger::LogInfo(code, message);
}

int LoggerProxy::LogWarn(std::string code, const std::string& message) {
  FastMutex::ScopedLock lock(m_mutex);
  return CLogger::LogWarn(code, message);
}

int LoggerProxy::LogError(std::string code, const std::string& message) {
  FastMutex::ScopedLock lock(m_mutex);
  return CLogger::LogError(code, message);
}

LoggerProxy* gfn_pLoggerInstance(int mode, std::string path, int timeFlag) {
  static std::atomic<LoggerProxy*> s_pLogger(nullptr);
  LoggerProxy* logger = s_pLogger.load(std::memory_order_acquire);
  if (logger) return logger;
  LoggerConfigure config(mode, path, timeFlag);
  logger = ParameterizedSingleton<LoggerProxy, LoggerConfigure, ParameterizedLazyInstantiation,
                                  FastMutex>::instance(config);
  s_pLogger.store(logger, std::memory_order_release);
  return logger;
}

}  // namespace common
}  // namespace vortm
