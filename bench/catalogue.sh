#!/usr/bin/env bash
# The catalogue at scale: create 100,000 entries with 10 tracks each, open them until the list is
# ready (with peak memory), and `discary list --json` and `discary stats --by genre` over them.
# Builds Release first.
# Usage: bench/catalogue.sh [N]
set -euo pipefail
cd "$(dirname "$0")/.."
n=${1:-100000}
dir=$(tools/build release)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
db=$work/Discary.sqlite
"$dir/bench/catalogue_bench" create "$db" "$n"
for i in 1 2 3; do
  /usr/bin/time -f "open peak RSS %M KB" "$dir/bench/catalogue_bench" open "$db"
done
for i in 1 2 3; do
  start=$(date +%s%N)
  "$dir/app/discary" --catalogue "$db" --settings "$work/s.conf" --json list > "$work/list.json"
  ms=$(( ($(date +%s%N) - start) / 1000000 ))
  printf 'list --json\t%s\t%d.%03d\t%s bytes\n' "$n" $((ms / 1000)) $((ms % 1000)) "$(stat -c %s "$work/list.json")"
done
for i in 1 2 3; do
  start=$(date +%s%N)
  "$dir/app/discary" --catalogue "$db" --settings "$work/s.conf" stats --by genre > /dev/null
  ms=$(( ($(date +%s%N) - start) / 1000000 ))
  printf 'stats --by genre\t%s\t%d.%03d\n' "$n" $((ms / 1000)) $((ms % 1000))
done
for i in 1 2 3; do
  /usr/bin/time -f "window peak RSS %M KB" "$dir/bench/window_bench" "$db"
done
