// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recordingformat/recordingformat.h"
#include "recordstream/recordkind.h"
#include "uiabstraction/uielement.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <vector>

namespace TestLib {

/**
 * Makes recordings: an element that was announced here sends a record for each of its changes, as
 * it would from inside an application. Writes the documented layout by itself, apart from the
 * writer and the readers that it is used to test. Owns the elements it is given.
 */
class RecordingBuilder : public QObject {
    Q_OBJECT

public:
    using UIElement = Vorsk::UIAbstraction::UIElement;

    /** Begins with the header. */
    RecordingBuilder();
    ~RecordingBuilder() override;

    void addProcess(const QMap<QString, QString>& info);
    void addLog(RecordingFormat::Severity severity, const QString& line);
    void addMark(const QString& name);
    /** Ends the recording in order, or with another count than the number of messages. */
    void addEnd();
    void addEnd(quint64 count);
    void addFrame(quint8 type, const QByteArray& body);
    /** A record of any kind, sound or not. */
    void addRecord(int kind, const QByteArray& payload);
    /** A message that carries no record: these arguments are integers. */
    void addMessage(const QString& name, const QList<qint32>& arguments);

    /** Sends the element with all below it, and from then on every change of it. */
    void announce(UIElement* element);

    /**
     * Makes, announces and links an element as the trackers do: first announced, then added to its
     * parent. Events are registered before.
     * @param parent null for a root
     */
    UIElement* add(UIElement* parent, const QString& standardType, const QString& concreteType,
                   const QString& text = QString(), const QStringList& events = {});

    /** The time of all frames added from now on, in microseconds. */
    void setTime(quint64 time) { m_time = time; }

    QByteArray bytes() const { return m_bytes; }
    /** False when the file cannot be written. */
    bool write(const QString& path) const;

    /** What the layout has for a text. */
    static QByteArray text(const QString& text);
    /** A payload in the form of records: the items in their stream form. */
    template <class... Items>
    static QByteArray payload(const Items&... items);

private:
    template <class... Items>
    void send(Vorsk::RecordStream::RecordKind kind, const UIElement* element,
              const Items&... items);

    QByteArray m_bytes;
    quint64 m_time = 0;
    quint64 m_messages = 0;
    std::vector<QPointer<UIElement>> m_elements;
};

template <class... Items>
QByteArray RecordingBuilder::payload(const Items&... items) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(Vorsk::RecordStream::streamVersion);
    (stream << ... << items);
    return bytes;
}

} // namespace TestLib
