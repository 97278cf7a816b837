// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>

// A page's model as its scripts read it; page/model.js names the members.
namespace Uicov::Report::Html {

struct PageModel;

QJsonObject pageJson(const PageModel& model);

} // namespace Uicov::Report::Html
