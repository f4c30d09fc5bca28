/*
 * Vorelin: sentiment analysis of Chinese and English text.
 *
 * The four functions below are the whole host interface. Every function
 * returns 1 on success and 0 on failure.
 *
 * Handles and threads
 *   A handle comes from Senti_Classifier_Init and belongs to the host until
 *   Senti_Classifier_Exit. Many threads may call Senti_Classify_Perform on one
 *   handle at once. Senti_Classifier_Update rebuilds the classifier in place:
 *   it must never run beside Senti_Classify_Perform (or another Update, or
 *   Exit) on the same handle. The library does not check this; breaking it
 *   gives wrong scores and then a crash. A host that updates while serving
 *   guards the handle with a reader-writer lock:
 *
 *     pthread_rwlock_t lock = PTHREAD_RWLOCK_INITIALIZER;
 *
 *     pthread_rwlock_rdlock(&lock);          any number of classifying threads
 *     ok = Senti_Classify_Perform(handle, text, &score);
 *     pthread_rwlock_unlock(&lock);
 *
 *     pthread_rwlock_wrlock(&lock);          the one thread that updates
 *     ok = Senti_Classifier_Update(config, handle);
 *     pthread_rwlock_unlock(&lock);
 *
 *   A failed update leaves the handle unable to classify (every call returns
 *   0) until a later update succeeds.
 *
 * Log output
 *   The library writes log records, one a line, and a few plain lines such as
 *   "Failed to Parse Params". By default they go to standard output. The
 *   environment variable VORELIN_LOG, read once when the first record is
 *   written, changes that for the whole process:
 *     VORELIN_LOG=stdout   standard output (the default)
 *     VORELIN_LOG=stderr   standard error
 *     VORELIN_LOG=off      nothing is written
 *     VORELIN_LOG=FILE     any other value: appended to the file FILE
 *
 * Configuration files
 *   In a configuration file, a relative path in a key that names a file
 *   (dict_file, en_pos_senti_file, ...) is taken relative to the folder of
 *   that configuration file, so a model folder may be moved as a whole.
 *   Every file must be a regular file; anything else fails the load with a
 *   record that names the file and the reason.
 */
#ifndef VORELIN_H
#define VORELIN_H

#ifdef __cplusplus
extern "C" {
#endif

/* The longest text, in bytes, that Senti_Classify_Perform accepts (64 MiB). */
#define VORELIN_MAX_TEXT_BYTES (64u * 1024u * 1024u)

/* Reads the XML configuration file and builds a classifier; on success
 * *handle receives it, on failure *handle is set to NULL (unless the
 * arguments themselves were invalid, when it is left untouched). */
int Senti_Classifier_Init(const char* configFile, void** handle);

/* Rebuilds the classifier's members from a new configuration file. Note the
 * order of the arguments: file first, handle second. Not beside any other
 * call on the same handle (see above). */
int Senti_Classifier_Update(const char* configFile, void* handle);

/* Scores one text (bytes in the configured encoding, zero-terminated) into
 * *score. Positive scores mean positive opinion, negative scores negative
 * opinion, 0.0 no opinion found. Returns 0 without touching *score for a
 * NULL handle, text or score, an empty text, or a text longer than
 * VORELIN_MAX_TEXT_BYTES. */
int Senti_Classify_Perform(void* handle, const char* text, double* score);

/* Releases the classifier; NULL is accepted and ignored. */
int Senti_Classifier_Exit(void* handle);

#ifdef __cplusplus
}
#endif

#endif
