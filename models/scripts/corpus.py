#!/usr/bin/env python3
"""Training and held-out lines of the shared corpora, and held-out accuracy.

  corpus.py split zh|en train|test [--corpora DIR]
      prints 'LABEL<TAB>TEXT' lines (LABEL 1 or -1) of one side of the fixed
      split: a line whose number (from 1) is divisible by 5 is held out.
  corpus.py accuracy zh|en CONFIG [--vorelin PATH] [--side test|train]
      classifies one side with `vorelin classify` and prints the accuracy,
      counting a score >= 0 as positive (the rule our figures use), and the
      share of scores that are exactly 0.

The corpora are never copied into the repository; give their folder with
--corpora or VORELIN_CORPORA (default: ../shared/corpora beside the checkout).
"""
import argparse
import lzma
import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
FILES = {"zh": "zh_shopping9.tsv.xz", "en": "en_rt_polarity.tsv.xz"}


def corpora_dir(arg):
    return arg or os.environ.get("VORELIN_CORPORA") or os.path.join(ROOT, "..", "shared", "corpora")


def records(lang, side, folder):
    """Yields (label, category, text) of one side; label is 1 or -1, and the
    category is empty for a corpus that has none."""
    path = os.path.join(corpora_dir(folder), FILES[lang])
    with lzma.open(path, "rt", encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            held_out = number % 5 == 0
            if held_out != (side == "test"):
                continue
            fields = line.rstrip("\n").split("\t")
            yield (1 if fields[0] == "1" else -1), (fields[1] if len(fields) > 2 else ""), fields[-1]


def lines(lang, side, folder):
    """Yields (label, text) of one side; label is 1 or -1."""
    for label, _, text in records(lang, side, folder):
        yield label, text


def cmd_split(args):
    out = sys.stdout
    for label, text in lines(args.lang, args.side, args.corpora):
        out.write("%d\t%s\n" % (label, text))


def cmd_accuracy(args):
    pairs = list(lines(args.lang, args.side, args.corpora))
    vorelin = args.vorelin or os.path.join(ROOT, "build", "tools", "vorelin")
    with tempfile.NamedTemporaryFile("w", encoding="utf-8", suffix=".txt", delete=False) as f:
        for _, text in pairs:
            f.write(text + "\n")
        name = f.name
    try:
        cmd = [vorelin, "classify", "--quiet", "--config", args.config, "--input", name]
        if args.threads:
            cmd += ["--threads", str(args.threads)]
        out = subprocess.run(cmd, check=True, stdout=subprocess.PIPE).stdout.decode("utf-8", "replace")
    finally:
        os.unlink(name)
    scores = [line.split("\t", 1)[0] for line in out.split("\n")[: len(pairs)]]
    right = zeros = 0
    for (label, _), s in zip(pairs, scores):
        value = float(s) if s not in ("", "null") else 0.0
        zeros += value == 0.0
        right += (value >= 0) == (label > 0)
    print("%s %s: accuracy %.4f (%d/%d), exactly 0: %.1f%%"
          % (args.lang, args.side, right / len(pairs), right, len(pairs), 100.0 * zeros / len(pairs)))


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = p.add_subparsers(dest="command", required=True)
    s = sub.add_parser("split")
    s.add_argument("lang", choices=FILES)
    s.add_argument("side", choices=["train", "test"])
    s.add_argument("--corpora")
    s.set_defaults(run=cmd_split)
    a = sub.add_parser("accuracy")
    a.add_argument("lang", choices=FILES)
    a.add_argument("config")
    a.add_argument("--vorelin")
    a.add_argument("--corpora")
    a.add_argument("--threads", type=int, default=2)
    a.add_argument("--side", choices=["train", "test"], default="test")
    a.set_defaults(run=cmd_accuracy)
    args = p.parse_args()
    try:
        args.run(args)
    except BrokenPipeError:
        sys.stderr.close()


if __name__ == "__main__":
    main()
