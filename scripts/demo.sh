#!/usr/bin/env bash
# Builds the library, the tools and the default model, then classifies a few
# Chinese and English sentences with the default model.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/install-deps.sh
# The same folder and build type as scripts/test.sh, so that whichever runs
# second reuses what the first built.
BUILD_DIR=${BUILD_DIR:-build}
cmake -S . -B "$BUILD_DIR" -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} >/dev/null
cmake --build "$BUILD_DIR" -j"${JOBS:-$(nproc)}"

echo
echo "== vorelin classify with the default model (score, tab, text) =="
"$BUILD_DIR/tools/vorelin" classify --quiet \
  "这家酒店的服务非常好，房间干净整洁，下次还会再来。" \
  "外卖送得太慢了，菜都凉了，味道也很一般。" \
  "虽然价格有点贵，但是味道真的不错。" \
  "质量不好，用了两天就坏了，很失望。" \
  "The staff were friendly and the room was spotless." \
  "Terrible service, the food was cold and overpriced." \
  "Not bad at all, I would recommend it." \
  "The battery does not last and the screen cracked."

echo
echo "== the example host in plain C, through libVorelin.so =="
"$BUILD_DIR/examples/vorelin_example_host" "$BUILD_DIR/models/default/default_utf8.xml" \
  "这本书写得太好了" "The delivery was late and the box was damaged." | grep -v '^<'
