// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>
#include <QString>

QT_BEGIN_NAMESPACE
class QLabel;
class QLayout;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

/**
 * Finds what stands beside a widget and says what it is for. Reads the children and layouts of one
 * parent at a time and keeps what it found for the next widget in it, so it lives no longer than
 * one walk over widgets during which nothing changes. GUI thread only.
 */
class WidgetLabels {
public:
    /**
     * The text of the label whose buddy the widget is; of its row in a form; of the label, check
     * box or radio button before or above it in its layout; else the title of the group box that it
     * lies in. Null when there is none of these.
     */
    QString labelOf(const QWidget* widget);

private:
    void read(const QWidget* parent);
    void readLayout(QLayout* layout, const QWidget* label);
    void readForm(QLayout* layout);
    void readGrid(QLayout* layout, const QWidget* label);

    const QWidget* m_parent = nullptr;
    QHash<const QWidget*, const QWidget*> m_buddies;
    QHash<const QWidget*, const QWidget*> m_neighbours;
};

} // namespace UIControls
} // namespace Vorsk
