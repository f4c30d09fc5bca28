#!/usr/bin/env bash
# Builds models/default/en/positive.txt and negative.txt from the VADER lexicon
# shipped in the npm package vader-sentiment, and copies the package's licence
# and notice next to them (Apache-2.0 asks for both to travel with derived work).
#
# Usage: models/scripts/build_en_lists.sh [output-dir]
# Needs: bash, npm, python3. Reads negation.txt from the output directory, so
# negation words never end up scored as sentiment words.
set -euo pipefail

PKG=vader-sentiment
# Pinned so that a rebuild gives the same lists; bump deliberately and review.
VERSION=1.1.3
EXPECTED_LICENSE=Apache-2.0

here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
out=${1:-"$here/../default/en"}
out=$(cd "$out" && pwd)
[[ -f "$out/negation.txt" ]] || { echo "missing $out/negation.txt" >&2; exit 1; }

tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

npm install --no-save --no-audit --no-fund --loglevel=error \
    --prefix "$tmp" "$PKG@$VERSION" >/dev/null

pkgdir="$tmp/node_modules/$PKG"
lexicon=$(find "$pkgdir" -name vader_lexicon.txt -type f | head -n 1)
[[ -n "$lexicon" ]] || { echo "vader_lexicon.txt not found in $PKG@$VERSION" >&2; exit 1; }

license=$(node -p "require('$pkgdir/package.json').license")
if [[ "$license" != "$EXPECTED_LICENSE" ]]; then
    echo "$PKG@$VERSION declares licence '$license', expected $EXPECTED_LICENSE; review before use" >&2
    exit 1
fi

# Apache-2.0 section 4: ship the licence text and the NOTICE with derived files.
{
    echo "The files positive.txt and negative.txt in this directory are derived from"
    echo "vader_lexicon.txt in the npm package $PKG $VERSION, licensed $license."
    echo "Its NOTICE and LICENSE follow unchanged."
    echo
    echo "==== NOTICE ===="
    cat "$pkgdir/NOTICE"
    echo
    echo "==== LICENSE ===="
    cat "$pkgdir/LICENSE"
} > "$out/vader-sentiment.LICENSE"

PKG="$PKG" VERSION="$VERSION" LICENSE="$license" \
python3 - "$lexicon" "$out" <<'PY'
import os, re, sys

lexicon, out = sys.argv[1], sys.argv[2]
pkg, version, licence = os.environ["PKG"], os.environ["VERSION"], os.environ["LICENSE"]

# VADER means lie on -4..+4, averaged over ten raters. Below |1.0| a word was
# rated at most "slightly" polar on average (okay 0.9, fine 0.8, limited -0.9,
# hard -0.4); in reviews such words rarely decide the label and add noise, so
# both lists start at |mean| >= 1.0. The rater spread is not used: filtering on
# it drops clear review words (chic, flattering) without catching the real
# problems, which are context ones and are listed below.
THRESHOLD = 1.0

# Only plain words: this drops emoticons, "(:"-style entries and multi-word
# phrases, which the tokenizer never produces as one token.
WORD = re.compile(r"[a-z'-]+")

