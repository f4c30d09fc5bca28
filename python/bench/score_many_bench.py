#!/usr/bin/python3
"""Throughput of Classifier.score_many against the C interface's, in one run.

Scores every line of the Chinese corpus with the default model: the C
throughput host (examples/throughput.c) and score_many, each with 1 and 2
threads, interleaved and repeated; the best of the repeats counts, since other
load on the machine only ever slows a run down.

  python/bench/score_many_bench.py [--build build] [--repeat 3] [--lines N]
"""
import argparse
import lzma
import os
import re
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
sys.path.insert(0, os.path.dirname(HERE))


def corpus_texts(folder, limit):
    texts = []
    with lzma.open(os.path.join(folder, "zh_shopping9.tsv.xz"), "rt", encoding="utf-8") as f:
        for line in f:
            text = line.rstrip("\n").split("\t")[-1]
            if text:
                texts.append(text)
            if limit and len(texts) >= limit:
                break
    return texts


def c_throughput(host, config, path, threads):
    out = subprocess.run([host, config, path, str(threads)], capture_output=True, check=True).stdout.decode()
    return float(re.search(r"lines_per_second=([0-9.]+)", out).group(1))


def python_throughput(clf, texts, threads):
    start = time.perf_counter()
    clf.score_many(texts, threads=threads)
    return len(texts) / (time.perf_counter() - start)


def main():
    p = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    p.add_argument("--build", default=os.path.join(ROOT, "build"))
    p.add_argument("--corpora", default=os.environ.get("VORELIN_CORPORA",
                                                       os.path.join(ROOT, "..", "shared", "corpora")))
    p.add_argument("--repeat", type=int, default=3)
    p.add_argument("--lines", type=int, default=0, help="only the first N lines (default all)")
    args = p.parse_args()

    os.environ.setdefault("VORELIN_LIBRARY", os.path.join(args.build, "libVorelin.so"))
    os.environ.setdefault("VORELIN_LOG", "off")
    import vorelin

    config = os.path.join(args.build, "models", "default", "default_utf8.xml")
    host = os.path.join(args.build, "examples", "vorelin_throughput")
    texts = corpus_texts(args.corpora, args.lines)
    with tempfile.NamedTemporaryFile("w", encoding="utf-8", suffix=".txt", delete=False) as f:
        f.write("\n".join(texts) + "\n")
        path = f.name
    best = {}
    load_before = os.getloadavg()[0]
    try:
        with vorelin.Classifier(config) as clf:
            for _ in range(args.repeat):
                for threads in (1, 2):
                    for side, measure in (("C", lambda: c_throughput(host, config, path, threads)),
                                          ("Python", lambda: python_throughput(clf, texts, threads))):
                        key = (side, threads)
                        best[key] = max(best.get(key, 0.0), measure())
    finally:
        os.unlink(path)
    print("%d Chinese corpus lines, best of %d runs; load average %.1f before, %.1f after, %d cores"
          % (len(texts), args.repeat, load_before, os.getloadavg()[0], os.cpu_count()))
    print("%-8s %12s %12s %10s" % ("threads", "C lines/s", "Python", "Python/C"))
    for threads in (1, 2):
        c, py = best[("C", threads)], best[("Python", threads)]
        print("%-8d %12.0f %12.0f %10.2f" % (threads, c, py, py / c))
    print("1 -> 2 threads: C x%.2f, Python x%.2f" % (best[("C", 2)] / best[("C", 1)],
                                                    best[("Python", 2)] / best[("Python", 1)]))


if __name__ == "__main__":
    main()
