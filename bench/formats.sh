#!/usr/bin/env bash
# Export and re-import at scale: a catalogue of N entries with 10 tracks each (default 10,000),
# `export --format discary` (single file and --folder) and `--format csv`, then `import` of each
# into a fresh catalogue, three runs each, with peak RSS. Builds the two Release targets it needs.
# Usage: bench/formats.sh [N]
set -euo pipefail
cd "$(dirname "$0")/.."
n=${1:-10000}
dir=build/release
cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$dir" -j2 --target discary catalogue_bench >&2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
db=$work/source/Discary.sqlite
mkdir -p "$work/source"
"$dir/bench/catalogue_bench" create "$db" "$n"
run() {  # label, then the discary arguments
  local label=$1
  shift
  /usr/bin/time -f "%e s, peak RSS %M KB" -o "$work/time" "$dir/app/discary" --quiet --settings "$work/s.conf" "$@" >/dev/null
  printf '%s\t%s\t%s\n' "$label" "$n" "$(cat "$work/time")"
}
for form in file folder csv; do
  case $form in
    file) out=$work/out.discary; args=(--format discary) ;;
    folder) out=$work/outdir.discary; args=(--format discary --folder) ;;
    csv) out=$work/out.csv; args=(--format csv) ;;
  esac
  for i in 1 2 3; do
    rm -rf "$out"
    run "export $form" --catalogue "$db" export "${args[@]}" --output "$out"
  done
  du -sh "$out" | cut -f1 | sed "s/^/size $form: /"
  for i in 1 2 3; do
    rm -rf "$work/target"
    mkdir -p "$work/target"
    run "import $form" --catalogue "$work/target/Discary.sqlite" import "$out"
  done
done
