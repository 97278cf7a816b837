// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/usesledger.h"

#include "testlib/controlsprobe.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

namespace TestLib {

using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;

namespace {

QString nameOf(const UIElement& element) {
    const QString name = element.attribute(QStringLiteral("objectName"));
    return name.isEmpty() ? element.text() : name;
}

} // namespace

UsesLedger::UsesLedger(const ControlsProbe& probe)
    : m_probe(probe) {
    take();
}

QStringList UsesLedger::take() {
    QStringList lines;
    const QList<UIElement*> roots = m_probe.roots();
    for (const UIElement* root : roots) {
        ElementWalk walk(root);
        while (const UIElement* element = walk.next()) {
            const auto usage = element->usage();
            for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
                const QString event = it.key().name();
                int& known = m_counts[{element, event}];
                if (event != QLatin1String("seen") && it.value() > known) {
                    const QString line = nameOf(*element) + QLatin1Char(' ') + event;
                    const int added = it.value() - known;
                    lines += added == 1 ? line : line + QLatin1Char(' ') + QString::number(added);
                }
                known = it.value();
            }
        }
    }
    lines.sort();
    return lines;
}

} // namespace TestLib
