#!/usr/bin/env bash
# Installs the Debian packages that building, testing, benchmarking and fuzzing
# libvelcoredata need. Idempotent: when everything is present it only runs
# dpkg-query and returns in well under a second.
set -euo pipefail

packages=(
  # toolchain
  cmake ninja-build ccache g++ pkg-config
  # clang + libFuzzer/sanitizer runtimes for the `fuzz` preset
  clang libclang-rt-14-dev
  # libraries the library links against
  qtbase5-dev libicu-dev libboost-dev libtbb-dev libxxhash-dev
  # tests and benchmarks
  googletest libgtest-dev libgmock-dev libbenchmark-dev
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ "$status" == "install ok installed" ]] || missing+=("$p")
done

if ((${#missing[@]} == 0)); then
  exit 0
fi

echo "setup-deps: installing ${missing[*]}" >&2
sudo=""
if [[ $(id -u) -ne 0 ]]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
