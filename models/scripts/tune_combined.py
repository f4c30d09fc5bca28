#!/usr/bin/python3
"""Member weights of the combined model, chosen on the training lines only.

  tune_combined.py [--build DIR] [--folds K|category] [--cnn] [--save F | --load F]
                   [--en-words CONFIG --en-words-expand FILE]

The lexicon member (the weighted lexicon classifier of the default model)
keeps weight 1. Each centroid model is scored on the training lines of its
own language out of fold (one model per fold, trained on the other folds
with the options of train_centroid.sh) and, as shipped, on the training
lines of the other language, which it never saw.

--folds category (the default) makes each Chinese product category a fold:
a centroid trained on eight categories scores the ninth. That is the case
the model meets on reviews of other domains, where a trained member is more
often wrong with confidence than on its own corpus; weights chosen this way
lean less on it. English has no categories and uses 5 folds either way.

--cnn adds the two CNN members. Retraining them per fold costs hours, so
they are scored as shipped, and only on lines the CNN trainer kept out of
its training (its validation slice of its own language, and every line of
the other language) are used to weigh them.

The lexicon member is scored out of fold as well: its learned words and
weights are learned again on the other folds (learn_weights.py), since on
the lines they were learned from they would look far better than they are.

--en-words adds an English word centroid member (the model of
train_wordvec_en.sh, CONFIG being its configuration and FILE its expansion
list), retrained out of fold with that script's options, and weighs it
beside the Chinese centroid in place of the English one.

The script prints the weights with the best mean accuracy over both
languages (score >= 0 counts positive), found by coordinate search over a
grid, and the accuracies of each member alone.
"""
import argparse
import json
import os
import random
import re
import subprocess
import sys
import tempfile

import numpy as np

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import corpus  # noqa: E402
import learn_weights  # noqa: E402

# Keep in step with train_centroid.sh.
TRAIN_OPTIONS = {
    "zh": ["--c", "8", "--min-df", "3", "--max-size", "40000", "--no-bias", "--non-ascii-only"],
    "en": ["--c", "8", "--min-df", "4", "--no-bias"],
}
# Keep in step with train_wordvec_en.sh.
EN_WORDS_OPTIONS = ["--c", "2", "--min-df", "2", "--no-bias"]
EN_WORDS_REPEAT = 4
# The Chinese lists of the weighted model's dictionary, in the order of
# models/CMakeLists.txt (zh_lists), before the learned ones.
ZH_LISTS = ["plain", "pos_strong", "neg_strong", "pos_weak", "neg_weak", "degree_10", "degree_11",
            "degree_12", "degree_13", "degree_14", "negation", "but_conj", "though_conj"]
# Keep in step with the defaults of train_cnn.py.
CNN_SEED, CNN_VALID_SHARE = 1, 0.1
LANGS = ("zh", "en")
# Finer steps below 1, where a trained member only breaks the lexicon's ties.
GRID = sorted({i / 20.0 for i in range(0, 20)} | {i / 4.0 for i in range(4, 41)})


def classify(vorelin, config, texts, work):
    path = os.path.join(work, "texts.txt")
    with open(path, "w", encoding="utf-8") as f:
        f.write("".join(t + "\n" for t in texts))
    out = subprocess.run([vorelin, "classify", "--quiet", "--threads", "2", "--config", config, "--input", path],
                         check=True, stdout=subprocess.PIPE).stdout.decode("utf-8", "replace")
    scores = [line.split("\t", 1)[0] for line in out.split("\n")[: len(texts)]]
    return [float(s) if s not in ("", "null") else 0.0 for s in scores]


def fold_of(lang, records, folds):
    if folds == "category" and lang == "zh":
        names = sorted({c for _, c, _ in records})
        return [names.index(c) for _, c, _ in records]
    k = 5 if folds == "category" else int(folds)
    return [i % k for i in range(len(records))]


def training_lines(lang, label, text, words):
    if words:
        # As train_wordvec_en.sh: letters only, each line several times.
        return ["%d\t%s\n" % (label, re.sub(r"[^A-Za-z' -]+", " ", text))] * EN_WORDS_REPEAT
    # As train_centroid.sh: English also in ordinary written form.
    forms = [text, corpus.natural_form(text)] if lang == "en" else [text]
    return ["%d\t%s\n" % (label, t) for t in forms]


