// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicoverage/quickitemclass.h"
#include "tracking/qtobjectobserver.h"

#include <QPointer>
#include <QQuickItem>

namespace Vorsk {

namespace UIAbstraction {
class StandardType;
class UIEvent;
} // namespace UIAbstraction

namespace UICoverage {

/**
 * Watches one Qt Quick item. Controls are recognised by the names of their classes and by the
 * signals and properties that they have, because they share no base class: the constructor
 * classifies the item, once, and announces its events; the slots count. GUI thread only.
 */
class QtQuickItemObserver : public QtObjectObserver {
    Q_OBJECT

public:
    /** Reads properties of the item, which may run code that deletes it: look at observedObject().
     */
    QtQuickItemObserver(QQuickItem* item, UIAbstraction::UIElement* element,
                        UICoverageTracker* tracker);
    ~QtQuickItemObserver() override;

    /**
     * How many children the item had, and which was the last one, when all of them were known to
     * have an element; -1 before that. Kept for the tracker, so that one more child does not make
     * it look at all the others again.
     */
    int knownChildren() const { return m_knownChildren; }
    /** Null when there was none or it has died. */
    const QQuickItem* lastKnownChild() const { return m_lastKnownChild; }
    void setKnownChildren(int count, QQuickItem* last);

private Q_SLOTS:
    void onCheckedChanged();
    void onCheckedStateChanged();
    void onClicked();
    void onTriggered();
    void onTextChanged();
    void onVisibleChanged();
    void onChildrenChanged();

private:
    QQuickItem* item() const;
    bool hasProperty(const char* name) const;
    QVariant readProperty(const char* name) const;
    QVariant readProperty(const QuickItemClass& cls, QuickItemClass::Property property) const;
    bool readsTrue(const QuickItemClass& cls, QuickItemClass::Property property) const;

    void connectSignals(const QuickItemClass& cls);
    void connectSignal(const QuickItemClass& cls, QuickItemClass::Signal signal);
    void registerConditionalEvents(const QuickItemClass& cls);
    void readText(const QuickItemClass& cls);
    void classify(const QuickItemClass& cls);
    QuickItemClass::Kind kindOf(const QuickItemClass& cls) const;
    bool hasLoaderBeside() const;
    void warnAboutMissingSignal(const QuickItemClass& cls, QuickItemClass::Signal signal) const;
    void makeControl(const UIAbstraction::StandardType& standardType);
    void classifyAsTextInput(const QuickItemClass& cls);
    void classifyAsCheckBox(const QuickItemClass& cls);

    int m_knownChildren = -1;
    QPointer<QQuickItem> m_lastKnownChild;
};

} // namespace UICoverage
} // namespace Vorsk
