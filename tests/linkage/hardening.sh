#!/bin/sh
# hardening.sh FILE...: fails if a library or program lacks full RELRO or the stack protector, or has an executable
# stack or text relocations. All of it is read from the file.
set -eu
export LC_ALL=C
outcome=0
complain() {
    echo "$file: $*"
    outcome=1
}

for file in "$@"; do
    segments=$(readelf --segments --wide "$file")
    dynamic=$(readelf --dynamic --wide "$file")
    symbols=$(readelf --dyn-syms --wide "$file")
    matches() { printf '%s\n' "$1" | grep -Eq "$2"; }

    matches "$segments" '^ *GNU_RELRO ' || complain "no RELRO"
    matches "$dynamic" '\((BIND_NOW|FLAGS)\).*BIND_NOW|\(FLAGS_1\).*\bNOW\b' ||
        complain "RELRO is not full: functions are bound late"
    matches "$symbols" ' __stack_chk_fail(@|$)' || complain "no stack protector"
    # The flags of the segment; a file without one gets an executable stack.
    matches "$segments" '^ *GNU_STACK .* RW +0x' || complain "an executable stack"
    ! matches "$dynamic" '\(TEXTREL\)|\(FLAGS\).*TEXTREL' || complain "text relocations"
done
[ "$outcome" -ne 0 ] || echo "full RELRO, stack protector, no executable stack, no text relocations: $*"
exit "$outcome"
