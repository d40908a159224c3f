#!/usr/bin/env bash
# include-direction.sh ROOT: counts the includes from folder to folder; fails on any that points up or sideways, and on
# platform conditions outside platform/.
set -euo pipefail
shopt -s nullglob
cd "$1"
houses=(platform host libeval tools*)
faults=0

# What each folder may include besides itself.
declare -A allowed=(
    [platform]=""
    [qellib4]="platform"
    [qelsq4]="platform qellib4"
    [qelfdb4]="platform qellib4 qelsq4"
    [qelprop4]="platform qellib4 qelsq4 qelfdb4"
    [resources]="platform qellib4"
    [value]="platform qellib4 qelprop4 resources"
    [table]="platform qellib4 qelprop4 value resources"
    [common]="platform qellib4 qelsq4 qelprop4 table value resources"
    [qelpropdb]="platform qellib4 qelsq4 qelprop4 common table value resources"
    [qelpropdb3x]="platform qellib4 qelsq4 qelfdb4 qelprop4 common table value resources"
    [tools]="platform qellib4 qelsq4 qelfdb4 qelprop4"
)

# Prints "file:line from to" for every include of a file of the house.
edges() {
    find "${houses[@]}" \( -name '*.h' -o -name '*.cpp' \) | sort | xargs awk '
        function folder(path) {
            if (path ~ /^(platform|tools)\//) return substr(path, 1, index(path, "/") - 1)
            sub(/^(host|libeval)\//, "", path)
            return substr(path, 1, index(path, "/") - 1)
        }
        /^[ \t]*#[ \t]*include/ {
            path = $0
            sub(/^[^<"]*[<"]/, "", path); sub(/[>"].*/, "", path)
            sub(/^(\.\.\/)+/, "", path)
            if (path !~ /\//) next # beside the file, or of the system
            sub(/^(host|libeval)\//, "", path)
            to = substr(path, 1, index(path, "/") - 1)
            if (to == "qelplat4" || to == "posix" || to == "windows") to = "platform"
            if (to == "common" && FILENAME ~ /^platform\//) to = "platform"
            if (FILENAME ~ /^tools\// && to !~ /^qel/) next # folders of its own
            if (to ~ /^(platform|tools|qel|resources$|value$|table$|common$)/)
                print FILENAME ":" FNR, folder(FILENAME), to
        }'
}

edges=$(edges)
while read -r place from to; do
    [ "$from" = "$to" ] && continue
    if [ -z "${allowed[$from]+known}" ]; then
        echo "$place: folder '$from' has no place in the order of includes"
        faults=$((faults + 1))
    elif [[ " ${allowed[$from]} " != *" $to "* ]]; then
        echo "$place: $from must not include $to"
        faults=$((faults + 1))
    fi
done <<<"$edges"

echo "includes from folder to folder:"
awk '$2 != $3 { n[$2 " -> " $3]++ } END { for (edge in n) printf "%5d  %s\n", n[edge], edge }' <<<"$edges" | sort -k2

conditions='^[ \t]*#[ \t]*(if|elif).*(_WIN32|_WIN64|__linux__|__unix__|__APPLE__|__GNUC__|__clang__|_MSC_VER|__MINGW)'
found=$(grep -rnE "$conditions" "${houses[@]:1}" examples --include='*.h' --include='*.cpp' || true)
if [ -n "$found" ]; then
    echo "platform conditions outside platform/:"
    echo "$found"
    faults=$((faults + $(wc -l <<<"$found")))
fi

[ $faults -eq 0 ] || { echo "$faults faults"; exit 1; }
