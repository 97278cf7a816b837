// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "report/html/staticpage.h"

#include "base/percentage.h"
#include "report/html/htmltext.h"
#include "report/html/staticfigure.h"

#include <QMap>

#include <algorithm>

namespace Uicov::Report::Html {

using Coverage::CoverageTree;
using Coverage::Events;
using Coverage::GateResult;
using Coverage::State;

namespace {

/** Deeper paths lose their middle: nobody reads them, and they would make the page huge. */
constexpr int maximumSteps = 12;

QString stateCell(const PageModel::Node& node, bool isOfControls) {
    const bool hasState = node.isCountable || node.isUnavailable();
    const QString name = hasState ? wordFor(node.state) : QStringLiteral("ignored");
    const QString word = hasState && isOfControls ? wordForControl(node.state) : name;
    return QStringLiteral("<td class=\"state %1\"><svg class=\"glyph\" aria-hidden=\"true\"><use "
                          "href=\"#glyph-%1\"/></svg> %2</td>")
        .arg(name, word);
}

QString cell(const QString& html) {
    return QStringLiteral("<td>") + html + QStringLiteral("</td>");
}

QString numberCell(int number) {
    return QStringLiteral("<td class=\"number\">%1</td>").arg(number);
}

QString headings(const QStringList& names) {
    // Right-aligned, as what stands below them.
    static const QStringList numbers{
        QStringLiteral("Elements"),     QStringLiteral("Used"),  QStringLiteral("Controls"),
        QStringLiteral("Seen"),         QStringLiteral("Shown"), QStringLiteral("Missed"),
        QStringLiteral("Of them used"), QStringLiteral("Cover"), QStringLiteral("First used here")};
    const QString numberClass = QStringLiteral(" class=\"number\"");
    QString row = QStringLiteral("<thead><tr>");
    for (const QString& name : names) {
        const bool isNumber = numbers.contains(name);
        row += QStringLiteral("<th scope=\"col\"%1>").arg(isNumber ? numberClass : QString()) +
               name + QStringLiteral("</th>");
    }
    return row + QStringLiteral("</tr></thead>\n");
}

QString totalsCells(const CoverageTree::Totals& totals, int precision) {
    return numberCell(totals.elements) + numberCell(totals.used) + numberCell(totals.shown) +
           numberCell(totals.missed) + QStringLiteral("<td class=\"number\">") +
           Base::percentText(totals.used, totals.elements, precision) + QStringLiteral("</td>");
}

QString eventsText(const Events& events, bool happened) {
    QStringList texts;
    for (auto it = events.cbegin(); it != events.cend(); ++it) {
        if (it->isCovered() == happened && !it->isNeverCounted) {
            texts.append(htmlContent(it.key()) +
                         (happened ? QStringLiteral(" %1").arg(it->count) : QString()));
        }
    }
    return texts.join(QStringLiteral(", "));
}

QString apartText(PageModel::Apart apart) {
    switch (apart) {
    case PageModel::Apart::None:
        return {};
    case PageModel::Apart::NeverPlaced:
        return QStringLiteral("its place was never told");
    case PageModel::Apart::ElsewhereThen:
        return QStringLiteral("it was not there when this picture was taken");
    case PageModel::Apart::NoSize:
        return QStringLiteral("it had no size");
    case PageModel::Apart::Outside:
        return QStringLiteral("it lay outside of the picture");
    case PageModel::Apart::Hidden:
        return QStringLiteral("the picture shows something else at its place");
    }
    return {};
}

QString why(PageModel::Apart apart) {
    return apart == PageModel::Apart::None ? QString()
                                           : QStringLiteral("<span class=\"why\">not outlined: ") +
                                                 apartText(apart) + QStringLiteral("</span>");
}

int rank(const PageModel::Node& node) {
    constexpr int unavailable = 3;
    constexpr int leftOut = 4;
    constexpr int unopened = 5;
    return node.isUnavailable()                       ? unavailable
           : node.ignoredBy != Coverage::RuleId::None ? leftOut
           : !node.isCountable                        ? unopened
           : node.state == State::Missed              ? 0
           : node.state == State::Shown               ? 1
                                                      : 2;
}

QString paragraphs(const QStringList& texts, const QString& cssClass) {
    QString html;
    for (const QString& text : texts) {
        html += QStringLiteral("<p class=\"%1\">").arg(cssClass) + htmlContent(text) +
                QStringLiteral("</p>\n");
    }
    return html;
}

} // namespace

StaticPage::StaticPage(const PageModel& model, const PictureLinks& links)
    : m_model(model)
    , m_links(links) {}

QString StaticPage::toString() const {
    QString html = QStringLiteral("<main class=\"static\">\n") + overview() + windows() + rules() +
                   runs() + paragraphs(m_model.notes, QStringLiteral("note"));
    for (int i = 0; i < m_model.windows.size(); ++i) {
        html += window(i);
    }
    return html + QStringLiteral("</main>\n");
}

QString StaticPage::overview() const {
    return QStringLiteral("<h1>") + htmlContent(m_model.title) + QStringLiteral("</h1>\n") +
           paragraphs(m_model.warnings, QStringLiteral("warning")) +
           (m_model.isOfControls ? sumOfControls() : sumOfElements()) + gates();
}

QString StaticPage::sumOfElements() const {
    const CoverageTree::Totals& all = m_model.totals;
    return QStringLiteral("<p class=\"sum\"><strong>%1</strong> of %2 elements were used: %3 used, "
                          "%4 only shown, %5 missed. %6 of %7 events happened.</p>\n")
               .arg(Base::percentText(all.used, all.elements, m_model.precision))
               .arg(all.elements)
               .arg(all.used)
               .arg(all.shown)
               .arg(all.missed)
               .arg(all.coveredEvents)
               .arg(all.events) +
           QStringLiteral("<p>Used: operated, or seen where there is nothing to operate. Shown: "
                          "only seen. Missed: neither.</p>\n");
}

QString StaticPage::sumOfControls() const {
    const CoverageTree::Totals& all = m_model.totals;
    return QStringLiteral("<p class=\"sum\"><strong>%1</strong> of %2 controls were used: %3 used, "
                          "%4 only seen, %5 missed. %6 of %7 views were seen.%8</p>\n")
               .arg(Base::percentText(all.used, all.elements, m_model.precision))
               .arg(all.elements)
               .arg(all.used)
               .arg(all.shown)
               .arg(all.missed)
               .arg(all.seenViews)
               .arg(all.views)
               .arg(all.unavailable > 0 ? QStringLiteral(" %1 were never enabled and are not "
                                                         "counted.")
                                              .arg(all.unavailable)
                                        : QString()) +
           QStringLiteral(
               "<p>Used: a person operated it. Seen: its view was seen, but it was not used. "
               "Missed: its view was never seen.</p>\n");
}

QString StaticPage::gates() const {
    if (m_model.gates.isEmpty()) {
        return {};
    }
    QString html = QStringLiteral("<h2>Gates</h2>\n<ul class=\"gates\">\n");
    for (const GateResult& gate : m_model.gates) {
        html += QStringLiteral("<li class=\"%1\"><strong>%2</strong> ")
                    .arg(gate.isMet ? QStringLiteral("met") : QStringLiteral("unmet"),
                         gate.isMet ? QStringLiteral("met:") : QStringLiteral("not met:")) +
                htmlContent(gate.name) + QStringLiteral(": ") + htmlContent(gate.finding) +
                QStringLiteral("</li>\n");
    }
    return html + QStringLiteral("</ul>\n");
}

QString StaticPage::rules() const {
    if (m_model.rules.isEmpty()) {
        return {};
    }
    QString html = QStringLiteral("<h2>Left out by rules</h2>\n<div class=\"wide\"><table>") +
                   headings({QStringLiteral("Rule"), QStringLiteral("Why"), QStringLiteral("Where"),
                             QStringLiteral("Elements"), QStringLiteral("Of them used")}) +
                   QStringLiteral("<tbody>\n");
    for (const PageModel::Rule& rule : m_model.rules) {
        html += QStringLiteral("<tr>") + cell(htmlContent(rule.text)) +
                cell(htmlContent(rule.why)) + cell(htmlContent(rule.where)) +
                numberCell(rule.elements) + numberCell(rule.usedElements) +
                QStringLiteral("</tr>\n");
    }
    return html + QStringLiteral("</tbody></table></div>\n");
}

QString StaticPage::runs() const {
    QString html =
        QStringLiteral("<h2>Runs</h2>\n<div class=\"wide\"><table>") +
        headings({QStringLiteral("Started"), QStringLiteral("Application"),
                  QStringLiteral("Labels"), QStringLiteral("Contexts"), QStringLiteral("Qt"),
                  QStringLiteral("Complete"), QStringLiteral("Elements"), QStringLiteral("Used"),
                  QStringLiteral("First used here")}) +
        QStringLiteral("<tbody>\n");
    for (const RunHistory::Row& run : m_model.runs) {
        QStringList labels;
        for (auto it = run.labels.cbegin(); it != run.labels.cend(); ++it) {
            labels.append(htmlContent(it.key() + QLatin1Char('=') + it.value()));
        }
        html += QStringLiteral("<tr><td class=\"date\">") + htmlContent(run.started) +
                QStringLiteral("</td>") + cell(htmlContent(run.application)) +
                cell(labels.join(QStringLiteral(", "))) +
                QStringLiteral("<td class=\"contexts\">") +
                htmlContent(run.contexts.join(QStringLiteral(", "))) + QStringLiteral("</td>") +
                cell(htmlContent(run.qtVersion + QLatin1Char(' ') + run.platform)) +
                cell(run.isComplete ? QStringLiteral("yes")
                                    : QStringLiteral("no: it ") + htmlContent(run.partialReason)) +
                numberCell(run.totals.elements) + numberCell(run.totals.used) +
                numberCell(run.firstUsed) + QStringLiteral("</tr>\n");
    }
    return html + QStringLiteral("</tbody></table></div>\n");
}

QString StaticPage::windows() const {
    QString html =
        QStringLiteral("<h2>Windows</h2>\n<div class=\"wide\"><table>") +
        headings({QStringLiteral("Window"), QStringLiteral("Application"),
                  m_model.isOfControls ? QStringLiteral("Controls") : QStringLiteral("Elements"),
                  QStringLiteral("Used"),
                  m_model.isOfControls ? QStringLiteral("Seen") : QStringLiteral("Shown"),
                  QStringLiteral("Missed"), QStringLiteral("Cover")}) +
        QStringLiteral("<tbody>\n");
    for (int i = 0; i < m_model.windows.size(); ++i) {
        const PageModel::Window& window = m_model.windows.at(i);
        html += QStringLiteral("<tr><td><a href=\"#window-%1\">").arg(i) +
                htmlContent(m_model.nodes.at(window.node).step.toString()) +
                QStringLiteral("</a></td>") + cell(htmlContent(window.application)) +
                totalsCells(window.totals, m_model.precision) + QStringLiteral("</tr>\n");
    }
    return html + QStringLiteral("</tbody></table></div>\n");
}

QString StaticPage::window(int index) const {
    const PageModel::Window& window = m_model.windows.at(index);
    const CoverageTree::Totals& totals = window.totals;
    QString html =
        QStringLiteral("<section id=\"window-%1\"><h2>").arg(index) +
        htmlContent(m_model.nodes.at(window.node).step.toString()) +
        (window.application.isEmpty()
             ? QString()
             : QStringLiteral(" <small>of ") + htmlContent(window.application) +
                   QStringLiteral("</small>")) +
        QStringLiteral("</h2>\n<p>") +
        (m_model.isOfControls
             ? QStringLiteral(
                   "%1 of %2 controls used, %3 only seen, %4 missed; %5 of %6 views seen")
                   .arg(totals.used)
                   .arg(totals.elements)
                   .arg(totals.shown)
                   .arg(totals.missed)
                   .arg(totals.seenViews)
                   .arg(totals.views)
             : QStringLiteral("%1 of %2 elements used, %3 only shown, %4 missed")
                   .arg(totals.used)
                   .arg(totals.elements)
                   .arg(totals.shown)
                   .arg(totals.missed)) +
        QStringLiteral("</p>\n");
    for (const PageModel::SurfaceId surface : window.surfaces) {
        html += StaticFigure(m_model, m_links).toString(surface);
    }
    return html + elements(window) + QStringLiteral("</section>\n");
}

/** Why the element is in none of the numbers. */
QString StaticPage::ruleText(const PageModel::Node& node) const {
    if (node.ignoredBy == Coverage::RuleId::None) {
        return {};
    }
    const PageModel::Rule& rule = m_model.rules.at(static_cast<int>(node.ignoredBy));
    return QStringLiteral("<span class=\"why\">left out by ") + htmlContent(rule.where) +
           QStringLiteral(": ") + htmlContent(rule.text) +
           (rule.why.isEmpty() ? QString()
                               : QStringLiteral(", because: ") + htmlContent(rule.why)) +
           QStringLiteral("</span>");
}

QVector<const PageModel::Node*> StaticPage::sortedNodes(const PageModel::Window& window) const {
    QVector<const PageModel::Node*> nodes;
    for (int i = window.node; i <= window.lastNode; ++i) {
        if (m_model.nodes.at(i).isListed() || m_model.nodes.at(i).isUnopenedMenu) {
            nodes.append(&m_model.nodes.at(i));
        }
    }
    std::stable_sort(
        nodes.begin(), nodes.end(),
        [](const PageModel::Node* a, const PageModel::Node* b) { return rank(*a) < rank(*b); });
    return nodes;
}

QString StaticPage::elements(const PageModel::Window& window) const {
    QString html =
        QStringLiteral("<div class=\"wide\"><table>") +
        headings({QStringLiteral("State"), QStringLiteral("Element"), QStringLiteral("Class"),
                  QStringLiteral("Happened"), QStringLiteral("Never")}) +
        QStringLiteral("<tbody>\n");
    const QVector<const PageModel::Node*> nodes = sortedNodes(window);
    for (const PageModel::Node* const node : nodes) {
        html += elementRow(*node);
    }
    return html + QStringLiteral("</tbody></table></div>\n");
}

QString StaticPage::elementRow(const PageModel::Node& node) const {
    if (!node.isListed()) {
        return QStringLiteral("<tr><td>unopened</td>") + cell(name(node) + openerText(node)) +
               QStringLiteral("<td></td><td></td><td>") +
               (node.isView ? QStringLiteral("opened")
                            : QStringLiteral("opened; what is in it is unknown")) +
               QStringLiteral("</td></tr>\n");
    }
    const QString size =
        node.members > 0
            ? QStringLiteral(" ×%1, %2 of them used").arg(node.members).arg(node.usedMembers)
            : QString();
    // Of controls it is told once, by the picture of their view.
    const QString reason = m_model.isOfControls ? QString() : why(node.apart);
    return QStringLiteral("<tr>") + stateCell(node, m_model.isOfControls) +
           cell(name(node) + size + ruleText(node) + reason) + cell(htmlContent(node.className)) +
           cell(eventsText(node.events, true)) + cell(eventsText(node.events, false)) +
           QStringLiteral("</tr>\n");
}

/** What brings up a view that nobody ever opened. */
QString StaticPage::openerText(const PageModel::Node& node) const {
    const int opener = node.isView ? m_model.surface(node.home).opener : -1;
    return opener < 0 ? QString()
                      : QStringLiteral("<span class=\"why\">by ") +
                            htmlContent(m_model.nodes.at(opener).step.toString()) +
                            QStringLiteral(" in ") +
                            htmlContent(m_model.nodes
                                            .at(m_model.surface(m_model.nodes.at(opener).home).node)
                                            .step.toString()) +
                            QStringLiteral("</span>");
}

QString StaticPage::name(const PageModel::Node& node) const {
    QStringList steps;
    for (const PageModel::Node* step = &node; step->above >= 0;
         step = &m_model.nodes.at(step->above)) {
        if (steps.size() == maximumSteps) {
            steps.prepend(QStringLiteral("…"));
            break;
        }
        steps.prepend(htmlContent(step->step.toString()));
    }
    return steps.isEmpty() ? QStringLiteral("the window itself")
                           : steps.join(QStringLiteral(" › "));
}

} // namespace Uicov::Report::Html
