// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/splitpage.h"

#include "base/sha256.h"
#include "report/html/htmlpage.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>

namespace Uicov::Report::Html {

using Base::Message;
using Base::Problem;

namespace {

constexpr int markRange = 4096;
const QLatin1String index("index.html");
const QLatin1String pictureFolder("pictures");

} // namespace

SplitPage::SplitPage(const PageModel& model, const QString& folder)
    : m_model(model)
    , m_folder(folder) {}

/** Only into a new or empty folder, or over a page of our own. */
bool SplitPage::mayWrite() const {
    if (!m_folder.exists()) {
        return !QFileInfo::exists(m_folder.path());
    }
    if (m_folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot)
            .isEmpty()) {
        return true;
    }
    QFile page(m_folder.filePath(index));
    return page.open(QIODevice::ReadOnly) && HtmlPage::isPage(page.read(markRange));
}

std::optional<Problem> SplitPage::writeFile(const QString& name, const QByteArray& bytes) const {
    QSaveFile file(m_folder.filePath(name));
    const bool isOpen = file.open(QIODevice::WriteOnly);
    if (isOpen && m_readers) {
        file.setPermissions(file.permissions() &
                            (*m_readers | QFile::ReadOwner | QFile::WriteOwner));
    }
    if (!isOpen || file.write(bytes) != bytes.size() || !file.commit()) {
        return Problem{Message::OutputNotWritable,
                       m_folder.filePath(name) + QStringLiteral(": cannot be written: ") +
                           file.errorString() + QStringLiteral("; choose another folder")};
    }
    return std::nullopt;
}

std::optional<Problem> SplitPage::writePictures(QStringList& names) const {
    for (const PageModel::Picture& picture : m_model.pictures) {
        // Named by content, so that a page that is open meanwhile does not see others.
        const QByteArray hash = Base::Sha256::of(picture.png).toHex().left(24);
        const QString name =
            pictureFolder + QLatin1Char('/') + QString::fromLatin1(hash) + QStringLiteral(".png");
        names.append(name);
        if (auto problem = writeFile(name, picture.png)) {
            return problem;
        }
    }
    return std::nullopt;
}

void SplitPage::removeOtherPictures(const QStringList& names) const {
    static const QRegularExpression ours(QStringLiteral("^[0-9a-f]{24}\\.png$"));
    QDir pictures(m_folder.filePath(pictureFolder));
    const QStringList files = pictures.entryList(QDir::Files);
    for (const QString& file : files) {
        if (ours.match(file).hasMatch() &&
            !names.contains(pictureFolder + QLatin1Char('/') + file)) {
            pictures.remove(file);
        }
    }
}

std::optional<Problem> SplitPage::write() {
    if (!mayWrite()) {
        return Problem{Message::OutputForeign,
                       m_folder.path() +
                           QStringLiteral(": there is something else than a page of uicov html; "
                                          "choose another folder with --split")};
    }
    if (!m_folder.mkpath(pictureFolder)) {
        return Problem{Message::OutputNotWritable,
                       m_folder.path() +
                           QStringLiteral(": the folder cannot be made; choose another")};
    }
    QStringList names;
    if (auto problem = writePictures(names)) {
        return problem;
    }
    const HtmlPage page(m_model);
    const PictureLinks links(names);
    const QPair<QString, QByteArray> files[] = {
        {QStringLiteral("page.css"), HtmlPage::styleSheet()},
        {QStringLiteral("page.js"), HtmlPage::script()},
        {QStringLiteral("data.js"), page.dataFile(links)},
        {index, page.indexFile(links)},
    };
    for (const auto& file : files) {
        if (auto problem = writeFile(file.first, file.second)) {
            return problem;
        }
    }
    removeOtherPictures(names);
    return std::nullopt;
}

} // namespace Uicov::Report::Html
