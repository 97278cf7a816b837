// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "programrun.h"

#include "testlib/emulation.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSettings>

#include <csignal>

#include <grp.h>
#include <unistd.h>

namespace {

/** Until then a slow and busy machine has done what was asked of it. */
constexpr int patience = 60000;
constexpr uid_t nobody = 65534;

/** A process, and all that it starts in turn, that can be ended as one. */
class Group : public QProcess {
public:
    void end() const { ::kill(-static_cast<pid_t>(processId()), SIGKILL); }

protected:
    void setupChildProcess() override {
        ::setsid();
        if (::geteuid() == 0 &&
            (::setgroups(0, nullptr) != 0 || ::setgid(nobody) != 0 || ::setuid(nobody) != 0)) {
            ::_exit(1);
        }
    }
};

void giveAway(const QString& path) {
    if (::geteuid() == 0 && ::chown(QFile::encodeName(path).constData(), nobody, nobody) != 0) {
        qFatal("cannot give away %s", qPrintable(path));
    }
}

} // namespace

ProgramRun::ProgramRun(const QStringList& command, quint32 seed, int steps)
    : m_command(command)
    , m_seed(seed)
    , m_steps(steps) {
    giveAway(m_folder.path());
    giveAway(m_home.path());
}

QProcessEnvironment ProgramRun::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto set = [&](const char* name, const QString& value) {
        environment.insert(QLatin1String(name), value);
    };
    for (const char* const name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME",
                                   "XDG_CACHE_HOME", "XDG_DATA_HOME"}) {
        set(name, m_home.path());
    }
    set("QT_QPA_PLATFORM", QStringLiteral("offscreen"));
    set("QT_QUICK_BACKEND", QStringLiteral("software"));
    set("QT_HASH_SEED", QStringLiteral("0"));
    set("QT_MESSAGE_PATTERN", QStringLiteral("%{type}|%{category}|%{message}"));
    set("QT_PLUGIN_PATH", TestLib::pluginPath(QStringLiteral(PLUGIN_FOLDERS)));
    set("QT_QPA_GENERIC_PLUGINS", QStringLiteral("uicovuniverse"));
    set("UICOV_UNIVERSE_JOURNAL", journal());
    set("UICOV_UNIVERSE_SEED", QString::number(m_seed));
    set("UICOV_UNIVERSE_STEPS", QString::number(m_steps));
    // KDE's programs talk to a session that is not there, others to one that nobody meant.
    set("DBUS_SESSION_BUS_ADDRESS",
        QStringLiteral("unix:path=") + m_folder.filePath(QStringLiteral("no-bus")));
    environment.remove(QStringLiteral("DISPLAY"));
    return environment;
}

bool ProgramRun::record(const QString& extension) {
    const QString options = m_folder.filePath(QStringLiteral("options.ini"));
    QSettings settings(options, QSettings::IniFormat);
    settings.setValue(QStringLiteral("host/extension"), extension);
    settings.setValue(QStringLiteral("host/recording"), recording());
    for (const char* const option : {"enabled", "qtwidgets", "qtquick"}) {
        settings.setValue(QStringLiteral("options/") + QLatin1String(option), QStringLiteral("1"));
    }
    settings.setValue(QStringLiteral("options/takeScreenshotsOfElements"), QStringLiteral("0"));
    settings.sync();
    giveAway(options);
    QProcessEnvironment environment = this->environment();
    environment.insert(QStringLiteral("VORSK_GUI_COVERAGE"), QStringLiteral("1"));
    environment.insert(QStringLiteral("VORSK_OPTIONS_FILE"), options);
    // The recorder has to be there before the first window is.
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"),
                       QStringLiteral("vorsk,uicovuniverse"));
    return run(environment);
}

bool ProgramRun::play() {
    QProcessEnvironment environment = this->environment();
    environment.insert(QStringLiteral("UICOV_UNIVERSE_JOURNAL"),
                       m_folder.filePath(QStringLiteral("alone.jsonl")));
    return run(environment);
}

bool ProgramRun::run(const QProcessEnvironment& environment) {
    Group process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(m_home.path());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(m_command.first(), m_command.mid(1));
    if (!process.waitForStarted()) {
        m_end = QStringLiteral("does not start: ") + process.errorString();
        return false;
    }
    const bool hasEnded = process.waitForFinished(patience);
    if (!hasEnded) {
        process.end();
        process.waitForFinished();
    }
    takeLines(QString::fromLocal8Bit(process.readAllStandardError()));
    const bool isKilled = process.exitStatus() == QProcess::CrashExit;
    m_end = !hasEnded ? QStringLiteral("hangs")
                      : QStringLiteral("%1 %2")
                            .arg(isKilled ? QStringLiteral("killed by signal")
                                          : QStringLiteral("ended with"))
                            .arg(process.exitCode());
    return hasEnded && !isKilled && process.exitCode() == 0;
}

void ProgramRun::takeLines(const QString& output) {
    static const QRegularExpression numbers(QStringLiteral("0x[0-9a-f]+|[0-9.]+"));
    QString text = output;
    text.replace(numbers, QStringLiteral("N"));
    m_lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_lines.sort();
    m_lines.removeDuplicates();
}
