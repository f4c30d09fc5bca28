#!/bin/sh
# Rebuilds the shipped centroid models, models/centroid/{zh,en}.{vocab,centroid},
# from the training lines of the shared corpora (never the held-out lines).
# Run from the top of the checkout after building:
#   models/scripts/train_centroid.sh [BUILD_DIR]
# The texts are tokenized by the analyzer of the model's own configuration,
# BUILD_DIR/models/centroid/centroid_LANG.xml. The output is the same byte
# for byte on every run.
set -eu
BUILD=${1:-build}
VORELIN=$BUILD/tools/vorelin
OUT=models/centroid
WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
# English lines come twice, in the corpus's lower-cased, split-off form and
# in ordinary written form, so the model reads text as people write it too.
/usr/bin/python3 models/scripts/corpus.py split zh train > "$WORK/zh.tsv"
/usr/bin/python3 models/scripts/corpus.py split en train --natural > "$WORK/en.tsv"
# Chinese: character 1- to 3-grams in at least 3 texts, the 40,000 most common,
# none of ASCII characters only. No biases, so that each model stays silent
# (scores 0) on texts of the other language inside the combined model.
"$VORELIN" train centroid --quiet --config "$BUILD/models/centroid/centroid_zh.xml" --out "$WORK/zh" \
  --c 8 --min-df 3 --max-size 40000 --no-bias --non-ascii-only "$WORK/zh.tsv"
# English: character 1- to 5-grams in at least 4 texts, that is in about two
# corpus lines, each of which is there in both forms.
"$VORELIN" train centroid --quiet --config "$BUILD/models/centroid/centroid_en.xml" --out "$WORK/en" \
  --c 8 --min-df 4 --no-bias "$WORK/en.tsv"
for lang in zh en; do
  cp "$WORK/$lang.vocab" "$OUT/$lang.vocab"
  cp "$WORK/$lang.centroid" "$OUT/$lang.centroid"
done
