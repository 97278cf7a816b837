#include "testlib/cprogram.h"

#include <QFile>
#include <QProcess>

namespace TestLib {

bool buildC(const QString& source, const QString& output, const QStringList& flags) {
    QProcess compiler;
    compiler.setProcessChannelMode(QProcess::ForwardedChannels);
    QStringList arguments{QStringLiteral("-x"),
                          QStringLiteral("c"),
                          QStringLiteral("-"),
                          QStringLiteral("-o"),
                          output,
                          QStringLiteral("-x"),
                          QStringLiteral("none")};
    compiler.start(QStringLiteral("cc"), arguments + flags);
    if (!compiler.waitForStarted()) {
        return false;
    }
    compiler.write(source.toUtf8());
    compiler.closeWriteChannel();
    return compiler.waitForFinished() && compiler.exitStatus() == QProcess::NormalExit &&
           compiler.exitCode() == 0;
}

bool writeScript(const QString& path, const QString& text) {
    QFile file(path);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
           file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace TestLib
