// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <vector>

QT_BEGIN_NAMESPACE
class QObject;
struct QMetaObject;
QT_END_NAMESPACE

/**
 * Who an object of Qt Widgets or Qt Quick is, and what it is a part of. Written from Qt's
 * documentation and nothing of the extension's, so that the two can be compared.
 */
namespace Kinship {

/** Without the number that QML gives to the types of a file. */
QString className(const QMetaObject* meta);
/** The classes that the object's class extends, without QObject. */
QStringList basesOf(const QObject* object);
/** Every text that somebody could call the object by, as it stands in its properties. */
QSet<QString> namesOf(const QObject* object);
/** Null at the top. Of a Qt Quick item the one that it is shown in; of a popup its opener. */
QObject* parentOf(const QObject* object);
/** What the control does when it is used, where that is an object of its own; null otherwise. */
QObject* actionOf(const QObject* object);
/**
 * The object, the controls that it is a part of, outermost last, and the objects between it and the
 * first of them, and its action. Only the object itself when it is part of no control.
 */
std::vector<QObject*> chainOf(QObject* object);

/** The text that the menu, or the entry of one, copies, pastes and undoes in; null of others. */
QObject* editedBy(const QObject* object);
/** The text that a list of completions is for; null of any other object. */
QObject* completedBy(const QObject* object);
/** The controls inside of an object of Qt Quick that is none itself; the outermost of each. */
std::vector<QObject*> innerOf(const QObject* object);

} // namespace Kinship
