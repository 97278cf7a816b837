# 32-bit ARM with hardware floating point (ARMv7), Debian's cross compiler and sysroot.
set(UICOV_ARCH armhf)
set(UICOV_TRIPLET arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(UICOV_EMULATOR qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
