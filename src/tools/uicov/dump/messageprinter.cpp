// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "dump/messageprinter.h"

#include "base/displaytext.h"
#include "dump/recordtext.h"
#include "recording/framedecoder.h"
#include "recording/recorddecoder.h"
#include "recordstream/pngheader.h"
#include "uiabstraction/elementwalk.h"

#include <QHash>
#include <QSize>
#include <QStringList>

#include <utility>

namespace Uicov::Dump {

using Recording::Frame;
using Recording::HookArgument;
using Recording::HookMessage;
using Recording::Record;
using RecordingFormat::ArgumentTag;
using RecordingFormat::FrameType;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIElement;

namespace {

/** How many elements below an added one are named in its line. */
constexpr int namedDescendants = 8;

QString printFlag(const char* name, bool value) {
    return QLatin1String(name) + QLatin1Char('=') +
           (value ? QStringLiteral("true") : QStringLiteral("false"));
}

QString printPicture(const QByteArray& png) {
    if (png.isEmpty()) {
        return QStringLiteral("picture=null");
    }
    const QSize size = Vorsk::RecordStream::pngSize(png);
    return QStringLiteral("picture=%1x%2 bytes=%3")
        .arg(size.width())
        .arg(size.height())
        .arg(png.size());
}

QString printArguments(const HookMessage& message) {
    QStringList texts;
    for (const HookArgument& argument : message.arguments) {
        texts.append(argument.tag == ArgumentTag::Integer
                         ? QString::number(argument.integer)
                         : QStringLiteral("<%1 bytes>").arg(argument.bytes.size()));
    }
    return quoted(message.name) + QStringLiteral(" (") + texts.join(QStringLiteral(", ")) +
           QLatin1Char(')');
}

/** In the order of their names, which those in a recording do not have. */
QString printAttributes(const UIElement& element) {
    const QHash<QString, QString> attributes = element.attributes();
    QStringList names = attributes.keys();
    names.sort();
    QString line;
    for (const QString& name : std::as_const(names)) {
        line += QLatin1Char(' ') + Base::escaped(name) + QLatin1Char('=') +
                quoted(attributes.value(name));
    }
    return line;
}

QString printProcess(const QByteArray& body) {
    const auto info = Recording::decodeProcess(body);
    if (!info) {
        return QStringLiteral("process damaged");
    }
    QString line = QStringLiteral("process");
    for (auto it = info->cbegin(); it != info->cend(); ++it) {
        line += QLatin1Char(' ') + Base::escaped(it.key()) + QLatin1Char('=') + quoted(it.value());
    }
    return line;
}

QString printLog(const QByteArray& body) {
    const auto line = Recording::decodeLog(body);
    if (!line) {
        return QStringLiteral("log damaged");
    }
    const bool isInfo = line->severity == RecordingFormat::Severity::Info;
    return (isInfo ? QStringLiteral("log info ") : QStringLiteral("log warning ")) +
           quoted(line->text);
}

} // namespace

QString MessagePrinter::print(const Frame& frame) {
    constexpr quint64 microsecondsPerSecond = 1000000;
    return QStringLiteral("+%1.%2 ")
               .arg(frame.time / microsecondsPerSecond)
               .arg(frame.time % microsecondsPerSecond, 6, 10, QLatin1Char('0')) +
           printBody(frame);
}

QString MessagePrinter::printBody(const Frame& frame) {
    switch (frame.type) {
    case FrameType::Process:
        return printProcess(frame.body);
    case FrameType::Message:
        return printMessage(frame.body);
    case FrameType::Log:
        return printLog(frame.body);
    case FrameType::Mark:
        if (const auto name = Recording::decodeMark(frame.body)) {
            return QStringLiteral("mark ") + quoted(*name);
        }
        return QStringLiteral("mark damaged");
    case FrameType::End:
        if (const auto count = Recording::decodeEnd(frame.body)) {
            return QStringLiteral("end messages=%1").arg(*count);
        }
        return QStringLiteral("end damaged");
    case FrameType::Loss:
        if (const auto loss = Recording::decodeLoss(frame.body)) {
            return QStringLiteral("loss pictures=%1 others=%2")
                .arg(loss->pictures)
                .arg(loss->others);
        }
        return QStringLiteral("loss damaged");
    }
    return {};
}

QString MessagePrinter::printMessage(const QByteArray& body) {
    const auto message = Recording::decodeMessage(body);
    if (!message) {
        return QStringLiteral("message damaged");
    }
    Record record;
    switch (Recording::decodeRecord(*message, record)) {
    case Recording::DecodingResult::Sound:
        return printRecord(record);
    case Recording::DecodingResult::Unknown:
        return QStringLiteral("record unknown ") + printArguments(*message);
    case Recording::DecodingResult::Damaged:
        return QStringLiteral("record damaged ") + printArguments(*message);
    case Recording::DecodingResult::Foreign:
        break;
    }
    return QStringLiteral("message ") + printArguments(*message);
}

QString MessagePrinter::printRecord(const Record& record) {
    if (record.kind == RecordKind::ElementAdded) {
        return kindName(record.kind) + QLatin1Char(' ') + printAdded(*record.element);
    }
    const QString name = nameOf(record.elementId);
    return kindName(record.kind) + QLatin1Char(' ') + name + QLatin1Char(' ') + printValues(record);
}

QString MessagePrinter::printAdded(const UIElement& added) {
    QStringList below;
    int elements = 0;
    ElementWalk walk(&added);
    while (const UIElement* element = walk.next()) {
        shortId(element->id());
        m_known[element->id()].type = element->standardType().name();
        m_known[element->id()].text = element->text();
        if (++elements > 1 && elements <= namedDescendants + 1) {
            below.append(nameOf(element->id()));
        }
    }
    QString line = QStringLiteral("%1 class=%2 id=%3")
                       .arg(nameOf(added.id()), quoted(added.concreteType()), quoted(added.id()));
    const auto usage = added.usage();
    for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
        line += QLatin1Char(' ') + Base::escaped(it.key().name()) + QLatin1Char('=') +
                QString::number(it.value());
    }
    line += added.isTransparentNode() ? QStringLiteral(" transparent") : QString();
    line += added.isSubgraphTransparent() ? QStringLiteral(" subgraphTransparent") : QString();
    line += added.isWindowNode() ? QStringLiteral(" window") : QString();
    if (added.geometry().isValid()) {
        line += QLatin1Char(' ') + printRect(added.geometry().rect());
    }
    line += printAttributes(added);
    if (elements > 1) {
        line += QStringLiteral(" with %1 below: ").arg(elements - 1) +
                below.join(QStringLiteral(", ")) +
                (elements - 1 > namedDescendants ? QStringLiteral(", ...") : QString());
    }
    return line;
}

