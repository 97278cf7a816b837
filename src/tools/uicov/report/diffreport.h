// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/comparison.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Uicov::Report {

/** A comparison as people and programs read it. Equal data gives equal text. */
class DiffReport {
public:
    /** Of the JSON form. */
    static constexpr int formatVersion = 1;

    explicit DiffReport(const Coverage::Comparison& comparison);

    void setPrecision(int digits) { m_precision = digits; }
    /** What the base is, in words; empty says nothing of it. */
    void setBase(const QString& base) { m_base = base; }
    /** Where the page of the present runs is, for the Markdown form; empty for nowhere. */
    void setLink(const QString& link) { m_link = link; }

    QString toText() const;
    QString toMarkdown() const;
    QByteArray toJson() const;

private:
    struct Section {
        const char* mark;
        const char* title;
        const char* name;
        const char* summary;
        const QVector<Coverage::Comparison::Change>& changes;
    };

    /** What went with one view, or what has no such view. */
    struct Group {
        QString application;
        QString view;
        QVector<Coverage::Comparison::Change> changes;
    };

    QVector<Section> sections() const;
    static QVector<Group> grouped(const QVector<Coverage::Comparison::Change>& changes);
    QStringList totals() const;
    QString notRun() const;
    QString unknown() const;
    bool hasSeveralApplications() const;
    QString named(const QString& application, const QString& key) const;
    QString line(const Section& section, const Coverage::Comparison::Change& change) const;
    QString sectionText(const Section& section) const;
    QString sectionMarkdown(const Section& section) const;
    QString renamedMarkdown() const;
    QStringList summary() const;

    const Coverage::Comparison& m_comparison;
    bool m_namesApplications = false;
    QString m_base;
    QString m_link;
    int m_precision = 0;
};

} // namespace Uicov::Report
