#!/usr/bin/env bash
# Makes the pages of the documentation, twice for the same bytes, and opens them in a browser.
# usage: test_site.sh FOLDER VERSION   (run by ctest)
set -euo pipefail

tools=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
"$tools/make_site.py" "$1" "$2"
"$tools/make_site.py" "$1-again" "$2"
diff -r "$1" "$1-again"
"$tools/check_site.py" "$1"
