// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// Does every operation once at a small and once at a large size, for a tool that counts the
// instructions of measured(). Prints what it does, one line for each call: items, then the name.
//
//   instructions [NAME]     that operation alone
#include "discardinghook.h"
#include "operations.h"

#include <QApplication>

#include <cstdio>
#include <cstring>

extern "C" {

/** What is counted; known to the tool by this name. */
Q_DECL_EXPORT Q_NEVER_INLINE void measured(const Operation::Work& work) {
    work();
}
}

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    const DiscardingHook hook;
    for (const std::vector<Operation>* const all : {&operations(), &controlsOperations()}) {
        for (const Operation& operation : *all) {
            if (argc > 1 && std::strcmp(argv[1], operation.name) != 0) {
                continue;
            }
            for (const int items : {300, 2400}) {
                const Operation::Work work = operation.prepare(items);
                measured(work);
                std::printf("%d %s\n", items, operation.name);
            }
        }
    }
    return 0;
}
