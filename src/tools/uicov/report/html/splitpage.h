// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "base/message.h"
#include "report/html/pagemodel.h"

#include <QDir>
#include <QFileDevice>
#include <QString>

#include <optional>

namespace Uicov::Report::Html {

/**
 * Writes a page as a folder: index.html, which has nothing inline, its style sheet and scripts, and
 * each picture in full as a file. A folder with anything else in it is not touched.
 */
class SplitPage {
public:
    SplitPage(const PageModel& model, const QString& folder);

    /** The problem when not everything was written; the page that was there is then still whole. */
    std::optional<Base::Problem> write();
    /** To be called before write(): nobody but the owner, and who is among these, may read it. */
    void setReaders(QFileDevice::Permissions readers) { m_readers = readers; }

private:
    bool mayWrite() const;
    std::optional<Base::Problem> writeFile(const QString& name, const QByteArray& bytes) const;
    std::optional<Base::Problem> writePictures(QStringList& names) const;
    void removeOtherPictures(const QStringList& names) const;

    const PageModel& m_model;
    QDir m_folder;
    std::optional<QFileDevice::Permissions> m_readers;
};

} // namespace Uicov::Report::Html
