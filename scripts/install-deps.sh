#!/usr/bin/env bash
# Installs the Debian packages that the build needs and that are missing.
# Usage: scripts/install-deps.sh [extra-package ...]
set -euo pipefail

packages=(cmake make g++ pkg-config libgtest-dev libgmock-dev libeigen3-dev python3 python3-jieba python3-pytest "$@")

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  if command -v sudo >/dev/null 2>&1; then SUDO="sudo"; else
    echo "install-deps: need root (or sudo) to install: ${missing[*]}" >&2
    exit 1
  fi
fi
echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
