// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QHash>
#include <QRect>

#include <memory>
#include <optional>

namespace Vorsk::UIAbstraction {
class UIElement;
}

namespace Uicov::Runs {

/**
 * Follows, picture by picture, where the controls of a view lay when it was pictured. A control
 * that a newer picture does not show keeps the newest one that does, so that a scrolled list or a
 * wizard can be told as it was. To be told of each picture after the model has all that came before
 * it.
 */
class PicturedPlaces {
public:
    using UIElement = Vorsk::UIAbstraction::UIElement;
    /** PNG; empty where pictures are not kept. Shared by all that lie on it. */
    using Picture = std::shared_ptr<const QByteArray>;

    struct Sight {
        Picture picture;
        /** As the control was told to lie when the picture was taken. */
        QRect place;
    };

    /** A picture of the view was taken, with the controls where the model has them now. */
    void taken(const UIElement& view, const QByteArray& png);

    /** Nothing for what was on no picture of its view. */
    std::optional<Sight> sightOf(const UIElement* control) const;

private:
    QHash<const UIElement*, Sight> m_sights;
};

} // namespace Uicov::Runs
