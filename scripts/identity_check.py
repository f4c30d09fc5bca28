#!/usr/bin/env python3
"""Proves that a build tokenizes and scores exactly as the recorded reference.

Runs `vorelin tokenize` and `vorelin classify` with one model over the
held-out lines of both shared corpora and compares the outputs with a
reference under tests/data/identity/ (reference.txt unless --reference names
another file there): one SHA-256 per corpus and output kind,
one short hash per block of 500 input lines (so a failure names the block),
and the first lines of each output in full (so a failure early on shows the
line itself).

  identity_check.py check  --vorelin PATH --config FILE [--reference NAME] [--corpora DIR]
  identity_check.py record --vorelin PATH --config FILE [--reference NAME] [--corpora DIR]

`record` rewrites the reference; run it only from a build whose behaviour is
the one to keep. Exit codes: 0 identical, 1 different, 77 corpora absent.
"""
import argparse
import hashlib
import os
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(HERE)
sys.path.insert(0, os.path.join(ROOT, "models", "scripts"))
import corpus  # noqa: E402

REFERENCE_DIR = os.path.join(ROOT, "tests", "data", "identity")
BLOCK = 500
SAMPLE_LINES = 40
SKIP = 77


def run(vorelin, config, kind, texts):
    """Returns one output chunk per input text."""
    data = ("\n".join(texts) + "\n").encode("utf-8")
    if kind == "tokenize":
        cmd = [vorelin, "tokenize", "--quiet", "--config", config]
    else:
        cmd = [vorelin, "classify", "--quiet", "--config", config]
    out = subprocess.run(cmd, input=data, stdout=subprocess.PIPE, check=True).stdout
    if kind == "tokenize":
        # Every text's tokens end with a blank line; a text without tokens is
        # the blank line alone.
        chunks, cur = [], []
        for line in out.split(b"\n")[:-1]:
            cur.append(line)
            if line == b"":
                chunks.append(b"\n".join(cur) + b"\n")
                cur = []
        if cur:
            chunks.append(b"\n".join(cur) + b"\n")
    else:
        chunks = [line + b"\n" for line in out.split(b"\n")[:-1]]
    if len(chunks) != len(texts):
        raise SystemExit("%s printed %d results for %d texts" % (kind, len(chunks), len(texts)))
    return chunks


def summarise(chunks):
    whole = hashlib.sha256(b"".join(chunks)).hexdigest()
    blocks = [hashlib.sha256(b"".join(chunks[i:i + BLOCK])).hexdigest()[:16]
              for i in range(0, len(chunks), BLOCK)]
    sample = b"".join(chunks).split(b"\n")[:SAMPLE_LINES]
    return whole, blocks, [s.decode("utf-8", "replace") for s in sample]


def measure(args):
    results = {}
    for lang in ("zh", "en"):
        texts = [t for _, t in corpus.lines(lang, "test", args.corpora)]
        for kind in ("tokenize", "classify"):
            results[(lang, kind)] = (len(texts),) + summarise(run(args.vorelin, args.config, kind, texts))
    return results


def write_reference(path, results):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8") as f:
        f.write("# Written by scripts/identity_check.py record; do not edit by hand.\n")
        for (lang, kind), (count, whole, blocks, sample) in sorted(results.items()):
            f.write("[%s %s] texts=%d sha256=%s\n" % (lang, kind, count, whole))
            f.write("blocks %s\n" % " ".join(blocks))
            for s in sample:
                f.write("| %s\n" % s)


def read_reference(path):
    ref, key = {}, None
    with open(path, encoding="utf-8") as f:
        for line in f:
            line = line.rstrip("\n")
            if line.startswith("["):
                head, rest = line[1:].split("] ")
                fields = dict(p.split("=") for p in rest.split())
                key = tuple(head.split())
                ref[key] = [int(fields["texts"]), fields["sha256"], [], []]
            elif line.startswith("blocks "):
                ref[key][2] = line.split()[1:]
            elif line.startswith("| ") or line == "|":
                ref[key][3].append(line[2:])
    return ref


def compare(ref, results):
    ok = True
    for key, (count, whole, blocks, sample) in sorted(results.items()):
        want = ref.get(key)
        name = "%s %s" % key
        if want is None:
            print("%s: missing from the reference" % name)
            ok = False
            continue
        if want[0] == count and want[1] == whole:
            print("%s: identical (%d texts, sha256 %s)" % (name, count, whole[:16]))
            continue
        ok = False
        print("%s: DIFFERENT (%d texts, reference %d)" % (name, count, want[0]))
        for n, (a, b) in enumerate(zip(want[3], sample), 1):
            if a != b:
                print("  first differing output line %d:\n    reference: %s\n    now:       %s" % (n, a, b))
                break
        for n, (a, b) in enumerate(zip(want[2], blocks)):
            if a != b:
                print("  first differing block: texts %d-%d" % (n * BLOCK + 1, min(count, (n + 1) * BLOCK)))
                break
    return ok


def main():
    p = argparse.ArgumentParser()
    p.add_argument("mode", choices=["check", "record"])
    p.add_argument("--vorelin", required=True)
    p.add_argument("--config", required=True)
    p.add_argument("--reference", default="reference.txt")
    p.add_argument("--corpora")
    args = p.parse_args()
    folder = corpus.corpora_dir(args.corpora)
    if not all(os.path.exists(os.path.join(folder, f)) for f in corpus.FILES.values()):
        print("identity check skipped: the corpora are not in %s" % folder)
        return SKIP
    reference = os.path.join(REFERENCE_DIR, os.path.basename(args.reference))
    results = measure(args)
    if args.mode == "record":
        write_reference(reference, results)
        print("reference written to %s" % reference)
        return 0
    return 0 if compare(read_reference(reference), results) else 1


if __name__ == "__main__":
    sys.exit(main())
