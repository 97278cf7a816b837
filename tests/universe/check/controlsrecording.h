// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "recording/record.h"

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Recording {
struct Frame;
}

/** What a recording says of controls and views, with the time of each use. A plain value. */
struct ControlsRecording {
    struct Use {
        /** Microseconds of CLOCK_MONOTONIC. */
        qint64 time = 0;
        QString event;
    };
    struct Element {
        QString id;
        QString type;
        QString className;
        /** All that it was ever called by, as Names::plain() gives them. */
        QStringList names;
        /** Id of the element that lists it; empty for none. */
        QString parent;
        /** Stands for as many objects as there are of its kind. */
        bool isGroup = false;
        QVector<Use> uses;

        bool isControl() const;
    };

    QVector<Element> elements;

    /** The index of the element's parent; -1 for none. */
    int parentOf(int element) const;

    /** False, with the reason, when the file cannot be used. */
    bool read(const QString& path, QString& problem);

private:
    void take(const Uicov::Recording::Frame& frame);
    void takeElement(const Vorsk::UIAbstraction::UIElement& announced, qint64 time);
    void takeRecord(const Uicov::Recording::Record& record, qint64 time);
    void takeAttribute(Element& element, const QString& name, const QString& value);

    qint64 m_start = 0;
    QHash<QString, int> m_indexOf;
    /** The last count of each event of each element. */
    QHash<QString, int> m_counts;
};
