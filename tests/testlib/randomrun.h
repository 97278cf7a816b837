// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/run.h"

#include <QRandomGenerator>
#include <QStringList>

namespace TestLib {

/**
 * A sound run of any shape: several windows, elements below two others or below themselves, null
 * and empty texts, places up to the edge of int, pictures, hits in several contexts. Which run it
 * is called is random too.
 */
Uicov::Runs::Run randomRun(QRandomGenerator& random, int maximumElements = 30);

/** A UUID from a small set, so that runs meet. */
QString uuid(int number);

/** All that is in a run as lines, in an order of their own. */
QStringList printed(const Uicov::Runs::Run& run);

} // namespace TestLib
