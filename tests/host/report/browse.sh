#!/usr/bin/env bash
# Opens reports in a real browser: that they open without a word on the console, that links lead somewhere, that what a
# hostile story says never becomes markup, that they print, and what axe finds where that can be had.
#   browse.sh ZONSTORY SAMPLES_DIR WORK_DIR      exit code 77 where there is no browser
set -euo pipefail
zonstory=$1 samples=$2 work=$3

browser=$(command -v chromium || command -v chromium-browser) || { echo "skipped: no chromium"; exit 77; }
mkdir -p "$work"
work=$(cd "$work" && pwd)
rm -rf "$work"/{rushes,profile,*.html,*.pdf,*.txt}
mkdir "$work/rushes"
fail() { echo "$1" >&2; exit 1; }

browse() { # OPTIONS... FILE: what the browser prints of a page; its console goes to console.txt
    timeout 60 "$browser" --headless --no-sandbox --disable-gpu --disable-dev-shm-usage --hide-scrollbars --no-first-run \
        --disable-extensions --user-data-dir="$work/profile" --enable-logging=stderr --virtual-time-budget=20000 "$@" 2>"$work/console.txt" ||
        { cat "$work/console.txt"; fail "the browser failed"; }
    if grep CONSOLE "$work/console.txt"; then fail "the console is not silent"; fi
}

# Clips that carry scenes, one of them under a hostile name; sidecars will do.
hostile='"><img src=x onerror=document.title=1>'
for name in 3A-1 3B-2 12-1 "$hostile"; do echo picture >"$work/rushes/$name.mxf"; done
"$zonstory" -q write "$samples/the-last-ferry.fdx" --scene 3 "$work"/rushes/3*.mxf "$work/rushes/$hostile.mxf" >"$work/written.txt"
printf 'Title: %s\n\nINT. %s - DAY #1#\n\n%s\n\n@%s\n(%s)\n%s\n' "$hostile" "$hostile" "<script>document.title=1</script>" \
    "$hostile" "javascript:document.title=1" "</p><script>document.title=1</script>" >"$work/hostile.fountain"

"$zonstory" report "$samples/the-last-ferry.fdx" "$work/rushes" -o "$work/ferry.html" >>"$work/written.txt"
"$zonstory" report "$work/hostile.fountain" "$work/rushes" -o "$work/hostile.html" >>"$work/written.txt" 2>&1 || [ $? -eq 4 ]

for page in ferry hostile; do
    browse --dump-dom "file://$work/$page.html" >"$work/$page.dom.html"
    # What the browser made of it: no element but the template's, and every link leads to a part of the page or a clip.
    perl -0777 -ne '
        my %known = map { $_ => 1 } qw(html head meta title style body a header h1 dl div dt dd nav ul li main section h2 b
            figure h3 svg rect text table caption thead tr th tbody td article p span details summary bdi footer);
        my $folder = shift @ARGV;
        s/<style>.*?<\/style>//s;
        while (/<([a-zA-Z][^\s>\/]*)/g) { $known{$1} or die "the page has an element $1\n" }
        my %ids;
        while (/ id="([^"]*)"/g) { $ids{$1}++ and die "two parts are called $1\n" }
        my $links = 0;
        while (/ href="([^"]*)"/g) {
            (my $link = $1) =~ s/%([0-9A-F]{2})/chr hex $1/ge;
            ++$links;
            ($link =~ /^#(.*)/ ? $ids{$1} : -e "'"$work"'/$link") or die "$link leads nowhere\n";
        }
        $links > 9 or die "only $links links\n";' "$work/$page.dom.html"
done
grep -q '>Clips that show scene 3\|aria-label="Clips that show scene 3"' "$work/ferry.dom.html" || fail "scene 3 has no lines"
grep -qF 'Sixty-three years late' "$work/ferry.dom.html" || fail "the script is not on the page"
grep -q '<title>"&gt;&lt;img' "$work/hostile.dom.html" || fail "the title changed"

browse --no-pdf-header-footer --print-to-pdf="$work/ferry.pdf" "file://$work/ferry.html"
[ "$(head -c 5 "$work/ferry.pdf")" = "%PDF-" ] && [ "$(wc -c <"$work/ferry.pdf")" -gt 20000 ] || fail "it does not print"

# A phone, a tablet and a screen show the whole width. What measures is put into a copy, which allows scripts.
with_script() { # SCRIPT...
    perl -0777 -pe 's/<meta http-equiv="Content-Security-Policy"[^>]*>//; my $more = join "", map { "<script$_</script>" } split /\|\|/, $ENV{SCRIPTS};
        s{</body>}{$more</body>}' "$work/ferry.html"
}
SCRIPTS='>document.title = document.documentElement.scrollWidth + " of " + innerWidth' with_script >"$work/width.html"
for width in 500 900 1600; do # the narrowest window that it has
    browse --window-size=$width,900 --dump-dom "file://$work/width.html" >"$work/width.txt"
    grep -q "<title>$width of $width</title>" "$work/width.txt" || fail "at $width the page is $(grep -m 1 -o '<title>.*</title>' "$work/width.txt")"
done

# axe from the registry that npm is set up with.
axe=$work/npm/node_modules/axe-core/axe.min.js
[ -f "$axe" ] || { mkdir -p "$work/npm"; timeout 60 npm install --silent --no-audit --no-fund --prefix "$work/npm" axe-core@4 >"$work/npm.txt" 2>&1; } ||
    { echo "not checked by axe: npm or its registry is not there"; exit 0; }
SCRIPTS=' src="'$axe'">||>axe.run().then(found => { document.documentElement.innerHTML = "<pre>AXE " + found.passes.length +
    found.violations.map(v => "\nVIOLATION " + v.id + ": " + v.nodes.length + " " + v.nodes[0].html).join("") })' with_script \
    >"$work/axe.html"
for scheme in 0 1; do # dark, light
    browse --blink-settings=preferredColorScheme=$scheme --dump-dom "file://$work/axe.html" >"$work/axe$scheme.txt"
    grep -qE 'AXE [1-9][0-9]' "$work/axe$scheme.txt" || fail "axe did not run"
    if grep VIOLATION "$work/axe$scheme.txt"; then fail "axe objects (colour scheme $scheme)"; fi
done
