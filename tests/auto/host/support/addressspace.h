// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

#include <sys/resource.h>
#include <unistd.h>

/** Bytes of it that this process has, as RLIMIT_AS counts them. */
inline rlim_t addressSpaceInUse() {
    QFile file(QStringLiteral("/proc/self/statm"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').first().toULongLong() *
                                                static_cast<rlim_t>(::sysconf(_SC_PAGESIZE))
                                          : 0;
}
