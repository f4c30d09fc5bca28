#!/usr/bin/env python3
"""Learns word weights for the weighted lexicon from the training lines.

  learn_weights.py zh|en --config CONFIG --out-dir DIR [--vorelin PATH]

Tokenizes every training line of the corpus (never a held-out one, see
corpus.py) with the analyzer of CONFIG and counts, per word, the positive and
negative documents it occurs in. A word's evidence is its smoothed log-odds
ratio of positive against negative documents.

Writes to DIR, for the language given:
  LANG_weights.tsv    'word<TAB>weight' for the words the analyzer already
                      tags as strong positive or negative: the hand-given
                      polarity (+1 or -1) shrunk towards the evidence, so a
                      word seen rarely keeps about its prior weight. The sign
                      never turns (the scorer would ignore it): a word whose
                      evidence contradicts its list gets a small weight.
  LANG_learned_positive.txt, LANG_learned_negative.txt
                      frequent words the lists do not tag, whose evidence is
                      strong and consistent; their weights, shrunk towards 0
                      with the same strength, are in the .tsv as well. The
                      model tags them as sentiment words.
"""
import argparse
import collections
import math
import os
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import corpus  # noqa: E402

# Per language: least document count of a new word, least absolute log-odds,
# and the shrinkage strength (documents) towards the prior.
SETTINGS = {
    "zh": {"min_df": 30, "min_log_odds": 1.2, "prior_docs": 40.0, "new_scale": 0.6},
    "en": {"min_df": 5, "min_log_odds": 0.5, "prior_docs": 20.0, "new_scale": 1.0},
}
SCALE = 0.5        # weight units per unit of log-odds
MIN_WEIGHT = 0.05  # the least strength a listed word keeps
MAX_WEIGHT = 2.5
WORD_TYPES = {"CH_WORD", "EN_WORD"}


def tokenize(vorelin, config, texts):
    """Yields, per text, the list of (term, type, tag) of its tokens."""
    data = "".join((t if t.strip() else ".") + "\n" for t in texts).encode("utf-8")
    out = subprocess.run([vorelin, "tokenize", "--quiet", "--config", config], input=data,
                         stdout=subprocess.PIPE, check=True).stdout.decode("utf-8", "replace")
    tokens = []
    for line in out.split("\n"):
        if not line:
            yield tokens
            tokens = []
            continue
        fields = line.split("\t")
        if len(fields) == 5:
            tokens.append((fields[0], fields[3], fields[4]))


def clamp(value):
    return max(MIN_WEIGHT, min(MAX_WEIGHT, value))


def learn(pairs, blocks, settings):
    """Weights of listed words and new sentiment words, from (label, text)
    pairs and their token blocks."""
    docs = {1: 0, -1: 0}
    counts = {1: collections.Counter(), -1: collections.Counter()}
    tags = collections.defaultdict(collections.Counter)
    for (label, _), tokens in zip(pairs, blocks):
        docs[label] += 1
        seen = set()
        for term, ttype, tag in tokens:
            if ttype not in WORD_TYPES:
                continue
            tags[term][tag] += 1
            seen.add(term)
        counts[label].update(seen)

    def log_odds(word):
        p, n = counts[1][word], counts[-1][word]
        return (math.log((p + 1.0) / (docs[1] - p + 1.0)) - math.log((n + 1.0) / (docs[-1] - n + 1.0))), p + n

    weights = {}
    learned = {1: [], -1: []}
    for word, tag_counts in tags.items():
        tag = tag_counts.most_common(1)[0][0]
        evidence, df = log_odds(word)
        if tag in ("POSITIVE", "NEGATIVE"):
            prior = 1.0 if tag == "POSITIVE" else -1.0
            k = settings["prior_docs"]
            # Shrink towards the hand-given polarity; |weight| is the strength.
            value = (k * prior + df * SCALE * evidence * 2.0) / (k + df)
            weights[word] = prior * clamp(value * prior)
        elif tag == "PLAIN" and df >= settings["min_df"] and abs(evidence) >= settings["min_log_odds"]:
            # Fragments such as 'the or -minute are tokenizer leftovers.
            if len(word) < 2 or not word[0].isalpha() or any(c.isdigit() for c in word):
                continue
            sign = 1 if evidence > 0 else -1
            learned[sign].append(word)
            # A word without a hand polarity has a prior of 0 and is shrunk
            # towards it like a listed word towards its own: a topic word
            # seen in a handful of texts ("food" in film snippets) stays weak.
            shrunk = df * abs(evidence) / (settings["prior_docs"] + df)
            weights[word] = sign * clamp(settings["new_scale"] * shrunk)
    return weights, learned


def write(out_dir, lang, weights, learned):
    """Writes the weights and the two lists of new words of one language."""
    os.makedirs(out_dir, exist_ok=True)
    header = ("# Learned by models/scripts/learn_weights.py %s from the training lines of %s;\n"
              "# do not edit by hand, rerun the script.\n" % (lang, corpus.FILES[lang]))
    with open(os.path.join(out_dir, "%s_weights.tsv" % lang), "w", encoding="utf-8") as f:
        f.write(header)
        for word in sorted(weights):
            f.write("%s\t%.4f\n" % (word, weights[word]))
    for sign, name in ((1, "positive"), (-1, "negative")):
        with open(os.path.join(out_dir, "%s_learned_%s.txt" % (lang, name)), "w", encoding="utf-8") as f:
            f.write(header)
            # The dictionary builder reads these directives; the English
            # filter takes them for one more word that never occurs.
            f.write("#! type %s\n#! tag %s\n" % ("CH_WORD" if lang == "zh" else "EN_WORD", name.upper()))
            for word in sorted(learned[sign]):
                f.write(word + "\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("lang", choices=["zh", "en"])
    parser.add_argument("--config", required=True)
    parser.add_argument("--out-dir", required=True)
    parser.add_argument("--vorelin", default=os.path.join(corpus.ROOT, "build", "tools", "vorelin"))
    parser.add_argument("--corpora")
    args = parser.parse_args()
    settings = SETTINGS[args.lang]

    pairs = list(corpus.lines(args.lang, "train", args.corpora))
    blocks = list(tokenize(args.vorelin, args.config, [text for _, text in pairs]))
    weights, learned = learn(pairs, blocks, settings)

    write(args.out_dir, args.lang, weights, learned)
    print("%s: %d documents, %d weights, %d new positive and %d new negative words"
          % (args.lang, len(pairs), len(weights), len(learned[1]), len(learned[-1])), file=sys.stderr)


if __name__ == "__main__":
    main()
