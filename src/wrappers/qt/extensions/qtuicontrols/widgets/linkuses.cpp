// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "qtuicontrols/widgets/linkuses.h"

#include "qtuicontrols/widgets/lazyconnections.h"
#include "qtuicontrols/widgets/usecounter.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>

namespace Vorsk {
namespace UIControls {

using Cause = Attribution::Cause;
using UICoverage::methodNumber;

namespace {

constexpr int mostLinks = 50;

/** Calls the action with the target and the text of each anchor, in their order. */
template <class Action>
void forEachAnchor(const QTextDocument& document, const Action& action) {
    QString target;
    QString text;
    const auto flush = [&] {
        if (!target.isEmpty()) {
            action(target, text.simplified());
        }
        target.clear();
        text.clear();
    };
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QString found =
                fragment.charFormat().isAnchor() ? fragment.charFormat().anchorHref() : QString();
            if (found != target) {
                flush();
                target = found;
            }
            text += fragment.text();
        }
        flush();
    }
}

bool mayHaveAnchors(const QLabel* label) {
    return label->textFormat() != Qt::PlainText &&
           label->text().contains(QLatin1String("href"), Qt::CaseInsensitive) &&
           (label->textInteractionFlags() &
            (Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard)) != 0;
}

/** The label or browser that the widget is or lies in; null when it is neither. */
QWidget* textOf(QWidget* widget) {
    if (qobject_cast<QLabel*>(widget) != nullptr) {
        return widget;
    }
    auto* const browser = qobject_cast<QTextBrowser*>(widget);
    return browser != nullptr ? browser : qobject_cast<QTextBrowser*>(widget->parentWidget());
}

} // namespace

LinkUses::LinkUses(UseCounter& counter)
    : m_counter(counter) {}

LinkUses::Known& LinkUses::knownOf(QWidget* widget) {
    Known& known = m_known[widget];
    if (known.widget != widget) {
        known = Known();
        known.widget = widget;
    }
    return known;
}

void LinkUses::find(QWidget* widget, UIElement* view) {
    const auto* const label = qobject_cast<QLabel*>(widget);
    if (label != nullptr ? !mayHaveAnchors(label)
                         : qobject_cast<QTextBrowser*>(widget) == nullptr) {
        return;
    }
    Known& known = knownOf(widget);
    known.view = view;
    search(known);
    if (label != nullptr && label->openExternalLinks()) {
        followHovering(widget);
    }
}

/** A label that opens what it links to by itself does not say so; only what the mouse is on. */
void LinkUses::followHovering(const QWidget* label) {
    static const int signal = methodNumber(QLabel::staticMetaObject, "linkHovered(QString)");
    static const int slot = methodNumber(staticMetaObject, "labelHovered(QString)");
    connectOnce(label, signal, this, slot);
}

void LinkUses::search(Known& known) {
    QWidget* const widget = known.widget;
    const auto add = [&](const QString& target, const QString& text) {
        if (known.links.size() < mostLinks) {
            linkOf(widget, target, text);
        }
    };
    if (const auto* const label = qobject_cast<QLabel*>(widget)) {
        if (known.text != label->text()) {
            known.text = label->text();
            QTextDocument document;
            document.setHtml(known.text);
            forEachAnchor(document, add);
        }
    } else if (const auto* const browser = qobject_cast<QTextBrowser*>(widget)) {
        forEachAnchor(*browser->document(), add);
    }
}

UIElement* LinkUses::linkOf(QWidget* widget, const QString& target, const QString& text) {
    Known& known = knownOf(widget);
    UIElement*& link = known.links[target];
    if (link == nullptr && known.view != nullptr) {
        Description what;
        what.type = ElementType::Link;
        what.className = QStringLiteral("a");
        what.text = text.isEmpty() ? target : text;
        what.uses = {Use::Followed};
        link = m_counter.book().add(nullptr, what, known.view);
    }
    return link;
}

void LinkUses::expect(QWidget* receiver, QEvent* event) {
    static const QMetaObject& label = QLabel::staticMetaObject;
    static const QMetaObject& browser = QTextBrowser::staticMetaObject;
    static const int labelSignal = methodNumber(label, "linkActivated(QString)");
    static const int browserSignal = methodNumber(browser, "anchorClicked(QUrl)");
    static const int labelSlot = methodNumber(staticMetaObject, "labelFollowed(QString)");
    static const int browserSlot = methodNumber(staticMetaObject, "browserFollowed(QUrl)");

    QWidget* const text = textOf(receiver);
    if (text == nullptr) {
        return;
    }
    if (qobject_cast<QTextBrowser*>(text) != nullptr) {
        m_counter.connections().connect(text, browserSignal, this, browserSlot);
        return;
    }
    if (!mayHaveAnchors(static_cast<QLabel*>(text))) {
        return;
    }
    m_counter.connections().connect(text, labelSignal, this, labelSlot);
    if (static_cast<QLabel*>(text)->openExternalLinks()) {
        followHovering(text);
        expectOpening(text, event);
    }
}

void LinkUses::expectOpening(QWidget* label, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        m_pressed = m_hoveredLabel == label ? m_hovered : QString();
    } else if (event->type() == QEvent::MouseButtonRelease && m_hoveredLabel == label &&
               !m_pressed.isEmpty() && m_pressed == m_hovered &&
               m_counter.gesture().button() == Qt::LeftButton) {
        follow(label, m_hovered);
        m_pressed.clear();
    }
}

void LinkUses::labelHovered(const QString& target) {
    m_hovered = target;
    m_hoveredLabel = qobject_cast<QWidget*>(sender());
}

void LinkUses::labelFollowed(const QString& target) {
    auto* const label = qobject_cast<QLabel*>(sender());
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    if (label != nullptr && verdict.cause == Cause::Input && verdict.receiver == label) {
        follow(label, target);
    }
}

void LinkUses::browserFollowed(const QUrl& target) {
    auto* const browser = qobject_cast<QTextBrowser*>(sender());
    const Attribution::Verdict verdict = m_counter.attribution().verdict();
    auto* const receiver = qobject_cast<QWidget*>(verdict.receiver);
    if (browser == nullptr || verdict.cause != Cause::Input || receiver == nullptr ||
        textOf(receiver) != browser) {
        return;
    }
    // The browser has made its target of what the anchor says.
    const QHash<QString, UIElement*>& links = knownOf(browser).links;
    for (auto it = links.cbegin(); it != links.cend(); ++it) {
        if (target == QUrl(it.key()) || target == browser->source().resolved(QUrl(it.key()))) {
            follow(browser, it.key());
            return;
        }
    }
    follow(browser, target.toString());
}

void LinkUses::follow(QWidget* widget, const QString& target) {
    if (UIElement* const link = linkOf(widget, target, QString())) {
        m_counter.count(link, Use::Followed, UseCounter::placeOf(widget));
    }
}

} // namespace UIControls
} // namespace Vorsk
