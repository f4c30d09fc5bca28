// The exported C interface: a thin shell over CombineSentiClassifier.
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>

#include "application/CombineSentiClassifier.h"
#include "common/AutoPtr.h"
#include "common/Logger.h"
#include "configure/BasicParamParser.h"
#include "configure/Parameter.h"
#include "vorelin.h"

using vortm::application::CombineSentiClassifier;
using vortm::common::AutoPtr;
using vortm::common::gfn_libraryLine;
using vortm::common::gfn_pLoggerInstance;
using vortm::configure::BasicParamParser;
using vortm::configure::Parameter;

#define VORELIN_EXPORT __attribute__((visibility("default")))

extern "C" {

VORELIN_EXPORT int Senti_Classifier_Init(const char* configFile, void** handle) {
  if (!handle || !configFile || configFile[0] == 0) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Invalid Input Paremeters for Sentiment Classifier Init");
    return 0;
  }
  CombineSentiClassifier* classifier = new CombineSentiClassifier();
  bool result = false;
  try {
    std::string file(configFile);
    BasicParamParser parser;
    AutoPtr<Parameter> root;
    if (!parser.doParse(file, root)) {
      gfn_libraryLine("Failed to Parse Params");
      result = false;
    } else {
      result = classifier->config(*root);
    }
  } catch (const std::bad_alloc& e) {
    gfn_libraryLine(std::string(" bad_alloc exception :") + e.what());
    result = false;
  } catch (const std::exception& e) {
    gfn_libraryLine(std::string(" exception :") + e.what());
    result = false;
  } catch (...) {
    gfn_libraryLine(" unknown exception ");
    result = false;
  }
  if (!result) {
    gfn_pLoggerInstance(0, "", 0)->LogError("301", "Failed to Init Sentiment Classifier");
    delete classifier;
    *handle = nullptr;
    return 0;
  }
  *handle = classifier;
  gfn_pLoggerInstance(0, "", 0)->LogInfo("001", "Sentiment Classifier Init Successfully");
  return 1;
}

VORELIN_EXPORT int Senti_Classifier_Update(const char* configFile, void* handle) {
  if (!handle || !configFile || configFile[0] == 0) {
    gfn_pLoggerInstance(0, "", 0)->LogWarn("101", "Invalid Input Paremeters for Sentiment Classifier Update");
    return 0;
  }
  std::string file(configFile);
  BasicParamParser parser;
  AutoPtr<Parameter> root;
  if (!parser.doParse(file, root)) {
    gfn_libraryLine("Failed to Parse Params with Config File " + file);
    return 0;
  }
  return static_cast<CombineSentiClassifier*>(handle)->update(*root) ? 1 : 0;
}

VORELIN_EXPORT int Senti_Classify_Perform(void* handle, const char* text, double* score) {
  // Offsets inside the analysis are 32-bit, and memory grows with the text:
  // an overlong text is refused like a missing one. strnlen never scans past
  // the limit.
  if (!handle || !text || text[0] == 0 || !score || strnlen(text, VORELIN_MAX_TEXT_BYTES + 1) > VORELIN_MAX_TEXT_BYTES) {
    gfn_pLoggerInstance(0, "", 0)->LogError("301", "Invalid Input Paremeters for Sentiment Classification");
    return 0;
  }
  *score = 0.0;
  return static_cast<CombineSentiClassifier*>(handle)->classify(std::string(text), *score) ? 1 : 0;
}

VORELIN_EXPORT int Senti_Classifier_Exit(void* handle) {
  if (!handle) return 1;
  delete static_cast<CombineSentiClassifier*>(handle);
  gfn_pLoggerInstance(0, "", 0)->LogInfo("001", "Global Exit Successfully");
  return 1;
}

}  // extern "C"