def out_of_fold(vorelin, build, lang, records, folds, work, words=None):
    """Out-of-fold scores of the centroid model of `lang`, or with `words`
    (a pair of configuration and expansion list) of the English word model."""
    scores = [0.0] * len(records)
    config = words[0] if words else os.path.join(build, "models", "centroid", "centroid_%s.xml" % lang)
    options = EN_WORDS_OPTIONS + ["--word-expand", words[1]] if words else TRAIN_OPTIONS[lang]
    for fold in sorted(set(folds)):
        train = os.path.join(work, "train.tsv")
        with open(train, "w", encoding="utf-8") as f:
            for (label, _, text), k in zip(records, folds):
                if k != fold:
                    f.writelines(training_lines(lang, label, text, words))
        prefix = os.path.join(work, "fold")
        subprocess.run([vorelin, "train", "centroid", "--quiet", "--config", config, "--out", prefix]
                       + options + [train], check=True, stdout=subprocess.DEVNULL)
        held = [i for i, k in enumerate(folds) if k == fold]
        for i, s in zip(held, classify(vorelin, prefix + ".xml", [records[i][2] for i in held], work)):
            scores[i] = s
        print("%s fold %d done" % (lang, fold + 1), file=sys.stderr)
    return scores


def lexicon_out_of_fold(vorelin, build, lang, records, folds, work):
    """Scores of the weighted lexicon member whose learned words and weights
    come from the other folds only, as learn_weights.py learns them."""
    models = os.path.join(corpus.ROOT, "models")
    weighted = os.path.join(build, "models", "weighted")
    base = open(os.path.join(weighted, "weighted_utf8.xml"), encoding="utf-8").read()
    blocks = list(learn_weights.tokenize(vorelin, os.path.join(build, "models", "default", "lexicon_utf8.xml"),
                                         [t for _, _, t in records]))
    out = os.path.join(work, "lexicon")
    scores = [0.0] * len(records)
    for fold in sorted(set(folds)):
        train = [i for i, k in enumerate(folds) if k != fold]
        weights, learned = learn_weights.learn([records[i][::2] for i in train], [blocks[i] for i in train],
                                               learn_weights.SETTINGS[lang])
        learn_weights.write(out, lang, weights, learned)
        other = os.path.join(models, "weighted", "learned", "%s_weights.tsv" % ("en" if lang == "zh" else "zh"))
        subprocess.run([vorelin, "lexicon", "build", "--quiet", "--kind", "weighted", "--encoding", "utf-8",
                        "--out", os.path.join(out, "weights.lex"), other,
                        os.path.join(out, "%s_weights.tsv" % lang)], check=True, stdout=subprocess.DEVNULL)
        config = base.replace(os.path.join(weighted, "weights_utf8.lex"), os.path.join(out, "weights.lex"))
        if lang == "zh":
            lists = [os.path.join(build, "models", "default", "zh_segmentation.txt")]
            lists += [os.path.join(models, "default", "zh", n + ".txt") for n in ZH_LISTS]
            lists += [os.path.join(out, "zh_learned_%s.txt" % n) for n in ("positive", "negative")]
            subprocess.run([vorelin, "dict", "build", "--quiet", "--encoding", "utf-8",
                            "--out", os.path.join(out, "zh.dict")] + lists, check=True, stdout=subprocess.DEVNULL)
            config = config.replace(os.path.join(weighted, "zh_utf8.dict"), os.path.join(out, "zh.dict"))
        else:
            for polarity in ("positive", "negative"):
                with open(os.path.join(out, "en_%s.txt" % polarity), "w", encoding="utf-8") as f:
                    for name in ("%s.txt" % polarity, "%s_review.txt" % polarity):
                        with open(os.path.join(models, "default", "en", name), encoding="utf-8") as src:
                            f.write(src.read())
                    with open(os.path.join(out, "en_learned_%s.txt" % polarity), encoding="utf-8") as src:
                        f.write(src.read())
                config = config.replace(os.path.join(weighted, "en_%s.txt" % polarity),
                                        os.path.join(out, "en_%s.txt" % polarity))
        path = os.path.join(work, "lexicon.xml")
        with open(path, "w", encoding="utf-8") as f:
            f.write(config)
        held = [i for i, k in enumerate(folds) if k == fold]
        for i, s in zip(held, classify(vorelin, path, [records[i][2] for i in held], work)):
            scores[i] = s
    return scores


def cnn_unseen(n):
    """Which of n training lines the CNN trainer held out for validation."""
    order = list(range(n))
    random.Random(CNN_SEED).shuffle(order)
    unseen = [False] * n
    for i in order[: int(n * CNN_VALID_SHARE)]:
        unseen[i] = True
    return unseen


