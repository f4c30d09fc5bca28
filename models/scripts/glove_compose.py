#!/usr/bin/python3
"""Vectors of GloVe for the words of a vocabulary, as a .vec file.

  glove_compose.py JSON WORDS OUT.vec [--digits D] [--top N] [--split-more]

JSON is the vectors file that `glove_vectors.py fetch` unpacks, WORDS a word
list, one a line. The package holds no word with an apostrophe: a word of
WORDS such as "doesn't" gets the mean of the vectors of its pieces ("does",
"not"), "film's" that of "film", and "jean-claude" that of "jean" and
"claude", so that the negated forms, common in reviews, keep a vector.
Words of neither kind are left out. GloVe words outside WORDS are not
written (the vector builders read only their vocabulary's words), unless
--top N asks for the N most common ones besides, after the words of WORDS.

--split-more also composes what the English analyzer makes of numbers and
punctuation and GloVe lacks: a digit ("21st" comes out as "2 1 st") takes
the vector of its name, "--" that of "-", a word with a stray hyphen or
apostrophe at either end ("-minute", "characters'") that of the word
inside, and "can't" / "won't" those of "can" / "will" and "not".
"""
import argparse

from glove_vectors import load_package, vec_row, write_rows


SUFFIXES = {"'s": [], "'ll": ["will"], "'re": ["are"], "'m": ["am"], "'ve": ["have"], "'d": ["would"]}
DIGITS = ["zero", "one", "two", "three", "four", "five", "six", "seven", "eight", "nine"]
IRREGULAR = {"can't": ["can", "not"], "won't": ["will", "not"], "--": ["-"]}


def pieces(word):
    if word.endswith("n't") and len(word) > 3:
        return [word[:-3], "not"]
    cut = word.rfind("'")
    if cut > 0 and word[cut:] in SUFFIXES:
        return [word[:cut]] + SUFFIXES[word[cut:]]
    return word.split("-") if "-" in word.strip("-") else []


def pieces_more(word, vectors):
    """Pieces of a word, trying the analyzer's number and punctuation forms
    before the ordinary rules; every piece is a GloVe word or none is."""
    if word in IRREGULAR:
        return IRREGULAR[word]
    if len(word) == 1 and word.isdigit() and word.isascii():
        return [DIGITS[int(word)]]
    inner = word.strip("-'")
    if inner and inner != word:
        return [inner] if inner in vectors else pieces_more(inner, vectors)
    return [p for p in pieces(word) if p]


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("json")
    ap.add_argument("words")
    ap.add_argument("out")
    ap.add_argument("--digits", type=int, default=4)
    ap.add_argument("--top", type=int, default=0, help="also the N most common GloVe words")
    ap.add_argument("--split-more", action="store_true", help="also compose numbers and stray punctuation")
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
        parts = pieces_more(word, vectors) if args.split_more else pieces(word)
        known = [vectors[p][:dim] for p in parts if p in vectors]
        if known and len(known) == len(parts):
            add(word, [sum(col) / len(known) for col in zip(*known)])
    for word in data["words"][: args.top]:
        add(word, vectors[word][:dim])
    write_rows(args.out, rows, dim)


if __name__ == "__main__":
    main()
