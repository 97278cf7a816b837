// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/core/bookofelements.h"
#include "qtuicontrols/core/inputattribution.h"
#include "qtuicontrols/embeddedscenes.h"
#include "testlib/fakehook.h"
#include "tracking/streamuielementexporter.h"

#include <QList>
#include <QObject>
#include <QStringList>

#include <memory>

namespace TestLib {

/**
 * The half of the controls extension that knows Qt Widgets, between the application's deliveries
 * and a fake hook. Plays the host that tells the begin of each delivery only. One at a time.
 */
class ControlsProbe : public QObject {
    Q_OBJECT

public:
    using Attribute = Vorsk::UIControls::Attribute;
    using UIElement = Vorsk::UIAbstraction::UIElement;

    explicit ControlsProbe(const Vorsk::UIControls::TrackerOptions& options = {});
    ~ControlsProbe() override;

    Vorsk::UIControls::BookOfElements& book() { return m_book; }
    /** What a half with scenes in widgets says so in. */
    Vorsk::UIControls::SceneRegistry& registry() { return m_scenes; }
    Vorsk::UIControls::ControlsTracker& tracker() { return *m_tracker; }
    UIElement* element(const QObject* object) { return m_book.elementOf(object); }

    QList<UIElement*> roots() const;
    /** All views and controls, as controlsTree() prints them, in the order in which they came. */
    QString tree(const QStringList& attributes = {}) const;
    /** The element's line as controlLine() prints it; empty when the object has no element. */
    QString line(const QObject* object, const QStringList& attributes = {});
    QString attribute(const QObject* object, Attribute attribute);
    /** The first element of that type and text anywhere; null when there is none. */
    UIElement* find(const QString& type, const QString& text) const;
    QString attribute(const QString& type, const QString& text, Attribute attribute) const;
    /** How many elements of that type there are. */
    int count(const QString& type) const;
    /** How often the event of the element was counted. */
    static int usage(const UIElement* element, const char* event);

    /** How many records were sent since the last call. */
    int takeRecords();

    bool eventFilter(QObject* watched, QEvent* event) override;

    /** Plays the host that tells ends as well: a delivery is over. Called by HostApplication. */
    static void end(const QObject* receiver, const QEvent* event);

private:
    FakeHook m_hook;
    Vorsk::UICoverage::StreamUIElementExporter m_exporter;
    Vorsk::UIControls::TrackerOptions m_options;
    Vorsk::UIControls::SceneRegistry m_scenes;
    Vorsk::UIControls::BookOfElements m_book;
    Vorsk::UIControls::InputAttribution m_attribution;
    std::unique_ptr<Vorsk::UIControls::ControlsTracker> m_tracker;
};

} // namespace TestLib
