// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/widgetstracker.h"

#include "qtuicontrols/elementbook.h"
#include "qtuicontrols/widgets/commands.h"
#include "qtuicontrols/widgets/partelements.h"
#include "qtuicontrols/widgets/widgetclass.h"
#include "qtuicontrols/widgets/widgetpictures.h"
#include "qtuicontrols/widgets/widgetstates.h"
#include "qtuicontrols/widgets/widgetsurvey.h"
#include "qtuicontrols/widgets/widgetuses.h"
#include "qtuicontrols/widgets/widgetviews.h"
#include "tracking/grab.h"

#include <QEvent>
#include <QLayout>
#include <QPaintEvent>
#include <QPointer>
#include <QStackedLayout>
#include <QWidget>

namespace Vorsk {
namespace UIControls {

/** In the order in which they need one another. */
struct WidgetsTracker::Pieces {
    explicit Pieces(const TrackerServices& services)
        : book(services.book)
        , views(book)
        , parts(book, views)
        , commands(services)
        , uses(services, parts, commands)
        , survey({book, views, parts, uses, commands})
        , states({book, views, parts, uses}) {
        if (services.options.takesPictures) {
            pictures = std::make_unique<WidgetPictures>(services, views, parts);
            views.setSeenListener(
                [this](QWidget* widget, UIElement* view) { pictures->noteSeen(widget, view); });
        }
    }

    ElementBook& book;
    WidgetViews views;
    PartElements parts;
    Commands commands;
    WidgetUses uses;
    WidgetSurvey survey;
    WidgetStates states;
    /** Null where none are wanted. */
    std::unique_ptr<WidgetPictures> pictures;
};

WidgetsTracker::WidgetsTracker(const TrackerServices& services)
    : m_pieces(std::make_unique<Pieces>(services)) {}

WidgetsTracker::~WidgetsTracker() = default;

void WidgetsTracker::handleEvent(QObject* object, QEvent* event) {
    // The type alone decides about nearly every event, so it is looked at before anything else.
    switch (event->type()) {
    // What is delivered while no widget is in construction: it comes from an event loop.
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::InputMethod:
    case QEvent::Drop:
        m_pieces->survey.flush();
        m_pieces->views.settle(object);
        if (m_pieces->pictures != nullptr) {
            const QPointer<QObject> guard(object);
            m_pieces->pictures->takeFirst();
            if (guard.isNull()) {
                return;
            }
        }
        break;
    case QEvent::LayoutRequest:
    case QEvent::UpdateRequest:
    case QEvent::Timer:
    case QEvent::MetaCall:
    case QEvent::DeferredDelete:
    case QEvent::Expose:
    case QEvent::WindowActivate:
        m_pieces->survey.flush();
        break;
    default:
        break;
    }
    if (object->isWidgetType()) {
        handleWidget(static_cast<QWidget*>(object), *event);
    }
    m_pieces->commands.handleEvent(object, event);
    m_pieces->uses.handleEvent(object, event);
}

void WidgetsTracker::handleWidget(QWidget* widget, const QEvent& event) {
    switch (event.type()) {
    case QEvent::Show:
        handleShow(widget);
        break;
    case QEvent::Hide:
        m_pieces->views.handleHide(widget);
        break;
    case QEvent::Move:
        m_pieces->views.handleMove(widget);
        break;
    case QEvent::Paint:
        m_pieces->survey.flush();
        m_pieces->views.settle();
        m_pieces->states.updateTexts(widget);
        if (m_pieces->pictures != nullptr) {
            const auto& paint = static_cast<const QPaintEvent&>(event);
            m_pieces->pictures->notePainted(widget, paint.region());
            UICoverage::notePaint(widget, paint);
        }
        break;
    case QEvent::PolishRequest:
        notePolished(widget);
        break;
    case QEvent::ParentChange:
        // In construction nothing was polished yet, and its own request is to come.
        if (widget->testAttribute(Qt::WA_WState_Polished)) {
            m_pieces->survey.note(widget, WidgetSurvey::Extent::Tree);
        }
        break;
    case QEvent::ActionAdded:
    case QEvent::ActionRemoved:
    case QEvent::ActionChanged:
    case QEvent::ContextMenu:
        if (widget->testAttribute(Qt::WA_WState_Polished)) {
            m_pieces->survey.note(widget, WidgetSurvey::Extent::Itself);
        }
        break;
    case QEvent::ReadOnlyChange:
        if (widget->testAttribute(Qt::WA_WState_Polished)) {
            m_pieces->survey.note(widget, WidgetSurvey::Extent::Itself);
        }
        m_pieces->states.updateEnabled(widget);
        break;
    case QEvent::EnabledChange:
        m_pieces->states.updateEnabled(widget);
        break;
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        m_pieces->states.updateHidden(widget);
        break;
    case QEvent::ToolTipChange:
        m_pieces->states.updateToolTip(widget);
        break;
    case QEvent::WindowTitleChange:
        m_pieces->views.updateTitle(widget);
        break;
    case QEvent::LanguageChange:
        m_pieces->states.noteLanguage(widget);
        break;
    default:
        break;
    }
}

void WidgetsTracker::handleShow(QWidget* widget) {
    if (widget->isWindow()) {
        m_pieces->survey.survey(widget);
    }
    m_pieces->views.handleShow(widget);
}

/** Each widget asks for this once, from the event loop, whether it is shown or not. */
void WidgetsTracker::notePolished(QWidget* widget) {
    if (m_pieces->book.elementOf(widget) != nullptr) {
        return; // known from the survey of its window
    }
    const WidgetClass cls = classOf(widget);
    if (cls == WidgetClass::Part) {
        return;
    }
    // Of what is no control, only what lists actions or may be a page has to be looked at.
    const QWidget* const parent = widget->parentWidget();
    const bool isPlain =
        cls == WidgetClass::Plain && widget->actions().isEmpty() && !widget->isWindow() &&
        (parent == nullptr || qobject_cast<const QStackedLayout*>(parent->layout()) == nullptr);
    if (!isPlain) {
        m_pieces->survey.note(widget, WidgetSurvey::Extent::Itself);
    }
}

} // namespace UIControls
} // namespace Vorsk
