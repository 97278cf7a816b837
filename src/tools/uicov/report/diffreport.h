// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/comparison.h"

#include <QByteArray>
#include <QString>

namespace Uicov::Report {

/** A comparison as people and programs read it. Equal data gives equal text. */
class DiffReport {
public:
    /** Of the JSON form. */
    static constexpr int formatVersion = 1;

    explicit DiffReport(const Coverage::Comparison& comparison);

    void setPrecision(int digits) { m_precision = digits; }

    QString toText() const;
    QString toMarkdown() const;
    QByteArray toJson() const;

private:
    struct Section {
        const char* mark;
        const char* title;
        const char* name;
        const QVector<Coverage::Comparison::Change>& changes;
    };

    QVector<Section> sections() const;
    QString totals() const;
    bool hasSeveralApplications() const;
    QString named(const QString& application, const QString& key) const;

    const Coverage::Comparison& m_comparison;
    bool m_namesApplications = false;
    int m_precision = 0;
};

} // namespace Uicov::Report
