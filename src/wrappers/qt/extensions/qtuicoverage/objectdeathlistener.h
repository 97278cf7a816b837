#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QObject;
QT_END_NAMESPACE

namespace Vorsk {
namespace UICoverage {

/**
 * Told by a store of the deaths of the objects that it maps. A call costs a fraction of a
 * connection of one's own to each object's destroyed().
 */
class ObjectDeathListener {
public:
    /** The store has forgotten the object. Only its address may be looked at. */
    virtual void mappedObjectDestroyed(QObject* object) = 0;

protected:
    ~ObjectDeathListener() = default;
};

} // namespace UICoverage
} // namespace Vorsk
