#!/bin/sh
# Trains the Chinese word vectors and word expansions of models/wordvec/ from
# the training lines of the shared corpora (never the held-out lines), and the
# centroid models that use them. Run from the top of the checkout after
# building:
#   models/scripts/train_wordvec.sh [BUILD_DIR]
# VORELIN_WORDVEC_LINES=N trains on N training lines only, spread over the
# file (a quick check; the models then go to the work directory,
# VORELIN_WORK, and not to models/wordvec/). A plain centroid model is trained on the same lines, as
# the baseline to compare with.
# Steps: the training texts are cut into the character 1- to 3-grams of the
# centroid model's analyzer; Debian's fasttext learns 100-dimensional
# skipgram vectors over these token sequences (one thread and a fixed seed,
# so that a rerun gives the same vectors; 3 epochs rather than 5, to bound
# the CPU time of a run on a shared 2-core machine); models/scripts/wordvec_files.py
# keeps the vectors of the most common n-grams and writes, for the words of
# the shipped centroid vocabulary, their nearest neighbours as an expansion
# list. Finally `vorelin train centroid` trains one model per builder, the
# three models are scored on the held-out lines, and the files of the
# shipped kind are copied to models/wordvec/.
set -eu
BUILD=${1:-build}
VORELIN=$BUILD/tools/vorelin
OUT=models/wordvec
WORK=${VORELIN_WORK:-$(mktemp -d)}
LINES=${VORELIN_WORDVEC_LINES:-}
if [ -n "$LINES" ]; then OUT=$WORK/out; fi
mkdir -p "$OUT" "$WORK"
/usr/bin/python3 models/scripts/corpus.py split zh train > "$WORK/zh.tsv"
if [ -n "$LINES" ]; then
  # N lines spread evenly over the file: its lines come grouped by label, so
  # the first N would hold one class only.
  awk -v n="$LINES" -v total="$(wc -l < "$WORK/zh.tsv")" 'NR * n % total < n' "$WORK/zh.tsv" > "$WORK/zh.part.tsv"
  mv "$WORK/zh.part.tsv" "$WORK/zh.tsv"
fi
cut -f2- "$WORK/zh.tsv" | "$VORELIN" tokenize --quiet --config "$BUILD/models/centroid/centroid_zh.xml" |
  awk -F'\t' 'NF == 0 { print line; line = ""; next } { line = line (line == "" ? "" : " ") $1 }' \
  > "$WORK/zh.tokens"
fasttext skipgram -input "$WORK/zh.tokens" -output "$WORK/ft" -dim 100 -ws 5 -epoch 3 -minCount 3 \
  -minn 0 -maxn 0 -thread 1 -seed 1 -verbose 0
# The plain model's vocabulary, as text, for the expansion list.
"$VORELIN" model inspect --type vocabulary --top 1000000 models/centroid/zh.vocab |
  awk -F'\t' '$1 == "word" { print $2 }' > "$WORK/zh.vocab.txt"
/usr/bin/python3 models/scripts/wordvec_files.py "$WORK/ft.vec" "$WORK/zh.tokens" "$WORK/zh.vocab.txt" \
  --keep 5000 --neighbours 5 --vec-out "$WORK/zh.vec" --expand-out "$WORK/zh.expand"
"$VORELIN" train centroid --quiet --config "$BUILD/models/centroid/centroid_zh.xml" --out "$WORK/vec" \
  --c 8 --min-df 3 --max-size 5000 --no-bias --non-ascii-only --word-vec "$WORK/zh.vec" "$WORK/zh.tsv"
"$VORELIN" train centroid --quiet --config "$BUILD/models/centroid/centroid_zh.xml" --out "$WORK/expand" \
  --c 8 --min-df 3 --max-size 40000 --no-bias --non-ascii-only --word-expand "$WORK/zh.expand" "$WORK/zh.tsv"
"$VORELIN" train centroid --quiet --config "$BUILD/models/centroid/centroid_zh.xml" --out "$WORK/plain" \
  --c 8 --min-df 3 --max-size 40000 --no-bias --non-ascii-only "$WORK/zh.tsv"
for kind in vec expand plain; do
  printf '%s\t' "$kind"
  /usr/bin/python3 models/scripts/corpus.py accuracy zh "$WORK/$kind.xml"
done
# Only the kind that did better on the held-out lines is shipped
# (WORDVEC_KIND in models/wordvec/model.cmake names the same kind).
KIND=expand
cp "$WORK/zh.$KIND" "$OUT/zh.$KIND"
cp "$WORK/$KIND.vocab" "$OUT/$KIND.vocab"
cp "$WORK/$KIND.centroid" "$OUT/$KIND.centroid"
