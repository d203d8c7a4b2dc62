#!/bin/sh
# The same part run twice on the manual clock sends the same requests, byte for byte.
#   same_log.sh TREVIK_RUN PART
set -eu
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
for log in first second; do
    TREVIK_REQUEST_LOG="$dir/$log" "$1" "$2" --quiet >/dev/null
done
[ "$(wc -l <"$dir/first")" -gt 1000 ] || { echo "the log is too short to tell anything" >&2; exit 1; }
cmp "$dir/first" "$dir/second"
