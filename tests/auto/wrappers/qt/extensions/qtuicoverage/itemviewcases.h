// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/qtwidgetscoveragetracker.h"
#include "testlib/testcase.h"
#include "testlib/treeprinter.h"
#include "testlib/widgetsprobe.h"
#include "uiabstraction/uielement.h"

#include <QAbstractItemView>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

/** The signals of an item view that its observer is connected to, in order. */
inline QList<QMetaMethod> watchedSignals() {
    return {QMetaMethod::fromSignal(&QAbstractItemView::activated),
            QMetaMethod::fromSignal(&QAbstractItemView::clicked),
            QMetaMethod::fromSignal(&QAbstractItemView::doubleClicked),
            QMetaMethod::fromSignal(&QAbstractItemView::entered),
            QMetaMethod::fromSignal(&QAbstractItemView::pressed),
            QMetaMethod::fromSignal(&QAbstractItemView::viewportEntered)};
}

/** A view that tells who is connected to it. */
template <class View>
class CountingView : public View {
public:
    int receiversOf(const QMetaMethod& signal) const {
        // The form that the SIGNAL macro makes of a signature.
        return this->receivers(QByteArray("2" + signal.methodSignature()).constData());
    }
};

/** How many more receivers the view's signals have while the observer lives, in the order above. */
template <class View, class Observer>
QList<int> connectionsMadeBy(TestLib::WidgetsProbe& probe) {
    using Vorsk::UIAbstraction::StandardType;
    CountingView<View> view;
    Vorsk::UIAbstraction::UIElement element(QStringLiteral("View"), StandardType(), QString());
    QList<int> before;
    for (const QMetaMethod& signal : watchedSignals()) {
        before.append(view.receiversOf(signal));
    }
    const Observer observer(&view, &element, &probe.tracker());
    QList<int> made;
    for (const QMetaMethod& signal : watchedSignals()) {
        made.append(view.receiversOf(signal) - before.at(made.size()));
    }
    return made;
}

/** What a view's element looks like when a user has done everything with a cell of it. */
template <class View, class Observer>
QString elementAfterUse(TestLib::WidgetsProbe& probe, int& emitted) {
    using Vorsk::UIAbstraction::StandardType;
    QStandardItemModel model(2, 2);
    View view;
    view.setModel(&model);
    view.resize(300, 200);
    Vorsk::UIAbstraction::UIElement element(QStringLiteral("View"), StandardType(), QString());
    const Observer observer(&view, &element, &probe.tracker());
    QSignalSpy pressed(&view, &QAbstractItemView::pressed);
    QSignalSpy clicked(&view, &QAbstractItemView::clicked);
    QSignalSpy doubleClicked(&view, &QAbstractItemView::doubleClicked);
    QSignalSpy activated(&view, &QAbstractItemView::activated);
    const QPoint position = view.visualRect(model.index(0, 0)).center();
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, position);
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, position);
    Q_EMIT view.activated(model.index(0, 0));
    Q_EMIT view.entered(model.index(0, 1));
    Q_EMIT view.viewportEntered();
    emitted = pressed.count() * clicked.count() * doubleClicked.count() * activated.count();
    return TestLib::TreePrinter().print(element);
}
