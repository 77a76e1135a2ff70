#!/bin/sh
# Runs a Windows program: wine.sh <build folder> <program> [argument...]
# What Wine takes for a machine's disk lies in <build folder>/wine, made on the first run; its server
# waits a minute for the next program. Libraries are looked for in the build folder and among the
# compiler's.
compiler=$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)
threads=$(x86_64-w64-mingw32-g++-posix -print-file-name=libwinpthread-1.dll)
WINEPREFIX=$1/wine
WINEPATH="$1;$(dirname "$compiler");$(dirname "$threads")"
WINEDEBUG=-all
WINEDLLOVERRIDES=mscoree,mshtml= # of which the first run would ask to fetch more
export WINEPREFIX WINEPATH WINEDEBUG WINEDLLOVERRIDES
shift
[ -e "$WINEPREFIX" ] || /usr/lib/wine/wine64 wineboot --init >/dev/null 2>&1
/usr/lib/wine/wineserver64 -p60 2>/dev/null # fails where it waits already
exec /usr/lib/wine/wine64 "$@"
