#!/usr/bin/env bash
# Packs the .deb, unpacks it into an empty prefix, and works with nothing but what is there: a program in C through
# pkg-config, one in C++ through find_package, the Python bindings, the tools.
#
#   deb_test.sh BUILD_DIR PYTHON
set -euo pipefail
build=$1 python=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$build/package-test

step() { printf 'deb: %s\n' "$*"; }

rm -rf "$work"
mkdir "$work"
step "packing"
cpack --config "$build/CPackConfig.cmake" -G DEB -B "$work" >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; exit 1; }
deb=$(echo "$work"/trevika_*.deb)
dpkg-deb -x "$deb" "$work/root"
prefix=$work/root/usr
examples=$prefix/share/doc/trevika/examples

step "what it depends on, and that nothing in it remembers where it was built"
dpkg-deb -f "$deb" Depends | grep 'libc6 .*libstdc++6'
if dpkg-deb -f "$deb" Depends | grep -i trevik || grep -rF "${build%/build/*}" "$prefix"; then
    exit 1
fi

step "C, pkg-config"
export PKG_CONFIG_LIBDIR=$prefix/lib/pkgconfig
read -ra flags < <(pkg-config --cflags --libs trevika)
gcc "$examples/small_job.c" "${flags[@]}" -o "$work/small_job"
readelf -d "$work/small_job" | grep 'NEEDED.*\[libTrevikA\.so\.[0-9]*\]'
LD_LIBRARY_PATH=$prefix/lib "$here/small_job.sh" "$work/small_job"

step "C++, find_package"
cmake -S "$here/consumer" -B "$work/consumer" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DSMALL_JOB="$examples/small_job.cpp" >"$work/consumer.log" || { cat "$work/consumer.log"; exit 1; }
cmake --build "$work/consumer"
readelf -d "$work/consumer/small_job" | grep -F "[$prefix/lib]" # it is this library that it was given
"$here/small_job.sh" "$work/consumer/small_job"

step "Python"
LD_LIBRARY_PATH=$prefix/lib PYTHONPATH=$prefix/lib/python3/dist-packages PYTHONDONTWRITEBYTECODE=1 \
    "$here/small_job.sh" "$python" "$examples/small_job.py"

step "tools"
"$prefix/bin/trevik-run" "$examples/gasket.ngc"
"$prefix/bin/trevik-scope" T-position --distance 1000 --max 20000 --accel 20 --decel 20 --svg "$work/scope.svg"
