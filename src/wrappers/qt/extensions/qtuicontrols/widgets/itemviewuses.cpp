// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/itemviewuses.h"

#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/usecounter.h"

#include <QAbstractItemDelegate>
#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QTableView>
#include <QTreeView>

namespace Vorsk {
namespace UIControls {

using Cause = Attribution::Cause;
using UICoverage::methodNumber;

namespace {

bool isSortable(const QHeaderView* header) {
    return header != nullptr && header->isSortIndicatorShown() && header->sectionsClickable();
}

/** The header by which the view may be sorted; null when it has none. */
QHeaderView* columnHeaderOf(const QWidget* view) {
    if (const auto* const tree = qobject_cast<const QTreeView*>(view)) {
        return tree->header();
    }
    const auto* const table = qobject_cast<const QTableView*>(view);
    return table == nullptr ? nullptr : table->horizontalHeader();
}

bool isChecking(QEvent::Type type) {
    return type == QEvent::MouseButtonRelease || type == QEvent::MouseButtonDblClick ||
           type == QEvent::KeyPress;
}

} // namespace

ItemViewUses::ItemViewUses(UseCounter& counter, PartElements& parts)
    : m_counter(counter)
    , m_parts(parts) {}

Uses ItemViewUses::usesOf(const QWidget* widget) {
    Uses uses{Use::Chosen, Use::Activated};
    const auto* const view = qobject_cast<const QAbstractItemView*>(widget);
    if (view == nullptr) { // a calendar
        return uses;
    }
    if (view->editTriggers() != QAbstractItemView::NoEditTriggers) {
        uses.add(Use::Edited);
    }
    const auto* const tree = qobject_cast<const QTreeView*>(view);
    if (tree != nullptr && tree->itemsExpandable() && tree->rootIsDecorated()) {
        uses.add(Use::Expanded);
    }
    if (isSortable(columnHeaderOf(view))) {
        uses.add(Use::Sorted);
    }
    return uses;
}

void ItemViewUses::expect(QAbstractItemView* view, QWidget* receiver, QEvent* event) {
    QWidget* const editor = WidgetOwners::itemEditorOf(receiver);
    if (editor == nullptr || event->type() == QEvent::MouseMove) {
        return;
    }
    static const int signal =
        methodNumber(QAbstractItemDelegate::staticMetaObject, "commitData(QWidget*)");
    static const int slot = methodNumber(staticMetaObject, "committed(QWidget*)");
    m_editor = editor;
    if (const QAbstractItemDelegate* const delegate = view->itemDelegate(view->currentIndex())) {
        m_counter.connections().connect(delegate, signal, this, slot);
    }
}

void ItemViewUses::connectTo(QAbstractItemView* view) {
    static const QMetaObject& cls = QAbstractItemView::staticMetaObject;
    static const QMetaObject& selection = QItemSelectionModel::staticMetaObject;
    static const int pressedSignal = methodNumber(cls, "pressed(QModelIndex)");
    static const int activatedSignal = methodNumber(cls, "activated(QModelIndex)");
    static const int currentSignal =
        methodNumber(selection, "currentChanged(QModelIndex,QModelIndex)");
    static const int selectionSignal =
        methodNumber(selection, "selectionChanged(QItemSelection,QItemSelection)");
    static const int dataSignal = methodNumber(QAbstractItemModel::staticMetaObject,
                                               "dataChanged(QModelIndex,QModelIndex,QVector<int>)");
    static const int pressedSlot = methodNumber(staticMetaObject, "pressed(QModelIndex)");
    static const int activatedSlot = methodNumber(staticMetaObject, "activated(QModelIndex)");
    static const int currentSlot = methodNumber(staticMetaObject, "currentChanged(QModelIndex)");
    static const int selectionSlot = methodNumber(staticMetaObject, "selectionChanged()");
    static const int dataSlot =
        methodNumber(staticMetaObject, "dataChanged(QModelIndex,QModelIndex,QVector<int>)");

    m_counter.connections().connect(view, pressedSignal, this, pressedSlot);
    m_counter.connections().connect(view, activatedSignal, this, activatedSlot);
    if (const QItemSelectionModel* const selected = view->selectionModel()) {
        m_counter.connections().connect(selected, currentSignal, this, currentSlot);
        m_counter.connections().connect(selected, selectionSignal, this, selectionSlot);
    }
    if (const QAbstractItemModel* const model = view->model()) {
        m_counter.connections().connect(model, dataSignal, this, dataSlot);
    }
    connectToHeaders(view);
}

void ItemViewUses::connectToHeaders(QAbstractItemView* view) {
    static const QMetaObject& tree = QTreeView::staticMetaObject;
    static const int expandedSignal = methodNumber(tree, "expanded(QModelIndex)");
    static const int collapsedSignal = methodNumber(tree, "collapsed(QModelIndex)");
    static const int sectionSignal =
        methodNumber(QHeaderView::staticMetaObject, "sectionClicked(int)");
    static const int expandedSlot = methodNumber(staticMetaObject, "expanded()");
    static const int headerSlot = methodNumber(staticMetaObject, "headerClicked()");

    if (qobject_cast<QTreeView*>(view) != nullptr) {
        m_counter.connections().connect(view, expandedSignal, this, expandedSlot);
        m_counter.connections().connect(view, collapsedSignal, this, expandedSlot);
    }
    if (const QHeaderView* const header = columnHeaderOf(view)) {
        m_counter.connections().connect(header, sectionSignal, this, headerSlot);
    }
}

bool ItemViewUses::isOperated(QAbstractItemView* view) {
    return view != nullptr && m_counter.controlOf(view) == view && m_counter.isOperated(view);
}

/** The view that the present input goes to; null when it goes to none, or the program did it. */
QAbstractItemView* ItemViewUses::operatedView() {
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    auto* const view = qobject_cast<QAbstractItemView*>(m_counter.controlOf(verdict.receiver));
    return isOperated(view) ? view : nullptr;
}

void ItemViewUses::count(QAbstractItemView* view, Use use) {
    m_counter.count(view, use);
}

void ItemViewUses::countOption(QAbstractItemView* view, const QModelIndex& index) {
    if (UIElement* const option = m_parts.optionElement(view, index)) {
        m_counter.count(option, Use::Chosen, QRect());
    }
}

void ItemViewUses::pressed(const QModelIndex& index) {
    auto* const view = qobject_cast<QAbstractItemView*>(sender());
    if (isOperated(view)) {
        count(view, Use::Chosen);
        countOption(view, index);
    }
}

void ItemViewUses::activated(const QModelIndex& index) {
    auto* const view = qobject_cast<QAbstractItemView*>(sender());
    if (isOperated(view)) {
        count(view, Use::Activated);
        countOption(view, index);
    }
}

/** The same for collapsed. */
void ItemViewUses::expanded() {
    auto* const view = qobject_cast<QAbstractItemView*>(sender());
    if (isOperated(view)) {
        count(view, Use::Expanded);
    }
}

void ItemViewUses::headerClicked() {
    const auto* const header = qobject_cast<QHeaderView*>(sender());
    auto* const view = qobject_cast<QAbstractItemView*>(m_counter.controlOf(header));
    if (isOperated(view) && isSortable(header)) {
        count(view, Use::Sorted);
    }
}

void ItemViewUses::currentChanged(const QModelIndex& current) {
    QAbstractItemView* const view = operatedView();
    if (view != nullptr && view->selectionModel() == sender() && current.isValid()) {
        count(view, Use::Chosen);
        // A header moves it without choosing an item; the mouse says which it has pressed.
        if (m_counter.attribution().verdict().type == QEvent::KeyPress) {
            countOption(view, current);
        }
    }
}

void ItemViewUses::selectionChanged() {
    if (m_counter.attribution().verdict().cause == Cause::Accessibility) {
        const QWidgetList widgets = QApplication::allWidgets();
        for (QWidget* const widget : widgets) {
            auto* const view = qobject_cast<QAbstractItemView*>(widget);
            if (view != nullptr && view->selectionModel() == sender() && isOperated(view)) {
                count(view, Use::Chosen);
                return;
            }
        }
        return;
    }
    QAbstractItemView* const view = operatedView();
    if (view != nullptr && view->selectionModel() == sender()) {
        count(view, Use::Chosen);
    }
}

/** A person ticks an item; all else that changes in a model is not told apart from the program's.
 */
void ItemViewUses::dataChanged(const QModelIndex& first, const QModelIndex& last,
                               const QVector<int>& roles) {
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    if (first != last || verdict.cause != Cause::Input || !isChecking(verdict.type) ||
        !roles.contains(Qt::CheckStateRole)) {
        return;
    }
    QAbstractItemView* const view = operatedView();
    if (view == nullptr || view->model() != sender()) {
        return;
    }
    const QModelIndex meant = verdict.type == QEvent::KeyPress
                                  ? view->currentIndex()
                                  : view->indexAt(m_counter.gesture().position());
    if (meant == first) {
        count(view, Use::Edited);
        countOption(view, first);
    }
}

/**
 * The editor of an item gives its value to the model: by a queued call after Return, or when the
 * focus goes. Either way a person has been in it.
 */
void ItemViewUses::committed(QWidget* editor) {
    if (m_editor.isNull() || m_editor != editor) {
        return;
    }
    m_editor = nullptr;
    auto* const view = qobject_cast<QAbstractItemView*>(m_counter.controlOf(editor));
    if (view != nullptr) {
        count(view, Use::Edited);
    }
}

} // namespace UIControls
} // namespace Vorsk
