// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/recordprinter.h"

#include "recordstream/elementstream.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QDataStream>
#include <QImage>
#include <QRect>

#include <iterator>

namespace TestLib {

using Vorsk::RecordStream::readElement;
using Vorsk::RecordStream::readImage;
using Vorsk::RecordStream::RecordKind;
using Vorsk::RecordStream::streamVersion;
using Vorsk::UIAbstraction::StandardType;

namespace {

const char* const kindNames[] = {"elementAdded",
                                 "childAdded",
                                 "eventRegistered",
                                 "geometryChanged",
                                 "imageChanged",
                                 "standardTypeChanged",
                                 "textChanged",
                                 "transparentNodeChanged",
                                 "subgraphTransparentChanged",
                                 "windowNodeChanged",
                                 "usageIncreased",
                                 "attributeChanged"};
constexpr int kindCount = static_cast<int>(std::size(kindNames));

QString error(const QString& record, const QString& what) {
    return QStringLiteral("error: ") + record + QStringLiteral(": ") + what;
}

template <class T>
T take(QDataStream& stream) {
    T value{};
    stream >> value;
    return value;
}

} // namespace

RecordPrinter::RecordPrinter(TreePrinter::Sizes sizes)
    : m_treePrinter(sizes) {}

QString RecordPrinter::print(int kind, const QByteArray& payload) {
    QString line = QStringLiteral("kind %1").arg(kind);
    if (kind < 1 || kind > kindCount) {
        return error(line, QStringLiteral("unknown kind, %1 bytes").arg(payload.size()));
    }
    line += QLatin1Char(' ') + QLatin1String(kindNames[kind - 1]);
    QDataStream stream(payload);
    stream.setVersion(streamVersion);
    const auto elementId = take<QString>(stream);
    if (stream.status() != QDataStream::Ok) {
        return error(line, QStringLiteral("no element id in %1 bytes").arg(payload.size()));
    }
    const QString name = QLatin1Char(' ') + nameOf(elementId);
    const QString items = QLatin1Char(' ') + printItems(kind, stream);
    if (stream.status() != QDataStream::Ok) {
        return error(line + name, QStringLiteral("undecodable, %1 bytes").arg(payload.size()));
    }
    // The element's form brings its name along; in every sound record it is the same one.
    const bool bringsName = kind == static_cast<int>(RecordKind::ElementAdded);
    if (bringsName && !items.startsWith(name + QLatin1Char(' '))) {
        return error(line + name, QStringLiteral("the record holds") + items);
    }
    line += bringsName ? items : name + items;
    const auto leftOver = stream.device()->bytesAvailable();
    return leftOver == 0 ? line : error(line, QStringLiteral("%1 bytes left over").arg(leftOver));
}

QString RecordPrinter::nameOf(const QString& id) {
    QString& name = m_names[id];
    if (name.isEmpty()) {
        name = QStringLiteral("#%1").arg(m_names.size());
    }
    return name;
}

QString RecordPrinter::printItems(int kind, QDataStream& stream) {
    switch (static_cast<RecordKind>(kind)) {
    case RecordKind::ElementAdded:
        return printElement(stream);
    case RecordKind::ChildAdded: {
        const auto childId = take<QString>(stream);
        // What cannot be decoded gets no name.
        return stream.status() == QDataStream::Ok ? nameOf(childId) : QString();
    }
    case RecordKind::EventRegistered:
        return TreePrinter::bare(take<QString>(stream));
    case RecordKind::GeometryChanged:
        return m_treePrinter.rect(take<QRect>(stream));
    case RecordKind::ImageChanged: {
        QImage image;
        readImage(stream, image);
        return m_treePrinter.image(image);
    }
    case RecordKind::StandardTypeChanged:
        return TreePrinter::type(take<StandardType>(stream));
    case RecordKind::TextChanged:
        return TreePrinter::quoted(take<QString>(stream));
    case RecordKind::TransparentNodeChanged:
    case RecordKind::SubgraphTransparentChanged:
    case RecordKind::WindowNodeChanged:
        return take<bool>(stream) ? QStringLiteral("true") : QStringLiteral("false");
    case RecordKind::UsageIncreased: {
        const auto event = take<QString>(stream);
        return TreePrinter::bare(event) + QLatin1Char('=') + QString::number(take<qint32>(stream));
    }
    case RecordKind::AttributeChanged: {
        const auto name = take<QString>(stream);
        return TreePrinter::bare(name) + QLatin1Char('=') +
               TreePrinter::quoted(take<QString>(stream));
    }
    }
    return {};
}

QString RecordPrinter::printElement(QDataStream& stream) {
    const auto element = readElement(stream);
    return element ? m_treePrinter.printCompact(*element,
                                                [this](const QString& id) { return nameOf(id); })
                   : QString();
}

} // namespace TestLib
