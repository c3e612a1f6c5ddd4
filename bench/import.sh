#!/usr/bin/env bash
# Builds Release and runs the shared peer benchmark (../shared/bench/peers.sh) with this project's
# import rows added: a folder import (in process and through the command line) and a library-file
# playlist import, each into a fresh catalogue.
# Usage: bench/import.sh [CORPUS] [XML] [extra peers.sh options...]
# Defaults: a 10,000-file corpus from make-corpus.sh and a 50,000-track library from
# make-library-xml.py, made when missing.
set -euo pipefail
cd "$(dirname "$0")/.."
tools/setup --bench  # ffmpeg and python3-mutagen make the corpus; beets is the peer
shared=${DISCARY_SHARED_BENCH:-/work/shared/bench}
corpus=${1:-/tmp/discary-corpus-10000}
xml=${2:-/tmp/Library50k.xml}
shift $(( $# < 2 ? $# : 2 ))
[[ -d $corpus ]] || bash "$shared/make-corpus.sh" "$corpus" 1000 10 >&2
[[ -f $xml ]] || /usr/bin/python3 "$shared/make-library-xml.py" -n 50000 -o "$xml" >&2
dir=$(tools/build release)
cmake --build "$dir" -j2 --target import_bench discary >&2
bin=$(realpath "$dir")
# peers.sh runs each CMD with $WORK, $CORPUS and $XML set.
exec bash "$shared/peers.sh" "$@" \
  -x "discary folder import|files|rm -f \$WORK/d.sqlite|$bin/bench/import_bench folder \$WORK/d.sqlite \"\$CORPUS\"" \
  -x "discary import FOLDER (CLI)|files|rm -f \$WORK/c.sqlite*|$bin/app/discary --catalogue \$WORK/c.sqlite --settings \$WORK/c.conf --quiet import \"\$CORPUS\"" \
  -x "discary library import|tracks|rm -f \$WORK/x.sqlite*|$bin/app/discary --catalogue \$WORK/x.sqlite --settings \$WORK/c.conf --quiet library import --xml \"\$XML\" --playlist-index 0" \
  "$corpus" "$xml"
