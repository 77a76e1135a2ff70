# 32-bit ARM without a floating-point unit.
set(CMAKE_SYSTEM_PROCESSOR armv5tel)
set(triplet arm-linux-gnueabi)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-arm -L /usr/arm-linux-gnueabi)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
