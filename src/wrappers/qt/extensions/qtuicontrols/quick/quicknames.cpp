// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/quick/quicknames.h"

#include "qtuicontrols/quick/quickclass.h"

#include <QQmlContext>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QUrl>

#include <cstring>

namespace Vorsk {
namespace UIControls {

namespace {

/** As Controls show it: "&File" is "File", "&&" is "&". */
QString withoutMnemonic(const QString& text) {
    if (!text.contains(QLatin1Char('&'))) {
        return text;
    }
    QString stripped;
    stripped.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&') && i + 1 < text.size()) {
            ++i;
        }
        stripped.append(text.at(i));
    }
    return stripped;
}

QString withoutMarkup(const QString& text) {
    return text.contains(QLatin1Char('<')) && Qt::mightBeRichText(text)
               ? QTextDocumentFragment::fromHtml(text).toPlainText().simplified()
               : text;
}

void add(Description& what, Attribute attribute, const QString& value) {
    if (!value.isEmpty()) {
        what.attributes.append({attribute, value});
    }
}

/** Of a shortcut: its sequence, or the first of several. */
QString keysOf(const QObject* shortcut) {
    const QString one = shortcut->property("nativeText").toString();
    if (!one.isEmpty()) {
        return one;
    }
    const QVariantList several = shortcut->property("sequences").toList();
    return several.isEmpty() ? QString() : several.first().toString();
}

/** The text of the first item of that kind down to a depth. Among many, none says what one of them
 * is for. */
QString firstText(const QQuickItem* parent, const QQuickItem* except, int depth) {
    constexpr int most = 16;
    const QList<QQuickItem*> children = parent->childItems();
    if (children.size() > most) {
        return {};
    }
    for (const QQuickItem* child : children) {
        if (child == except) {
            continue;
        }
        const QuickClass& cls = QuickClass::of(child);
        if (cls.role() == QuickRole::Text) {
            const QString text =
                withoutMarkup(cls.read(child, QuickClass::TextProperty).toString()).simplified();
            if (!text.isEmpty()) {
                return text;
            }
        } else if (depth > 1 && cls.role() == QuickRole::Item) {
            const QString text = firstText(child, except, depth - 1);
            if (!text.isEmpty()) {
                return text;
            }
        }
    }
    return {};
}

} // namespace

QString captionOf(const QObject* object, const QuickClass& cls) {
    switch (cls.role()) {
    case QuickRole::Input:
    case QuickRole::ItemView:
    case QuickRole::Area:
    case QuickRole::Handler:
        return {}; // their texts are what was typed, or none
    case QuickRole::Shortcut:
        return keysOf(object);
    case QuickRole::Text:
        return withoutMarkup(cls.read(object, QuickClass::TextProperty).toString());
    case QuickRole::Window:
    case QuickRole::Popup:
    case QuickRole::Item:
    case QuickRole::Loader:
        return withoutMnemonic(cls.read(object, QuickClass::Title).toString());
    default:
        break;
    }
    switch (cls.type()) {
    case ElementType::ComboBox:
    case ElementType::SpinBox:
    case ElementType::Slider:
    case ElementType::Dial:
    case ElementType::Table:
        return {};
    default:
        break;
    }
    const QString text = cls.read(object, QuickClass::TextProperty).toString();
    return withoutMarkup(withoutMnemonic(text));
}

QString qmlIdOf(const QObject* object) {
    const QQmlContext* const context = QQmlEngine::contextForObject(object);
    return context == nullptr || !context->isValid()
               ? QString()
               : context->nameForObject(const_cast<QObject*>(object));
}

QString qmlFileOf(const QObject* object) {
    const QQmlContext* const context = QQmlEngine::contextForObject(object);
    return context == nullptr || !context->isValid() ? QString() : context->baseUrl().fileName();
}

bool isInsideQtControls(const QObject* object) {
    const QQmlContext* const context = QQmlEngine::contextForObject(object);
    return context != nullptr && context->isValid() &&
           context->baseUrl().path().contains(QLatin1String("/QtQuick/Controls"));
}

QString textOn(const QQuickItem* area) {
    constexpr int depth = 2;
    const QString inside = firstText(area, nullptr, depth);
    const QQuickItem* const parent = area->parentItem();
    return inside.isEmpty() && parent != nullptr ? firstText(parent, area, depth) : inside;
}

bool hidesInput(const QObject* object, const QuickClass& cls) {
    constexpr int normalEcho = 0; // TextInput.Normal
    return cls.type() == ElementType::TextInput &&
           cls.readEnum(object, QuickClass::Echo, normalEcho) != normalEcho;
}

void describeNames(const QObject* object, const QuickClass& cls, Description& what) {
    add(what, Attribute::ObjectName, object->objectName());
    add(what, Attribute::QmlId, qmlIdOf(object));
    if (cls.role() == QuickRole::Input) {
        add(what, Attribute::Placeholder, cls.read(object, QuickClass::Placeholder).toString());
        if (hidesInput(object, cls)) {
            add(what, Attribute::Sensitive, QStringLiteral("true"));
        }
    }
    for (const QObject* child : object->children()) {
        const char* const name = child->metaObject()->className();
        if (std::strcmp(name, "QQuickToolTipAttached") == 0) {
            add(what, Attribute::ToolTip, child->property("text").toString());
        } else if (std::strcmp(name, "QQuickAccessibleAttached") == 0) {
            add(what, Attribute::AccessibleName, child->property("name").toString());
            add(what, Attribute::Description, child->property("description").toString());
        }
    }
    if (cls.generation() == 1 && cls.role() == QuickRole::Control) {
        add(what, Attribute::ToolTip, object->property("tooltip").toString());
    }
}

} // namespace UIControls
} // namespace Vorsk
