#!/usr/bin/env bash
# host_test.sh BUILD-FOLDER FILE.pdf [WINE]: the README's host program writes what the program writes.
set -euo pipefail
build=$1 pdf=$2 wine=${3:-}
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
if [ -n "$wine" ]; then
    "$wine" "$build/readme_host.exe" "$build/" "$pdf" "$folder/host.ps"
else
    "$build/readme_host" "$build/" "$pdf" "$folder/host.ps"
fi
"$build/zorvan" --quiet --page-size=none "$pdf" "$folder/program.ps"
cmp "$folder/host.ps" "$folder/program.ps"
# Nothing against nothing would compare well, too.
tail -n 1 "$folder/host.ps" | grep -qx '%%EOF'
