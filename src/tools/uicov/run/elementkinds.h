// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Runs {

// What the types and attributes in the stream of the controls extension mean to whoever reads it.

/** The name of the extension that knows views and controls, as a recording has it. */
QString controlsExtension();

/** Whether a standard type is that of a view: what has to be brought up before its controls can be
 * reached. */
bool isViewType(const QString& type);

namespace AttributeName {
QString accessibleName();
QString enabled();
QString group();
QString hidden();
QString label();
QString objectName();
QString opens();
QString page();
QString placeholder();
QString qmlId();
QString showing();
QString toolTip();
QString usedWays();
QString ways();
} // namespace AttributeName

} // namespace Uicov::Runs
