// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickstates.h"

#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quicknames.h"
#include "qtuicontrols/quick/quickplaces.h"
#include "qtuicontrols/quick/quickviews.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace Vorsk {
namespace UIControls {

namespace {

const QString& yes() {
    static const QString text = QStringLiteral("true");
    return text;
}

const QString& no() {
    static const QString text = QStringLiteral("false");
    return text;
}

int itemSignal(const char* signature) {
    return QQuickItem::staticMetaObject.indexOfSignal(signature);
}

bool hasCaption(const QuickClass& cls) {
    switch (cls.role()) {
    case QuickRole::Control:
    case QuickRole::Action:
    case QuickRole::Window:
    case QuickRole::Popup:
    case QuickRole::Text:
        return true;
    default:
        return false;
    }
}

} // namespace

QuickStates::QuickStates(ElementBook& book, QuickViews& views, SignalHubs& hubs)
    : m_book(book)
    , m_views(views)
    , m_hubs(hubs) {}

bool QuickStates::isEnabled(const QObject* object, const QuickClass& cls) {
    const auto* const item = qobject_cast<const QQuickItem*>(object);
    if (item != nullptr && !item->isEnabled()) {
        return false;
    }
    if (item == nullptr || cls.role() == QuickRole::Area) {
        // Mouse areas have a property of that name which hides the item's.
        const QVariant own = cls.read(object, QuickClass::EnabledProperty);
        if (own.isValid() && !own.toBool()) {
            return false;
        }
    }
    if (cls.role() == QuickRole::Handler) {
        const QQuickItem* const target = itemOf(object);
        return target == nullptr || target->isEnabled();
    }
    return true;
}

bool QuickStates::isHidden(const QObject* object, UIElement* view, bool otherwise) {
    const QQuickItem* const item = itemOf(object);
    const QuickView* const shown = m_views.find(view);
    if (item == nullptr || shown == nullptr || shown->item.isNull() || !shown->item->isVisible()) {
        return otherwise;
    }
    return !item->isVisible();
}

void QuickStates::describe(const QObject* object, const QuickClass& cls, UIElement* view,
                           Description& what) {
    if (!isEnabled(object, cls)) {
        what.attributes.append({Attribute::Enabled, no()});
    }
    if (isHidden(object, view, false)) {
        what.attributes.append({Attribute::Hidden, yes()});
    }
}

void QuickStates::follow(QObject* object, const QuickClass& cls) {
    static const int visibleChanged = itemSignal("visibleChanged()");
    static const int enabledChanged = itemSignal("enabledChanged()");
    const bool isItem = qobject_cast<QQuickItem*>(object) != nullptr;
    if (isItem) {
        m_hubs.connectStateChanged(object, visibleChanged);
        m_hubs.connectStateChanged(object, enabledChanged);
    }
    if (!isItem || cls.role() == QuickRole::Area) {
        m_hubs.connectStateChanged(object, cls.notifier(object, QuickClass::EnabledProperty));
    }
    if (cls.role() == QuickRole::Input) {
        m_hubs.connectStateChanged(object, cls.notifier(object, QuickClass::Echo));
    }
    if (hasCaption(cls)) {
        const bool hasTitle = cls.role() == QuickRole::Window || cls.role() == QuickRole::Popup;
        m_hubs.connectStateChanged(
            object, cls.notifier(object, hasTitle ? QuickClass::Title : QuickClass::TextProperty));
    }
}

void QuickStates::noteControlsOf(UIElement* view) {
    if (const QuickView* const found = m_views.find(view)) {
        for (const QuickControl& control : found->controls) {
            if (!control.isShared) {
                m_changed.insert(control.object);
            }
        }
    }
}

bool QuickStates::update() {
    if (m_changed.isEmpty()) {
        return false;
    }
    const QSet<QObject*> changed = std::exchange(m_changed, {});
    for (QObject* object : changed) {
        if (UIElement* const element = m_book.elementOf(object)) {
            updateObject(object, element);
        }
    }
    return true;
}

void QuickStates::updateObject(QObject* object, UIElement* element) {
    const QuickClass& cls = QuickClass::of(object);
    UIElement* const view = m_book.viewOf(element);
    if (QuickView* const shown = m_views.find(view)) {
        shown->hasChanged = true;
    }
    if (hasCaption(cls)) {
        m_book.setText(element, captionOf(object, cls));
    }
    if (cls.role() == QuickRole::Input && hidesInput(object, cls)) {
        // And stays so when it is shown for a moment.
        m_book.setAttribute(element, Attribute::Sensitive, yes());
    }
    if (view != element) {
        m_book.setAttribute(element, Attribute::Enabled, isEnabled(object, cls) ? QString() : no());
        const bool wasHidden = !m_book.attribute(element, Attribute::Hidden).isNull();
        m_book.setAttribute(element, Attribute::Hidden,
                            isHidden(object, view, wasHidden) ? yes() : QString());
    }
}

} // namespace UIControls
} // namespace Vorsk
