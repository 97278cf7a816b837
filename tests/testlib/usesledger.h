// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QPair>
#include <QString>
#include <QStringList>

namespace Vorsk {
namespace UIAbstraction {
class UIElement;
} // namespace UIAbstraction
} // namespace Vorsk

namespace TestLib {

class ControlsProbe;

/** What was counted of the controls that a probe knows, from one look to the next. */
class UsesLedger {
public:
    explicit UsesLedger(const ControlsProbe& probe);

    /**
     * What was counted since the last call, sorted, each as "name event", with its number behind it
     * when it is above one. The name is the object's, else the text. Views that were seen are left
     * out.
     */
    QStringList take();

private:
    using Key = QPair<const Vorsk::UIAbstraction::UIElement*, QString>;

    const ControlsProbe& m_probe;
    QHash<Key, int> m_counts;
};

} // namespace TestLib