# Words whose VADER polarity does not hold in product, food, travel and movie
# reviews. Kept here, not edited out of the outputs, so a rebuild keeps them out.
EXCLUDE = {
    # letter-spelt emoticons
    "xd", "xp", "x-d", "x-p",
    # degree words and intensifiers: they scale the next word, whatever its sign
    "pretty", "super", "crazy", "insane", "freaking", "bloody", "wicked",
    "ridiculously", "damn", "hell", "huge",
    # prepositions, fillers and discourse markers
    "like", "well", "please", "yes", "yeah", "ok", "alright", "sure", "kind",
    "certain", "honestly", "god", "true", "chance", "granted", "grant",
    # hopes and promises: mostly quoted in disappointment ("I hoped ...",
    # "wish it were bigger", "promised two days, took two weeks")
    "hope", "hoped", "hopes", "wish", "promise", "promised", "promises",
    # "save your money", "do yourself a favor", "a joke", "it's a steal"
    "save", "favor", "favors", "joke", "steal", "steals",
    # nearly always negated in reviews ("don't bother", "nobody bothered to
    # check"), so a negative entry turns complaints positive
    "bother", "bothered",
    # service and product nouns or verbs that are neutral in reviews
    "care", "help", "helps", "support", "supported", "credit", "share",
    "interest", "interested", "party", "united", "join", "play", "ready",
    "gift", "holiday", "vip", "fan", "strong",
    "cut", "charges", "fire", "pressure", "drop", "low", "lower", "lowest",
    "killer", "bomb",
    # more intensifiers and discourse adverbs: "definitely not worth it"
    "definitely", "certainly", "surely", "truly", "surprisingly",
    "importantly", "hoping", "hopefully",
    # neutral senses that dominate in reviews: "respectively", "shared
    # bathroom", "tank tops", "coleslaw", "cleaning solution", "PU leather",
    # "bus stop", "cuts of meat", "shiitake", "a bit dear" (= pricey)
    "respective", "respectively", "respectiveness", "successive", "successors", "successionally",
    "hand", "treat", "giving", "interests", "favour", "favours", "dear",
    "dearer", "increase", "increased", "expand", "ensure", "ensuring",
    "create", "created", "creates", "creating", "creation", "creations",
    "entitled", "original", "parties", "played", "plays", "shared", "shares",
    "sharing", "supports", "supporting", "holidays", "vision", "energy",
    "active", "actives", "fitness", "freestanding", "admiral", "admirals",
    "admiralty", "admiralties", "beautician",
    "tops", "slaw", "sweets", "champagne", "diamond", "vitamin", "solution",
    "comforter", "comforters", "relaxer", "relaxers", "warmers", "wells",
    "welling", "credits",
    "block", "cuts", "stop", "shoot", "struck", "strikes", "pressures",
    "nuts", "worn", "alone", "lone", "anti", "emergency", "shitakes",
    "kia", "po", "pu",
    # genre and plot words in book and movie reviews
    "novel", "comedy", "romance", "hero", "heroes", "horror", "crime", "war",
    "wars", "warfare", "villain", "ghost", "battle", "battles", "weapon",
    "weapons", "gun", "enemy", "enemies", "prison", "murder", "killers",
    "death", "funeral", "cancer", "critic", "critics", "teaser",
}

with open(os.path.join(out, "negation.txt"), encoding="utf-8") as f:
    negation = {l.strip() for l in f if l.strip() and not l.startswith("#")}

# The lexicon lists a few tokens twice (case variants); average them.
means = {}
with open(lexicon, encoding="utf-8") as f:
    for line in f:
        fields = line.rstrip("\n").split("\t")
        if len(fields) < 2:
            continue
        token = fields[0].lower()
        if len(token) < 2 or not WORD.fullmatch(token) or not re.search("[a-z]", token):
            continue
        means.setdefault(token, []).append(float(fields[1]))

drop = EXCLUDE | negation
pos, neg = [], []
for token, ms in means.items():
    if token in drop:
        continue
    m = sum(ms) / len(ms)
    if m >= THRESHOLD:
        pos.append(token)
    elif m <= -THRESHOLD:
        neg.append(token)

unused = sorted(w for w in EXCLUDE if w not in means)
if unused:
    print("note: exclusions not in the lexicon: " + " ".join(unused), file=sys.stderr)

def write(name, words, what):
    with open(os.path.join(out, name), "w", encoding="utf-8", newline="\n") as f:
        f.write(f"# {what} English words derived from vader_lexicon.txt of the npm package {pkg} {version}.\n")
        f.write(f"# Licence: {licence} (see vader-sentiment.LICENSE). Kept: single words with |mean| >= {THRESHOLD}.\n")
        f.write("# Generated by models/scripts/build_en_lists.sh; change the script, not this file.\n")
        for w in sorted(words):
            f.write(w + "\n")
    print(f"{name}: {len(words)} words")

write("positive.txt", pos, "Positive")
write("negative.txt", neg, "Negative")
PY
