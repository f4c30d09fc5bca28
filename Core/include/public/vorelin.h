/*
 * Vorelin: sentiment analysis of Chinese and English text.
 *
 * The four functions below are the whole host interface. A handle comes from
 * Senti_Classifier_Init and belongs to the host until Senti_Classifier_Exit.
 * Many threads may call Senti_Classify_Perform on one handle at once; the host
 * must not run Senti_Classifier_Update beside any other call on that handle.
 * Every function returns 1 on success and 0 on failure. Messages go to
 * standard output as log records.
 */
#ifndef VORELIN_H
#define VORELIN_H

#ifdef __cplusplus
extern "C" {
#endif

/* Reads the XML configuration file and builds a classifier; on success
 * *handle receives it, on failure *handle is set to NULL (unless the
 * arguments themselves were invalid, when it is left untouched). */
int Senti_Classifier_Init(const char* configFile, void** handle);

/* Rebuilds the classifier's members from a new configuration file. Note the
 * order of the arguments: file first, handle second. */
int Senti_Classifier_Update(const char* configFile, void* handle);

/* Scores one text (bytes in the configured encoding, zero-terminated).
 * Positive scores mean positive opinion. */
int Senti_Classify_Perform(void* handle, const char* text, double* score);

/* Releases the classifier; NULL is accepted and ignored. */
int Senti_Classifier_Exit(void* handle);

#ifdef __cplusplus
}
#endif

#endif
