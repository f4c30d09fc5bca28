#!/usr/bin/python3
"""Turns fastText vectors into the two files of the word-vector builders.

  wordvec_files.py VEC TOKENS VOCAB --keep N --neighbours K --vec-out F --expand-out F

VEC is fastText's .vec output, TOKENS the blank-separated training tokens
(to count how common each word is), VOCAB a word list, one a line.
--vec-out gets the vectors of the N most common words that have one,
rounded to 4 decimals, as a .vec file. --expand-out gets, for each VOCAB
word with a vector, its K nearest VOCAB words by cosine (above 0.3), as
'WORD near1:0.812;near2:0.640'. Words holding ':' or ';' are left out of
the expansion list, whose fields they would break.
"""
import argparse
import collections

import numpy as np


def read_vec(path):
    words, rows = [], []
    with open(path, encoding="utf-8", errors="replace") as f:
        header = f.readline().split()
        dim = int(header[1])
        for line in f:
            parts = line.rstrip("\n").split(" ")
            if len(parts) < dim + 1 or not parts[0]:
                continue
            words.append(parts[0])
            rows.append([float(x) for x in parts[1:dim + 1]])
    return words, np.array(rows, dtype=np.float64), dim


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("vec")
    ap.add_argument("tokens")
    ap.add_argument("vocab")
    ap.add_argument("--keep", type=int, default=5000)
    ap.add_argument("--neighbours", type=int, default=10)
    ap.add_argument("--vec-out", required=True)
    ap.add_argument("--expand-out", required=True)
    args = ap.parse_args()

    words, vectors, dim = read_vec(args.vec)
    index = {w: i for i, w in enumerate(words)}
    counts = collections.Counter()
    with open(args.tokens, encoding="utf-8", errors="replace") as f:
        for line in f:
            counts.update(line.split())
    # Most common first; ties by the word, so that the output is stable.
    kept = sorted((w for w in words), key=lambda w: (-counts[w], w))[:args.keep]
    with open(args.vec_out, "w", encoding="utf-8") as out:
        out.write("%d %d\n" % (len(kept), dim))
        for w in kept:
            out.write(w + " " + " ".join("%.4f" % x for x in vectors[index[w]]) + "\n")

    with open(args.vocab, encoding="utf-8") as f:
        vocab = [w for w in (line.rstrip("\n") for line in f)
                 if w in index and ":" not in w and ";" not in w and w.strip() == w and w]
    matrix = vectors[[index[w] for w in vocab]]
    norms = np.linalg.norm(matrix, axis=1, keepdims=True)
    matrix = matrix / np.maximum(norms, 1e-12)
    with open(args.expand_out, "w", encoding="utf-8") as out:
        for start in range(0, len(vocab), 1024):
            sims = matrix[start:start + 1024] @ matrix.T
            for r in range(sims.shape[0]):
                i = start + r
                sims[r, i] = -1.0
                k = min(args.neighbours, len(vocab) - 1)
                top = np.argpartition(-sims[r], k)[:k]
                best = top[np.lexsort((top, -sims[r][top]))]
                pairs = ["%s:%.3f" % (vocab[j], sims[r, j]) for j in best if sims[r, j] > 0.3]
                if pairs:
                    out.write(vocab[i] + " " + ";".join(pairs) + "\n")


if __name__ == "__main__":
    main()
