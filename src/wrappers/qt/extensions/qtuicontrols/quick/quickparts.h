// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QHash>
#include <QPointer>
#include <QVector>

namespace Vorsk {
namespace UIControls {

class QuickClass;

/** Elements of what has no object of its own: the entries of combo boxes. GUI thread only. */
class QuickParts {
public:
    explicit QuickParts(ElementBook& book)
        : m_book(book) {}

    /** Makes an option of each entry that the interface itself gives the combo box, if these are
     * not too many. */
    void addOptions(QObject* comboBox, UIElement* element);

    /** Of the entry at that index; null when it has no element. */
    UIElement* optionElement(const QObject* comboBox, int index) const;

    static constexpr int mostOptions = 50;

private:
    struct Options {
        QPointer<QObject> comboBox;
        QVector<UIElement*> elements;
    };

    ElementBook& m_book;
    QHash<const QObject*, Options> m_options;
};

} // namespace UIControls
} // namespace Vorsk
