# common.sh: what the scripts share. A script sets `purpose` and `options` for --help, then reads this file.
# They must work where /proc is not mounted: no <(...), which needs /dev/fd.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc 2>/dev/null || echo 2)
arguments=()
started=$SECONDS
log=$root/build/logs/$(basename "$0").log

# read_options "$@": takes --help and -j N; what is left stands in `arguments`.
read_options() {
    while [ $# -gt 0 ]; do
        case $1 in
            -h | --help)
                printf 'usage: scripts/%s %s\n%s\n' "$(basename "$0")" "$options" "$purpose"
                exit 0
                ;;
            -j)
                [[ ${2:-} =~ ^[1-9][0-9]*$ ]] || die 2 "-j wants a number"
                jobs=$2
                shift
                ;;
            -j*) jobs=${1#-j} ;;
            *) arguments+=("$1") ;;
        esac
        shift
    done
    cd "$root"
    mkdir -p "$(dirname "$log")"
    : >"$log"
}

# die CODE TEXT: ends the script with a line on standard error.
die() {
    printf '%s: %s\n' "$(basename "$0")" "$2" >&2
    exit "$1"
}

# duration SECONDS: "42 s" or "2 min 10 s".
duration() {
    if [ "$1" -ge 60 ]; then printf '%d min %d s' $(($1 / 60)) $(($1 % 60)); else printf '%d s' "$1"; fi
}

# step TITLE COMMAND...: runs the command with its noise in the log; on failure shows the end of it and stops.
step() {
    local title=$1 began=$SECONDS first
    shift
    first=$(($(wc -l <"$log") + 1))
    printf '%s ... ' "$title"
    if [ -t 1 ]; then show_count "$title" & fi
    if "$@" >>"$log" 2>&1; then
        stop_count
        [ ! -t 1 ] || printf '\r\033[K%s ... ' "$title"
        duration $((SECONDS - began))
        printf '\n'
        return
    fi
    stop_count
    printf 'failed\n\n'
    tail -n "+$first" "$log" | tail -n 40
    printf '\nThe whole log: %s\n' "$log" >&2
    exit 1
}

# show_count TITLE: keeps how far a build is behind the title, as long as the script runs; for terminals.
show_count() {
    while sleep 1 && kill -0 $$ 2>/dev/null; do
        printf '\r%s ... %s ' "$1" "$(tail -n 50 "$log" | grep -o '^\[[0-9]*/[0-9]*\]' | tail -n 1)"
    done
}
stop_count() {
    [ -z "$(jobs -p)" ] || { kill "$(jobs -p)" && wait; } 2>/dev/null || true
}

# build PRESET [TARGET...]: configures and builds a preset in two steps.
build() {
    local preset=$1
    shift
    printf 'What the steps print goes to %s\n' "${log#"$root"/}"
    step "Configuring $preset" cmake --preset "$preset"
    step "Building $preset" cmake --build "build/$preset" -j "$jobs" ${1:+--target "$@"}
}

# thousands NUMBER: 1204 -> 1,204.
thousands() {
    local number=$1
    while [[ $number =~ ^([0-9]+)([0-9]{3}.*)$ ]]; do number=${BASH_REMATCH[1]},${BASH_REMATCH[2]}; done
    printf '%s' "$number"
}
