// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

/** What is said of several measurements of the same thing. */
struct Summary {
    double median = 0;
    double lowerQuartile = 0;
    double upperQuartile = 0;
};

/** All zero when there are no values. */
Summary summarise(std::vector<double> values);
