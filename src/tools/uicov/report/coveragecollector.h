#pragma once

#include "report/coveragetree.h"

namespace Uicov::Store {
struct Run;
}

namespace Uicov::Report {

/**
 * Adds what runs show to a coverage tree: finds the windows, and below each the elements that
 * count, each once however many parents list it.
 */
class CoverageCollector {
public:
    /** @param tree what is added to; not owned, outlives this */
    explicit CoverageCollector(CoverageTree& tree);

    void collect(const Store::Run& run);

private:
    CoverageTree& m_tree;
};

} // namespace Uicov::Report
