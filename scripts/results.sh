# results.sh: runs the suite of a build and counts its cases: those of every GoogleTest program, and each other check
# as one.
passed=0 failed=0 skipped=0

# run_suite PRESET: runs everything through ctest and fills the counts; failures are shown.
run_suite() {
    local folder=build/$1 began=$SECONDS status=0
    rm -rf "$folder/results"
    printf 'Testing %s ... ' "$1"
    # The suite has its own locale and time zone; single tests set others.
    LC_ALL=C.UTF-8 TZ=UTC0 GTEST_OUTPUT="xml:$PWD/$folder/results/" GTEST_COLOR=no \
        ctest --test-dir "$folder" -j "$jobs" --no-tests=error --output-on-failure \
        --output-junit "$PWD/$folder/results.xml" >>"$log" 2>&1 || status=$?
    duration $((SECONDS - began))
    printf '\n'
    count_results "$folder"
    show_skipped "$folder"
    if [ $status -ne 0 ]; then
        show_failures "$folder"
        [ $failed -gt 0 ] || failed=1
    fi
}

# count_results FOLDER: adds up ctest's report; a GoogleTest program that left its own report counts by its cases.
count_results() {
    local name status counts
    [ -s "$1/results.xml" ] || return 0
    while IFS=$'\t' read -r name status; do
        counts="0 0 0"
        case $status in
            run) counts="1 0 0" ;;
            fail) counts="0 1 0" ;;
            *) counts="0 0 1" ;;
        esac
        [ -s "$1/results/test_$name.xml" ] && counts=$(count_cases "$1/results/test_$name.xml" "$status")
        read -r p f s <<<"$counts"
        passed=$((passed + p)) failed=$((failed + f)) skipped=$((skipped + s))
    done <<<"$(sed -n 's/.*<testcase name="\([^"]*\)".* status="\([^"]*\)".*/\1\t\2/p' "$1/results.xml")"
}

# count_cases FILE STATUS: passed, failed and skipped cases of one program; a crash after the last case is a failure.
count_cases() {
    awk -v status="$2" '
        /<testcase / { all++; if (/result="skipped"/) skipped++; if (/status="notrun"/) skipped++ }
        /<testcase / { open = 1 }
        /<failure / && open { failed++; open = 0 }
        END {
            if (status == "fail" && !failed) { failed = 1; all++ }
            print all - failed - skipped, failed + 0, skipped + 0
        }' "$1"
}

# show_skipped FOLDER: names the cases that the machine had no place for, and why.
show_skipped() {
    local report
    for report in "$1"/results/*.xml; do
        [ -s "$report" ] || continue
        sed -n -e '/<testcase /{h;/status="notrun"/{s/.* name="\([^"]*\)".*classname="\([^"]*\)".*/skipped: \2.\1 (disabled)/p;}}' \
            -e '/<skipped message=/{H;x;s/\n/ /;s/.*<testcase name="\([^"]*\)".*classname="\([^"]*\)".*<skipped message="\([^"]*\)".*/skipped: \2.\1 (\3)/p;}' \
            "$report" | sed 's/&#x0A;/ /g; s/ *)$/)/; s/([^ ]*\.cpp:[0-9]* */(/'
    done
}

# show_failures FOLDER: names the cases that failed and the checks that are not GoogleTest programs.
show_failures() {
    printf '\n'
    grep -hE '^([0-9]+: )?\[  FAILED  \] |^.*(Failed|Exception|Timeout|Not Run)\)?$' "$log" | sort -u | head -n 40 || true
    printf '\nThe whole log: %s\n' "$log"
}

# verdict: the last line; the exit code says the same.
verdict() {
    if [ $failed -gt 0 ]; then
        printf '%s tests failed, ' "$(thousands $failed)"
    fi
    printf '%s tests passed, %s skipped, %s\n' \
        "$(thousands $passed)" "$(thousands $skipped)" "$(duration $((SECONDS - started)))"
    [ $failed -eq 0 ]
}
