#!/usr/bin/env bash
# Packs the zip, compares what is in it with zip_contents.txt, and unpacks it for zip_programs.sh.
#
#   zip_test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1 source=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$build/package-test

rm -rf "$work"
mkdir "$work"
cpack --config "$build/CPackConfig.cmake" -G ZIP -B "$work" >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; exit 1; }
cd "$work"
cmake -E tar xf TrevikA-*-win32.zip
mv TrevikA-*-win32 zip
cd zip

diff -r docs "$source/docs"
diff -r examples "$source/examples"
diff -r include/trevik "$source/include/trevik"
find . -type f -not -path './docs/*' -not -path './examples/*' -not -path './include/*' | LC_ALL=C sort |
    diff "$here/zip_contents.txt" -
if grep -rlF "$source" .; then
    echo "these remember where they were built"
    exit 1
fi
