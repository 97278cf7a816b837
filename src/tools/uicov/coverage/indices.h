// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHash>

// What the numbers of a coverage tree count. Each is a type of its own, so that the compiler
// refuses one in the place of another; None is where there is none.
namespace Uicov::Coverage {

/** A node of a CoverageTree. */
enum class NodeId : int { None = -1 };

/** A context of a CoverageTree; a run numbers its own in another way. */
enum class ContextId : int { None = -1 };

/** An ignore rule of a Configuration. */
enum class RuleId : int { None = -1 };

/** A run of a CoverageResult, in the order in which they were added. */
enum class RunId : int { None = -1 };

/** A node that is a window: it can stand wherever a node is wanted, but no other node for it. */
class WindowId {
public:
    constexpr WindowId() = default;
    explicit constexpr WindowId(NodeId node)
        : m_node(node) {}

    // NOLINTNEXTLINE(google-explicit-constructor): a window is a node
    constexpr operator NodeId() const { return m_node; }

private:
    NodeId m_node = NodeId::None;
};

inline uint qHash(NodeId node, uint seed = 0) {
    return ::qHash(static_cast<int>(node), seed);
}

inline uint qHash(ContextId context, uint seed = 0) {
    return ::qHash(static_cast<int>(context), seed);
}

} // namespace Uicov::Coverage
