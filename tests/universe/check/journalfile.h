// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

QT_BEGIN_NAMESPACE
class QJsonObject;
QT_END_NAMESPACE

/** What the plugin wrote, read back; see plugin/journal.h for its form. A plain value. */
struct JournalFile {
    struct Object {
        int number = 0;
        /** The first that came after it was gone; 0 when it never was. */
        int successor = 0;
        QString className;
        QStringList bases;
        /** All that it ever had, as Names::plain() gives them. */
        QStringList names;
        /** Numbers of the objects that it is a part of, itself first. */
        QVector<int> chain;
    };
    struct Node {
        int number = 0;
        int object = 0;
        bool hasObject = true;
        QString role;
        QString name;
        bool isInvisible = false;
        /** Controls inside of its object, which is none itself. */
        QVector<int> inner;
    };
    struct Step {
        qint64 time = 0;
        QString what;
    };
    /** An event that was delivered, or a signal that was emitted. */
    struct Happening {
        qint64 time = 0;
        int object = 0;
        QString name;
        /** A signal: while input was being delivered. */
        bool isInDelivery = false;
        /** An input: the key that was pressed, else 0. */
        int key = 0;
        /** An input for a menu: its current action, else 0. */
        int entry = 0;
    };

    QHash<int, Object> objects;
    QVector<Node> nodes;
    QVector<Step> steps;
    QVector<Happening> inputs;
    QVector<Happening> reactions;
    /** The plugin came to its end. */
    bool isDone = false;

    /** False, with the reason, when the file is not one. */
    bool read(const QString& path, QString& problem);
    bool takeLine(const QByteArray& line);

private:
    void takeNode(const QJsonObject& line);
};
