// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/displaytext.h"

#include <QVector>

#include <algorithm>
#include <iterator>

namespace Uicov::Base {

namespace {

bool isPrintable(uint codePoint) {
    switch (QChar::category(codePoint)) {
    case QChar::Other_Control:
    case QChar::Other_Format: // among them all that turns the writing direction
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

QString escapedCodePoint(uint codePoint) {
    switch (codePoint) {
    case '\n':
        return QStringLiteral("\\n");
    case '\r':
        return QStringLiteral("\\r");
    case '\t':
        return QStringLiteral("\\t");
    case '\\':
        return QStringLiteral("\\\\");
    default:
        break;
    }
    if (isPrintable(codePoint)) {
        return QString::fromUcs4(&codePoint, 1);
    }
    if (codePoint < 0x100) {
        return QStringLiteral("\\x%1").arg(codePoint, 2, 16, QLatin1Char('0'));
    }
    return QStringLiteral("\\u%1").arg(codePoint, 4, 16, QLatin1Char('0'));
}

/** Lone surrogates come out as themselves, where QString::toUcs4() would replace them. */
QVector<uint> codePoints(const QString& text) {
    QVector<uint> result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i).isHighSurrogate() && i + 1 < text.size() &&
            text.at(i + 1).isLowSurrogate()) {
            result.append(QChar::surrogateToUcs4(text.at(i), text.at(i + 1)));
            ++i;
        } else {
            result.append(text.at(i).unicode());
        }
    }
    return result;
}

bool isPlain(QChar character) {
    constexpr ushort firstPrintable = 0x20;
    constexpr ushort lastPrintable = 0x7e;
    const ushort code = character.unicode();
    return code >= firstPrintable && code <= lastPrintable && code != '\\';
}

struct Range {
    uint first;
    uint last;
};

/** The blocks whose characters terminals draw two columns wide. */
constexpr Range wideRanges[] = {
    {0x1100, 0x115f},   {0x2e80, 0x303e},   {0x3041, 0x33ff},   {0x3400, 0x4dbf},
    {0x4e00, 0x9fff},   {0xa000, 0xa4cf},   {0xac00, 0xd7a3},   {0xf900, 0xfaff},
    {0xfe30, 0xfe6f},   {0xff00, 0xff60},   {0xffe0, 0xffe6},   {0x1f300, 0x1f64f},
    {0x1f900, 0x1f9ff}, {0x20000, 0x2fffd}, {0x30000, 0x3fffd},
};

int columnsOf(uint codePoint) {
    const QChar::Category category = QChar::category(codePoint);
    if (category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing ||
        category == QChar::Other_Format) {
        return 0;
    }
    const bool wide =
        std::any_of(std::begin(wideRanges), std::end(wideRanges), [codePoint](Range range) {
            return codePoint >= range.first && codePoint <= range.last;
        });
    return wide ? 2 : 1;
}

} // namespace

QString escaped(const QString& text) {
    if (std::all_of(text.cbegin(), text.cend(), isPlain)) {
        return text; // as nearly all are
    }
    QString result;
    result.reserve(text.size());
    const QVector<uint> points = codePoints(text);
    for (const uint codePoint : points) {
        result += escapedCodePoint(codePoint);
    }
    return result;
}

int displayWidth(const QString& text) {
    int columns = 0;
    const QVector<uint> points = codePoints(text);
    for (const uint codePoint : points) {
        columns += columnsOf(codePoint);
    }
    return columns;
}

QString elided(const QString& text, int columns) {
    if (columns < 1 || displayWidth(text) <= columns) {
        return text;
    }
    const QVector<uint> points = codePoints(text);
    const int room = columns - 1; // the ellipsis takes one
    int headColumns = room - room / 2;
    int tailColumns = room / 2;
    int head = 0;
    while (head < points.size() && columnsOf(points.at(head)) <= headColumns) {
        headColumns -= columnsOf(points.at(head++));
    }
    int tail = points.size();
    while (tail > head && columnsOf(points.at(tail - 1)) <= tailColumns) {
        tailColumns -= columnsOf(points.at(--tail));
    }
    return QString::fromUcs4(points.constData(), head) + QChar(0x2026) +
           QString::fromUcs4(points.constData() + tail, points.size() - tail);
}

QString padded(const QString& text, int columns) {
    return text + QString(qMax(0, columns - displayWidth(text)), QLatin1Char(' '));
}

QString paddedLeft(const QString& text, int columns) {
    return QString(qMax(0, columns - displayWidth(text)), QLatin1Char(' ')) + text;
}

} // namespace Uicov::Base
