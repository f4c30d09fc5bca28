/* A minimal host in plain C: initialise a classifier from a configuration
 * file, score a few texts, update it, and release it. It has one thread, so
 * the update never runs beside a classification; threaded_host.c shows the
 * lock that a threaded host needs.
 *
 *   vorelin_example_host [CONFIG [TEXT ...]]
 */
#include <stdio.h>

#include "vorelin.h"

int main(int argc, char** argv) {
  const char* config = argc > 1 ? argv[1] : VORELIN_DEFAULT_CONFIG;
  static const char* samples[] = {"This hotel was wonderful, the staff were friendly.",
                                  "Terrible food and the delivery was late.", NULL};
  const char** texts = argc > 2 ? (const char**)(argv + 2) : samples;
  int count = argc > 2 ? argc - 2 : 2;
  void* handle = NULL;
  int i;

  if (!Senti_Classifier_Init(config, &handle)) {
    fprintf(stderr, "could not initialise a classifier from %s\n", config);
    return 1;
  }
  for (i = 0; i < count; ++i) {
    double score = 0.0;
    if (!Senti_Classify_Perform(handle, texts[i], &score)) {
      fprintf(stderr, "could not classify: %s\n", texts[i]);
      Senti_Classifier_Exit(handle);
      return 1;
    }
    printf("%+.4f\t%s\n", score, texts[i]);
  }
  if (!Senti_Classifier_Update(config, handle)) {
    fprintf(stderr, "could not update the classifier from %s\n", config);
    Senti_Classifier_Exit(handle);
    return 1;
  }
  return Senti_Classifier_Exit(handle) ? 0 : 1;
}
