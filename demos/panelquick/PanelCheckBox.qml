// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

import QtQuick 2.9
import QtQuick.Controls 2.3

// Says its state in the words of the first generation of controls too, as number and with the third
// state.
CheckBox {
    readonly property int checkedState: checkState
    readonly property bool partiallyCheckedEnabled: tristate
}
