// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "statistics.h"

#include <algorithm>

namespace {

/** The value at that part of the sorted ones, between two of them in proportion. */
double quantile(const std::vector<double>& sorted, double part) {
    const double place = part * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<std::size_t>(place);
    const std::size_t above = std::min(below + 1, sorted.size() - 1);
    const double rest = place - static_cast<double>(below);
    return sorted[below] * (1 - rest) + sorted[above] * rest;
}

} // namespace

Summary summarise(std::vector<double> values) {
    if (values.empty()) {
        return {};
    }
    std::sort(values.begin(), values.end());
    return {quantile(values, 0.5), quantile(values, 0.25), quantile(values, 0.75)};
}
