// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

namespace Vorsk {
namespace UIAbstraction {
class UIElement;
} // namespace UIAbstraction
} // namespace Vorsk

namespace TestLib {

/**
 * The views and controls below an element as text that a test can hold as its expectation, one line
 * for each, children indented by two spaces:
 *
 *   Button "OK" enabled=false {clicked}
 *
 * with those attributes that were asked for and the events that were counted, with their counts
 * where these are above one.
 */
QString controlsTree(const Vorsk::UIAbstraction::UIElement& root,
                     const QStringList& attributes = {});

/** Its line alone. */
QString controlLine(const Vorsk::UIAbstraction::UIElement& element,
                    const QStringList& attributes = {});

} // namespace TestLib
