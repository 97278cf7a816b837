// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "monkeyrun.h"

#include "run/runloader.h"
#include "testlib/emulation.h"

#include <QRegularExpression>

#include <csignal>

#include <grp.h>
#include <unistd.h>

namespace {

/** Until then a slow and busy machine has done what was asked of it. */
constexpr int patience = 90000;
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

QString endOf(const QProcess& process) {
    // "uicov run" ends with 128 + N when the program was killed by signal N.
    constexpr int signalBase = 128;
    const bool isKilled = process.exitStatus() == QProcess::CrashExit;
    const int code = process.exitCode();
    if (isKilled || code > signalBase) {
        return QStringLiteral("killed by signal %1").arg(isKilled ? code : code - signalBase);
    }
    return QStringLiteral("ended with %1").arg(code);
}

} // namespace

MonkeyRun::MonkeyRun(const QString& program, quint32 seed, const QString& display)
    : m_program(program)
    , m_seed(seed)
    , m_display(display) {
    if (::geteuid() == 0) {
        const QByteArray home = m_home.path().toLocal8Bit();
        if (::chown(home.constData(), nobody, nobody) != 0) {
            qFatal("cannot give away %s", home.constData());
        }
    }
}

QProcessEnvironment MonkeyRun::environment() const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const auto set = [&](const char* name, const QString& value) {
        environment.insert(QLatin1String(name), value);
    };
    for (const char* const name : {"HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME",
                                   "XDG_CACHE_HOME", "XDG_DATA_HOME"}) {
        set(name, m_home.path());
    }
    set("QT_QPA_PLATFORM", QLatin1String(m_display.isEmpty() ? "offscreen" : "xcb"));
    set("QT_QUICK_BACKEND", QStringLiteral("software"));
    set("QT_MESSAGE_PATTERN", QStringLiteral("%{type}|%{category}|%{message}"));
    set("QT_HASH_SEED", QStringLiteral("0"));
    set("QT_PLUGIN_PATH", TestLib::pluginPath(QStringLiteral(MONKEY_PLUGIN_PATH)));
    set("QT_QPA_GENERIC_PLUGINS", QStringLiteral("uicovmonkey"));
    set("UICOV_MONKEY_SEED", QString::number(m_seed));
    environment.remove(QStringLiteral("DISPLAY"));
    if (!m_display.isEmpty()) {
        set("DISPLAY", m_display);
    }
    return environment;
}

MonkeyRun::Outcome MonkeyRun::run(const QStringList& command) {
    Outcome outcome;
    Group process;
    process.setProcessEnvironment(environment());
    process.setWorkingDirectory(m_home.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(command.first(), command.mid(1));
    if (!process.waitForStarted()) {
        outcome.end = QStringLiteral("does not start");
        return outcome;
    }
    const bool hasEnded = process.waitForFinished(patience);
    if (!hasEnded) {
        process.end();
        process.waitForFinished();
    }
    outcome.end = hasEnded ? endOf(process) : QStringLiteral("hangs");
    const QStringList lines =
        QString::fromLocal8Bit(process.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    static const QRegularExpression numbers(QStringLiteral("0x[0-9a-f]+|[0-9.]+"));
    for (QString line : lines) {
        // Comes and goes from run to run, alone as well: the focus is asked for when a window has
        // just gone.
        if (line.contains(QLatin1String("XCB error")) &&
            line.contains(QLatin1String("(SetInputFocus)"))) {
            continue;
        }
        if (line == QLatin1String("monkey: done")) {
            outcome.isDone = true;
        } else if (!line.startsWith(QLatin1String("debug|")) &&
                   !line.startsWith(QLatin1String("info|"))) {
            outcome.lines.insert(line.replace(numbers, QStringLiteral("N")));
        }
    }
    return outcome;
}

MonkeyRun::Outcome MonkeyRun::alone() {
    return run({m_program});
}

MonkeyRun::Outcome MonkeyRun::recorded(Way way) {
    const QString recording = m_home.filePath(QStringLiteral("monkey.uirec"));
    QFile::remove(recording);
    QStringList command{QStringLiteral(UICOV_PROGRAM),
                        QStringLiteral("run"),
                        QStringLiteral("-q"),
                        QStringLiteral("-o"),
                        m_home.filePath(QStringLiteral("monkey.uicov")),
                        QStringLiteral("--recording"),
                        recording};
    if (way.isClassic) {
        command.append(QStringLiteral("--classic"));
    }
    if (way.withScreenshots) {
        command.append(QStringLiteral("--screenshots"));
    }
    Outcome outcome = run(command + QStringList{QStringLiteral("--"), m_program});
    if (!outcome.end.startsWith(QLatin1String("ended"))) {
        return outcome;
    }
    Uicov::Runs::RunLoader loader(recording);
    if (const auto problem = loader.load()) {
        outcome.recordingProblem = problem->text;
    } else if (!loader.problems().isEmpty()) {
        outcome.recordingProblem = loader.problems().first().text;
    } else if (loader.run().elements.empty()) {
        outcome.recordingProblem = QStringLiteral("no element in the recording");
    }
    return outcome;
}
