#!/usr/bin/env bash
# host_test.sh HOST ZORVAN FILE.pdf: the README's host program writes what the program passes through.
set -euo pipefail
cmp <("$1" "$(dirname "$2")/" "$3") <("$2" --quiet --page-size=none "$3" -)
# Nothing against nothing would compare well, too.
"$1" "$(dirname "$2")/" "$3" | tail -n 1 | grep -qx '%%EOF'
