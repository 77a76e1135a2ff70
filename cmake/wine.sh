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
# Fails where it waits already. What it starts beside the first program would hold that one's output.
if /usr/lib/wine/wineserver64 -p60 >/dev/null 2>&1; then
    /usr/lib/wine/wine64 cmd /c exit </dev/null >/dev/null 2>&1
fi
exec /usr/lib/wine/wine64 "$@"