def collect(args, vorelin):
    data = {}
    with tempfile.TemporaryDirectory() as work:
        for lang in LANGS:
            records = list(corpus.records(lang, "train", args.corpora))
            texts = [t for _, _, t in records]
            folds = fold_of(lang, records, args.folds)
            member = {"lex": lexicon_out_of_fold(vorelin, args.build, lang, records, folds, work)}
            for model in LANGS:
                if model == lang:
                    member[model] = out_of_fold(vorelin, args.build, lang, records, folds, work)
                else:
                    shipped = os.path.join(args.build, "models", "centroid", "centroid_%s.xml" % model)
                    member[model] = classify(vorelin, shipped, texts, work)
                if args.en_words and model == "en":
                    words = (args.en_words, args.en_words_expand)
                    member["enw"] = (out_of_fold(vorelin, args.build, lang, records, folds, work, words)
                                     if lang == "en" else classify(vorelin, args.en_words, texts, work))
                if args.cnn:
                    cnn = os.path.join(args.build, "models", "cnn", "cnn_%s.xml" % model)
                    member["cnn_" + model] = classify(vorelin, cnn, texts, work)
            unseen = cnn_unseen(len(records))
            data[lang] = {"labels": [y for y, _, _ in records], "members": member, "cnn_unseen": unseen}
    return data


def accuracies(data, weights, rows):
    """Accuracy per language of the weighted sum of the members."""
    out = []
    for lang in LANGS:
        d = data[lang]
        total = sum(w * d["m"][name] for name, w in weights.items())
        right = (total >= 0) == (d["y"] > 0)
        out.append(float(right[rows[lang]].mean()))
    return out


def search(data, names, rows):
    """Coordinate search over GRID for the members in `names` (the lexicon
    stays at 1); the key is the mean accuracy, then the smaller total weight."""
    weights = {"lex": 1.0}
    weights.update({n: 1.0 for n in names})

    def key(w):
        return (round(sum(accuracies(data, w, rows)) / 2.0, 6), -sum(w.values()))

    best = key(weights)
    changed = True
    while changed:
        changed = False
        for n in names:
            for value in GRID:
                trial = dict(weights)
                trial[n] = value
                k = key(trial)
                if k > best:
                    best, weights, changed = k, trial, True
    return weights


def report(raw, with_cnn):
    data = {}
    for lang in LANGS:
        d = raw[lang]
        data[lang] = {"y": np.array(d["labels"]), "m": {k: np.array(v) for k, v in d["members"].items()}}
    everything = {lang: np.ones(len(raw[lang]["labels"]), bool) for lang in LANGS}
    unseen = {lang: np.array(raw[lang]["cnn_unseen"]) for lang in LANGS}
    for name in data["zh"]["m"]:
        rows = unseen if name.startswith("cnn") else everything
        print("%-8s alone: zh %.4f en %.4f" % ((name,) + tuple(accuracies(data, {name: 1.0}, rows))))
    weights = search(data, ["zh", "en"], everything)
    print("lexicon + centroids: %s -> zh %.4f en %.4f"
          % ((fmt(weights),) + tuple(accuracies(data, weights, everything))))
    if "enw" in data["zh"]["m"]:
        w = {"lex": 1.0, "zh": weights["zh"]}
        print("lexicon + Chinese centroid: %s -> zh %.4f en %.4f" % ((fmt(w),) + tuple(accuracies(data, w, everything))))
        w = search(data, ["zh", "enw"], everything)
        print("lexicon + Chinese centroid + English words: %s -> zh %.4f en %.4f"
              % ((fmt(w),) + tuple(accuracies(data, w, everything))))
    if with_cnn:
        print("on the CNN's validation lines (zh %d, en %d):" % tuple(int(unseen[l].sum()) for l in LANGS))
        print("  lexicon + centroids as above: zh %.4f en %.4f" % tuple(accuracies(data, weights, unseen)))
        for names in (["cnn_zh", "cnn_en"], ["zh", "en", "cnn_zh", "cnn_en"]):
            w = search(data, names, unseen)
            print("  lexicon + %s: %s -> zh %.4f en %.4f"
                  % ((" + ".join(names), fmt(w)) + tuple(accuracies(data, w, unseen))))


def fmt(weights):
    return ", ".join("%s %.2f" % (k, v) for k, v in weights.items())


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    p.add_argument("--build", default=os.path.join(corpus.ROOT, "build"))
    p.add_argument("--folds", default="category", help="a number of folds, or 'category' (default)")
    p.add_argument("--cnn", action="store_true", help="also score and weigh the CNN members")
    p.add_argument("--corpora")
    p.add_argument("--save", help="also write the member scores to this JSON file")
    p.add_argument("--load", help="read the member scores from a file written by --save instead")
    p.add_argument("--en-words", help="configuration of the English word centroid model")
    p.add_argument("--en-words-expand", help="its expansion list")
    args = p.parse_args()
    if args.load:
        with open(args.load, encoding="utf-8") as f:
            data = json.load(f)
    else:
        # The built configurations name their files by absolute path.
        args.build = os.path.abspath(args.build)
        data = collect(args, os.path.join(args.build, "tools", "vorelin"))
    if args.save:
        with open(args.save, "w", encoding="utf-8") as f:
            json.dump(data, f)
    report(data, "cnn_zh" in data["zh"]["members"])


if __name__ == "__main__":
    main()
