// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "panelwidgets/gauge.h"

#include <QMouseEvent>
#include <QPainter>

namespace Panel {

Gauge::Gauge(QWidget* parent)
    : QWidget(parent) {
    setToolTip(tr("Water pressure"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize Gauge::sizeHint() const {
    return {120, 60};
}

void Gauge::mousePressEvent(QMouseEvent* event) {
    event->accept();
    Q_EMIT reset();
}

void Gauge::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().base());
    painter.fillRect(0, 0, width() * 2 / 3, height(), palette().highlight());
    painter.drawText(rect(), Qt::AlignCenter, tr("1.4 bar"));
}

} // namespace Panel
