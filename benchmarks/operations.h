// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

/**
 * Something that happens often, so that its cost matters by itself. Preparing gives the work for a
 * number of items; what the work needs lives as long as the work does, and it can be done once.
 */
struct Operation {
    using Work = std::function<void()>;

    const char* name;
    Work (*prepare)(int items);
};

// All of them, of the classic extension with what both use, and of the controls extension; there
// has to be a QApplication, and a DiscardingHook in place of the host's.
const std::vector<Operation>& operations();
const std::vector<Operation>& controlsOperations();
