#pragma once

#include "report/comparison.h"

#include <QByteArray>
#include <QString>

namespace Uicov::Report {

/** A comparison as people and programs read it. Equal data gives equal text. */
class DiffReport {
public:
    explicit DiffReport(const Comparison& comparison);

    void setPrecision(int digits) { m_precision = digits; }

    QString toText() const;
    QString toMarkdown() const;
    QByteArray toJson() const;

private:
    struct Section {
        const char* mark;
        const char* title;
        const char* name;
        const QVector<Comparison::Change>& changes;
    };

    QVector<Section> sections() const;
    QString totals() const;

    const Comparison& m_comparison;
    int m_precision = 0;
};

} // namespace Uicov::Report
