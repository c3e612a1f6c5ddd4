#!/usr/bin/env bash
# Imports a generated N-row collection export of the public music database (default 100,000)
# through `discary import` into a fresh catalogue, three times, and prints per run: rows, wall
# seconds, peak RSS in MB, then the entries the catalogue holds afterwards. Builds Release first.
# Usage: bench/discogs.sh [N]
set -euo pipefail
cd "$(dirname "$0")/.."
n=${1:-100000}
dir=$(tools/build release)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
/usr/bin/python3 bench/make-discogs-export.py "$n" > "$work/export.csv"
bin=$dir/app/discary
for i in 1 2 3; do
  rm -f "$work"/c.sqlite*
  start=$(date +%s%N)
  /usr/bin/time -f "%M" -o "$work/rss" "$bin" --catalogue "$work/c.sqlite" --settings "$work/s.conf" --quiet \
    import "$work/export.csv" >/dev/null
  ms=$(( ($(date +%s%N) - start) / 1000000 ))
  printf 'discogs import\t%s\t%d.%03d\t%d\n' "$n" $((ms / 1000)) $((ms % 1000)) $(( $(cat "$work/rss") / 1024 ))
done
count=$("$bin" --catalogue "$work/c.sqlite" --settings "$work/s.conf" --json collections |
        /usr/bin/python3 -c 'import json,sys; print(sum(c["count"] for c in json.load(sys.stdin)[2:]))')
printf 'entries in folders\t%s\n' "$count"
