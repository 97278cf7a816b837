// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/spelling.h"

#include <algorithm>
#include <numeric>
#include <vector>

namespace Uicov::Base {

int editDistance(const QString& written, const QString& known) {
    std::vector<int> row(static_cast<std::size_t>(known.size()) + 1);
    std::iota(row.begin(), row.end(), 0);
    for (int line = 0; line < written.size(); ++line) {
        int diagonal = row[0];
        row[0] = line + 1;
        for (int column = 0; column < known.size(); ++column) {
            const auto index = static_cast<std::size_t>(column);
            const bool isEqual = written.at(line).toCaseFolded() == known.at(column).toCaseFolded();
            const int replaced = diagonal + (isEqual ? 0 : 1);
            diagonal = row[index + 1];
            row[index + 1] = std::min({replaced, row[index] + 1, row[index + 1] + 1});
        }
    }
    return row.back();
}

QString nearestSpelling(const QString& written, const QStringList& choices) {
    const auto it =
        std::min_element(choices.cbegin(), choices.cend(), [&](const auto& one, const auto& other) {
            return editDistance(written, one) < editDistance(written, other);
        });
    return it == choices.cend() ? QString() : *it;
}

} // namespace Uicov::Base
