#!/usr/bin/env python3
"""Proves that a build tokenizes and scores exactly as the recorded reference.

Runs `vorelin tokenize` and `vorelin classify` with the default model, and
`vorelin classify` with each --extra model, over the held-out lines of both
shared corpora and compares the outputs with
tests/data/identity/reference.txt: one SHA-256 per corpus and output kind,
one short hash per block of 500 input lines (so a failure names the block),
and the first lines of each output in full (so a failure early on shows the
line itself).

  identity_check.py check  --vorelin PATH --config FILE [--extra NAME=FILE]... [--corpora DIR]
  identity_check.py record --vorelin PATH --config FILE [--extra NAME=FILE]... [--corpora DIR]

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

REFERENCE = os.path.join(ROOT, "tests", "data", "identity", "reference.txt")
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
    # "classify-NAME" scores with the extra model NAME
    jobs = [("tokenize", args.config), ("classify", args.config)]
    jobs += [("classify-" + name, config) for name, config in args.extra]
    for lang in ("zh", "en"):
        texts = [t for _, t in corpus.lines(lang, "test", args.corpora)]
        for kind, config in jobs:
            output = run(args.vorelin, config, kind.split("-")[0], texts)
            results[(lang, kind)] = (len(texts),) + summarise(output)
    return results


def extra_model(text):
    name, sep, config = text.partition("=")
    if not sep or not name or "-" in name or " " in name:
        raise argparse.ArgumentTypeError("expected NAME=FILE, NAME without '-' or spaces: %s" % text)
    return name, config


def write_reference(results):
    os.makedirs(os.path.dirname(REFERENCE), exist_ok=True)
    with open(REFERENCE, "w", encoding="utf-8") as f:
        f.write("# Written by scripts/identity_check.py record; do not edit by hand.\n")
        for (lang, kind), (count, whole, blocks, sample) in sorted(results.items()):
            f.write("[%s %s] texts=%d sha256=%s\n" % (lang, kind, count, whole))
            f.write("blocks %s\n" % " ".join(blocks))
            for s in sample:
                f.write("| %s\n" % s)


def read_reference():
    ref, key = {}, None
    with open(REFERENCE, encoding="utf-8") as f:
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
    p.add_argument("--extra", type=extra_model, action="append", default=[],
                   help="also compare `classify` with this model, as NAME=FILE")
    p.add_argument("--corpora")
    args = p.parse_args()
    folder = corpus.corpora_dir(args.corpora)
    if not all(os.path.exists(os.path.join(folder, f)) for f in corpus.FILES.values()):
        print("identity check skipped: the corpora are not in %s" % folder)
        return SKIP
    results = measure(args)
    if args.mode == "record":
        write_reference(results)
        print("reference written to %s" % REFERENCE)
        return 0
    return 0 if compare(read_reference(), results) else 1


if __name__ == "__main__":
    sys.exit(main())
