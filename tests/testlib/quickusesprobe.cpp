// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickusesprobe.h"

#include "qtuicontrols/quick/quicktracker.h"
#include "tracking/logging.h"

namespace TestLib {

using namespace Vorsk::UIControls;

namespace {

DeliveringApplication::Host* presentHost = nullptr;

} // namespace

bool DeliveringApplication::notify(QObject* receiver, QEvent* event) {
    Host* const host = presentHost;
    if (host == nullptr) {
        return QApplication::notify(receiver, event);
    }
    host->begin(receiver, event);
    const bool isHandled = QApplication::notify(receiver, event);
    if (presentHost == host) {
        host->end(receiver, event);
    }
    return isHandled;
}

void DeliveringApplication::setHost(Host* host) {
    presentHost = host;
}

/** Notes what is counted, and passes on everything. */
class QuickUsesProbe::Book final : public ElementBook {
public:
    explicit Book(Vorsk::UICoverage::StreamUIElementExporter& exporter)
        : m_book(exporter) {}

    UIElement* elementOf(const QObject* object) override { return m_book.elementOf(object); }
    QObject* objectOf(const UIElement* element) override { return m_book.objectOf(element); }
    UIElement* add(QObject* object, const Description& what, UIElement* parent) override {
        UIElement* const element = m_book.add(object, what, parent);
        const QString name = object == nullptr ? QString() : object->objectName();
        const QString kind = object == nullptr ? QLatin1String(nameOf(what.type)) : what.className;
        m_names[element] = name.isEmpty() ? kind + QLatin1Char(' ') + what.text : name;
        return element;
    }
    void addObject(QObject* object, UIElement* element) override {
        m_book.addObject(object, element);
    }
    void setText(UIElement* element, const QString& text) override {
        m_book.setText(element, text);
    }
    void setAttribute(UIElement* element, Attribute attribute, const QString& value) override {
        m_book.setAttribute(element, attribute, value);
    }
    QString attribute(const UIElement* element, Attribute attribute) const override {
        return m_book.attribute(element, attribute);
    }
    void setPlace(UIElement* element, const QRect& place) override {
        m_book.setPlace(element, place);
    }
    void setPicture(UIElement* element, const QImage& picture) override {
        m_book.setPicture(element, picture);
    }
    void announceUse(UIElement* element, Use use) override { m_book.announceUse(element, use); }
    void countUse(UIElement* element, Use use) override {
        if (use != Use::Seen) {
            uses.append(m_names.value(element) + QLatin1Char(' ') + QLatin1String(nameOf(use)));
        }
        m_book.countUse(element, use);
    }
    ElementType typeOf(const UIElement* element) const override { return m_book.typeOf(element); }
    QString idOf(const UIElement* element) const override { return m_book.idOf(element); }
    UIElement* parentOf(const UIElement* element) const override {
        return m_book.parentOf(element);
    }
    UIElement* viewOf(UIElement* element) const override { return m_book.viewOf(element); }
    void beginBatch() override { m_book.beginBatch(); }
    void endBatch() override { m_book.endBatch(); }

    QStringList uses;

private:
    BookOfElements m_book;
    QHash<const UIElement*, QString> m_names;
};

QuickUsesProbe::QuickUsesProbe(Ends ends)
    : m_book(std::make_unique<Book>(m_exporter))
    , m_ends(ends) {
    Vorsk::UICoverage::setExtensionHost(&m_host);
    m_tracker = std::make_unique<QuickTracker>(TrackerServices{*m_book, m_attribution, m_options});
    DeliveringApplication::setHost(this);
}

QuickUsesProbe::~QuickUsesProbe() {
    DeliveringApplication::setHost(nullptr);
    m_tracker.reset();
    m_book.reset();
    Vorsk::UICoverage::setExtensionHost(nullptr);
}

QStringList QuickUsesProbe::takeUses() {
    QStringList uses = std::exchange(m_book->uses, {});
    uses.sort();
    return uses;
}

QString QuickUsesProbe::attribute(const QObject* object, Attribute attribute) const {
    const UIElement* const element = m_book->elementOf(object);
    return element == nullptr ? QString() : m_book->attribute(element, attribute);
}

ElementBook& QuickUsesProbe::book() {
    return *m_book;
}

void QuickUsesProbe::begin(QObject* receiver, QEvent* event) {
    if (m_attribution.begin(receiver, event) && !receiver->isWidgetType()) {
        m_tracker->handleEvent(receiver, event);
    }
}

void QuickUsesProbe::end(QObject* receiver, QEvent* event) {
    if (m_ends == Ends::Told) {
        m_attribution.end(receiver, event);
    }
}

} // namespace TestLib
