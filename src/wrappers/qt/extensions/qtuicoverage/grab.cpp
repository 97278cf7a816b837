#include "grab.h"

#include "uiabstraction/elementstream.h"

#include <QPixmap>
#include <QRect>
#include <QWidget>

namespace Vorsk {
namespace UICoverage {

QImage grabWidget(QWidget* widget, const QRect& rectangle) {
    const QSize size = rectangle.size().isValid() ? rectangle.size() : widget->size();
    const qreal ratio = widget->devicePixelRatioF();
    const qreal pixels = size.width() * ratio * size.height() * ratio;
    if (pixels > static_cast<qreal>(UIAbstraction::maximumImagePixels)) {
        return {};
    }
    return widget->grab(rectangle).toImage();
}

} // namespace UICoverage
} // namespace Vorsk
