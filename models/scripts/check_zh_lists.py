#!/usr/bin/env python3
"""Sanity checks for the hand-written Chinese word lists of a model.

Usage: check_zh_lists.py [MODEL_ZH_DIR] [--segdict PATH]

Prints the entry count of every list and fails (exit 1) on a BOM, a missing
comment header, an empty entry with stray spaces, or a word that appears twice
in one list or in more than one list: the compiler gives each word one tag, so
a word listed twice would silently lose one of them.

With --segdict (a plain "word [freq] [pos]" segmentation dictionary) it also
lists words of that dictionary that glue a modifier to a sentiment word, such
as 很好 or 不满意. Longest match picks the glued word, which carries no tag
unless one of our lists has it, so each hit is a candidate to add by hand.
These are reported, not treated as errors.
"""
import argparse
import os
import sys

SENTIMENT = ["pos_strong", "neg_strong", "pos_weak", "neg_weak"]
MODIFIERS = ["degree_10", "degree_11", "degree_12", "degree_13", "degree_14",
             "negation"]
CONJ = ["but_conj", "though_conj"]
# Segmentation-only words (tag PLAIN) that shield a sentiment word inside them.
PLAIN = ["plain"]
ALL = SENTIMENT + MODIFIERS + CONJ + PLAIN


def read_list(path, problems):
    with open(path, "rb") as f:
        raw = f.read()
    if raw.startswith(b"\xef\xbb\xbf"):
        problems.append(f"{path}: starts with a BOM")
    text = raw.decode("utf-8")
    lines = text.split("\n")
    if not lines or not lines[0].startswith("#"):
        problems.append(f"{path}: no '#' header on the first line")
    words = []
    for no, line in enumerate(lines, 1):
        if line.startswith("#") or line == "":
            continue
        w = line.strip()
        if w != line:
            problems.append(f"{path}:{no}: surrounding whitespace in {line!r}")
        if not w or " " in w or "\t" in w:
            problems.append(f"{path}:{no}: bad entry {line!r}")
            continue
        words.append((w, no))
    return words


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser()
    ap.add_argument("dir", nargs="?",
                    default=os.path.join(here, "..", "default", "zh"))
    ap.add_argument("--segdict", help="segmentation dictionary to cross-check")
    args = ap.parse_args()

    problems = []
    lists = {}
    owner = {}
    for name in ALL:
        path = os.path.join(args.dir, name + ".txt")
        if not os.path.exists(path):
            problems.append(f"missing {path}")
            continue
        lists[name] = read_list(path, problems)
        for w, no in lists[name]:
            if w in owner:
                problems.append(f"duplicate {w!r}: {owner[w]} and {name}:{no}")
            else:
                owner[w] = f"{name}:{no}"

    total = 0
    for name in ALL:
        n = len(lists.get(name, []))
        print(f"{name + '.txt':18} {n:6}")
        if name in SENTIMENT:
            total += n
    print(f"{'sentiment total':18} {total:6}")

    if args.segdict:
        sentiment = {w for n in SENTIMENT for w, _ in lists.get(n, [])}
        pre = {w for n in MODIFIERS for w, _ in lists.get(n, [])}
        post = {w for n in ("degree_10", "degree_11") for w, _ in lists.get(n, [])}
        post |= {"了", "的", "啊", "呀", "啦", "极", "死"}
        hits = []
        with open(args.segdict, encoding="utf-8") as f:
            for line in f:
                word = line.split(" ", 1)[0].strip()
                if len(word) < 2 or word in owner:
                    continue
                for i in range(1, len(word)):
                    a, b = word[:i], word[i:]
                    if (a in pre and b in sentiment) or \
                       (a in sentiment and b in post):
                        hits.append(f"{word}\t= {a} + {b}")
                        break
        print(f"\n{len(hits)} segmentation-dictionary words hide a "
              f"sentiment word:")
        for h in hits:
            print("  " + h)

    if problems:
        print("\nproblems:")
        for p in problems:
            print("  " + p)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
