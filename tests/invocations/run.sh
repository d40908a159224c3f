#!/usr/bin/env bash
# run.sh PROGRAM [--update] [NAME...]: runs every invocation that help and man page show, as printed, in a folder of its
# own, once for each kind of file, and compares all of stdout, stderr and exit status with the kept transcript.
#
# A transcript is a text:
#   # what it shows
#   > step            how the folder is prepared: a function of prepare.sh, or a command; must succeed
#   $ command         the invocation
#   ? command         another one that shows what the first has done
#   --- sqlite        what is expected, for the kinds named: "| " stdout, "! " stderr, "= " exit status
set -uo pipefail
here=$(cd "$(dirname "$0")" && pwd)
program=$(realpath "$1")
shift
update=
[ "${1:-}" = --update ] && { update=1; shift; }
export LC_ALL=C.UTF-8 TZ=UTC PATH="$(dirname "$program"):$PATH"
unset NO_COLOR
# In memory where there is such a place: every command flushes its file to the disk.
work=$(mktemp -d /dev/shm/invocations.XXXXXX 2>/dev/null || mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT
source "$here/prepare.sh"

# Brings the empty folder to a state of prepare.sh, which is made once for each kind.
state() {
    local kept=$work/states/$kind/$1
    if [ -d "$kept" ]; then
        cp -p "$kept"/* .
    else
        "$1" && mkdir -p "$kept" && cp -p ./* "$kept"
    fi
}

# One step before the invocation: a state to begin with, or a command.
prepare() {
    if [ -z "$(ls)" ] && declare -F "$1" >/dev/null; then state "$1"; else eval "$1"; fi
}

# Runs one command and prints what came of it.
show() {
    local status
    bash -c "$1" >"../out" 2>"../err" </dev/null
    status=$?
    sed 's/^/| /' ../out
    [ -s ../out ] && [ -n "$(tail -c1 ../out)" ] && echo
    sed 's/^/! /' ../err
    echo "= $status"
}

# Runs a transcript's head for one kind of file and prints what is to stand below it.
play() {
    local line
    kind=$2
    mkdir -p "$work/$kind"
    cd "$work/$kind" || exit 1
    rm -rf folder
    mkdir folder
    cd folder || exit 1
    while IFS= read -r line; do
        case $line in
        '> '*) prepare "${line#> }" >../prepared 2>&1 || { echo "cannot prepare: ${line#> }"; cat ../prepared; } ;;
        '$ '*) show "${line#\$ }" ;;
        '? '*) echo "? ${line#\? }"; show "${line#\? }" ;;
        '--- '*) break ;;
        esac
    done <"$1"
    cd "$here" || exit 1
}

# Prints what a transcript expects for one kind.
expected() {
    awk -v kind="$2" '/^--- / { on = index($0 " ", " " kind " ") > 0; next } on' "$1"
}

write() {
    local head
    head=$(sed '/^--- /,$d' "$1")
    { echo "$head"; if [ "$2" = "$3" ]; then printf -- '--- sqlite legacy\n%s\n' "$2"
      else printf -- '--- sqlite\n%s\n--- legacy\n%s\n' "$2" "$3"; fi; } >"$work/new"
    mv "$work/new" "$1"
}

# Compares every transcript for one kind. @return the number of those that came out otherwise
compare() {
    local transcript faults=0
    for transcript in "${transcripts[@]}"; do
        play "$transcript" "$1" >"$work/$1.came"
        expected "$transcript" "$1" |
            diff -u --label "kept: $(basename "$transcript" .txt), $1" --label came - "$work/$1.came" || faults=$((faults + 1))
    done
    return $faults
}

transcripts=()
for transcript in "$here"/*.txt; do
    name=$(basename "$transcript" .txt)
    if [ $# -gt 0 ] && [[ " $* " != *" $name "* ]]; then continue; fi
    if grep -q '^\$ script ' "$transcript" && ! script -qec true /dev/null </dev/null >/dev/null 2>&1; then
        echo "skipped, no pseudo-terminal here: $name"
        continue
    fi
    if [ -n "$update" ]; then
        write "$transcript" "$(play "$transcript" sqlite)" "$(play "$transcript" legacy)"
    else
        transcripts+=("$transcript")
    fi
done

# Both kinds side by side.
compare legacy >"$work/legacy.differences" &
compare sqlite
faults=$?
wait $!
faults=$((faults + $?))
cat "$work/legacy.differences"

# Every example of the help is kept here.
if [ $# -eq 0 ]; then
    examples=$(
        "$program" --help | awk '/^First steps:/ { on = 1; next } /^$/ { on = 0 } on && /^  [^ ]/ { print substr($0, 3) }'
        for command in $("$program" --help | awk '/^  [a-z-]+  / { print $1 }'); do
            "$program" "$command" --help | awk '/^Examples:/ { on = 1; next } /^$/ { on = 0 } on && /^  [^ ]/ { print substr($0, 3) }'
        done
    )
    while IFS= read -r example; do
        grep -qxF -- "\$ $example" "$here"/*.txt && continue
        echo "no transcript: $example"
        faults=$((faults + 1))
    done <<<"$examples"
fi
echo "$((2 * ${#transcripts[@]})) runs, $faults faults"
[ $faults -eq 0 ]
