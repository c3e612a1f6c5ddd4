#!/usr/bin/env bash
# The manual page renders without a warning, and Markdown that looks like roff stays text.
# Usage: man-page.sh TOOLS_MAN_PAGE INSTALLED_PAGE WORK_DIR
set -euo pipefail
convert=$1 page=$2 work=$3
rm -rf "$work" && mkdir -p "$work"
failed=0
fail() { echo "FAIL: $*" >&2; failed=1; }

render() {  # prints the page as text; any warning from the formatter fails
  MANWIDTH=120 LC_ALL=C.UTF-8 man --warnings=all -l "$1" 2>"$work/warnings" | col -bx | tr -s ' '
  [ ! -s "$work/warnings" ] || { fail "$1: $(cat "$work/warnings")"; }
}

text=$(render "$page")
for heading in NAME SYNOPSIS DESCRIPTION 'GLOBAL OPTIONS' COMMANDS; do
  grep -q "^$heading" <<<"$text" || fail "the installed page has no $heading section"
done
grep -q -- '--catalogue PATH' <<<"$text" || fail "the options table did not survive"
grep -q 'discary scan' <<<"$text" || fail "the commands did not survive"

cat > "$work/odd.md" <<'MD'
# odd page
## Section
.TH a line that would be a request
'br nor this
A \fBbackslash\fR and \\ two, `code \n with - dash`, **bold *nested* text** and *an unclosed one
and an unclosed `tick, [a link](http://x) and [half a link](
| only | a | ragged |
|---|---|
| cell | with \| bar |
| short |
| .starts | 'with | marks |
- an item
  that goes on
- .dot item

    indented code
    .and a dot
```
fenced \ code
```
```
never closed
MD
"$convert" "$work/odd.md" "$work/odd.1" '0.0\"x' || fail "the converter failed on odd input"
odd=$(render "$work/odd.1" | tr '\n' ' ' | tr -s ' ')
for expected in '.TH a line that would be a request' "'br nor this" '\fBbackslash\fR' 'code \n with - dash' \
    'bold nested text' 'a link and' 'ragged: marks' 'cell' '.starts' 'an item that goes on' '.dot item' 'indented code' \
    '.and a dot' 'fenced \ code' 'never closed'; do
  grep -qF -- "$expected" <<<"$odd" || fail "'$expected' is missing from the odd page"
done
: >"$work/empty.md"
"$convert" "$work/empty.md" "$work/empty.1" 1 && render "$work/empty.1" >/dev/null || fail "an empty page did not convert"
exit $failed
