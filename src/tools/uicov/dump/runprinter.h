// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QVector>

namespace Uicov::Runs {
struct Run;
}

// A run of a data file, everything in it but the pixels of pictures, line by line.
namespace Uicov::Dump {

/**
 * For people: "run ...", then what belongs to it: "label", "context", "warning", "element" and,
 * behind each element, "hit". Elements are called #1, #2, ... in their order.
 */
QStringList runLines(const Runs::Run& run);

/** For tools: the run, then each of its elements with what happened to it. */
QVector<QJsonObject> runObjects(const Runs::Run& run);

} // namespace Uicov::Dump
