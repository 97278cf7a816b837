// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.9
import QtQuick.Controls 2.3

// A style's own text field is known by the name of its file, so the panel gives its fields a name
// that says what they are.
TextField {
    selectByMouse: true
}
