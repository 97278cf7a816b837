// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetlabels.h"

#include "tracking/mnemonics.h"

#include <QAbstractButton>
#include <QBoxLayout>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QRadioButton>
#include <QTextDocumentFragment>

namespace Vorsk {
namespace UIControls {

using UICoverage::stripMnemonics;

namespace {

/** Whether the widget may be there to tell what its neighbour is for. */
bool isCaption(const QWidget* widget) {
    const auto* const label = qobject_cast<const QLabel*>(widget);
    if (label != nullptr) {
        return !label->text().isEmpty();
    }
    return qobject_cast<const QCheckBox*>(widget) != nullptr ||
           qobject_cast<const QRadioButton*>(widget) != nullptr;
}

QString textOf(const QWidget* caption) {
    if (const auto* const button = qobject_cast<const QAbstractButton*>(caption)) {
        return stripMnemonics(button->text());
    }
    const auto* const label = qobject_cast<const QLabel*>(caption);
    if (label == nullptr) {
        return {};
    }
    const QString text = label->text();
    const bool isRich = label->textFormat() == Qt::RichText ||
                        (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(text));
    if (isRich) {
        return QTextDocumentFragment::fromHtml(text).toPlainText().trimmed();
    }
    // Without a buddy the ampersand is shown as it is.
    return (label->buddy() != nullptr ? stripMnemonics(text) : text).trimmed();
}

/** A check box or radio button tells what it stands before; above something, it is a control beside
 * another. */
bool isSideBySide(const QBoxLayout& box) {
    return box.direction() == QBoxLayout::LeftToRight || box.direction() == QBoxLayout::RightToLeft;
}

QString groupTitleAbove(const QWidget* widget) {
    for (const QWidget* above = widget->parentWidget(); above != nullptr && !above->isWindow();
         above = above->parentWidget()) {
        if (const auto* const group = qobject_cast<const QGroupBox*>(above)) {
            return stripMnemonics(group->title());
        }
    }
    return {};
}

} // namespace

QString WidgetLabels::labelOf(const QWidget* widget) {
    const QWidget* const parent = widget->parentWidget();
    if (parent == nullptr) {
        return {};
    }
    if (parent != m_parent) {
        read(parent);
    }
    const QWidget* const caption = m_buddies.value(widget, m_neighbours.value(widget));
    const QString text = caption == nullptr ? QString() : textOf(caption);
    return text.isEmpty() ? groupTitleAbove(widget) : text;
}

void WidgetLabels::read(const QWidget* parent) {
    m_parent = parent;
    m_buddies.clear();
    m_neighbours.clear();
    for (const QObject* child : parent->children()) {
        const auto* const label = qobject_cast<const QLabel*>(child);
        if (label != nullptr && label->buddy() != nullptr) {
            m_buddies.insert(label->buddy(), label);
        }
    }
    if (QLayout* const layout = parent->layout()) {
        readLayout(layout, nullptr);
    }
}

/** @param label what stands before the whole layout, where it lies in another one; may be null */
void WidgetLabels::readLayout(QLayout* layout, const QWidget* label) {
    if (qobject_cast<QFormLayout*>(layout) != nullptr) {
        readForm(layout);
        return;
    }
    if (qobject_cast<QGridLayout*>(layout) != nullptr) {
        readGrid(layout, label);
        return;
    }
    // Others may be of the application's, or answer with a warning, as that of a main window.
    const auto* const box = qobject_cast<const QBoxLayout*>(layout);
    if (box == nullptr) {
        return;
    }
    for (int i = 0; i < layout->count(); ++i) {
        QLayoutItem* const item = layout->itemAt(i);
        if (QLayout* const inner = item->layout()) {
            readLayout(inner, label);
            label = nullptr;
        } else if (const QWidget* const widget = item->widget()) {
            if (label != nullptr) {
                m_neighbours.insert(widget, label);
            }
            const bool mayTell =
                isSideBySide(*box) || qobject_cast<const QLabel*>(widget) != nullptr;
            label = mayTell && isCaption(widget) ? widget : nullptr;
        }
    }
}

void WidgetLabels::readForm(QLayout* layout) {
    auto* const form = static_cast<QFormLayout*>(layout);
    for (int row = 0; row < form->rowCount(); ++row) {
        const QLayoutItem* const labelItem = form->itemAt(row, QFormLayout::LabelRole);
        const QWidget* const label =
            labelItem == nullptr ? nullptr : const_cast<QLayoutItem*>(labelItem)->widget();
        QLayoutItem* field = form->itemAt(row, QFormLayout::FieldRole);
        if (field == nullptr) {
            field = form->itemAt(row, QFormLayout::SpanningRole);
        }
        if (field == nullptr) {
            continue;
        }
        if (QLayout* const inner = field->layout()) {
            readLayout(inner, label);
        } else if (field->widget() != nullptr && label != nullptr) {
            m_neighbours.insert(field->widget(), label);
        }
    }
}

void WidgetLabels::readGrid(QLayout* layout, const QWidget* label) {
    auto* const grid = static_cast<QGridLayout*>(layout);
    QHash<QPair<int, int>, const QWidget*> captions;
    struct Cell {
        QLayoutItem* item;
        int row;
        int column;
    };
    QVector<Cell> cells;
    for (int i = 0; i < grid->count(); ++i) {
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(i, &row, &column, &rows, &columns);
        QLayoutItem* const item = grid->itemAt(i);
        const QWidget* const widget = item->widget();
        if (widget != nullptr && isCaption(widget)) {
            // It stands before what follows its last column, and above what its first one is over.
            captions.insert({row, column + columns}, widget);
            const QPair<int, int> below(-1 - (row + rows), column);
            captions.insert(below, widget);
        }
        cells.append({item, row, column});
    }
    for (const Cell& cell : qAsConst(cells)) {
        const QWidget* caption = captions.value({cell.row, cell.column});
        const QWidget* const above = captions.value({-1 - cell.row, cell.column});
        // A check box or radio button above another control is a neighbour, not its caption.
        if (caption == nullptr && qobject_cast<const QLabel*>(above) != nullptr) {
            caption = above;
        }
        if (caption == nullptr) {
            caption = label;
        }
        if (QLayout* const inner = cell.item->layout()) {
            readLayout(inner, caption);
        } else if (cell.item->widget() != nullptr && caption != nullptr) {
            m_neighbours.insert(cell.item->widget(), caption);
        }
    }
}

} // namespace UIControls
} // namespace Vorsk
