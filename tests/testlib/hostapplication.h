// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>

namespace TestLib {

/** An application that can play the host that tells the end of each delivery, to the ControlsProbe
 * that there is. */
class HostApplication : public QApplication {
    Q_OBJECT

public:
    using QApplication::QApplication;

    /** Off at first. */
    static void setTellsEnds(bool tellsEnds);

    bool notify(QObject* receiver, QEvent* event) override;
};

} // namespace TestLib
