// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/unwatchedcontrols.h"

#include "run/run.h"

#include <QSet>

namespace Uicov::Coverage {

namespace {

bool isControl(const QString& className) {
    static const QSet<QString> classes{
        QStringLiteral("QCalendarWidget"),  QStringLiteral("QColumnView"),
        QStringLiteral("QComboBox"),        QStringLiteral("QDateEdit"),
        QStringLiteral("QDateTimeEdit"),    QStringLiteral("QDial"),
        QStringLiteral("QDoubleSpinBox"),   QStringLiteral("QFontComboBox"),
        QStringLiteral("QKeySequenceEdit"), QStringLiteral("QListView"),
        QStringLiteral("QListWidget"),      QStringLiteral("QPlainTextEdit"),
        QStringLiteral("QQuickComboBox"),   QStringLiteral("QQuickDial"),
        QStringLiteral("QQuickSlider"),     QStringLiteral("QQuickSpinBox"),
        QStringLiteral("QQuickTumbler"),    QStringLiteral("QRadioButton"),
        QStringLiteral("QSlider"),          QStringLiteral("QSpinBox"),
        QStringLiteral("QTabBar"),          QStringLiteral("QTextEdit"),
        QStringLiteral("QTimeEdit"),        QStringLiteral("QToolButton"),
        QStringLiteral("QTreeView"),        QStringLiteral("QTreeWidget")};
    return classes.contains(className);
}

} // namespace

QMap<QString, int> unwatchedControls(const Runs::Run& run) {
    QMap<QString, int> counts;
    if (run.isOfControls()) {
        return counts;
    }
    for (const Runs::RunElement& element : run.elements) {
        if (element.type.isEmpty() && isControl(element.className)) {
            ++counts[element.className];
        }
    }
    return counts;
}

} // namespace Uicov::Coverage
