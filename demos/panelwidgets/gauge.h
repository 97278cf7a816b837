// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

namespace Panel {

/** Shows the pressure of the water. A press on it resets the highest value. */
class Gauge : public QWidget {
    Q_OBJECT

public:
    explicit Gauge(QWidget* parent = nullptr);

    QSize sizeHint() const override;

Q_SIGNALS:
    void reset();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace Panel
