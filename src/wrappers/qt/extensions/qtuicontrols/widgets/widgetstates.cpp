// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetstates.h"

#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/widgetclass.h"
#include "qtuicontrols/widgets/widgetlabels.h"
#include "qtuicontrols/widgets/widgetnames.h"
#include "qtuicontrols/widgets/widgetuses.h"
#include "qtuicontrols/widgets/widgetviews.h"

#include <QLabel>
#include <QTabBar>

namespace Vorsk {
namespace UIControls {

namespace {

QString nullOrTrue(bool value) {
    return value ? QStringLiteral("true") : QString();
}

QString nullIfEmpty(const QString& text) {
    return text.isEmpty() ? QString() : text;
}

bool hasCaption(ElementType type) {
    switch (type) {
    case ElementType::Button:
    case ElementType::RadioButton:
    case ElementType::CheckBox:
    case ElementType::GroupBox:
    case ElementType::Tab:
        return true;
    default:
        return false;
    }
}

} // namespace

WidgetStates::WidgetStates(const Pieces& pieces)
    : m_pieces(pieces) {}

/** Null where the widget is none, or is only known as a view. */
UIElement* WidgetStates::controlOf(const QWidget* widget) const {
    UIElement* const element = m_pieces.book.elementOf(widget);
    return element == nullptr || isView(m_pieces.book.typeOf(element)) ? nullptr : element;
}

void WidgetStates::updateEnabled(QWidget* widget) {
    if (UIElement* const control = controlOf(widget)) {
        m_pieces.book.setAttribute(control, Attribute::Enabled,
                                   isOperable(widget) ? QString() : QStringLiteral("false"));
    } else {
        m_pieces.parts.updateTabs(widget);
    }
}

void WidgetStates::updateHidden(QWidget* widget) {
    if (widget->isWindow()) {
        return;
    }
    if (UIElement* const control = controlOf(widget)) {
        QWidget* const view = m_pieces.views.viewWidgetOf(widget);
        m_pieces.book.setAttribute(control, Attribute::Hidden,
                                   nullOrTrue(view != widget && isHiddenWithin(widget, view)));
    } else {
        m_pieces.parts.updateTabs(widget);
    }
    // A page that is not shown hides nothing within itself.
    if (!widget->children().isEmpty() && m_pieces.views.knownView(widget) == nullptr &&
        isEntered(classOf(widget))) {
        QWidget* const view = m_pieces.views.viewWidgetOf(widget);
        updateHiddenBelow(widget, isHiddenWithin(widget, view));
    }
}

void WidgetStates::updateHiddenBelow(QWidget* widget, bool isHidden) {
    for (QObject* object : widget->children()) {
        if (!object->isWidgetType()) {
            continue;
        }
        auto* const child = static_cast<QWidget*>(object);
        if (child->isWindow() || m_pieces.views.knownView(child) != nullptr) {
            continue;
        }
        const bool isChildHidden = isHidden || child->isHidden();
        if (UIElement* const control = controlOf(child)) {
            m_pieces.book.setAttribute(control, Attribute::Hidden, nullOrTrue(isChildHidden));
        } else {
            m_pieces.parts.updateTabs(child);
        }
        if (!child->children().isEmpty() && isEntered(classOf(child))) {
            updateHiddenBelow(child, isChildHidden);
        }
    }
}

void WidgetStates::updateToolTip(QWidget* widget) {
    UIElement* control = controlOf(widget);
    if (control == nullptr) {
        control = m_pieces.views.knownView(widget);
    }
    if (control != nullptr) {
        m_pieces.book.setAttribute(control, Attribute::ToolTip, nullIfEmpty(widget->toolTip()));
    }
}

void WidgetStates::updateTexts(QWidget* widget) {
    UIElement* const control = controlOf(widget);
    const WidgetClass cls = classOf(widget);
    if (cls == WidgetClass::TabBar) {
        m_pieces.parts.surveyTabs(static_cast<QTabBar*>(widget));
        return;
    }
    if (m_pieces.views.knownView(widget) != nullptr) {
        m_pieces.views.updateTitle(widget);
    }
    if (control == nullptr) {
        if (cls == WidgetClass::Label &&
            static_cast<const QLabel*>(widget)->text().contains(QLatin1Char('<'))) {
            if (UIElement* const view = m_pieces.views.viewOf(widget)) {
                m_pieces.uses.findLinks(widget, view);
            }
        }
        return;
    }
    const ElementType type = m_pieces.book.typeOf(control);
    if (hasCaption(type)) {
        m_pieces.book.setText(control, captionOf(widget));
    } else if (type == ElementType::TextInput) {
        m_pieces.book.setAttribute(control, Attribute::Placeholder, placeholderOf(widget));
        m_pieces.book.setAttribute(control, Attribute::Sensitive, nullOrTrue(isSensitive(widget)));
    }
    if (!m_otherLanguage.isEmpty() && m_otherLanguage.remove(widget)) {
        WidgetLabels labels;
        m_pieces.book.setAttribute(control, Attribute::Label,
                                   captionOf(widget).isNull() ? nullIfEmpty(labels.labelOf(widget))
                                                              : QString());
    }
}

void WidgetStates::noteLanguage(QWidget* widget) {
    if (controlOf(widget) != nullptr) {
        m_otherLanguage.insert(widget);
    }
}

} // namespace UIControls
} // namespace Vorsk
