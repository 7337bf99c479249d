#!/bin/sh
# exported_symbols.sh LIBRARY LIST [--refresh]: compares what a library exports with the checked-in list, one demangled
# name a line, and tells the difference. --refresh writes the list.
set -eu
export LC_ALL=C
library=$1 list=$2

exported() { nm --dynamic --demangle --defined-only "$library" | sed 's/^[0-9a-f]* [A-Za-z] //' | sort -u; }

if [ "${3:-}" = --refresh ]; then
    exported >"$list"
    exit
fi
found=$(mktemp)
trap 'rm -f "$found"' EXIT
exported >"$found"
[ -s "$found" ] || { echo "$library exports nothing" >&2; exit 1; }
if cmp -s "$found" "$list"; then
    echo "$(wc -l <"$list") names, all of them in $list"
    exit
fi
echo "$library does not export what $list says."
comm -23 "$found" "$list" | sed 's/^/added:   /'
comm -13 "$found" "$list" | sed 's/^/removed: /'
echo "If that is meant: $0 $library $list --refresh"
exit 1
