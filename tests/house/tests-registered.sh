#!/usr/bin/env bash
# tests-registered.sh ROOT BUILD: every *_test.cpp on the disk is compiled into a test program, and none is switched off.
set -euo pipefail
cd "$1"
registered=$2/compile_commands.json
count=0 missing=0
while read -r file; do
    count=$((count + 1))
    grep -q "\"file\": \"$PWD/$file\"" "$registered" && continue
    echo "$file: not in the build"
    missing=$((missing + 1))
done <<<"$(find tests -name '*_test.cpp' | sort)"
off=$(grep -rnE 'DISABLED_|^[ \t]*#[ \t]*if[ \t]+0' tests libeval host platform tools --include='*.cpp' --include='*.h' 2>/dev/null || true)
[ -z "$off" ] || echo "$off"
echo "$count test files, $missing not in the build"
[ $missing -eq 0 ] && [ -z "$off" ]
