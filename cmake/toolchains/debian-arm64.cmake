# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

# 64-bit ARM, Debian's cross compiler and sysroot.
set(UICOV_ARCH arm64)
set(UICOV_TRIPLET aarch64-linux-gnu)
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(UICOV_EMULATOR qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/debian.cmake)
