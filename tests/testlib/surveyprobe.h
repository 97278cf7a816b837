// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "qtuicontrols/attribution.h"
#include "qtuicontrols/controlstracker.h"
#include "qtuicontrols/core/bookofelements.h"
#include "qtuicontrols/embeddedscenes.h"
#include "qtuicontrols/quick/quicksurvey.h"
#include "testlib/fakehook.h"
#include "tracking/streamuielementexporter.h"

#include <QObject>
#include <QStringList>

#include <memory>

namespace TestLib {

/** Nobody's input. */
class NoAttribution final : public Vorsk::UIControls::Attribution {
public:
    Verdict verdict() const override { return {}; }
    QObject* lastInputReceiver() const override { return nullptr; }
    bool isOperatedByClient(const QObject*) override { return false; }
    void arm(QObject*) override {}
    void disarm(QObject*) override {}
    bool isArmed(const QObject*) const override { return false; }
};

/** The survey of Qt Quick between the application's windows and a fake hook. One at a time. */
class SurveyProbe : public QObject {
    Q_OBJECT

public:
    explicit SurveyProbe(const Vorsk::UIControls::TrackerOptions& options = {});
    ~SurveyProbe() override;

    Vorsk::UIControls::QuickSurvey& survey() { return *m_survey; }
    Vorsk::UIControls::BookOfElements& book() { return m_book; }
    /** What the half for widgets asks when it takes pictures. */
    Vorsk::UIControls::EmbeddedScenes* scenes() const { return m_scenes.scenes; }
    Vorsk::UIAbstraction::UIElement* element(const QObject* object) {
        return m_book.elementOf(object);
    }

    /** As controlsTree(); empty when the object has no element. */
    QString tree(const QObject* object, const QStringList& attributes = {});
    /** The lines of all that is below the object's element, without indentation. */
    QStringList below(const QObject* object, const QStringList& attributes = {});
    /** As controlLine(). */
    QString line(const QObject* object, const QStringList& attributes = {});
    QString attribute(const QObject* object, Vorsk::UIControls::Attribute attribute);
    /** How often the object was handed over to be watched. */
    int watched(const QObject* object) const {
        return static_cast<int>(m_watched.count(const_cast<QObject*>(object)));
    }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    FakeHook m_hook;
    Vorsk::UICoverage::StreamUIElementExporter m_exporter;
    Vorsk::UIControls::BookOfElements m_book;
    NoAttribution m_attribution;
    Vorsk::UIControls::TrackerOptions m_options;
    Vorsk::UIControls::SceneRegistry m_scenes;
    QObjectList m_watched;
    std::unique_ptr<Vorsk::UIControls::QuickSurvey> m_survey;
};

} // namespace TestLib
