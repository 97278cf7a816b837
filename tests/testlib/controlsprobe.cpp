// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/controlsprobe.h"

#include "qtuicontrols/widgets/widgetstracker.h"
#include "testlib/controlstree.h"
#include "uiabstraction/elementwalk.h"
#include "uiabstraction/uielement.h"

#include <QCoreApplication>

namespace TestLib {

using namespace Vorsk::UIControls;
using Vorsk::UIAbstraction::ElementWalk;
using Vorsk::UIAbstraction::UIEvent;

namespace {

ControlsProbe* current = nullptr;

} // namespace

ControlsProbe::ControlsProbe(const TrackerOptions& options)
    : m_options(options)
    , m_book(m_exporter)
    , m_tracker(new WidgetsTracker({m_book, m_attribution, m_options, &m_scenes})) {
    current = this;
    QCoreApplication::instance()->installEventFilter(this);
}

ControlsProbe::~ControlsProbe() {
    current = nullptr;
    QCoreApplication::instance()->removeEventFilter(this);
}

bool ControlsProbe::eventFilter(QObject* watched, QEvent* event) {
    if (m_attribution.begin(watched, event)) {
        m_tracker->handleEvent(watched, event);
    }
    return false;
}

void ControlsProbe::end(const QObject* receiver, const QEvent* event) {
    if (current != nullptr) {
        current->m_attribution.end(receiver, event);
    }
}

QList<ControlsProbe::UIElement*> ControlsProbe::roots() const {
    QList<UIElement*> all;
    for (UIElement* root : m_book.roots()) {
        all.append(root);
    }
    return all;
}

QString ControlsProbe::tree(const QStringList& attributes) const {
    QString lines;
    for (const UIElement* root : m_book.roots()) {
        lines += controlsTree(*root, attributes);
    }
    return lines;
}

QString ControlsProbe::line(const QObject* object, const QStringList& attributes) {
    const UIElement* const known = element(object);
    return known == nullptr ? QString() : controlLine(*known, attributes);
}

QString ControlsProbe::attribute(const QObject* object, Attribute attribute) {
    const UIElement* const known = element(object);
    return known == nullptr ? QString() : m_book.attribute(known, attribute);
}

ControlsProbe::UIElement* ControlsProbe::find(const QString& type, const QString& text) const {
    for (const UIElement* root : m_book.roots()) {
        ElementWalk walk(root);
        while (const UIElement* element = walk.next()) {
            if (element->standardType().toString() == type && element->text() == text) {
                return const_cast<UIElement*>(element); // NOLINT(*-const-cast): the walk reads only
            }
        }
    }
    return nullptr;
}

QString ControlsProbe::attribute(const QString& type, const QString& text,
                                 Attribute attribute) const {
    const UIElement* const known = find(type, text);
    return known == nullptr ? QString() : m_book.attribute(known, attribute);
}

int ControlsProbe::count(const QString& type) const {
    int number = 0;
    for (const UIElement* root : m_book.roots()) {
        ElementWalk walk(root);
        while (const UIElement* element = walk.next()) {
            number += element->standardType().toString() == type ? 1 : 0;
        }
    }
    return number;
}

int ControlsProbe::usage(const UIElement* element, const char* event) {
    return element == nullptr ? -1
                              : element->usage().value(UIEvent(QString::fromLatin1(event)), -1);
}

int ControlsProbe::takeRecords() {
    const int number = m_hook.messages.size();
    m_hook.messages.clear();
    return number;
}

} // namespace TestLib
