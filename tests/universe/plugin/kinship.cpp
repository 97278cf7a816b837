// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "kinship.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAction>
#include <QMenu>
#include <QMetaObject>
#include <QToolButton>
#include <QVariant>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace Kinship {

namespace {

/** What a person operates, in both toolkits. */
constexpr const char* controls[] = {
    "QAbstractButton",
    "QComboBox",
    "QLineEdit",
    "QTextEdit",
    "QPlainTextEdit",
    "QAbstractSpinBox",
    "QAbstractSlider",
    "QTabBar",
    "QDial",
    "QAbstractItemView",
    "QKeySequenceEdit",
    "QCalendarWidget",
    "QMenu",
    "QMenuBar",
    "QQuickMouseArea",
    "QQuickAbstractButton",
    "QQuickTextInput",
    "QQuickTextEdit",
    "QQuickItemView",
    "QQuickSlider",
    "QQuickDial",
    "QQuickRangeSlider",
    "QQuickPointerHandler",
    "QQuickTableView",
    "QQuickSpinBox",
    "QQuickComboBox",
    "QQuickTumbler",
    "QQuickMultiPointTouchArea",
    "QQuickSwipeView",
    "QQuickPathView",
};

/** What controls are parts of, so that using these uses it. */
constexpr const char* composites[] = {
    "QComboBox",        "QAbstractSpinBox",  "QCalendarWidget",
    "QKeySequenceEdit", "QLineEdit",         "QAbstractItemView",
    "QTabBar",          "QToolButton",       "QQuickAbstractButton",
    "QQuickComboBox",   "QQuickSpinBox",     "QQuickTumbler",
    "QQuickSlider",     "QQuickRangeSlider", "QQuickDial",
    "QQuickItemView",   "QQuickSwipeView",   "QQuickTableView",
    "QQuickPathView",   "QQuickTextInput",   "QQuickTextEdit",
};

/** Of the first generation of Qt Quick Controls, which are written in QML. */
constexpr const char* firstControls[] = {
    "Button", "CheckBox",  "RadioButton", "Switch",         "ToolButton", "ComboBox", "SpinBox",
    "Slider", "TextField", "TextArea",    "BasicTableView", "Calendar",   "TabBar",
};

/** Windows of their own that belong to a control all the same. */
constexpr const char* partWindows[] = {"QComboBoxPrivateContainer", "QCalendarPopup",
                                       "QQuickPopupItem"};

template <std::size_t N>
bool isOneOf(const QObject* object, const char* const (&classes)[N]) {
    for (const QMetaObject* meta = object->metaObject(); meta != nullptr;
         meta = meta->superClass()) {
        const QString name = className(meta);
        if (std::any_of(std::begin(classes), std::end(classes),
                        [&](const char* one) { return name == QLatin1String(one); })) {
            return true;
        }
    }
    return false;
}

bool isComposite(const QObject* object) {
    return isOneOf(object, composites) ||
           (object->inherits("QQuickFocusScope") && isOneOf(object, firstControls));
}

bool isCheckableGroup(const QObject* object) {
    return (object->inherits("QGroupBox") ||
            className(object->metaObject()) == QLatin1String("GroupBox")) &&
           object->property("checkable").toBool();
}

/** A scroll area gets its input through the viewport. */
bool isAreaOf(const QObject* area, const QObject* receiver) {
    const auto* const scrollArea = qobject_cast<const QAbstractScrollArea*>(area);
    return scrollArea != nullptr && scrollArea->viewport() == receiver;
}

/** A menu or a dialog is no part of what opens it. */
bool isPopupOfItsOwn(const QObject* object) {
    const QObject* const opener = object->inherits("QQuickPopup") ? parentOf(object) : nullptr;
    return opener != nullptr && !opener->inherits("QQuickComboBox");
}

bool isTop(const QObject* object) {
    const auto* const widget = qobject_cast<const QWidget*>(object);
    return object->isWindowType() || isPopupOfItsOwn(object) ||
           (widget != nullptr && widget->isWindow() && !isOneOf(object, partWindows) &&
            completedBy(object) == nullptr);
}

} // namespace

QObject* completedBy(const QObject* object) {
    const auto* const list = qobject_cast<const QAbstractItemView*>(object);
    return list != nullptr && list->isWindow() && list->parent() == nullptr ? list->focusProxy()
                                                                            : nullptr;
}

QString className(const QMetaObject* meta) {
    const QString name = QString::fromLatin1(meta->className());
    const int number = name.indexOf(QLatin1String("_QML"));
    return number < 0 ? name : name.left(number);
}

