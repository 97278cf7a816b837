// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/elementbook.h"

#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <QVector>

QT_BEGIN_NAMESPACE
class QAbstractItemView;
class QEvent;
class QWidget;
QT_END_NAMESPACE

namespace Vorsk {
namespace UIControls {

class PartElements;
class UseCounter;

/** Counts the uses of lists, trees and tables and of their options. GUI thread only. */
class ItemViewUses : public QObject {
    Q_OBJECT

public:
    ItemViewUses(UseCounter& counter, PartElements& parts);

    static Uses usesOf(const QWidget* widget);

    /** Input is about to go to the receiver, a part of the view. */
    void expect(QAbstractItemView* view, QWidget* receiver, QEvent* event);
    /** Has the view's signals connected, also those of its present model, selection and headers. */
    void connectTo(QAbstractItemView* view);

private Q_SLOTS:
    void pressed(const QModelIndex& index);
    void activated(const QModelIndex& index);
    void expanded();
    void headerClicked();
    void currentChanged(const QModelIndex& current);
    void selectionChanged();
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles);
    void committed(QWidget* editor);

private:
    void connectToHeaders(QAbstractItemView* view);
    QAbstractItemView* operatedView();
    bool isOperated(QAbstractItemView* view);
    void count(QAbstractItemView* view, Use use);
    void countOption(QAbstractItemView* view, const QModelIndex& index);

    UseCounter& m_counter;
    PartElements& m_parts;
    /** The item editor that input went to last. */
    QPointer<QWidget> m_editor;
};

} // namespace UIControls
} // namespace Vorsk
