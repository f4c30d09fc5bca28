#!/usr/bin/env python3
"""Training and held-out lines of the shared corpora, and held-out accuracy.

  corpus.py split zh|en train|test [--corpora DIR] [--natural]
      prints 'LABEL<TAB>TEXT' lines (LABEL 1 or -1) of one side of the fixed
      split: a line whose number (from 1) is divisible by 5 is held out.
      --natural follows each English line by its ordinary written form
      (natural_form), so a model trained on the output reads both.
  corpus.py accuracy zh|en CONFIG [--vorelin PATH] [--side test|train] [--natural]
      classifies one side with `vorelin classify` and prints the accuracy,
      counting a score >= 0 as positive (the rule our figures use), and the
      share of scores that are exactly 0. --natural classifies the ordinary
      written form of each English line instead of the corpus form.

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


# Tokens the English corpus splits off that ordinary text writes against the
# word before or after them.
CLOSING = {".", ",", "!", "?", ";", ":", ")", "]", "...", "%"}
OPENING = {"(", "["}
SUFFIXES = {"n't", "'s", "'re", "'ve", "'ll", "'d", "'m"}
SENTENCE_END = {".", "!", "?", "..."}


def natural_form(text):
    """The English corpus writes text lower-cased with punctuation split off
    ("it does n't work , i think ."). This gives the form people write: the
    first letter of each sentence and the pronoun I upper-cased, no space
    before closing punctuation or after an opening bracket, contractions
    rejoined, and quotes against the words they enclose. Chinese text and
    text already in that form pass through unchanged, apart from the
    upper-casing."""
    out = []           # words of the result
    glue = False       # the next token attaches to the previous word
    quote_open = False
    capital = True
    for token in text.replace("``", '"').replace("''", '"').split():
        if token == '"':
            if quote_open:
                if out:
                    out[-1] += token
                else:
                    out.append(token)
                glue = False
            else:
                out.append(token)
                glue = True
            quote_open = not quote_open
            continue
        if token == "i":
            token = "I"
        elif token.startswith("i'") and token[1:] in SUFFIXES:
            token = "I" + token[1:]
        if capital and token[:1].isalpha():
            token = token[0].upper() + token[1:]
            capital = False
        elif capital and token[:1].isalnum():
            capital = False
        attach = out and not glue and (token in CLOSING or token.lower() in SUFFIXES)
        if attach or (glue and out):
            out[-1] += token
        else:
            out.append(token)
        glue = token in OPENING
        if token in SENTENCE_END:
            capital = True
    return " ".join(out)


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
        if args.natural and args.lang == "en":
            out.write("%d\t%s\n" % (label, natural_form(text)))


def cmd_accuracy(args):
    pairs = list(lines(args.lang, args.side, args.corpora))
    if args.natural:
        pairs = [(label, natural_form(text)) for label, text in pairs]
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
    print("%s %s%s: accuracy %.4f (%d/%d), exactly 0: %.1f%%"
          % (args.lang, args.side, " (natural form)" if args.natural else "", right / len(pairs), right, len(pairs), 100.0 * zeros / len(pairs)))


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = p.add_subparsers(dest="command", required=True)
    s = sub.add_parser("split")
    s.add_argument("lang", choices=FILES)
    s.add_argument("side", choices=["train", "test"])
    s.add_argument("--corpora")
    s.add_argument("--natural", action="store_true", help="also print the natural form of each English line")
    s.set_defaults(run=cmd_split)
    a = sub.add_parser("accuracy")
    a.add_argument("lang", choices=FILES)
    a.add_argument("config")
    a.add_argument("--vorelin")
    a.add_argument("--corpora")
    a.add_argument("--threads", type=int, default=2)
    a.add_argument("--side", choices=["train", "test"], default="test")
    a.add_argument("--natural", action="store_true", help="classify the natural form of the English lines")
    a.set_defaults(run=cmd_accuracy)
    args = p.parse_args()
    try:
        args.run(args)
    except BrokenPipeError:
        sys.stderr.close()


if __name__ == "__main__":
    main()
