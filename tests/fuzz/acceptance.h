// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

namespace Fuzz {

/** How many inputs a target could use: seeds that are all refused at once would test nothing. */
class Acceptance {
public:
    static void note() { ++s_count; }
    static int count() { return s_count; }

private:
    static inline int s_count = 0;
};

} // namespace Fuzz
