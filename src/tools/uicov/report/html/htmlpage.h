// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "report/html/pagemodel.h"
#include "report/html/picturelinks.h"

#include <QByteArray>
#include <QString>

namespace Uicov::Report::Html {

/**
 * Puts a page together from its model and from the sources compiled into the program. A page is one
 * file with everything inside it, or a small one beside others, with nothing inline.
 */
class HtmlPage {
public:
    explicit HtmlPage(const PageModel& model);

    /** Everything in one file, which may load nothing. */
    QByteArray singleFile() const;

    /** The file that names the others: page.css, page.js, data.js and the pictures. */
    QByteArray indexFile(const PictureLinks& links) const;
    /** data.js */
    QByteArray dataFile(const PictureLinks& links) const;
    static QByteArray styleSheet();
    static QByteArray script();

    /** Whether those are the first bytes of a page made here. */
    static bool isPage(const QByteArray& beginning);

private:
    QByteArray fill(const QHash<QByteArray, QByteArray>& values) const;
    QByteArray data(const PictureLinks& links) const;

    const PageModel& m_model;
};

} // namespace Uicov::Report::Html
