// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/picturedplaces.h"

#include "run/elementkinds.h"
#include "run/viewcontents.h"
#include "uiabstraction/uielement.h"

namespace Uicov::Runs {

using Vorsk::UIAbstraction::UIElement;

void PicturedPlaces::taken(const UIElement& view, const QByteArray& png) {
    const QRect shown = view.geometry().rect();
    const auto picture = std::make_shared<const QByteArray>(png);
    const QVector<const UIElement*> controls = controlsOf(view);
    for (const UIElement* control : controls) {
        const QRect place = control->geometry().rect();
        const bool isHidden = control->attribute(AttributeName::hidden()) == QLatin1String("true");
        if (control->geometry().isValid() && !isHidden && place.intersects(shown)) {
            m_sights.insert(control, {picture, place});
        }
    }
}

std::optional<PicturedPlaces::Sight> PicturedPlaces::sightOf(const UIElement* control) const {
    const auto sight = m_sights.constFind(control);
    return sight == m_sights.cend() ? std::nullopt : std::make_optional(*sight);
}

} // namespace Uicov::Runs
