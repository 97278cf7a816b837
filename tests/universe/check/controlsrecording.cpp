// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "controlsrecording.h"

#include "names.h"
#include "recording/frame.h"
#include "recording/framedecoder.h"
#include "recording/recorddecoder.h"
#include "recording/recordingreader.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/elementwalk.h"

#include <QSet>

using Uicov::Recording::Frame;
using Uicov::Recording::Record;
using Vorsk::RecordStream::RecordKind;
using Vorsk::UIAbstraction::UIElement;

namespace {

/** As toolkits number the types of QML files. */
QString plainClass(const QString& name) {
    const int number = name.indexOf(QLatin1String("_QML"));
    return number < 0 ? name : name.left(number);
}

} // namespace

bool ControlsRecording::Element::isControl() const {
    static const QSet<QString> controls{
        QStringLiteral("Button"),   QStringLiteral("RadioButton"), QStringLiteral("CheckBox"),
        QStringLiteral("Switch"),   QStringLiteral("GroupBox"),    QStringLiteral("Command"),
        QStringLiteral("ComboBox"), QStringLiteral("TextInput"),   QStringLiteral("SpinBox"),
        QStringLiteral("Slider"),   QStringLiteral("Dial"),        QStringLiteral("Tab"),
        QStringLiteral("List"),     QStringLiteral("Tree"),        QStringLiteral("Table"),
        QStringLiteral("Option"),   QStringLiteral("Link"),        QStringLiteral("Area")};
    return controls.contains(type);
}

bool ControlsRecording::read(const QString& path, QString& problem) {
    Uicov::Recording::RecordingReader reader(path);
    if (const auto found = reader.open()) {
        problem = found->text;
        return false;
    }
    Frame frame;
    while (reader.next(frame)) {
        take(frame);
    }
    if (elements.isEmpty()) {
        problem = path + QStringLiteral(": there is no element in it");
    }
    return !elements.isEmpty();
}

int ControlsRecording::parentOf(int element) const {
    return m_indexOf.value(elements.at(element).parent, -1);
}

void ControlsRecording::take(const Frame& frame) {
    if (frame.type == RecordingFormat::FrameType::Process) {
        const auto process = Uicov::Recording::decodeProcess(frame.body);
        if (process) {
            m_start = process->value(QLatin1String(RecordingFormat::Key::clock)).toLongLong();
        }
    } else if (frame.type == RecordingFormat::FrameType::Message) {
        const auto message = Uicov::Recording::decodeMessage(frame.body);
        Record record;
        if (message && Uicov::Recording::decodeRecord(*message, record) ==
                           Uicov::Recording::DecodingResult::Sound) {
            takeRecord(record, m_start + static_cast<qint64>(frame.time));
        }
    }
}

void ControlsRecording::takeElement(const UIElement& announced, qint64 time) {
    Vorsk::UIAbstraction::ElementWalk walk(&announced);
    while (const UIElement* one = walk.next()) {
        const bool isNew = !m_indexOf.contains(one->id());
        if (isNew) {
            m_indexOf.insert(one->id(), elements.size());
            elements.append(Element());
        }
        Element& element = elements[m_indexOf.value(one->id())];
        element.id = one->id();
        element.type = one->standardType().name();
        element.className = plainClass(one->concreteType());
        if (one->parent() != nullptr) {
            element.parent = one->parent()->id();
        }
        Names::add(element.names, one->text());
        const QHash<QString, QString> attributes = one->attributes();
        for (auto it = attributes.cbegin(); it != attributes.cend(); ++it) {
            takeAttribute(element, it.key(), it.value());
        }
        const auto usage = one->usage();
        for (auto it = usage.cbegin(); it != usage.cend(); ++it) {
            int& last = m_counts[element.id + it.key().name()];
            if (it.value() > last) {
                element.uses.append({time, it.key().name()});
            }
            last = it.value();
        }
    }
}

void ControlsRecording::takeRecord(const Record& record, qint64 time) {
    if (record.kind == RecordKind::ElementAdded) {
        takeElement(*record.element, time);
        return;
    }
    if (record.kind == RecordKind::ChildAdded && m_indexOf.contains(record.text)) {
        elements[m_indexOf.value(record.text)].parent = record.elementId;
    }
    const auto index = m_indexOf.constFind(record.elementId);
    if (index == m_indexOf.cend()) {
        return;
    }
    Element& element = elements[*index];
    switch (record.kind) {
    case RecordKind::TextChanged:
        Names::add(element.names, record.text);
        break;
    case RecordKind::StandardTypeChanged:
        element.type = record.text;
        break;
    case RecordKind::AttributeChanged:
        takeAttribute(element, record.name, record.text);
        break;
    case RecordKind::UsageIncreased:
        m_counts[element.id + record.text] = record.count;
        element.uses.append({time, record.text});
        break;
    default:
        break;
    }
}

void ControlsRecording::takeAttribute(Element& element, const QString& name, const QString& value) {
    static const QStringList naming{QStringLiteral("objectName"), QStringLiteral("qmlId"),
                                    QStringLiteral("label"),      QStringLiteral("placeholder"),
                                    QStringLiteral("toolTip"),    QStringLiteral("accessibleName"),
                                    QStringLiteral("description")};
    if (naming.contains(name)) {
        Names::add(element.names, value);
    } else if (name == QLatin1String("group")) {
        element.isGroup = element.isGroup || !value.isEmpty();
    }
}
