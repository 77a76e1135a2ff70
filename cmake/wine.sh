#!/bin/sh
# Runs a Windows program: wine.sh <build folder> <program> [argument...]
# What Wine takes for a machine's disk lies in <build folder>/wine, made on the first run. Libraries
# are looked for in the build folder and among the compiler's.
compilers=$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)
threads=$(x86_64-w64-mingw32-g++-posix -print-file-name=libwinpthread-1.dll)
WINEPREFIX=$1/wine
WINEPATH="$1;${HALVTYPES_WINEPATH:+$HALVTYPES_WINEPATH;}$(dirname "$compilers");$(dirname "$threads")"
WINEDEBUG=-all
WINEDLLOVERRIDES=mscoree,mshtml= # of which the first run would ask to fetch more
export WINEPREFIX WINEPATH WINEDEBUG WINEDLLOVERRIDES
shift
[ -e "$WINEPREFIX" ] || /usr/lib/wine/wine64 wineboot --init >/dev/null 2>&1
exec /usr/lib/wine/wine64 "$@"
