#!/usr/bin/env bash
# Installs into a temporary prefix from a build tree of its own, moves the
# installed tree elsewhere, deletes the build tree, and checks that the moved
# tree still works: the installed vorelin with its model, and a C host built
# against it through pkg-config and through CMake's find_package.
# Environment: BUILD_TYPE (default RelWithDebInfo), JOBS.
set -euo pipefail
cd "$(dirname "$0")/.."
JOBS=${JOBS:-$(nproc)}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "test-install: $*" >&2; exit 1; }

echo "-- building in $work/build"
cmake -S . -B "$work/build" -DCMAKE_BUILD_TYPE="${BUILD_TYPE:-RelWithDebInfo}" \
  -DCMAKE_INSTALL_PREFIX="$work/stage" -DVORELIN_BUILD_TESTS=OFF -DVORELIN_BUILD_EXAMPLES=OFF ${CMAKE_ARGS:-} >/dev/null
cmake --build "$work/build" -j"$JOBS" >/dev/null
cmake --install "$work/build" >/dev/null
mv "$work/stage" "$work/moved"
rm -rf "$work/build"
prefix="$work/moved"
if grep -rlF "$work/stage" "$prefix"; then fail "the files above still name the install prefix"; fi
cd /

echo "-- installed vorelin"
out=$(env -u LD_LIBRARY_PATH "$prefix/bin/vorelin" classify --quiet "这家酒店的服务非常好" "The room was dirty and noisy.") \
  || fail "the installed vorelin did not run"
echo "$out"
[ "$(echo "$out" | awk -F'\t' '$1 > 0' | wc -l)" = 1 ] && [ "$(echo "$out" | awk -F'\t' '$1 < 0' | wc -l)" = 1 ] \
  || fail "unexpected scores from the installed model"

host_source="$OLDPWD/examples/host.c"
config="$prefix/share/vorelin/default/default_utf8.xml"
check_host() {
  local out
  out=$(VORELIN_LOG=off "$1" "$config" "This hotel was wonderful." "The food was awful.") || fail "$1 failed"
  echo "$out"
  [ "$(echo "$out" | grep -c '^+')" = 1 ] && [ "$(echo "$out" | grep -c '^-')" = 1 ] || fail "unexpected scores from $1"
}

echo "-- C host built through pkg-config"
flags=$(PKG_CONFIG_PATH="$prefix/lib/pkgconfig" pkg-config --cflags --libs vorelin)
cc -o "$work/pc_host" "$host_source" -DVORELIN_DEFAULT_CONFIG='""' $flags -Wl,-rpath,"$prefix/lib"
check_host "$work/pc_host"

echo "-- C host built through find_package"
mkdir "$work/consumer"
cat > "$work/consumer/CMakeLists.txt" <<CMAKE
cmake_minimum_required(VERSION 3.16)
project(consumer C)
find_package(Vorelin REQUIRED)
add_executable(cmake_host "$host_source")
target_compile_definitions(cmake_host PRIVATE VORELIN_DEFAULT_CONFIG="")
target_link_libraries(cmake_host PRIVATE Vorelin::Vorelin)
CMAKE
cmake -S "$work/consumer" -B "$work/consumer/build" -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/consumer/build" >/dev/null
check_host "$work/consumer/build/cmake_host"
echo "install: 3 passed, 0 failed"
