#!/usr/bin/env bash
# Checks that the README's program is the one that is compiled and run.
#   quotes.sh SOURCE_DIR
set -euo pipefail
cd "$1"
diff -u samples/link-the-library.cpp <(awk '/^```cpp$/ {inside = 1; next} /^```$/ {inside = 0} inside' README.md)
