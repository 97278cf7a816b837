// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QVariant>
#include <QVector>

/**
 * Reads a recording byte by byte, with every number of the layout written out here a second time,
 * so that it agrees with the writer only if both agree with the documentation.
 */
class RecordingParser {
public:
    struct Frame {
        int type;
        quint64 time;
        QByteArray body;
    };

    struct Message {
        int channel;
        QString name;
        QVariantList arguments;
    };

    static RecordingParser parse(const QByteArray& bytes);
    static RecordingParser parseFile(const QString& path);

    /** Empty when every byte of the recording is sound; else where and what is not. */
    QString error;
    QList<Frame> frames;
    /** How much is in it according to its header; 0 in version 1. */
    qint64 end = 0;

    QVector<QPair<QString, QString>> processInfo() const;
    QString processValue(const QString& key) const;
    QList<Message> messages() const;
    /** As "info text" or "warning text". */
    QStringList logs() const;
    bool hasEnd() const;
    /** What the End frame says; -1 without one. */
    qint64 messagesAccordingToEnd() const;
};
