#!/usr/bin/env bash
# Checks what documents and comments quote: code stands in the project line for line, commands exist with their options,
# and the tests that a comment names are there.
#   quotes.sh SOURCE_DIR
set -euo pipefail
cd "$1"
failures=0
fail() {
    echo "$1" >&2
    failures=$((failures + 1))
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
documents=(README.md CONTRIBUTING.md SECURITY.md docs/*.md samples/README.md)
# Each block of a document in a file of its own: NUMBER.LANGUAGE, or NUMBER.plain.
for document in "${documents[@]}"; do
    mkdir -p "$work/$document"
    awk -v folder="$work/$document" '
        /^```/ && !inside { file = folder "/" NR "." (length($0) > 3 ? substr($0, 4) : "plain"); inside = 1; next }
        /^```$/ { inside = 0; close(file); next }
        inside { print > file }' "$document"
done

quoted=0
while IFS= read -r block; do
    quoted=$((quoted + 1))
    # shellcheck disable=SC2016 # perl's variables
    git ls-files '*.cpp' '*.h' '*.skrx' | xargs perl -0777 -e '
        open(my $in, "<", shift) or die; my $block = <$in>;
        while (<>) { exit 0 if index($_, $block) >= 0 } exit 1' "$block" ||
        fail "${block#"$work/"}: stands in no source file as quoted"
done < <(find "$work" -name '*.cpp' -o -name '*.xml')
[ "$quoted" -gt 5 ] || fail "only $quoted quotations were found"
diff -u samples/link-the-library.cpp "$(find "$work/README.md" -name '*.cpp')" || fail "README.md quotes another program"

# Commands: what scripts, presets, verbs and options they name.
commands=$(find "$work" \( -name '*.sh' -o -name '*.plain' \) -exec cat {} + | grep -E '^(\$ )?([A-Z]+=\S+ )?(scripts/|cmake|ctest|zonstory) *' | sed 's/ #.*//; s/…//')
for script in $(grep -oE '\bscripts/[a-z-]+' <<<"$commands" | sort -u); do
    [ -x "$script" ] || fail "a document runs $script, which is not there"
done
for preset in $(grep -oE -- '--preset [a-z-]+' <<<"$commands" | cut -d' ' -f2 | sort -u); do
    grep -q "\"name\": \"$preset\"" CMakePresets.json || fail "a document names the preset $preset, which is not there"
done
for word in $(grep -E '^(\$ )?zonstory ' <<<"$commands" | grep -oE 'zonstory [a-z]+| -{1,2}[a-z][a-z-]*' | sed 's/zonstory //; s/^ *-*//' | sort -u); do
    grep -rqE "\"[^\"]*\b$word\b" host/cli --include='*.cpp' || fail "a document gives zonstory the word $word, which it does not know"
done
while IFS= read -r shown; do
    grep -qxF "run ${shown#\$ }" scripts/demo || fail "README.md shows what the demonstration does not run: $shown"
done < <(find "$work/README.md" -name '*.plain' -exec grep -h '^\$ ' {} +)
grep -hE '^find_package' "$(find "$work/README.md" -name '*.cmake')" | sed 's/ *#.*//' | grep -qxFf - samples/CMakeLists.txt ||
    fail "README.md finds the package otherwise than the sample does"

# "Held by the tests Suite, Test": both exist; so does a row of a table, "row Name".
while IFS= read -r name; do
    grep -rqE "TEST(_[FP])?\($name,|TEST(_[FP])?\([A-Za-z]+, $name\)|TEST_SUITE_P\($name,|\"${name#row }\"" tests ||
        fail "a comment points to the tests $name, which are not there"
done < <(git ls-files 'src/*' 'platform/*' 'include/*' 'screenplay/*' 'host/*' | xargs perl -0777 -ne '
    s/\n\s*\/\/\/? ?/ /g; while (/Held by the tests? ([^.]*)\./g) { print "$1\n" }' |
    sed -E 's/, the rows of| and /,/g' | tr ',' '\n' | sed -E 's/^ +| +$//g; /^$/d' | sort -u)

exit $((failures > 0))
