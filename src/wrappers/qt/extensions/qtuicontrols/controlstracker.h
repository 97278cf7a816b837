// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class Attribution;
struct SceneRegistry;
class ElementBook;

/** What a person has set for the run. A value. */
struct TrackerOptions {
    /** Whether views get pictures. */
    bool takesPictures = false;
    /** Controls whose content is blacked out of pictures besides inputs that hide what is typed:
     * wildcard patterns over objectName, QML id and class name. */
    QStringList redacted;
};

/** What a toolkit's half gets from the extension; all of it outlives the half. */
struct TrackerServices {
    ElementBook& book;
    Attribution& attribution;
    const TrackerOptions& options;
    /** Null where nobody asks for pictures of scenes in widgets. */
    SceneRegistry* registry = nullptr;
};

/**
 * The half of the extension that knows one toolkit: finds its views and controls and counts their
 * uses. It is handed each event whose type may concern it (eventkinds.h) on the GUI thread before
 * the receiver gets it and must decide by the event's type first. GUI thread only.
 */
class ControlsTracker {
public:
    virtual ~ControlsTracker() = default;

    /** The delivery has been noted already: Attribution::verdict() says this event. */
    virtual void handleEvent(QObject* object, QEvent* event) = 0;

protected:
    ControlsTracker() = default;
    Q_DISABLE_COPY(ControlsTracker)
};

} // namespace UIControls
} // namespace Vorsk
