#!/usr/bin/env bash
# Printing at scale: a catalogue of N entries (default 1,000, 10 tracks each) printed to PDF in the
# "Info" layout by `discary print`, three runs, with peak memory. Builds Release first.
# Usage: bench/print.sh [N]
set -euo pipefail
cd "$(dirname "$0")/.."
n=${1:-1000}
dir=$(tools/build release)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
db=$work/Discary.sqlite
"$dir/bench/catalogue_bench" create "$db" "$n" >/dev/null
for i in 1 2 3; do
  start=$(date +%s%N)
  /usr/bin/time -o "$work/time" -f "%M" \
    "$dir/app/discary" --catalogue "$db" --settings "$work/s.conf" --quiet --json print --layout Info --pdf "$work/info.pdf" \
    > "$work/result.json"
  ms=$(( ($(date +%s%N) - start) / 1000000 ))
  pages=$(sed -n 's/.*"pages":\([0-9]*\).*/\1/p' "$work/result.json")
  printf 'print Info\t%s\t%d.%03d s\t%s pages\t%s bytes\tpeak RSS %s KB\n' "$n" $((ms / 1000)) $((ms % 1000)) \
    "$pages" "$(stat -c %s "$work/info.pdf")" "$(cat "$work/time")"
done
