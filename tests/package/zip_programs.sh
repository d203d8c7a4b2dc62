#!/usr/bin/env bash
# Works with nothing but the unpacked zip: examples/small_job in C by an import library alone and in C++ by
# find_package, and the tools, with the virtual DLL under Wine.
#
#   zip_programs.sh BUILD_DIR SOURCE_DIR
set -euo pipefail
build=$1 source=$2
here=$(cd "$(dirname "$0")" && pwd)
zip=$build/package-test/zip
work=$build/package-test/programs

command -v wine >/dev/null || { echo "skipped: no Wine here; scripts/setup installs it"; exit 77; }
rm -rf "$work"
mkdir "$work"
i686-w64-mingw32-gcc-posix -static -I"$zip/include" "$zip/examples/small_job.c" "$zip/lib/libTrevikA.dll.a" \
    -o "$work/small_job_c.exe"
cmake -S "$here/consumer" -B "$work/consumer" -G Ninja --toolchain "$source/cmake/mingw-i686.cmake" \
    -DTrevikA_DIR="$zip/lib/cmake/TrevikA" -DSMALL_JOB="$zip/examples/small_job.cpp" \
    -DCMAKE_EXE_LINKER_FLAGS=-static >"$work/consumer.log" || { cat "$work/consumer.log"; exit 1; }
cmake --build "$work/consumer"
cp "$work/consumer/small_job.exe" "$work/small_job_cpp.exe"

wine=("$here/../windows/wine.sh" "$build/wine")
cp "$zip/virtual/TrevikA.dll" "$work"
for language in c cpp; do
    echo "zip: $language"
    "$here/small_job.sh" "${wine[@]}" "$work/small_job_$language.exe"
done
echo "zip: tools"
cd "$zip"
"${wine[@]}" virtual/trevik-run.exe examples/gasket.ngc
"${wine[@]}" virtual/trevik-scope.exe T-position --distance 1000 --max 20000 --accel 20 --decel 20 \
    --svg ../programs/scope.svg
