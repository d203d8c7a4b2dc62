#!/bin/sh
# Runs a Windows program, in 32 bit and in a Windows of its own. Exits with 77 where Wine is not to be had.
#   wine.sh PREFIX PROGRAM [ARGUMENT...]     PREFIX: the folder of that Windows, made when it is first needed
set -eu
if ! command -v wine >/dev/null; then
    echo "skipped: no Wine here; scripts/setup installs it"
    exit 77
fi
export WINEPREFIX="$1" WINEARCH=win32 WINEDEBUG=-all
shift
[ -e "$WINEPREFIX/system.reg" ] || WINEDLLOVERRIDES="mscoree=;mshtml=" wineboot --init >/dev/null 2>&1
# The services of a Windows that is not running yet are started here and live on for a while: started by the program
# itself they would keep its output open.
if wineserver --persistent=30 >/dev/null 2>&1; then
    wine cmd /c exit >/dev/null 2>&1
fi
exec wine "$@"
