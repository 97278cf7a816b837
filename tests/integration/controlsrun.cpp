// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrun.h"

#include <QMap>
#include <QProcess>

#include <array>

using Uicov::Runs::Hit;
using Uicov::Runs::RunElement;

namespace {

/** A slow and busy machine takes its time. */
constexpr int patience = 120000;

bool isControl(const RunElement& element) {
    static const QStringList views = {QStringLiteral("Window"), QStringLiteral("Dialog"),
                                      QStringLiteral("Menu"),   QStringLiteral("Popup"),
                                      QStringLiteral("Drawer"), QStringLiteral("Page")};
    return !views.contains(element.type);
}

QString nameOf(const RunElement& element) {
    if (!element.text.isEmpty()) {
        return element.text;
    }
    constexpr std::array<const char*, 6> names = {"accessibleName", "placeholder", "toolTip",
                                                  "label",          "objectName",  "qmlId"};
    for (const char* const name : names) {
        const QString value = element.attributes.value(QLatin1String(name));
        if (!value.isEmpty()) {
            return value;
        }
    }
    return {};
}

} // namespace

ControlsRun::ControlsRun(const QString& program, const QStringList& arguments) {
    const QString path = m_directory.filePath(QStringLiteral("run.uirec"));
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("UICOV_CLASSIC"));
    environment.remove(QStringLiteral("VORSK_RECORDING_EXTENSION"));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(UICOV_PROGRAM),
                  QStringList{QStringLiteral("run"), QStringLiteral("-o"),
                              m_directory.filePath(QStringLiteral("run.uicov")),
                              QStringLiteral("--recording"), path, QStringLiteral("--"), program} +
                      arguments);
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit ||
        process.exitCode() != 0) {
        m_problem = QString::fromLocal8Bit(process.readAllStandardOutput() +
                                           process.readAllStandardError());
        m_problem += QStringLiteral("exit code %1").arg(process.exitCode());
    }
    m_recording = std::make_unique<Uicov::Runs::RunLoader>(path);
    if (const auto problem = m_recording->load()) {
        m_problem += QStringLiteral("no recording");
    } else if (!m_recording->run().isOfControls()) {
        m_problem += QStringLiteral("made by ") + m_recording->run().extension;
    } else if (!m_recording->problems().isEmpty()) {
        m_problem += QStringLiteral("a damaged recording");
    }
}

QStringList ControlsRun::all(const QString& type) const {
    QStringList lines;
    const Uicov::Runs::Run everything = run();
    for (const RunElement& element : everything.elements) {
        if (element.type == type) {
            lines.append(describe(element));
        }
    }
    return lines;
}

QStringList ControlsRun::usedControls() const {
    QStringList lines;
    const Uicov::Runs::Run everything = run();
    for (const RunElement& element : everything.elements) {
        if (!element.hits.isEmpty() && isControl(element)) {
            lines.append(describe(element));
        }
    }
    lines.sort();
    return lines;
}

QString ControlsRun::describe(const RunElement& element) {
    QMap<QString, qint64> counts;
    for (const Hit& hit : element.hits) {
        counts[hit.event] += hit.count;
    }
    QString line = QStringLiteral("%1 \"%2\"").arg(element.type, nameOf(element));
    for (auto it = counts.cbegin(); it != counts.cend(); ++it) {
        line += QStringLiteral(" %1=%2").arg(it.key()).arg(it.value());
    }
    const QString ways = element.attributes.value(QStringLiteral("usedWays"));
    return ways.isEmpty() ? line : line + QLatin1String(" by ") + ways;
}
