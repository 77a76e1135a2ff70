# 32-bit x86. 64-bit machines run its programs themselves, with Debian's package lib32stdc++6; in
# qemu-i386 threads would stand still. Rounding is exact with SSE2 only.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(triplet i686-linux-gnu)
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
