// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/htmlpage.h"

#include "base/sha256.h"
#include "report/html/htmltext.h"
#include "report/html/pagejson.h"
#include "report/html/staticpage.h"

#include <QFile>
#include <QHash>
#include <QJsonArray>

// Outside of every namespace, as it has to be in a static library.
static void loadSources() {
    Q_INIT_RESOURCE(page);
}

namespace Uicov::Report::Html {

namespace {

constexpr char mark[] = R"(<meta name="generator" content="uicov html">)";

/** In the order in which they need one another. */
constexpr const char* scripts[] = {"namespace.js", "model.js",   "text.js",      "filter.js",
                                   "address.js",   "picture.js", "stage.js",     "list.js",
                                   "panel.js",     "cards.js",   "timeline.js",  "facets.js",
                                   "overview.js",  "window.js",  "shortcuts.js", "main.js"};

QByteArray source(const char* name) {
    loadSources();
    QFile file(QStringLiteral(":/uicov/page/") + QLatin1String(name));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    Q_ASSERT(isOpen);
    return isOpen ? file.readAll() : QByteArray();
}

QByteArray hashSource(const QByteArray& text) {
    return "'sha256-" + Base::Sha256::of(text).toBase64() + "'";
}

QByteArray policy(const QByteArray& scriptSource, const QByteArray& styleSource,
                  const QByteArray& imageSource) {
    return "default-src 'none'; script-src " + scriptSource + "; style-src " + styleSource +
           "; img-src " + imageSource + "; base-uri 'none'; form-action 'none'";
}

} // namespace

HtmlPage::HtmlPage(const PageModel& model)
    : m_model(model) {}

QByteArray HtmlPage::styleSheet() {
    return source("page.css");
}

QByteArray HtmlPage::script() {
    QByteArray text;
    for (const char* const name : scripts) {
        text += source(name);
    }
    return text;
}

QByteArray HtmlPage::data(const PictureLinks& links) const {
    QJsonObject object = pageJson(m_model);
    if (links.areFiles()) {
        object.insert(QStringLiteral("files"), QJsonArray::fromStringList(links.files()));
    }
    return scriptJson(object);
}

/** In one go, so that nothing in a value is taken for a place to fill. */
QByteArray HtmlPage::fill(const QHash<QByteArray, QByteArray>& values) const {
    const QByteArray shell = source("shell.html");
    QByteArray page;
    int position = 0;
    while (position < shell.size()) {
        const int begin = shell.indexOf("{{", position);
        const int end = begin < 0 ? -1 : shell.indexOf("}}", begin);
        if (end < 0) {
            break;
        }
        page += shell.mid(position, begin - position);
        page += values.value(shell.mid(begin + 2, end - begin - 2));
        position = end + 2;
    }
    return page + shell.mid(position);
}

QByteArray HtmlPage::singleFile() const {
    const PictureLinks links;
    const QByteArray style = styleSheet();
    const QByteArray code = script();
    return fill(
        {{"mark", mark},
         {"policy", policy(hashSource(code), hashSource(style), "data:")},
         {"title", htmlAttribute(m_model.title).toUtf8()},
         {"style", "<style>" + style + "</style>"},
         {"static", StaticPage(m_model, links).toString().toUtf8()},
         {"data", R"(<script type="application/json" id="data">)" + data(links) + "</script>"},
         {"script", "<script>" + code + "</script>"},
         {"pictures", PictureLinks::library(m_model)}});
}

QByteArray HtmlPage::indexFile(const PictureLinks& links) const {
    return fill({{"mark", mark},
                 {"policy", policy("'self'", "'self'", "'self'")},
                 {"title", htmlAttribute(m_model.title).toUtf8()},
                 {"style", R"(<link rel="stylesheet" href="page.css">)"},
                 {"static", StaticPage(m_model, links).toString().toUtf8()},
                 {"data", "<script src=\"data.js\"></script>"},
                 {"script", "<script src=\"page.js\"></script>"}});
}

QByteArray HtmlPage::dataFile(const PictureLinks& links) const {
    return "globalThis.uicovData = " + data(links) + ";\n";
}

bool HtmlPage::isPage(const QByteArray& beginning) {
    return beginning.contains(mark);
}

} // namespace Uicov::Report::Html
