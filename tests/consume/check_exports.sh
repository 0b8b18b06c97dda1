#!/bin/sh
# check_exports.sh LIBRARY: fails if the library's dynamic symbol table defines anything but CPaneDeck.
set -eu
symbols=$(nm -D --defined-only -C "$1" | cut -d' ' -f3-)
others=$(printf '%s\n' "$symbols" |
    grep -Ev '^(CPaneDeck::|(typeinfo|typeinfo name|vtable) for CPaneDeck$|(non-virtual|virtual) thunk to CPaneDeck::)' || true)
[ -z "$others" ] || { echo "exported, but not CPaneDeck:"; echo "$others"; exit 1; }
for name in SetShowWndNo GetHWND sig_activeWnd staticMetaObject "CPaneDeck("; do
    printf '%s\n' "$symbols" | grep -qF "$name" || { echo "not exported: $name"; exit 1; }
done
