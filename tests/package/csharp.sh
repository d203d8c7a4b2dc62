#!/usr/bin/env bash
# Compiles the C# bindings; every declaration must be found in the library, and examples/small_job.cs must run.
#
#   csharp.sh TREVIKA_CS WORK_DIR
set -euo pipefail
bindings=$1 work=$2
here=$(cd "$(dirname "$0")" && pwd)

if ! command -v mcs >/dev/null || ! command -v mono >/dev/null; then
    echo "skipped: needs mcs and mono (package mono-mcs)"
    exit 77
fi
mcs -warnaserror -out:"$work/find_all.exe" "$here/find_all.cs" "$bindings"
mono "$work/find_all.exe"
mcs -warnaserror -out:"$work/small_job.exe" "$here/../../examples/small_job.cs" "$bindings"
"$here/small_job.sh" mono "$work/small_job.exe"
