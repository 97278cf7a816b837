// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/frame.h"
#include "recording/record.h"

#include <QHash>
#include <QString>
#include <QStringList>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Dump {

/**
 * Prints the frames of one recording, in their order, each as one line fit for grep. Elements are
 * called #1, #2, ... in the order in which they first appear, with type and text as last heard of.
 */
class MessagePrinter {
public:
    /** The line without its end. */
    QString print(const Recording::Frame& frame);

private:
    QString printBody(const Recording::Frame& frame);
    QString printMessage(const QByteArray& body);
    QString printRecord(const Recording::Record& record);
    QString printAdded(const Vorsk::UIAbstraction::UIElement& added);
    QString printValues(const Recording::Record& record);
    /** The short id, then what is known of the element. */
    QString nameOf(const QString& id);
    QString shortId(const QString& id);

    struct Known {
        int number;
        QString type;
        QString text;
    };

    QHash<QString, Known> m_known;
};

} // namespace Uicov::Dump
