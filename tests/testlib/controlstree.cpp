// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/controlstree.h"

#include "testlib/treeprinter.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QMap>

namespace TestLib {

using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

QString controlLine(const UIElement& element, const QStringList& attributes) {
    QStringList words{element.standardType().toString()};
    if (!element.text().isEmpty()) {
        words.append(TreePrinter::quoted(element.text()));
    }
    for (const QString& name : attributes) {
        const QString value = element.attribute(name);
        if (!value.isNull()) {
            words.append(name + QLatin1Char('=') + TreePrinter::bare(value));
        }
    }
    QStringList counts;
    const QMap<UIEvent, int> usage = element.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        if (it.value() > 0) {
            counts.append(it.value() == 1
                              ? it.key().name()
                              : it.key().name() + QLatin1Char('=') + QString::number(it.value()));
        }
    }
    if (!counts.isEmpty()) {
        words.append(QLatin1Char('{') + counts.join(QLatin1String(", ")) + QLatin1Char('}'));
    }
    return words.join(QLatin1Char(' '));
}

QString controlsTree(const UIElement& root, const QStringList& attributes) {
    QString lines;
    ElementWalk walk(&root);
    while (const UIElement* element = walk.next()) {
        lines += QString(2 * walk.depth(), QLatin1Char(' ')) + controlLine(*element, attributes) +
                 QLatin1Char('\n');
    }
    return lines;
}

} // namespace TestLib
