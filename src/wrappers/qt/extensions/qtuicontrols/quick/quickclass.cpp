// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quickclass.h"

#include <QHash>
#include <QObject>

#include <algorithm>
#include <cstring>

namespace Vorsk {
namespace UIControls {

namespace {

constexpr const char* propertyNames[] = {
    "acceptedButtons", "action",   "checkable", "echoMode", "enabled",
    "placeholderText", "readOnly", "text",      "title",    "tristate"};

struct Known {
    const char* name;
    QuickRole role;
    ElementType type;
};

/** Classes of Qt in C++; the first one up an object's chain that is here says what it is. */
constexpr Known cppClasses[] = {
    {"QQuickItem", QuickRole::Item, ElementType::Area},
    // Qt Quick
    {"QQuickWindow", QuickRole::Window, ElementType::Window},
    {"QQuickText", QuickRole::Text, ElementType::Link},
    {"QQuickTextInput", QuickRole::Input, ElementType::TextInput},
    {"QQuickTextEdit", QuickRole::Input, ElementType::TextInput},
    {"QQuickListView", QuickRole::ItemView, ElementType::List},
    {"QQuickGridView", QuickRole::ItemView, ElementType::List},
    {"QQuickPathView", QuickRole::ItemView, ElementType::List},
    {"QQuickTableView", QuickRole::ItemView, ElementType::Table},
    {"QQuickHorizontalHeaderView", QuickRole::Part, ElementType::Area},
    {"QQuickVerticalHeaderView", QuickRole::Part, ElementType::Area},
    {"QQuickMouseArea", QuickRole::Area, ElementType::Area},
    {"QQuickMultiPointTouchArea", QuickRole::Area, ElementType::Area},
    {"QQuickPinchArea", QuickRole::Area, ElementType::Area},
    {"QQuickPointerHandler", QuickRole::Handler, ElementType::Area},
    {"QQuickHoverHandler", QuickRole::None, ElementType::Area},
    {"QQuickShortcut", QuickRole::Shortcut, ElementType::Command},
    {"QQuickLoader", QuickRole::Loader, ElementType::Page},
    {"QQuickRepeater", QuickRole::Repeater, ElementType::Area},
    {"QQuickStackLayout", QuickRole::StackLayout, ElementType::Page},
    // Controls of the second generation: templates
    {"QQuickAbstractButton", QuickRole::Control, ElementType::Button},
    {"QQuickRadioButton", QuickRole::Control, ElementType::RadioButton},
    {"QQuickRadioDelegate", QuickRole::Control, ElementType::RadioButton},
    {"QQuickCheckBox", QuickRole::Control, ElementType::CheckBox},
    {"QQuickCheckDelegate", QuickRole::Control, ElementType::CheckBox},
    {"QQuickSwitch", QuickRole::Control, ElementType::Switch},
    {"QQuickSwitchDelegate", QuickRole::Control, ElementType::Switch},
    {"QQuickTabButton", QuickRole::Control, ElementType::Tab},
    {"QQuickMenuItem", QuickRole::Control, ElementType::Command},
    {"QQuickMenuBarItem", QuickRole::Control, ElementType::Command},
    {"QQuickComboBox", QuickRole::Control, ElementType::ComboBox},
    {"QQuickSpinBox", QuickRole::Control, ElementType::SpinBox},
    {"QQuickTumbler", QuickRole::Control, ElementType::SpinBox},
    {"QQuickSlider", QuickRole::Control, ElementType::Slider},
    {"QQuickRangeSlider", QuickRole::Control, ElementType::Slider},
    {"QQuickDial", QuickRole::Control, ElementType::Dial},
    {"QQuickAction", QuickRole::Action, ElementType::Command},
    {"QQuickScrollBar", QuickRole::Part, ElementType::Area},
    {"QQuickScrollIndicator", QuickRole::Part, ElementType::Area},
    {"QQuickBusyIndicator", QuickRole::Part, ElementType::Area},
    {"QQuickProgressBar", QuickRole::Part, ElementType::Area},
    {"QQuickPageIndicator", QuickRole::Part, ElementType::Area},
    {"QQuickPopup", QuickRole::Popup, ElementType::Popup},
    {"QQuickDialog", QuickRole::Popup, ElementType::Dialog},
    {"QQuickDrawer", QuickRole::Popup, ElementType::Drawer},
    {"QQuickMenu", QuickRole::Popup, ElementType::Menu},
    {"QQuickToolTip", QuickRole::None, ElementType::Popup},
    {"QQuickPopupItem", QuickRole::PopupItem, ElementType::Popup},
    {"QQuickContainer", QuickRole::Container, ElementType::Area},
    {"QQuickSwipeView", QuickRole::SwipeView, ElementType::Page},
    {"QQuickStackView", QuickRole::StackView, ElementType::Page},
    // Controls of the first generation: what they have in C++
    {"QQuickMenuPopupWindow1", QuickRole::Window, ElementType::Menu},
    {"QQuickAction1", QuickRole::Action, ElementType::Command},
    {"QQuickMenuItem1", QuickRole::Action, ElementType::Command},
    {"QQuickMenu1", QuickRole::Popup, ElementType::Menu},
    {"QQuickStyleItem1", QuickRole::Part, ElementType::Area},
};

/** Types of the first generation, which are items that QML extends. Their names are taken by others
 * too, so each is known by a property of its own as well, which ends in nothing that an application
 * would use. */
struct KnownInQml {
    const char* name;
    const char* property;
    QuickRole role;
    ElementType type;
};

constexpr KnownInQml qmlClasses[] = {
    {"BasicButton", "__behavior", QuickRole::Control, ElementType::Button},
    {"CheckBox", "__cycleStatesHandler", QuickRole::Control, ElementType::CheckBox},
    {"RadioButton", "__cycleStatesHandler", QuickRole::Control, ElementType::RadioButton},
    {"Switch", "__panel", QuickRole::Control, ElementType::Switch},
    {"ComboBox", "__popup", QuickRole::Control, ElementType::ComboBox},
    {"TextField", "__contentHeight", QuickRole::Input, ElementType::TextInput},
    {"TextArea", "__scroller", QuickRole::Input, ElementType::TextInput},
    {"SpinBox", "__baselineOffset", QuickRole::Control, ElementType::SpinBox},
    {"Slider", "__handlePos", QuickRole::Control, ElementType::Slider},
    {"Calendar", "__locale", QuickRole::Control, ElementType::Table},
    {"TreeView", "__isTreeView", QuickRole::ItemView, ElementType::Tree},
    {"TableView", "__isTreeView", QuickRole::ItemView, ElementType::Table},
    {"GroupBox", "__checkbox", QuickRole::Item, ElementType::GroupBox},
    {"TabView", "__tabs", QuickRole::Item, ElementType::Tab},
    {"StackView", "__currentItem", QuickRole::StackView, ElementType::Page},
    {"Tab", "__inserted", QuickRole::Loader, ElementType::Page},
    {"TabBar", "__selectedTabRect", QuickRole::Item, ElementType::Tab},
    {"ScrollBar", "__styleData", QuickRole::Part, ElementType::Area},
};

/** Where what QML adds to a name begins; null when it is a class in C++. */
const char* qmlPart(const char* name) {
    const char* const type = std::strstr(name, "_QMLTYPE_");
    return type != nullptr ? type : std::strstr(name, "_QML_");
}

bool hasGeneration2(const char* name) {
    // All templates extend one of these; the first generation's end in its number.
    return std::strncmp(name, "QQuick", 6) == 0 && name[std::strlen(name) - 1] != '1';
}

} // namespace

/** The classes that have been looked up. */
class QuickClassTable {
public:
    const QuickClass& of(const QMetaObject& cppClass);
    const QuickClass* ofQmlTypes(const QObject* object, const QMetaObject* cppClass);

private:
    struct Entry {
        QByteArray name; // another class can come to stand at the address
        QuickClass cls;
    };

