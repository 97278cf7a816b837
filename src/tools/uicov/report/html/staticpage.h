// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "report/html/pagemodel.h"
#include "report/html/picturelinks.h"

#include <QString>

namespace Uicov::Report::Html {

/**
 * The whole report as plain HTML, for browsers that run no scripts and for paper: the overview,
 * then each window with its pictures and its elements. The markup is concatenated: Qt's XML writer
 * would take a call for each tag and attribute, and gives nothing that htmltext.h does not.
 */
class StaticPage {
public:
    /** The model outlives this. */
    StaticPage(const PageModel& model, const PictureLinks& links);

    QString toString() const;

private:
    QString overview() const;
    QString sumOfElements() const;
    QString sumOfControls() const;
    QString gates() const;
    QString rules() const;
    QString runs() const;
    QString windows() const;
    QString window(int index) const;
    QString elements(const PageModel::Window& window) const;
    QString elementRow(const PageModel::Node& node) const;
    QString ruleText(const PageModel::Node& node) const;
    QString openerText(const PageModel::Node& node) const;
    QString name(const PageModel::Node& node) const;
    QVector<const PageModel::Node*> sortedNodes(const PageModel::Window& window) const;

    const PageModel& m_model;
    PictureLinks m_links;
};

} // namespace Uicov::Report::Html
