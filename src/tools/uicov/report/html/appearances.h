// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "coverage/coveragetree.h"
#include "report/html/usetimes.h"
#include "report/html/viewsights.h"
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
 * places of what was in it at that time, and of each element its class, text and last picture. Of
 * runs of the controls extension, sights() has the pictures and places. Runs are added in their
 * order, each after it was collected into the tree.
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
        QHash<Coverage::NodeId, QRect> places;
    };

    struct Element {
        QString className;
        QString text;
        /** Empty when there is none. */
        QByteArray png;
        /** True when it had a place at any time. */
        bool hasPlace = false;
        /** It could not be operated at the end of the last run that has it. */
        bool isDisabled = false;
        /** What of the same kind is made again and again is called; empty for anything else. */
        QString group;
    };

    /** The one with which runs are collected. */
    void setNameRules(const Runs::NameRules& rules) { m_nameRules = rules; }

    /** Only uses in contexts of which it is true have times; none means all. */
    void setContexts(const std::function<bool(const QString&)>& isWanted) {
        m_times.setContexts(isWanted);
    }

    /** @param tree has the run already */
    void add(const Runs::Run& run, const Coverage::CoverageTree& tree);

    /** Of a window or menu; null when it was never met. */
    const Surface* surface(Coverage::NodeId node) const;
    /** Of any node; empty when it was never met. */
    Element element(Coverage::NodeId node) const { return m_elements.value(node); }

    const ViewSights& sights() const { return m_sights; }
    const UseTimes& times() const { return m_times; }

    /** The window that the window belongs to, as a dialog does; None when it is one of its own. */
    Coverage::NodeId owner(Coverage::NodeId window) const {
        return m_owners.value(window, Coverage::NodeId::None);
    }

    /** The window, menu or other view that the node is drawn on: the nearest at or above it. */
    static Coverage::NodeId surfaceOf(const Coverage::CoverageTree& tree, Coverage::NodeId node);

private:
    void addSurfaces(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
                     const std::vector<Coverage::NodeId>& nodes);
    void addControls(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
                     const std::vector<Coverage::NodeId>& nodes);
    void addOwners(const Runs::Run& run, const std::vector<Runs::KeyWalk::Place>& places,
                   const std::vector<Coverage::NodeId>& nodes);
    static void keep(Coverage::NodeId node, const Surface& candidate,
                     QHash<Coverage::NodeId, Surface>& kept);

    Runs::NameRules m_nameRules;
    QHash<Coverage::NodeId, Surface> m_surfaces;
    QHash<Coverage::NodeId, Element> m_elements;
    /** Windows by the windows that belong to them. */
    QHash<Coverage::NodeId, Coverage::NodeId> m_owners;
    ViewSights m_sights;
    UseTimes m_times;
};

} // namespace Uicov::Report::Html
