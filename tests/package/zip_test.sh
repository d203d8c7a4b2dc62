#!/usr/bin/env bash
# Packs the zip, compares what is in it, and unpacks it for zip_programs.sh.
#
#   zip_test.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1 source=$2
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
diff - <(find . -type f -not -path './docs/*' -not -path './examples/*' -not -path './include/*' | LC_ALL=C sort) <<'END'
./CHANGELOG.md
./LICENSE
./README.md
./TrevikA.dll
./bindings/TrevikA.cs
./bindings/trevika.py
./driver/trevikv-setup.exe
./driver/trevikv.cat
./driver/trevikv.inf
./driver/trevikv.sys
./lib/TrevikA.def
./lib/TrevikA.lib
./lib/cmake/TrevikA/TrevikAConfig.cmake
./lib/cmake/TrevikA/TrevikAConfigVersion.cmake
./lib/libTrevikA.dll.a
./trevik-run.exe
./virtual/TrevikA.dll
./virtual/lib/TrevikA.def
./virtual/lib/TrevikA.lib
./virtual/lib/libTrevikA.dll.a
./virtual/trevik-run.exe
./virtual/trevik-scope.exe
END
if grep -rlF "$source" .; then
    echo "these remember where they were built"
    exit 1
fi
