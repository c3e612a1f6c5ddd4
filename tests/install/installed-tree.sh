#!/usr/bin/env bash
# Checks that an installed tree has everything a desktop looks for where it looks, and that the
# pieces name each other consistently.
# Usage: installed-tree.sh ROOT PREFIX VERSION   (ROOT: where PREFIX was installed, maybe staged)
set -euo pipefail
root=$1 prefix=$2 version=$3
id=org.discary.Discary

failed=0
fail() { echo "FAIL: $*" >&2; failed=1; }

expected=(
  bin/discary
  "share/applications/$id.desktop"
  "share/metainfo/$id.metainfo.xml"
  "share/mime/packages/$id.xml"
  "share/icons/hicolor/scalable/apps/$id.svg"
  share/man/man1/discary.1
)
sizes=(16 24 32 48 64 128 256)
for s in "${sizes[@]}"; do expected+=("share/icons/hicolor/${s}x$s/apps/$id.png"); done
for f in "${expected[@]}"; do [ -s "$root/$f" ] || fail "$f is not installed"; done
[ $failed -eq 0 ] || exit 1

# A picture that claims a size is drawn at that size (width and height from the PNG header).
for s in "${sizes[@]}"; do
  read -r w h < <(od -An -tu1 -j16 -N8 "$root/share/icons/hicolor/${s}x$s/apps/$id.png" |
                  awk '{ print $1*16777216+$2*65536+$3*256+$4, $5*16777216+$6*65536+$7*256+$8 }')
  [ "$w $h" = "$s $s" ] || fail "the ${s}x$s icon is ${w}x$h"
done

# The launcher starts the installed program and shows the installed icon; the software centre's
# entry names the launcher and the current version.
desktop=$root/share/applications/$id.desktop
grep -qx "Exec=$prefix/bin/discary %U" "$desktop" || fail "the launcher does not start $prefix/bin/discary"
grep -qx "Icon=$id" "$desktop" || fail "the launcher's icon is not $id"
metainfo=$root/share/metainfo/$id.metainfo.xml
grep -q "<launchable type=\"desktop-id\">$id.desktop</launchable>" "$metainfo" || fail "metainfo names another launcher"
newest=$(grep -o '<release version="[^"]*"' "$metainfo" | head -1 | cut -d'"' -f2)
[ "$newest" = "$version" ] || fail "the newest release in the metainfo is $newest, the program is $version"
for type in $(grep -o '^MimeType=.*' "$desktop" | cut -d= -f2 | tr ';' ' '); do
  case $type in
    x-scheme-handler/*) ;;
    *) grep -q "type=\"$type\"" "$root/share/mime/packages/$id.xml" || fail "the launcher opens $type, which no MIME file defines" ;;
  esac
done

# The file type is known by its extension once the MIME database is built from the installed file.
update-mime-database "$root/share/mime" >/dev/null 2>&1 || fail "update-mime-database refused the MIME file"
grep -qx 'application/x-discary-export:\*.discary' "$root/share/mime/globs" || fail "*.discary is not application/x-discary-export"

# The installed program runs by itself (its templates and strings are compiled in).
out=$("$root/bin/discary" --version) || fail "the installed program did not run"
[ "$out" = "discary $version" ] || fail "--version says '$out'"
# Captured first: grep -q stops reading at the match, and the writer's broken pipe would fail the check.
help=$("$root/bin/discary" help) || fail "the installed program's help did not run"
grep -q '^### scan' <<<"$help" || fail "the installed program's help is not the command-line page"
exit $failed