QStringList basesOf(const QObject* object) {
    QStringList bases;
    for (const QMetaObject* meta = object->metaObject()->superClass();
         meta != nullptr && meta != &QObject::staticMetaObject; meta = meta->superClass()) {
        bases.append(className(meta));
    }
    return bases;
}

QSet<QString> namesOf(const QObject* object) {
    QSet<QString> names;
    const auto add = [&names](const QObject* source) {
        for (const char* const property :
             {"text", "title", "objectName", "toolTip", "placeholderText", "accessibleName",
              "iconText", "windowTitle", "statusTip"}) {
            const QVariant value = source->property(property);
            if (value.type() == QVariant::String && !value.toString().isEmpty()) {
                names.insert(value.toString().left(200));
            }
        }
    };
    add(object);
    if (const QObject* const action = actionOf(object)) {
        add(action);
    }
    return names;
}

QObject* actionOf(const QObject* object) {
    // An entry of a menu of the first generation of Qt Quick Controls.
    if (object->inherits("QQuickLoader")) {
        return object->property("__menuItem").value<QObject*>();
    }
    if (object->inherits("QQuickAbstractButton")) {
        return object->property("action").value<QObject*>();
    }
    const auto* const button = qobject_cast<const QToolButton*>(object);
    return button != nullptr ? button->defaultAction() : nullptr;
}

QObject* parentOf(const QObject* object) {
    if (object->inherits("QQuickItem") && !object->inherits("QQuickPopupItem")) {
        if (auto* const item = object->property("parent").value<QObject*>()) {
            return item;
        }
    }
    if (object->inherits("QQuickPopup") && object->parent() == nullptr) {
        return object->property("parent").value<QObject*>();
    }
    if (QObject* const text = completedBy(object)) {
        return text;
    }
    return object->parent();
}

std::vector<QObject*> innerOf(const QObject* object) {
    std::vector<QObject*> inner;
    if (!object->inherits("QQuickItem") || isOneOf(object, controls) || isComposite(object)) {
        return inner;
    }
    const QObjectList all = object->findChildren<QObject*>();
    for (QObject* one : all) {
        // Handlers and items in items have QML's parents, which are what they are shown in.
        if (isOneOf(one, controls)) {
            inner.push_back(one);
        }
    }
    return inner;
}

QObject* editedBy(const QObject* object) {
    const auto* const menu =
        qobject_cast<const QMenu*>(object->inherits("QAction") ? object->parent() : object);
    if (menu == nullptr) {
        return nullptr;
    }
    const QList<QAction*> actions = menu->actions();
    const bool isEditMenu =
        menu->objectName() == QLatin1String("qt_edit_menu") ||
        std::any_of(actions.cbegin(), actions.cend(), [](const QAction* action) {
            return action->objectName() == QLatin1String("select-all") ||
                   action->objectName() == QLatin1String("edit-copy");
        });
    return isEditMenu ? menu->parent() : nullptr;
}

/** An entry of a menu is one of a combo box too, which shows its list as a menu. */
static std::vector<QObject*> entryChain(QObject* entry) {
    std::vector<QObject*> chain{entry};
    for (QObject* one = entry->parent(); one != nullptr; one = one->parent()) {
        if (className(one->metaObject()) == QLatin1String("ComboBox")) {
            chain.push_back(one);
            break;
        }
    }
    return chain;
}

std::vector<QObject*> chainOf(QObject* object) {
    if (QObject* const text = editedBy(object)) {
        std::vector<QObject*> chain = chainOf(text);
        chain.insert(chain.begin(), object);
        return chain;
    }
    if (object->inherits("QQuickMenuItem1")) {
        return entryChain(object);
    }
    if (object->inherits("QAction") || object->inherits("QQuickAction") ||
        object->inherits("QScrollBar")) {
        return {object}; // wherever it is shown; who scrolls does nothing else
    }
    std::vector<QObject*> chain;
    bool isFound = false;
    for (QObject* one = object; one != nullptr; one = parentOf(one)) {
        if (className(one->metaObject()) == QLatin1String("MenuContentItem")) {
            return {object, one}; // its one mouse area is that of all entries
        }
        if (!isFound) {
            chain.push_back(one);
            isFound = isOneOf(one, controls) || isComposite(one) || isCheckableGroup(one) ||
                      isAreaOf(one, object);
        } else if (isComposite(one)) {
            chain.push_back(one);
        }
        if (isTop(one)) {
            break;
        }
    }
    if (!isFound) {
        chain.resize(1);
    }
    for (const QObject* one : std::vector<QObject*>(chain)) {
        if (QObject* const action = actionOf(one)) {
            chain.push_back(action);
        }
    }
    return chain;
}

} // namespace Kinship
