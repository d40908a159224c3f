#!/usr/bin/env bash
# runtime-exports.sh COMPILER NM OBJDUMP: prints the module definition with which qelplat4 hands out the C++ runtime.
#
# An exception that leaves one library for another needs one unwinder for both, std::cout and a thread one runtime for
# all. The compiler keeps these in DLLs of its own, three more files beside every host. Instead, qelplat4 takes in
# their static twins and exports what they export; whatever links qelplat4 finds the runtime there.
set -euo pipefail
compiler=$1 nm=$2 objdump=$3

# Each name that the compiler's DLLs export.
exported() {
    local library
    for library in libstdc++-6.dll libgcc_s_dw2-1.dll libwinpthread-1.dll; do
        "$objdump" -p "$("$compiler" -print-file-name=$library)" |
            sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] //p'
    done
}

# Each name that their static twins define, without the underscore in front, and its kind as nm shows it.
defined() {
    local archive
    for archive in libstdc++.a libgcc_eh.a libgcc.a libwinpthread.a; do
        "$nm" -g --defined-only "$("$compiler" -print-file-name=$archive)" 2>/dev/null
    done | awk 'NF == 3 { print substr($3, 2), $2 }'
}

# Left out: what is there for programs of older compilers and takes its mutexes from a DLL.
old='^_ZNSt22condition_variable_any|^_pthread_key_dest$'

echo EXPORTS
{
    defined
    exported | grep -Ev "$old"
} | awk 'NF == 2 { kind[$1] = $2 }
     NF == 1 && $1 in kind { print "    " $1 (kind[$1] == "T" ? "" : " DATA"); delete kind[$1] }'
