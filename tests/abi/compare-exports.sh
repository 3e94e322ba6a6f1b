#!/usr/bin/env bash
# Compares what shared libraries export with a checked-in list, so that no name comes or goes unnoticed.
#   compare-exports.sh LIST LIBRARY...          compares
#   compare-exports.sh --update LIST LIBRARY... writes the list anew
set -euo pipefail

update=false
if [ "$1" = --update ]; then
    update=true
    shift
fi
list=$1
shift

# Functions and data of the project's own; code that a compiler makes from others' templates is no promise.
exports() {
    for library in "$@"; do
        nm -DC --defined-only "$library" | sed -E 's/^[0-9a-f]* //' | grep -E '^[TDBRV] ' |
            grep -E '(zonstoryparser|zonscreenplay|zoncore|zonmetadata|SXMP|XMP_Error)' | grep -vE '^. (std|void std)' || true
    done | LC_ALL=C sort -u
}

if $update; then
    exports "$@" >"$list"
else
    [ -s "$list" ]
    diff -u "$list" <(exports "$@")
fi
