#!/usr/bin/env bash
# Runs a Windows program under Wine, in a fresh Wine prefix with the driver of the virtual cards installed.
#
#   with_driver.sh DRIVER_DIRECTORY CARDS PROGRAM [ARGUMENT...]
#
# CARDS as for trevikv-setup, "" for none. Exit: the program's own; 77 where there is no Wine; 70 when the driver could
# not be installed or did not go without a trace.
set -uo pipefail

[ $# -ge 3 ] || { sed -n '2,7s/^# \{0,1\}//p' "$0" >&2; exit 64; }
driver=$1 cards=$2
shift 2
command -v wine >/dev/null || { echo "with_driver: skipped, no Wine here"; exit 77; }

prefix=$(mktemp -d)
export WINEPREFIX=$prefix/wine WINEARCH=win32 WINEDEBUG=${WINEDEBUG:--all} WINEDLLOVERRIDES="mscoree,mshtml="
trap 'wineserver -k 2>/dev/null; wineserver -w 2>/dev/null; rm -rf "$prefix"' EXIT

setup() { wine "$driver/trevikv-setup.exe" "$@"; }

mkdir "$WINEPREFIX"
setup install --cards "$cards" || exit 70
wine "$@"
result=$?
setup uninstall || exit 70
if setup status >"$prefix/status"; then
    cat "$prefix/status"
    exit 70
fi
find "$WINEPREFIX/drive_c/windows" -iname '*trevikv*' >"$prefix/left"
if [ -s "$prefix/left" ]; then
    echo "with_driver: uninstall left behind:"
    cat "$prefix/left"
    exit 70
fi
exit $result
