// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>

#include <vector>

namespace Vorsk {
namespace UIControls {

class Attribution;

/**
 * What input has begun and time will end: a button that repeats while it is held, a view that goes
 * on moving after it was let go, a finger whose moves come with the next frame. Arms it in the
 * attribution for as long. GUI thread only.
 */
class QuickMotions {
public:
    enum class End : quint8 {
        Release,   ///< with the release of what was pressed
        Standstill ///< when it has been released and its property "moving" is false
    };

    explicit QuickMotions(Attribution& attribution);

    void begin(QObject* object, End end);
    void end(QObject* object);

    /** A press, key or the like begins something new: what has come to rest ends. */
    void noteBegin();
    /** What was pressed is being released. */
    void noteRelease();
    /** To be called for events that are no input; cheap when nothing has begun. */
    void noteOther(QEvent::Type type) {
        if (m_isReleased && !m_motions.empty()) {
            endThoseAtRest(type);
        }
    }

    /** Whether events of that receiver advance animations. */
    static bool advancesAnimations(const QObject* receiver);
    /** By its property; false when it has none. */
    static bool isMoving(const QObject* object);

private:
    struct Motion {
        QPointer<QObject> object;
        End end;
    };

    void endThoseAtRest(QEvent::Type type);
    template <class Condition>
    void endIf(Condition condition);

    Attribution& m_attribution;
    std::vector<Motion> m_motions;
    bool m_isReleased = false;
};

} // namespace UIControls
} // namespace Vorsk
