# 64-bit RISC-V.
set(CMAKE_SYSTEM_PROCESSOR riscv64)
set(triplet riscv64-linux-gnu)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-riscv64 -L /usr/riscv64-linux-gnu)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
