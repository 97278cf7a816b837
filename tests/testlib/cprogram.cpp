// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/cprogram.h"

#include <QFile>
#include <QLibraryInfo>
#include <QProcess>

namespace TestLib {

namespace {

/** For the machine that the tests are for, which need not be this one. */
QStringList forTarget() {
    const QString sysroot = QStringLiteral(UICOV_TEST_SYSROOT);
    return sysroot.isEmpty()
               ? QStringList()
               : QStringList{QStringLiteral("--sysroot=") + sysroot,
                             QStringLiteral("-Wl,--dynamic-linker=" UICOV_TEST_LOADER)};
}

} // namespace

bool buildC(const QString& source, const QString& output, const QStringList& flags) {
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::ForwardedChannels);
    const QStringList arguments{QStringLiteral("-x"),
                                QStringLiteral("c"),
                                QStringLiteral("-"),
                                QStringLiteral("-o"),
                                output,
                                QStringLiteral("-x"),
                                QStringLiteral("none")};
    compiler.start(QStringLiteral(UICOV_TEST_C_COMPILER), forTarget() + arguments + flags);
    if (!compiler.waitForStarted()) {
        return false;
    }
    compiler.write(source.toUtf8());
    compiler.closeWriteChannel();
    return compiler.waitForFinished() && compiler.exitStatus() == QProcess::NormalExit &&
           compiler.exitCode() == 0;
}

bool buildWithQt(const QString& output, const QStringList& libraries) {
    QStringList flags{QStringLiteral("-Wl,--no-as-needed"),
                      QStringLiteral("-L") + QLibraryInfo::location(QLibraryInfo::LibrariesPath)};
    for (const QString& library : libraries) {
        flags.append(QStringLiteral("-l:") + library);
    }
    return buildC(QStringLiteral("int main(void) { return 0; }"), output, flags);
}

bool writeScript(const QString& path, const QString& text) {
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace TestLib
