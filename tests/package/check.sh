#!/usr/bin/env bash
# check.sh BUILD [SANITIZERS]: installs the build into a prefix of its own and builds a host against it from outside,
# with the CMake package and with pkg-config.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
build=$1 flags=${2:+-fsanitize=$2}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

cmake --install "$build" --prefix "$prefix" >/dev/null
export CXXFLAGS=$flags LD_LIBRARY_PATH=$prefix/lib PKG_CONFIG_PATH=$prefix/lib/pkgconfig

expect() {
    [ "$2" = "$3" ] && return
    printf '%s: wanted "%s", found "%s"\n' "$1" "$2" "$3"
    exit 1
}
expect "header folders" "qelfdb4 qellib4 qelplat4 qelprop4 qelsq4" "$(cd "$prefix/include" && echo *)"
expect "package folders" "lib/cmake/qelprop4" "$(cd "$prefix" && echo lib*/cmake/*)"
outside='#[ \t]*include[ \t]*[<"](sqlite3|zlib|zconf|unicode/)'
expect "outside headers in public ones" "" "$(grep -rnE "$outside" "$prefix/include" || true)"

cmake -G Ninja -S "$here" -B "$prefix/cmake-host" -DCMAKE_PREFIX_PATH="$prefix"
cmake --build "$prefix/cmake-host"
"$prefix/cmake-host/host"
echo "built and ran with find_package"

for library in qelplat4 qellib4 qelsq4 qelfdb4 qelprop4; do
    expect "version of $library" "4.0.0" "$(pkg-config --modversion $library)"
done
g++ -std=c++17 $flags "$here/host.cpp" -o "$prefix/pkg-config-host" $(pkg-config --cflags --libs qelprop4)
"$prefix/pkg-config-host"
echo "built and ran with pkg-config"
