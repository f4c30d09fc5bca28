#!/usr/bin/python3
"""Vectors of GloVe for the words of a vocabulary, as a .vec file.

  glove_compose.py JSON WORDS OUT.vec [--digits D]

JSON is the vectors file that `glove_vectors.py fetch` unpacks, WORDS a word
list, one a line. The package holds no word with an apostrophe: a word of
WORDS such as "doesn't" gets the mean of the vectors of its pieces ("does",
"not"), "film's" that of "film", and "jean-claude" that of "jean" and
"claude", so that the negated forms, common in reviews, keep a vector.
Words of neither kind are left out. GloVe words outside WORDS are not
written: the vector builders read only their vocabulary's words.
"""
import argparse

from glove_vectors import load_package, vec_row, write_rows


SUFFIXES = {"'s": [], "'ll": ["will"], "'re": ["are"], "'m": ["am"], "'ve": ["have"], "'d": ["would"]}


def pieces(word):
    if word.endswith("n't") and len(word) > 3:
        return [word[:-3], "not"]
    cut = word.rfind("'")
    if cut > 0 and word[cut:] in SUFFIXES:
        return [word[:cut]] + SUFFIXES[word[cut:]]
    return word.split("-") if "-" in word.strip("-") else []


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("json")
    ap.add_argument("words")
    ap.add_argument("out")
    ap.add_argument("--digits", type=int, default=4)
    args = ap.parse_args()
    data = load_package(args.json)
    dim = int(data["dimensions"])
    vectors = data["vectors"]
    with open(args.words, encoding="utf-8") as f:
        wanted = [w for w in (line.strip() for line in f) if w]
    rows, seen = [], set()

    def add(word, values):
        if word not in seen and word and not any(c.isspace() for c in word):
            seen.add(word)
            rows.append(vec_row(word, values, args.digits))

    for word in wanted:
        if word in vectors:
            add(word, vectors[word][:dim])
            continue
        known = [vectors[p][:dim] for p in pieces(word) if p in vectors]
        if known and len(known) == len(pieces(word)):
            add(word, [sum(col) / len(known) for col in zip(*known)])
    write_rows(args.out, rows, dim)


if __name__ == "__main__":
    main()
