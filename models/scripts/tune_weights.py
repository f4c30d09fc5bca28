#!/usr/bin/env python3
"""Chooses the settings of learn_weights.py on the training lines alone.

  tune_weights.py zh|en --config WEIGHTED_CONFIG [--vorelin PATH]

Every fourth training line is set aside for validation; weights are learned
from the other training lines with each candidate setting, written next to
a copy of WEIGHTED_CONFIG (the built weighted model, whose lexicon and
English lists it replaces), and the validation lines are classified. Prints
the validation accuracy (a score >= 0 counts positive) per setting. The
held-out lines of the corpus are never read.
"""
import argparse
import itertools
import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import corpus  # noqa: E402
import learn_weights  # noqa: E402

GRID = {
    "min_df": [3, 5, 8, 12],
    "min_log_odds": [0.3, 0.5, 0.8],
    "prior_docs": [20.0],
    "new_scale": [0.6, 0.8, 1.0],
}


def accuracy(vorelin, config, pairs, folder):
    texts = os.path.join(folder, "texts.txt")
    with open(texts, "w", encoding="utf-8") as f:
        for _, text in pairs:
            f.write(text + "\n")
    out = subprocess.run([vorelin, "classify", "--quiet", "--config", config, "--input", texts],
                         stdout=subprocess.PIPE, check=True).stdout.decode("utf-8").splitlines()
    right = sum(1 for (label, _), line in zip(pairs, out) if (float(line.split("\t")[0]) >= 0) == (label > 0))
    return right / float(len(pairs))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("lang", choices=["zh", "en"])
    parser.add_argument("--config", required=True)
    parser.add_argument("--tokenize-config", help="analyzer to learn with (default: --config)")
    parser.add_argument("--vorelin", default=os.path.join(corpus.ROOT, "build", "tools", "vorelin"))
    parser.add_argument("--corpora")
    args = parser.parse_args()

    pairs = list(corpus.lines(args.lang, "train", args.corpora))
    blocks = list(learn_weights.tokenize(args.vorelin, args.tokenize_config or args.config,
                                         [text for _, text in pairs]))
    fit = [(p, b) for i, (p, b) in enumerate(zip(pairs, blocks)) if i % 4 != 3]
    check = [p for i, p in enumerate(pairs) if i % 4 == 3]
    model_dir = os.path.dirname(os.path.abspath(args.config))
    other = {"zh": "en", "en": "zh"}[args.lang]
    source = open(args.config, encoding="utf-8").read()
    keys = sorted(GRID)
    for values in itertools.product(*(GRID[k] for k in keys)):
        settings = dict(zip(keys, values))
        weights, learned = learn_weights.learn([p for p, _ in fit], [b for _, b in fit], settings)
        with tempfile.TemporaryDirectory() as folder:
            tsv = os.path.join(folder, "w.tsv")
            with open(tsv, "w", encoding="utf-8") as f:
                for word, weight in weights.items():
                    f.write("%s\t%.4f\n" % (word, weight))
            lex = os.path.join(folder, "w.lex")
            # The other language's committed weights stay as they are.
            subprocess.run([args.vorelin, "lexicon", "build", "--quiet", "--kind", "weighted", "--out", lex,
                            os.path.join(HERE, "..", "weighted", "learned", "%s_weights.tsv" % other), tsv],
                           check=True, stderr=subprocess.DEVNULL)
            config = source.replace(os.path.join(model_dir, "weights_utf8.lex"), lex)
            if args.lang == "en":
                for sign, name in ((1, "positive"), (-1, "negative")):
                    merged = os.path.join(folder, "en_%s.txt" % name)
                    with open(merged, "w", encoding="utf-8") as f:
                        for part in ("%s.txt" % name, "%s_review.txt" % name):
                            f.write(open(os.path.join(HERE, "..", "default", "en", part), encoding="utf-8").read())
                        f.write("\n".join(learned[sign]) + "\n")
                    config = config.replace(os.path.join(model_dir, "en_%s.txt" % name), merged)
            # Chinese words learned here are not in the dictionary of the
            # built model; only those already tagged there take part.
            path = os.path.join(folder, "c.xml")
            open(path, "w", encoding="utf-8").write(config)
            print("%s\t%.4f" % (" ".join("%s=%s" % kv for kv in settings.items()),
                                accuracy(args.vorelin, path, check, folder)), flush=True)


if __name__ == "__main__":
    main()
