// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>
#include <QHash>
#include <QObject>
#include <QSet>

#include <vector>

QT_BEGIN_NAMESPACE
class QJsonObject;
QT_END_NAMESPACE

/**
 * What was there, what it was given and how it reacted, as lines of JSON in the order of time:
 *
 *   {"k":"object","o":1,"class":"QPushButton","bases":["QAbstractButton",...],"names":["OK"],
 *    "chain":[1,...]}                       an object, once and whenever it has changed;
 *                                           chain: itself and what it is a part of
 *   {"k":"gone","o":1,"next":5}            it was destroyed; the next new one has that number
 *   {"k":"node","n":1,"o":1,"own":true,"role":"Button","name":"OK","states":[...],"rect":[...],
 *    "actions":[...],"inner":[2]}           a node of the accessibility tree; own: its object is
 *                                           no other node's; inner: controls in an object that is
 *                                           none itself
 *   {"k":"step","t":99,"n":7,"what":"press"}
 *   {"k":"input","t":99,"o":1,"type":"KeyPress","key":65,"entry":0}  an event was
 *                                           delivered to the object; entry: a menu's current one
 *   {"k":"signal","t":99,"o":1,"name":"clicked","in":true}  in: while input was being delivered
 *   {"k":"done"}                                            the last line
 *
 * Times are microseconds of CLOCK_MONOTONIC, as a recording's are. GUI thread only.
 */
class Journal : public QObject {
    Q_OBJECT

public:
    explicit Journal(const QString& path);

    /** The object's number; describes it when it is new or has changed. */
    int object(QObject* object);
    void write(const QJsonObject& line);
    void flush() { m_file.flush(); }

    static qint64 now();

private:
    void forget(QObject* object);

    QFile m_file;
    struct Known {
        int number = 0;
        QSet<QString> names;
        std::vector<QObject*> chain;
    };
    QHash<QObject*, Known> m_known;
    int m_lastNumber = 0;
};
