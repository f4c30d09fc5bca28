/* A host that classifies on several threads while another replaces the
 * model, following the library's rule: Senti_Classifier_Update never runs
 * beside Senti_Classify_Perform on the same handle. Classifying threads take
 * a read lock, the updating thread the write lock.
 *
 *   vorelin_threaded_host CONFIG [NEW_CONFIG]
 *
 * Prints how many texts were classified and exits 0 when every call
 * succeeded. */
#include <pthread.h>
#include <stdio.h>

#include "vorelin.h"

#define THREADS 4
#define ROUNDS 200

static void* handle;
static pthread_rwlock_t lock = PTHREAD_RWLOCK_INITIALIZER;

static void* classify_texts(void* arg) {
  static const char* texts[] = {"The staff were friendly and the room was spotless.",
                                "Terrible service, the food was cold.", "这家酒店的服务非常好"};
  long failures = 0;
  int i;
  (void)arg;
  for (i = 0; i < ROUNDS; ++i) {
    double score = 0.0;
    pthread_rwlock_rdlock(&lock);
    if (!Senti_Classify_Perform(handle, texts[i % 3], &score)) ++failures;
    pthread_rwlock_unlock(&lock);
  }
  return (void*)failures;
}

int main(int argc, char** argv) {
  pthread_t threads[THREADS];
  long failures = 0;
  int i, updated;
  if (argc < 2) {
    fprintf(stderr, "usage: %s CONFIG [NEW_CONFIG]\n", argv[0]);
    return 2;
  }
  if (!Senti_Classifier_Init(argv[1], &handle)) return 1;
  for (i = 0; i < THREADS; ++i) pthread_create(&threads[i], NULL, classify_texts, NULL);

  /* While the readers run: no reader is inside the library during this. */
  pthread_rwlock_wrlock(&lock);
  updated = Senti_Classifier_Update(argc > 2 ? argv[2] : argv[1], handle);
  pthread_rwlock_unlock(&lock);

  for (i = 0; i < THREADS; ++i) {
    void* result;
    pthread_join(threads[i], &result);
    failures += (long)result;
  }
  printf("classified %d texts, %ld failed, update %s\n", THREADS * ROUNDS, failures, updated ? "done" : "failed");
  Senti_Classifier_Exit(handle);
  return failures == 0 && updated ? 0 : 1;
}
