// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVector>

#include <optional>

namespace Uicov::Runs {

/** How often an event of an element happened while a context was the current one. */
struct Hit {
    QString event;
    /** Index into Run::contexts. */
    int context = 0;
    /** Above zero. */
    qint64 count = 0;
    /** Milliseconds from the beginning of the recording to the first and to the last time; -1 where
     * that was not recorded. */
    qint64 first = -1;
    qint64 last = -1;
};

/** One element as it was at the end of its run, with nothing interpreted. A value. */
struct RunElement {
    /** As the application's extension named it; another in each run. */
    QString id;
    QString className;
    /** Standard type; empty for none. */
    QString type;
    /** Null where the element never had a text. */
    QString text;
    bool isTransparentNode = false;
    bool isSubgraphTransparent = false;
    bool isWindowNode = false;
    /** Index into Run::elements of the element that listed this one first; -1 for a root. */
    int parent = -1;
    /** Indices of all listed elements in their order, also of those whose parent is another; an
     * element may stand below itself. */
    QVector<int> children;
    /** Announced events, in the order of their names. */
    QStringList events;
    /** In the order of event and context; may name events that were never announced. */
    QVector<Hit> hits;
    /** Pixels: in the window's coordinates for widgets, in the scene's for Qt Quick items, in the
     * menu's own for menu items. Nothing where the place was never told. Of a control of the
     * controls extension: as on its picture, where it is on one. */
    std::optional<QRect> place;
    /** SHA-256 of the last picture's PNG; empty when there is none. Of a control of the controls
     * extension: the last picture of its view that shows it. */
    QByteArray picture;
    /** By name, as at the end of the run. */
    QMap<QString, QString> attributes;
    /** Of a control: it was enabled at some time. */
    bool wasEnabled = true;
    /** Of a control: its view was showing at some time at which it was there, enabled and not
     * hidden. */
    bool wasSeen = false;
};

} // namespace Uicov::Runs
