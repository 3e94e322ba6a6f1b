#!/usr/bin/env bash
# Checks the layers that docs/architecture.md draws: who includes whom, and that the toolkit's headers stay in one place.
#   layers.sh SOURCE_DIR
set -euo pipefail
cd "$1"

# A folder, and the folders whose headers it may include in quotes. Its own are always allowed.
allowed='
src/model     :
src/toolkit   :
src/script    : toolkit
src/xmp       : toolkit
src/sync      : toolkit xmp
src/parser    :
src/revision  :
screenplay/source    :
screenplay/xml       : source
screenplay/storyfile : source xml
screenplay/fdx       : source xml
screenplay/fountain  : source
screenplay/formats   : source xml storyfile fdx fountain
host/text     :
host/files    :
host/output   : text files
host/story    : text
host/custody  : text files
host/clip     : custody text files
host/journal  : output clip text files
host/log      : output text
host/match    : log output text
host/report   : output story text
host/commands : output story clip custody journal log match report text files
host/cli      : output story clip journal log match report commands text files
'

failures=0
fail() {
    echo "$1" >&2
    failures=$((failures + 1))
}

checked=0
while IFS=: read -r folder others; do
    folder=${folder// /}
    [ -n "$folder" ] || continue
    [ -d "$folder" ] || fail "$folder: no such folder"
    while IFS= read -r line; do
        checked=$((checked + 1))
        included=$(sed -E 's/.*#include "([^/"]+)\/.*/\1/' <<<"$line")
        case " ${folder##*/} $others " in
            *" $included "*) ;;
            *) fail "$folder may not include from $included: $line" ;;
        esac
    done < <(grep -rnE '#include "' "$folder" --include='*.h' --include='*.cpp' || true)
done <<<"$allowed"
[ "$checked" -gt 20 ] || fail "only $checked includes were looked at"

# The toolkit's headers: the toolkit layer alone. Public headers: no toolkit, nothing of src.
while IFS= read -r file; do
    fail "$file includes the XMP toolkit's headers"
done < <(grep -rlE '#include *[<"]exempi' include platform src screenplay host --include='*.h' --include='*.cpp' | grep -v '^src/toolkit/' || true)
grep -rq '#include <exempi/' src/toolkit || fail "the toolkit layer does not include the toolkit"

# What a host may include: installed headers, in angle brackets.
while IFS= read -r line; do
    fail "a public header includes what is not installed: $line"
done < <(grep -rnE '#include "' include platform/*/include screenplay/include || true)

exit $((failures > 0))
