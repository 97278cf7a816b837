// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QString>

QT_BEGIN_NAMESPACE
class QQuickItem;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class QuickClass;

// What views and controls of Qt Quick are called by.

/** The caption, without mnemonics and markup; null when it has none. */
QString captionOf(const QObject* object, const QuickClass& cls);

/** The id that the QML file gives it; null when it has none that can be known. */
QString qmlIdOf(const QObject* object);

/** The last part of the address of the QML file that has the object in it, as "Main.qml"; null for
 * none. */
QString qmlFileOf(const QObject* object);

/** Whether the object is part of what Qt's own Controls are made of. */
bool isInsideQtControls(const QObject* object);

/** Of an area: the first text on it, or beside it on the same item; null when there is none. */
QString textOn(const QQuickItem* area);

/** Whether what is typed into it is hidden. */
bool hidesInput(const QObject* object, const QuickClass& cls);

/** Adds the attributes that names are made of, other than the label and the group. */
void describeNames(const QObject* object, const QuickClass& cls, Description& what);

} // namespace UIControls
} // namespace Vorsk
