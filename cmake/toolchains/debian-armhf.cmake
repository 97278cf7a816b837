# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# 32-bit ARM with hardware floating point (ARMv7), Debian's cross compiler and sysroot.
set(UICOV_ARCH armhf)
set(UICOV_TRIPLET arm-linux-gnueabihf)
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(UICOV_EMULATOR qemu-arm)
# GCC 7 passes some arguments otherwise than those before, and tells at each of them.
set(CMAKE_CXX_FLAGS_INIT -Wno-psabi)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
