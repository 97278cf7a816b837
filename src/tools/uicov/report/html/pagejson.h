#pragma once

#include <QJsonObject>

namespace Uicov::Report::Html {

struct PageModel;

/** A page's model as its scripts read it; page/model.js names the members. */
namespace PageJson {

QJsonObject of(const PageModel& model);

} // namespace PageJson

} // namespace Uicov::Report::Html
