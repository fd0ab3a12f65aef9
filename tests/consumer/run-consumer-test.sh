#!/usr/bin/env bash
# Installs the built library into a scratch prefix, then builds and runs the
# consumer program against it twice: through find_package and through pkg-config.
# Arguments: build dir, source dir of this test, C++ compiler, extra flags.
set -euo pipefail
build_dir=$1
test_dir=$2
cxx=$3
extra_flags=${4:-}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix="$work/prefix"

cmake --install "$build_dir" --prefix "$prefix" >/dev/null

echo "== find_package(velcoredata)"
cmake -S "$test_dir/cmake-package" -B "$work/cmake-build" -G Ninja \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" \
  -DCMAKE_CXX_FLAGS="$extra_flags" -DCMAKE_EXE_LINKER_FLAGS="$extra_flags" >/dev/null
cmake --build "$work/cmake-build" >/dev/null
LD_LIBRARY_PATH="$prefix/lib:${LD_LIBRARY_PATH:-}" "$work/cmake-build/consumer"
LD_LIBRARY_PATH="$prefix/lib:${LD_LIBRARY_PATH:-}" "$work/cmake-build/quickstart"

echo "== README shows examples/quickstart.cpp as it is"
source_dir=$(cd "$test_dir/../.." && pwd)
awk '/^<!-- quickstart: examples\/quickstart.cpp -->$/ {found=1; next}
     found && /^```cpp$/ {inside=1; next}
     inside && /^```$/ {exit}
     inside {print}' "$source_dir/README.md" > "$work/readme-quickstart.cpp"
diff -u "$source_dir/examples/quickstart.cpp" "$work/readme-quickstart.cpp"

echo "== pkg-config velcoredata"
libdir=$(find "$prefix" -name velcoredata.pc -printf '%h\n' | head -n 1)
export PKG_CONFIG_PATH="$libdir${PKG_CONFIG_PATH:+:$PKG_CONFIG_PATH}"
# shellcheck disable=SC2046,SC2086
"$cxx" $extra_flags -fPIC "$test_dir/consumer.cpp" -o "$work/consumer-pc" \
  $(pkg-config --cflags --libs velcoredata)
LD_LIBRARY_PATH="$(dirname "$libdir"):${LD_LIBRARY_PATH:-}" "$work/consumer-pc"
