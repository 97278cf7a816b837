// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/surveyprobe.h"

#include "testlib/controlstree.h"

#include <QCoreApplication>
#include <QEvent>
#include <QQuickWindow>

namespace TestLib {

using namespace Vorsk::UIControls;

SurveyProbe::SurveyProbe(const TrackerOptions& options)
    : m_book(m_exporter)
    , m_options(options)
    , m_survey(std::make_unique<QuickSurvey>(
          TrackerServices{m_book, m_attribution, m_options, &m_scenes},
          [this](QObject* object, ElementType, UIElement*) { m_watched.append(object); })) {
    QCoreApplication::instance()->installEventFilter(this);
}

SurveyProbe::~SurveyProbe() {
    QCoreApplication::instance()->removeEventFilter(this);
}

QString SurveyProbe::tree(const QObject* object, const QStringList& attributes) {
    const UIElement* const known = element(object);
    return known == nullptr ? QString() : controlsTree(*known, attributes);
}

QStringList SurveyProbe::below(const QObject* object, const QStringList& attributes) {
    QStringList lines = tree(object, attributes).split(QLatin1Char('\n'));
    lines.removeFirst();
    for (QString& line : lines) {
        line = line.trimmed();
    }
    lines.removeAll(QString());
    return lines;
}

QString SurveyProbe::line(const QObject* object, const QStringList& attributes) {
    const UIElement* const known = element(object);
    return known == nullptr ? QString() : controlLine(*known, attributes);
}

QString SurveyProbe::attribute(const QObject* object, Attribute attribute) {
    const UIElement* const known = element(object);
    return known == nullptr ? QString() : m_book.attribute(known, attribute);
}

bool SurveyProbe::eventFilter(QObject* watched, QEvent* event) {
    m_survey->handleEvent(watched, event);
    return false;
}

} // namespace TestLib
