#!/usr/bin/env bash
# exported-classes.sh BUILD [--print]: the classes and free functions that the shared libraries export are those of the
# kept list beside this script.
set -euo pipefail
kept=$(dirname "$0")/exported-classes.txt

# Prints "library class" or "library function()" once for each; instances of the standard library's templates are not
# ours to keep.
exported() {
    for library in qelplat4 qellib4 qelsq4 qelfdb4 qelprop4; do
        nm -DC --defined-only "$1/lib/lib$library.so" | awk -v library=$library '
            # What follows a type that is told by an expression: "decltype (a-b) f(x)" -> " f(x)".
            function past_decltype(text, depth, at, letter) {
                for (at = index(text, "("); at <= length(text); at++) {
                    letter = substr(text, at, 1)
                    depth += (letter == "(") - (letter == ")")
                    if (depth == 0) return substr(text, at + 1)
                }
            }
            {
                name = substr($0, 20)
                if (name ~ /^decltype *\(/) name = past_decltype(name)
                if (name ~ /^(typeinfo|vtable|VTT|guard variable|construction vtable|(non-)?virtual thunk)/) next
                sub(/\(.*/, "", name); sub(/\[abi:[a-z0-9]*\]/, "", name)
                if (name ~ /(std|__gnu_cxx)::/) next
                if (name ~ /::/ && name !~ /^qel::[^:]*$/) sub(/::[^:]*$/, "", name)
                else name = name "()"
                print library, name
            }'
    done | sort -u
}

if [ "${2:-}" = --print ]; then
    exported "$1"
    exit
fi
if ! exported "$1" | diff "$kept" -; then
    echo "not the kept list (< is missing, > is new); if that is meant: $0 $1 --print >$kept"
    exit 1
fi
