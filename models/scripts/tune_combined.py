#!/usr/bin/python3
"""Member weights of the combined model, chosen on the training lines only.

  tune_combined.py [--build DIR] [--folds K]

The lexicon member keeps weight 1. Each centroid model is scored on the
training lines of its own language out of fold (K models, each trained on
the other folds with the options of train_centroid.sh) and, as shipped, on
the training lines of the other language, which it never saw. The script
then tries a grid of weights for the two centroid members and prints the
pair with the best mean accuracy over both languages (score >= 0 counts
positive), with the accuracies of a few neighbours.
"""
import argparse
import json
import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import corpus  # noqa: E402

# Keep in step with train_centroid.sh.
TRAIN_OPTIONS = {
    "zh": ["--c", "8", "--min-df", "3", "--max-size", "40000", "--no-bias", "--non-ascii-only"],
    "en": ["--c", "8", "--min-df", "2", "--no-bias"],
}
LANGS = ("zh", "en")


def classify(vorelin, config, texts, work):
    path = os.path.join(work, "texts.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write("".join(t + "\n" for t in texts))
    out = subprocess.run([vorelin, "classify", "--quiet", "--threads", "2", "--config", config, "--input", path],
                         check=True, stdout=subprocess.PIPE).stdout.decode("utf-8", "replace")
    scores = [line.split("\t", 1)[0] for line in out.split("\n")[: len(texts)]]
    return [float(s) if s not in ("", "null") else 0.0 for s in scores]


def out_of_fold(vorelin, build, lang, pairs, folds, work):
    scores = [0.0] * len(pairs)
    config = os.path.join(build, "models", "centroid", "centroid_%s.xml" % lang)
    for fold in range(folds):
        train = os.path.join(work, "train.tsv")
        with open(train, "w", encoding="utf-8") as f:
            for i, (label, text) in enumerate(pairs):
                if i % folds != fold:
                    f.write("%d\t%s\n" % (label, text))
        prefix = os.path.join(work, "fold")
        subprocess.run([vorelin, "train", "centroid", "--quiet", "--config", config, "--out", prefix]
                       + TRAIN_OPTIONS[lang] + [train], check=True, stdout=subprocess.DEVNULL)
        held = [i for i in range(len(pairs)) if i % folds == fold]
        for i, s in zip(held, classify(vorelin, prefix + ".xml", [pairs[i][1] for i in held], work)):
            scores[i] = s
        print("%s fold %d done" % (lang, fold + 1), file=sys.stderr)
    return scores


def accuracy(labels, lex, zh, en, wz, we):
    right = sum(((l + wz * a + we * b) >= 0) == (y > 0) for y, l, a, b in zip(labels, lex, zh, en))
    return right / len(labels)


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("--build", default=os.path.join(corpus.ROOT, "build"))
    p.add_argument("--folds", type=int, default=5)
    p.add_argument("--corpora")
    p.add_argument("--save", help="also write the member scores to this JSON file")
    p.add_argument("--load", help="read the member scores from a file written by --save instead")
    args = p.parse_args()
    vorelin = os.path.join(args.build, "tools", "vorelin")
    lexicon = os.path.join(args.build, "models", "default", "default_utf8.xml")
    data = {}
    if args.load:
        with open(args.load, encoding="utf-8") as f:
            data = json.load(f)
    else:
        data = collect(args, vorelin, lexicon)
    if args.save:
        with open(args.save, "w", encoding="utf-8") as f:
            json.dump(data, f)
    report(data)


def collect(args, vorelin, lexicon):
    data = {}
    with tempfile.TemporaryDirectory() as work:
        for lang in LANGS:
            pairs = list(corpus.lines(lang, "train", args.corpora))
            texts = [t for _, t in pairs]
            member = {"lex": classify(vorelin, lexicon, texts, work)}
            for model in LANGS:
                if model == lang:
                    member[model] = out_of_fold(vorelin, args.build, lang, pairs, args.folds, work)
                else:
                    shipped = os.path.join(args.build, "models", "centroid", "centroid_%s.xml" % model)
                    member[model] = classify(vorelin, shipped, texts, work)
            data[lang] = ([y for y, _ in pairs], member)
    return data


def report(data):
    grid = [i / 4.0 for i in range(0, 41)]
    best = None
    for wz in grid:
        for we in grid:
            accs = [accuracy(data[l][0], data[l][1]["lex"], data[l][1]["zh"], data[l][1]["en"], wz, we) for l in LANGS]
            key = (sum(accs) / 2.0, -(wz + we))
            if best is None or key > best[0]:
                best = (key, wz, we, accs)
    _, wz, we, accs = best
    print("lexicon only: zh %.4f en %.4f" % tuple(
        accuracy(data[l][0], data[l][1]["lex"], data[l][1]["zh"], data[l][1]["en"], 0, 0) for l in LANGS))
    print("best: weight zh %.2f en %.2f -> zh %.4f en %.4f (out of fold, training lines)" % (wz, we, accs[0], accs[1]))


if __name__ == "__main__":
    main()
