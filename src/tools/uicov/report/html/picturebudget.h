// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QVector>

#include <vector>

namespace Uicov::Report::Html {

struct PageModel;

/**
 * Brings the pictures of a page below a size: first packed better, which loses nothing, then made
 * smaller, always the one that takes the most room, so that most pictures stay as they are.
 */
class PictureBudget {
public:
    /** @param bytes that all pictures together may take as they stand in the page; 0 for no limit
     */
    explicit PictureBudget(qint64 bytes);

    void apply(PageModel& model);

    /** Pictures that became smaller. */
    int reduced() const { return m_reduced; }
    /** False when even the smallest form of all pictures takes more. */
    bool isKept() const { return m_isKept; }

    /** Bytes that a picture takes in a page. */
    static qint64 cost(qint64 bytes) { return (bytes + 2) / 3 * 4; }

private:
    void repack(PageModel& model);
    bool shrink(PageModel& model, int index);

    qint64 m_budget;
    qint64 m_cost = 0;
    int m_reduced = 0;
    bool m_isKept = true;
    std::vector<double> m_scales;
    /** The pictures in full: each form is made of them, since every change of size blurs. */
    QVector<QByteArray> m_whole;
};

} // namespace Uicov::Report::Html
