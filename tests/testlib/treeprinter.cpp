// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/treeprinter.h"

#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QHash>
#include <QImage>
#include <QMap>
#include <QRect>
#include <QStringList>

#include <algorithm>
#include <vector>

namespace TestLib {

using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

namespace {

void appendExtra(QStringList& words, const char* name, const QString& value) {
    if (!value.isNull()) {
        words.append(QLatin1String(name) + QLatin1Char('=') + TreePrinter::quoted(value));
    }
}

void appendExtra(QStringList& words, const char* name, const QHash<QString, QString>& values) {
    // A hash has no order of its own.
    QMap<QString, QString> sorted;
    for (auto it = values.cbegin(); it != values.cend(); ++it) {
        sorted.insert(it.key(), it.value());
    }
    for (auto it = sorted.cbegin(); it != sorted.cend(); ++it) {
        words.append(QLatin1String(name) + QLatin1Char('[') + TreePrinter::quoted(it.key()) +
                     QLatin1String("]=") + TreePrinter::quoted(it.value()));
    }
}

void appendExtras(QStringList& words, const UIElement& element) {
    appendExtra(words, "extraString1", element.extraString1());
    appendExtra(words, "extraString2", element.extraString2());
    appendExtra(words, "extraString3", element.extraString3());
    appendExtra(words, "extraString4", element.extraString4());
    const QStringList extraStrings = element.extraStrings();
    for (int i = 0; i < extraStrings.size(); ++i) {
        words.append(QStringLiteral("extraStrings[%1]=").arg(i) +
                     TreePrinter::quoted(extraStrings.at(i)));
    }
    appendExtra(words, "extraAttributes1", element.extraAttributes1());
    appendExtra(words, "extraAttributes2", element.extraAttributes2());
}

QString usageOf(const UIElement& element) {
    QStringList counts;
    const QMap<UIEvent, int> usage = element.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        counts.append(TreePrinter::bare(it.key().name()) + QLatin1Char('=') +
                      QString::number(it.value()));
    }
    return QLatin1Char('{') + counts.join(QLatin1String(", ")) + QLatin1Char('}');
}

} // namespace

TreePrinter::TreePrinter(Sizes sizes)
    : m_sizes(sizes) {}

QString TreePrinter::print(const UIElement& root) const {
    QString lines;
    ElementWalk walk(&root);
    while (const UIElement* element = walk.next()) {
        lines +=
            QString(2 * walk.depth(), QLatin1Char(' ')) + describe(*element) + QLatin1Char('\n');
    }
    return lines;
}

QString TreePrinter::printCompact(const UIElement& root, const NameOfId& name) const {
    QString line;
    // How many children of each element on the way are still to come.
    std::vector<int> toCome;
    ElementWalk walk(&root);
    while (const UIElement* element = walk.next()) {
        line += name(element->id()) + QLatin1Char(' ') + describe(*element);
        if (walk.childCount() > 0) {
            line += QLatin1String(" [");
            toCome.push_back(walk.childCount());
            continue;
        }
        while (!toCome.empty() && --toCome.back() == 0) {
            line += QLatin1Char(']');
            toCome.pop_back();
        }
        if (!toCome.empty()) {
            line += QLatin1String(", ");
        }
    }
    return line;
}

QString TreePrinter::rect(const QRect& rect) const {
    if (m_sizes == Sizes::Hidden) {
        return QStringLiteral("(rect)");
    }
    return QStringLiteral("(%1,%2 %3x%4)")
        .arg(rect.left())
        .arg(rect.top())
        .arg(qint64{rect.right()} - rect.left() + 1)
        .arg(qint64{rect.bottom()} - rect.top() + 1);
}

QString TreePrinter::image(const QImage& image) const {
    if (image.isNull()) {
        return QStringLiteral("no image");
    }
    if (m_sizes == Sizes::Hidden) {
        return QStringLiteral("image");
    }
    return QStringLiteral("image %1x%2").arg(image.width()).arg(image.height());
}

QString TreePrinter::quoted(const QString& text) {
    if (text.isNull()) {
        return QStringLiteral("null");
    }
    QString result(QLatin1Char('"'));
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('\\')) {
            result += QLatin1Char('\\');
            result += c;
        } else if (c == QLatin1Char('\n')) {
            result += QLatin1String("\\n");
        } else if (c.isPrint() || c.isSurrogate()) {
            result += c;
        } else {
            result += QStringLiteral("\\u%1").arg(ushort{c.unicode()}, 4, 16, QLatin1Char('0'));
        }
    }
    return result + QLatin1Char('"');
}

QString TreePrinter::bare(const QString& name) {
    const bool isWord = std::all_of(name.cbegin(), name.cend(), [](QChar c) {
        return c.isPrint() && !c.isSpace() && c != QLatin1Char('"') && c != QLatin1Char('\\');
    });
    return isWord && !name.isEmpty() ? name : quoted(name);
}

QString TreePrinter::type(const StandardType& type) {
    return bare(type.toString());
}

QString TreePrinter::describe(const UIElement& element) const {
    QStringList words{type(element.standardType()) + QLatin1Char('/') +
                      bare(element.concreteType())};
    if (!element.text().isNull()) {
        words.append(quoted(element.text()));
    }
    if (element.isWindowNode()) {
        words.append(QStringLiteral("window"));
    }
    if (element.isTransparentNode()) {
        words.append(QStringLiteral("transparent"));
    }
    if (element.isSubgraphTransparent()) {
        words.append(QStringLiteral("subgraphTransparent"));
    }
    if (element.geometry().isValid()) {
        words.append(rect(element.geometry().rect()));
    }
    if (!element.image().isNull()) {
        words.append(image(element.image()));
    }
    appendExtras(words, element);
    if (!element.usage().isEmpty()) {
        words.append(usageOf(element));
    }
    return words.join(QLatin1Char(' '));
}

} // namespace TestLib
