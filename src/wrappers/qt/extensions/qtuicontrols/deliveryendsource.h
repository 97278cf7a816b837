#pragma once

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QEvent;
class QObject;
QT_END_NAMESPACE

namespace Vorsk {

class WrapperContext;

namespace UIControls {

/**
 * Asks the host to tell the end of each delivery, which not every host can.
 * @param callback gets the addresses of the receiver and of the event, which may both be dead
 * @return false where the host does not tell; the callback is never called then
 */
bool onDeliveryEnd(const WrapperContext* context, void (*callback)(QObject*, QEvent*));

} // namespace UIControls
} // namespace Vorsk
