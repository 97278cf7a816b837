// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/spontaneousevent.h"

#include <QEvent>

// The one class that QEvent lets do this. Qt Test's own of that name, which is not included here,
// takes the event for one of its objects, at which a sanitizer ends the program.
QT_BEGIN_NAMESPACE
class QSpontaneKeyEvent {
public:
    static void mark(QEvent& event) { event.spont = 1; }
};
QT_END_NAMESPACE

namespace TestLib {

void setSpontaneous(QEvent& event) {
    QSpontaneKeyEvent::mark(event);
}

} // namespace TestLib
