/* Scores every line of a file on one handle from N threads and prints the
 * throughput; the baseline that other hosts (the Python package) compare
 * themselves with.
 *
 *   vorelin_throughput CONFIG FILE [THREADS]
 *
 * Prints "lines=L seconds=S lines_per_second=R failed=F".
 */
#include <pthread.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>

#include "vorelin.h"

typedef struct {
  void* handle;
  char** lines;
  long count;
  long next;
  long failed;
  pthread_mutex_t mutex;
} Work;

static void* worker(void* arg) {
  Work* work = (Work*)arg;
  long failed = 0;
  for (;;) {
    long i;
    double score = 0.0;
    pthread_mutex_lock(&work->mutex);
    i = work->next++;
    pthread_mutex_unlock(&work->mutex);
    if (i >= work->count) break;
    if (work->lines[i][0] && !Senti_Classify_Perform(work->handle, work->lines[i], &score)) ++failed;
  }
  pthread_mutex_lock(&work->mutex);
  work->failed += failed;
  pthread_mutex_unlock(&work->mutex);
  return NULL;
}

static char** readLines(const char* path, long* count) {
  FILE* f = fopen(path, "rb");
  char** lines = NULL;
  long n = 0, cap = 0;
  char* line = NULL;
  size_t size = 0;
  ssize_t len;
  if (!f) return NULL;
  while ((len = getline(&line, &size, f)) >= 0) {
    while (len > 0 && (line[len - 1] == '\n' || line[len - 1] == '\r')) line[--len] = 0;
    if (n == cap) {
      cap = cap ? cap * 2 : 1024;
      lines = (char**)realloc(lines, (size_t)cap * sizeof(char*));
    }
    lines[n++] = strdup(line);
  }
  free(line);
  fclose(f);
  *count = n;
  return lines;
}

int main(int argc, char** argv) {
  Work work;
  pthread_t pool[64];
  struct timespec start, end;
  int threads = argc > 3 ? atoi(argv[3]) : 1;
  long i;
  double seconds;
  if (argc < 3 || threads < 1 || threads > 64) {
    fprintf(stderr, "usage: vorelin_throughput CONFIG FILE [THREADS 1-64]\n");
    return 2;
  }
  memset(&work, 0, sizeof(work));
  pthread_mutex_init(&work.mutex, NULL);
  work.lines = readLines(argv[2], &work.count);
  if (!work.lines) {
    fprintf(stderr, "cannot read %s\n", argv[2]);
    return 1;
  }
  if (!Senti_Classifier_Init(argv[1], &work.handle)) {
    fprintf(stderr, "could not initialise a classifier from %s\n", argv[1]);
    return 1;
  }
  clock_gettime(CLOCK_MONOTONIC, &start);
  for (i = 0; i < threads; ++i) pthread_create(&pool[i], NULL, worker, &work);
  for (i = 0; i < threads; ++i) pthread_join(pool[i], NULL);
  clock_gettime(CLOCK_MONOTONIC, &end);
  seconds = (double)(end.tv_sec - start.tv_sec) + (double)(end.tv_nsec - start.tv_nsec) / 1e9;
  printf("lines=%ld seconds=%.4f lines_per_second=%.1f failed=%ld\n", work.count, seconds,
         seconds > 0 ? (double)work.count / seconds : 0.0, work.failed);
  Senti_Classifier_Exit(work.handle);
  for (i = 0; i < work.count; ++i) free(work.lines[i]);
  free(work.lines);
  return work.failed ? 1 : 0;
}
