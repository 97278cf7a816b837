// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include "run/elementkinds.h"
#include "run/run.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <optional>

/** Makes runs of the controls extension with pictures. */
struct ControlsRun {
    Uicov::Runs::Run run;

    ControlsRun() {
        run.extension = Uicov::Runs::controlsExtension();
        run.contexts = QStringList{QString()};
    }

    /** Stripes as wide as that: pictures of different ones have nothing in common. */
    static QByteArray striped(const QSize& size, int stripe) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        for (int x = 0; x < size.width(); x += 2 * stripe) {
            painter.fillRect(x, 0, stripe, size.height(), Qt::black);
        }
        painter.end();
        return png(image);
    }

    static QByteArray png(const QImage& image) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, "PNG");
        return bytes;
    }

    Uicov::Runs::RunElement& element(int index) {
        return run.elements[static_cast<std::size_t>(index)];
    }

    /** @param picture its own bytes do as its name */
    int add(int parent, const char* type, const char* text,
            const std::optional<QRect>& place = std::nullopt,
            const QByteArray& picture = QByteArray()) {
        Uicov::Runs::RunElement added;
        added.type = QLatin1String(type);
        added.text = QString::fromUtf8(text);
        const bool isView = Uicov::Runs::isViewType(added.type);
        added.isWindowNode = parent < 0;
        added.events = QStringList{isView ? QStringLiteral("seen") : QStringLiteral("clicked")};
        added.place = place;
        added.picture = picture;
        added.parent = parent;
        added.wasSeen = true;
        if (!picture.isEmpty()) {
            run.pictures.insert(picture, picture);
        }
        if (isView) {
            added.hits.append({QStringLiteral("seen"), 0, 1});
        }
        const int index = static_cast<int>(run.elements.size());
        run.elements.push_back(added);
        if (parent >= 0) {
            element(parent).children.append(index);
        }
        return index;
    }

    void use(int index) { element(index).hits.append({QStringLiteral("clicked"), 0, 1}); }

    void set(int index, const QString& attribute, const char* value) {
        element(index).attributes.insert(attribute, QString::fromLatin1(value));
    }
};