    static QuickClass make(const QMetaObject& cppClass);

    QHash<const QMetaObject*, Entry*> m_classes;
    QHash<const KnownInQml*, QuickClass*> m_qmlClasses;
};

const QuickClass& QuickClassTable::of(const QMetaObject& cppClass) {
    Entry*& entry = m_classes[&cppClass];
    if (entry == nullptr) {
        entry = new Entry;
    } else if (std::strcmp(entry->name.constData(), cppClass.className()) == 0) {
        return entry->cls;
    }
    entry->name = cppClass.className();
    entry->cls = make(cppClass);
    return entry->cls;
}

QuickClass QuickClassTable::make(const QMetaObject& cppClass) {
    QuickClass made;
    bool isControl = false;
    for (const QMetaObject* cls = &cppClass; cls != nullptr; cls = cls->superClass()) {
        const auto* const known = std::find_if(
            std::begin(cppClasses), std::end(cppClasses), [cls](const Known& candidate) {
                return std::strcmp(candidate.name, cls->className()) == 0;
            });
        if (made.m_name.isEmpty() && known != std::end(cppClasses)) {
            made.m_name = known->name;
            made.m_role = known->role;
            made.m_type = known->type;
            isControl = isControl || known->role == QuickRole::Popup;
        }
        isControl = isControl || std::strcmp(cls->className(), "QQuickControl") == 0 ||
                    std::strcmp(cls->className(), "QQuickTextField") == 0 ||
                    std::strcmp(cls->className(), "QQuickTextArea") == 0 ||
                    std::strcmp(cls->className(), "QQuickAction") == 0;
    }
    made.m_generation = isControl && hasGeneration2(made.m_name.constData()) ? 2 : 0;
    if (made.m_name.endsWith('1')) {
        made.m_generation = 1;
    }
    for (int i = 0; i < QuickClass::propertyCount; ++i) {
        const int number = cppClass.indexOfProperty(propertyNames[i]);
        if (number != -1) {
            made.m_properties.at(static_cast<std::size_t>(i)) = cppClass.property(number);
        }
    }
    return made;
}

/** Null when none of the types that QML defined on top of the class is of the first generation. */
const QuickClass* QuickClassTable::ofQmlTypes(const QObject* object, const QMetaObject* cppClass) {
    for (const QMetaObject* cls = object->metaObject(); cls != cppClass; cls = cls->superClass()) {
        const char* const name = cls->className();
        const auto length = static_cast<std::size_t>(qmlPart(name) - name);
        for (const KnownInQml& known : qmlClasses) {
            if (std::strncmp(known.name, name, length) != 0 || std::strlen(known.name) != length ||
                (cls->indexOfProperty(known.property) == -1)) {
                continue;
            }
            QuickClass*& made = m_qmlClasses[&known];
            if (made == nullptr) {
                made = new QuickClass;
                made->m_name = known.name;
                made->m_role = known.role;
                made->m_type = known.type;
                made->m_generation = 1;
            }
            return made;
        }
    }
    return nullptr;
}

const QuickClass& QuickClass::of(const QObject* object) {
    static auto* const table = new QuickClassTable; // asked for until the process ends
    const QMetaObject* cppClass = object->metaObject();
    bool hasQmlTypes = false;
    while (cppClass->superClass() != nullptr && qmlPart(cppClass->className()) != nullptr) {
        hasQmlTypes = true;
        cppClass = cppClass->superClass();
    }
    const QuickClass& known = table->of(*cppClass);
    if (hasQmlTypes && (known.m_role == QuickRole::Item || known.m_role == QuickRole::Loader)) {
        if (const QuickClass* const first = table->ofQmlTypes(object, cppClass)) {
            return *first;
        }
    }
    return known;
}

QVariant QuickClass::read(const QObject* object, Property property) const {
    const QMetaProperty& known = m_properties.at(static_cast<std::size_t>(property));
    return known.isValid() ? known.read(object) : object->property(propertyNames[property]);
}

int QuickClass::readEnum(const QObject* object, Property property, int otherwise) const {
    const QMetaProperty& known = m_properties.at(static_cast<std::size_t>(property));
    if (!known.isValid() || !known.isEnumType()) {
        const QVariant value = read(object, property);
        return value.isValid() ? value.toInt() : otherwise;
    }
    int value = otherwise;
    void* arguments[] = {&value};
    QMetaObject::metacall(const_cast<QObject*>(object), QMetaObject::ReadProperty,
                          known.propertyIndex(), arguments);
    return value;
}

int QuickClass::notifier(const QObject* object, Property property) const {
    const QMetaProperty& known = m_properties.at(static_cast<std::size_t>(property));
    if (known.isValid()) {
        return known.notifySignalIndex();
    }
    const QMetaObject* const cls = object->metaObject();
    const int number = cls->indexOfProperty(propertyNames[property]);
    return number == -1 ? -1 : cls->property(number).notifySignalIndex();
}

bool extendsClass(const QObject* object, const char* name) {
    const QMetaObject* cls = object->metaObject();
    while (cls != nullptr && std::strcmp(cls->className(), name) != 0) {
        cls = cls->superClass();
    }
    return cls != nullptr;
}

QString classNameOf(const QObject* object) {
    return QString::fromUtf8(object->metaObject()->className());
}

QByteArray stableClassName(const QObject* object) {
    return withoutQmlPart(object->metaObject()->className());
}

QByteArray withoutQmlPart(const QByteArray& className) {
    const char* const end = qmlPart(className.constData());
    return end == nullptr ? className
                          : className.left(static_cast<int>(end - className.constData()));
}

} // namespace UIControls
} // namespace Vorsk