QString MessagePrinter::printValues(const Record& record) {
    switch (record.kind) {
    case RecordKind::ElementAdded:
        break;
    case RecordKind::ChildAdded:
        return QStringLiteral("child=") + nameOf(record.text);
    case RecordKind::EventRegistered:
        return QStringLiteral("event=") + quoted(record.text);
    case RecordKind::GeometryChanged:
        return printRect(record.rect);
    case RecordKind::ImageChanged:
        return printPicture(record.picture);
    case RecordKind::StandardTypeChanged:
        m_known[record.elementId].type = record.text;
        return QStringLiteral("type=") + quoted(record.text);
    case RecordKind::TextChanged:
        m_known[record.elementId].text = record.text;
        return QStringLiteral("text=") + quoted(record.text);
    case RecordKind::TransparentNodeChanged:
        return printFlag("transparent", record.flag);
    case RecordKind::SubgraphTransparentChanged:
        return printFlag("subgraphTransparent", record.flag);
    case RecordKind::WindowNodeChanged:
        return printFlag("window", record.flag);
    case RecordKind::UsageIncreased:
        return QStringLiteral("event=") + quoted(record.text) + QStringLiteral(" count=") +
               QString::number(record.count);
    case RecordKind::AttributeChanged:
        return QStringLiteral("attribute=") + quoted(record.name) + QStringLiteral(" value=") +
               quoted(record.text);
    }
    return {};
}

QString MessagePrinter::nameOf(const QString& id) {
    QString name = shortId(id);
    const Known known = m_known.value(id);
    if (!known.type.isEmpty()) {
        name += QLatin1Char(' ') + Base::escaped(known.type);
    }
    if (!known.text.isEmpty()) {
        name += QLatin1Char(' ') + quoted(known.text);
    }
    return name;
}

QString MessagePrinter::shortId(const QString& id) {
    auto it = m_known.find(id);
    if (it == m_known.end()) {
        it = m_known.insert(id, Known{m_known.size() + 1, QString(), QString()});
    }
    return QStringLiteral("#%1").arg(it->number);
}

} // namespace Uicov::Dump
