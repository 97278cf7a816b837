// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QVector>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * The scenes of one toolkit inside widgets of the other, whose pictures show them: the half that
 * takes the picture asks the one that knows the scene. GUI thread only.
 */
class EmbeddedScenes {
public:
    /**
     * The widget, with all in it, is being pictured: tells the book where the scenes' controls are
     * to be seen now. @return what has to be blacked out, in pixels of the top-level window
     */
    virtual QVector<QRect> pictured(const QObject* widget) = 0;

protected:
    EmbeddedScenes() = default;
    virtual ~EmbeddedScenes() = default;
    Q_DISABLE_COPY(EmbeddedScenes)
};

/** Where the half that has scenes in widgets of the other says so; null as long as none does. */
struct SceneRegistry {
    EmbeddedScenes* scenes = nullptr;
};

} // namespace UIControls
} // namespace Vorsk
