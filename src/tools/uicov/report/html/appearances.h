#pragma once

#include "coverage/coveragetree.h"
#include "run/keywalk.h"

#include <QByteArray>
#include <QHash>
#include <QRect>
#include <QString>

#include <vector>

namespace Uicov::Runs {
struct Run;
}

namespace Uicov::Report::Html {

/**
 * How the nodes of a coverage tree looked: of each window and menu the newest picture with the
 * places of what was in it at that time, and of each element its class, text and last picture. Runs
 * are added in their order, each after it was collected into the tree.
 */
class Appearances {
public:
    /** A window or menu as it once was. */
    struct Surface {
        /** Empty when no picture was recorded; places are known all the same. */
        QByteArray png;
        /** What the picture shows, in the coordinates of the places; null when nobody knows. */
        QRect bounds;
        /** By node; also those that lie outside. */
        QHash<int, QRect> places;
    };

    struct Element {
        QString className;
        QString text;
        /** Empty when there is none. */
        QByteArray png;
        /** True when it had a place at any time. */
        bool hasPlace = false;
    };

    /** The one with which runs are collected. */
    void setLabelRule(const Runs::KeyWalk::LabelRule& rule) { m_labelRule = rule; }

    /** @param tree has the run already */
    void add(const Runs::Run& run, const Coverage::CoverageTree& tree);

    /** Of a window or menu; null when it was never met. */
    const Surface* surface(int node) const;
    /** Of any node; empty when it was never met. */
    Element element(int node) const { return m_elements.value(node); }

    /** The window that the window belongs to, as a dialog does; -1 when it is one of its own. */
    int owner(int window) const { return m_owners.value(window, -1); }

    /** The window or menu that the node is drawn on: the nearest at or above it. */
    static int surfaceOf(const Coverage::CoverageTree& tree, int node);

private:
    void addOwners(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
                   const std::vector<int>& nodes);
    static void keep(int node, const Surface& candidate, QHash<int, Surface>& kept);

    Runs::KeyWalk::LabelRule m_labelRule;
    QHash<int, Surface> m_surfaces;
    QHash<int, Element> m_elements;
    /** Windows by the windows that belong to them. */
    QHash<int, int> m_owners;
};

} // namespace Uicov::Report::Html
