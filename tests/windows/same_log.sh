#!/bin/sh
# The same part, cut by trevik-run for Linux and by the one for Windows with the virtual DLL beside it, sends the same
# requests, byte for byte.
#   same_log.sh TREVIK_RUN TREVIK_RUN_EXE PART WINE...
set -eu
linux=$1 windows=$2 part=$3
shift 3
if [ ! -x "$linux" ]; then
    echo "skipped: $linux is not built"
    exit 77
fi
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
TREVIK_REQUEST_LOG="$dir/linux" "$linux" "$part" --quiet >/dev/null
status=0
TREVIK_REQUEST_LOG="Z:$dir/windows" "$@" "$windows" "Z:$part" --quiet >/dev/null || status=$?
[ $status != 0 ] && exit $status
[ "$(wc -l <"$dir/linux")" -gt 1000 ] || { echo "the log is too short to tell anything" >&2; exit 1; }
cmp "$dir/linux" "$dir/windows"
