// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickelements.h"

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/quick/quickclass.h"
#include "qtuicontrols/quick/quickgroups.h"
#include "qtuicontrols/quick/quicknames.h"
#include "qtuicontrols/quick/quickparts.h"
#include "qtuicontrols/quick/quickpictures.h"
#include "qtuicontrols/quick/quickplaces.h"
#include "qtuicontrols/quick/quickstates.h"
#include "qtuicontrols/quick/quickviews.h"
#include "qtuicontrols/wildcard.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace Vorsk {
namespace UIControls {

namespace {

/** Different ones of a group: as many rows as data has are not the interface. */
constexpr int mostOfAGroup = 50;

void add(Description& what, Attribute attribute, const QString& value) {
    if (!value.isEmpty()) {
        what.attributes.append({attribute, value});
    }
}

QObject* actionOf(const QObject* button, const QuickClass& cls) {
    return cls.read(button, QuickClass::ActionProperty).value<QObject*>();
}

/** Buttons, and menu items of the first generation, which are no items. */
bool mayStandForAction(const QuickClass& cls, ElementType type) {
    const bool isButton = type == ElementType::Button || type == ElementType::Command;
    return isButton && (cls.role() == QuickRole::Control || cls.name() == "QQuickMenuItem1");
}

bool isToggle(ElementType type) {
    return type == ElementType::CheckBox || type == ElementType::RadioButton ||
           type == ElementType::Switch;
}

Uses usesOfHandler(const QObject* handler) {
    const bool isDragged =
        extendsClass(handler, "QQuickDragHandler") || extendsClass(handler, "QQuickPinchHandler");
    return isDragged ? Uses{Use::Dragged} : Uses{Use::Pressed};
}

} // namespace

QuickElements::QuickElements(const TrackerServices& services, const Followers& followers,
                             Watch watch)
    : m_book(services.book)
    , m_views(followers.views)
    , m_states(followers.states)
    , m_pictures(followers.pictures)
    , m_parts(followers.parts)
    , m_watch(std::move(watch)) {
    for (const QString& pattern : services.options.redacted) {
        m_redacted.append(fromWildcard(pattern));
    }
}

UIElement* QuickElements::addControl(QObject* object, const QuickClass& cls, ElementType type,
                                     const Surroundings& where) {
    if (mayStandForAction(cls, type) && actionOf(object, cls) != nullptr) {
        return addForAction(object, cls, where);
    }
    if (UIElement* const shared = where.isInRow ? sharedRow(where) : nullptr) {
        m_book.addObject(object, shared);
        m_views.addControl({object, true}, shared);
        m_watch(object, type, shared);
        return shared;
    }
    Description what;
    what.type = type;
    what.className = classNameOf(object);
    what.text = type == ElementType::Tab && cls.role() == QuickRole::Area
                    ? object->property("title").toString()
                    : captionOf(object, cls);
    what.uses = usesOf(object, cls, type);
    describeNames(object, cls, what);
    add(what, Attribute::Label, labelOf(object, cls, type, where));
    add(what, Attribute::Group, where.group);
    if (type == ElementType::Command) {
        add(what, Attribute::Ways, waysOf(object, cls));
    }
    m_states.describe(object, cls, where.view, what);
    UIElement* const element = m_book.add(object, what, where.view);
    if (where.isInRow) {
        addRow(element, where);
    }
    m_views.addControl({object, false}, element);
    m_states.follow(object, cls);
    if (type == ElementType::Command || cls.generation() == 1) {
        tellWhatOpens(object, element);
    }
    if (isRedacted(what)) {
        m_pictures.redact(element);
    }
    if (type == ElementType::ComboBox && !where.isInRow) {
        m_parts.addOptions(object, element);
    }
    m_watch(object, type, element);
    return element;
}

void QuickElements::addTab(QObject* page, UIElement* pageElement, const Surroundings& where,
                           const QString& title) {
    Description what;
    what.type = ElementType::Tab;
    what.className = classNameOf(page);
    what.text = title;
    what.uses = {Use::Chosen};
    add(what, Attribute::QmlId, qmlIdOf(page));
    add(what, Attribute::Group, where.group);
    add(what, Attribute::Opens, m_book.idOf(pageElement));
    m_watch(page, ElementType::Tab, m_book.add(nullptr, what, where.view));
}

void QuickElements::joinTab(QObject* page, UIElement* pageElement, UIElement* tab) {
    m_book.setAttribute(tab, Attribute::Opens, m_book.idOf(pageElement));
    m_watch(page, ElementType::Tab, tab);
}

/** The menu that a control brings up, which is a view already. */
void QuickElements::tellWhatOpens(const QObject* control, UIElement* element) {
    for (const char* const name : {"subMenu", "menu"}) {
        const QVariant menu = control->property(name);
        UIElement* const view = m_book.elementOf(menu.value<QObject*>());
        if (view != nullptr && isView(m_book.typeOf(view))) {
            m_book.setAttribute(element, Attribute::Opens, m_book.idOf(view));
        }
    }
}

bool QuickElements::isRedacted(const Description& what) const {
    if (m_redacted.isEmpty()) {
        return false;
    }
    QStringList names{what.className, QString::fromUtf8(withoutQmlPart(what.className.toUtf8()))};
    for (const auto& attribute : what.attributes) {
        if (attribute.first == Attribute::ObjectName || attribute.first == Attribute::QmlId) {
            names.append(attribute.second);
        }
    }
    for (const QRegularExpression& pattern : m_redacted) {
        if (names.indexOf(pattern) != -1) {
            return true;
        }
    }
    return false;
}

/** The element that a further one of many is told as: null as long as there are not too many. The
 * last one stands for all that are beyond, and is told of as it was made. */
UIElement* QuickElements::sharedRow(const Surroundings& where) const {
    const auto known = m_rows.constFind({where.view, where.group});
    return known != m_rows.cend() && known->size() >= mostOfAGroup ? known->last() : nullptr;
}

void QuickElements::addRow(UIElement* element, const Surroundings& where) {
    QVector<UIElement*>& known = m_rows[{where.view, where.group}];
    if (!known.contains(element)) {
        known.append(element);
    }
}

/** The button stands for its action: one command, however many buttons and menu items show it. */
UIElement* QuickElements::addForAction(QObject* button, const QuickClass& cls,
                                       const Surroundings& where) {
    QObject* const action = actionOf(button, cls);
    UIElement* command = m_book.elementOf(action);
    if (command == nullptr) {
        Surroundings around = where;
        around.textBefore = nullptr;
        const QuickClass& actionClass = QuickClass::of(action);
        command = addControl(action, actionClass, ElementType::Command, around);
    }
    addWay(command, QLatin1String(cls.type() == ElementType::Command ? nameOf(Way::Menu)
                                                                     : nameOf(Way::ToolBar)));
    m_book.addObject(button, command);
    m_views.addControl({button, true}, command);
    m_watch(button, ElementType::Command, command);
    return command;
}

void QuickElements::addWay(UIElement* command, const QString& way) {
    const QString ways = m_book.attribute(command, Attribute::Ways);
    QStringList all = ways.isEmpty() ? QStringList() : ways.split(QLatin1Char(' '));
    if (!all.contains(way)) {
        all.append(way);
        all.sort();
        m_book.setAttribute(command, Attribute::Ways, all.join(QLatin1Char(' ')));
    }
}

UIElement* QuickElements::addWindow(QQuickWindow* window) {
    const QuickClass& cls = QuickClass::of(window);
    Description what;
    const bool isDialog =
        (window->flags() & Qt::Dialog) == Qt::Dialog || window->modality() != Qt::NonModal;
    what.type = isDialog ? ElementType::Dialog : ElementType::Window;
    what.className = classNameOf(window);
    what.text = window->title();
    what.uses = {Use::Seen};
    describeNames(window, cls, what);
    UIElement* const element = m_book.add(window, what, nullptr);
    m_views.add(window, element);
    m_states.follow(window, cls);
    return element;
}

UIElement* QuickElements::addView(QObject* object, const QuickClass& cls, ElementType type,
                                  const Surroundings& where, const QString& title) {
    Description what;
    what.type = type;
    what.className = classNameOf(object);
    what.text = type == ElementType::Page ? title : captionOf(object, cls);
    what.uses = {Use::Seen};
    describeNames(object, cls, what);
    add(what, Attribute::Group, where.group);
    if (type == ElementType::Page) {
        add(what, Attribute::Page, title);
    }
    const bool isControlToo = type == ElementType::Page && cls.role() != QuickRole::Item;
    UIElement* const element = m_book.add(isControlToo ? nullptr : object, what, where.view);
    m_views.add(object, element);
    if (type != ElementType::Page) {
        m_states.follow(object, cls);
    }
    return element;
}

/** The best of what stands beside or around a control that has no text of its own. */
QString QuickElements::labelOf(const QObject* object, const QuickClass& cls, ElementType type,
                               const Surroundings& where) {
    switch (cls.role()) {
    case QuickRole::Area:
    case QuickRole::Handler:
        return type == ElementType::Tab ? QString() : textOn(itemOf(object));
    case QuickRole::Action:
    case QuickRole::Shortcut:
        return {};
    default:
        break;
    }
    const bool hasText = type == ElementType::Button || type == ElementType::Tab ||
                         type == ElementType::Command || type == ElementType::Link ||
                         isToggle(type);
    if (hasText && !captionOf(object, cls).isEmpty()) {
        return {};
    }
    if (where.textBefore != nullptr) {
        const QString text =
            captionOf(where.textBefore, QuickClass::of(where.textBefore)).trimmed();
        if (!text.isEmpty()) {
            return text;
        }
    }
    const bool hasBetterName = where.isTitleOfPage && cls.role() == QuickRole::Input &&
                               !cls.read(object, QuickClass::Placeholder).toString().isEmpty();
    return hasBetterName ? QString() : where.title;
}

Uses QuickElements::usesOf(const QObject* object, const QuickClass& cls, ElementType type) {
    switch (type) {
    case ElementType::Button:
        return cls.read(object, QuickClass::Checkable).toBool()
                   ? Uses{Use::Clicked, Use::Checked, Use::Unchecked}
                   : Uses{Use::Clicked};
    case ElementType::RadioButton:
        return {Use::Checked};
    case ElementType::CheckBox: {
        Uses uses{Use::Checked, Use::Unchecked};
        if (cls.read(object, QuickClass::TriState).toBool() ||
            object->property("partiallyCheckedEnabled").toBool()) {
            uses.add(Use::PartiallyChecked);
        }
        return uses;
    }
    case ElementType::Switch:
    case ElementType::GroupBox:
        return {Use::Checked, Use::Unchecked};
    case ElementType::Command:
        return {Use::Triggered};
    case ElementType::ComboBox:
        return object->property("editable").toBool() ? Uses{Use::Chosen, Use::Edited}
                                                     : Uses{Use::Chosen};
    case ElementType::TextInput:
        return extendsClass(object, "QQuickTextInput") || cls.name() == "TextField"
                   ? Uses{Use::Edited, Use::Confirmed}
                   : Uses{Use::Edited};
    case ElementType::SpinBox:
        return {Use::Changed};
    case ElementType::Slider:
    case ElementType::Dial:
        return {Use::Moved};
    case ElementType::Link:
        return {Use::Followed};
    case ElementType::Area:
        return cls.role() == QuickRole::Handler ? usesOfHandler(object) : Uses{Use::Pressed};
    default:
        return {Use::Chosen};
    }
}

QString QuickElements::waysOf(const QObject* object, const QuickClass& cls) {
    if (cls.role() == QuickRole::Control) {
        return QLatin1String(nameOf(Way::Menu));
    }
    const bool isInMenu = cls.name() == "QQuickMenuItem1";
    const QVariant shortcut =
        object->property(cls.role() == QuickRole::Shortcut ? "sequence" : "shortcut");
    const bool hasShortcut =
        cls.role() == QuickRole::Shortcut || (shortcut.isValid() && !shortcut.toString().isEmpty());
    QStringList ways;
    if (isInMenu) {
        ways.append(QLatin1String(nameOf(Way::Menu)));
    }
    if (hasShortcut) {
        ways.append(QLatin1String(nameOf(Way::Shortcut)));
    }
    return ways.join(QLatin1Char(' '));
}

} // namespace UIControls
} // namespace Vorsk
