#!/usr/bin/env bash
# example-catalogue.sh HOST: the example host stores a package list, finds it again, and notices what changed.
set -euo pipefail
host=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

cat >"$folder/status" <<'END'
Package: lantern
Status: install ok installed
Section: light
Installed-Size: 20
Version: 1.0-1
Depends: oil (>= 2), wick
Homepage: https://example.org/lantern
Description: a light to carry
 of more lines than one

Package: oil
Essential: yes
Status: install ok installed
Section: light
Installed-Size: 2000
Version: 2.1
Description: what burns

Package: gone
Status: deinstall ok config-files
Version: 1
END
cp "$folder/status" "$folder/changed"
sed -i 's/^Version: 2.1/Version: 2.2/' "$folder/changed"

fail() {
    echo "$1"
    cat "$folder/out"
    exit 1
}
run() { LC_ALL=C.UTF-8 "$host" --folder "$folder" --status "$1" >"$folder/out" 2>&1; }
says() { grep -q -- "$1" "$folder/out" || fail "no line '$1'"; }

run "$folder/status" || fail "first run"
says "Stored 2 packages in catalogue.db"
says "Stored 2 packages in catalogue.store"
says "Found all 2 packages as they were in catalogue.db"
run "$folder/status" || fail "second run"
grep -q Stored "$folder/out" && fail "stored twice"
says "Found all 2 packages as they were in catalogue.db"
says "Found all 2 packages as they were in catalogue.store"
says "Both answer alike: 2 records in one order, 20 equal values"
says "^oil      light    2048000    99.01      0  Yes"

run "$folder/changed" && fail "a changed package went unnoticed"
says "1 of the 2"
run "$folder/none" && fail "a missing list went unnoticed"
says "cannot read the package list"
echo "not a database at all, but long enough to be looked at" >"$folder/catalogue.db"
run "$folder/status" && fail "a file that is no database went unnoticed"
says "failed while"
exit 0
