// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

// What a window's picture costs: its encoding, time and size, beside what Qt's own writer does; and
// how the whole is shared among grabbing, encoding and appending to a recording.
#include "recordstream/pngwriter.h"
#include "series.h"
#include "vorskhook/recordingwriter.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>
#include <QPushButton>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

QWidget* makeControl(int number) {
    const QString text = QStringLiteral("Control %1").arg(number);
    switch (number % 4) {
    case 0:
        return new QPushButton(text);
    case 1:
        return new QCheckBox(text);
    case 2:
        return new QLineEdit(text);
    default:
        return new QLabel(text);
    }
}

/** A window full of controls. */
class Window {
public:
    explicit Window(QSize size)
        : m_window(QStringLiteral("Everything"))
        , m_layout(&m_window) {
        const int columns = std::max(1, size.width() / 130);
        const int rows = std::max(1, size.height() / 35);
        for (int i = 0; i < columns * rows; ++i) {
            m_layout.addWidget(makeControl(i), i / columns, i % columns);
        }
        m_window.resize(size);
    }

    QImage grab() { return m_window.grab(QRect(QPoint(), m_window.size())).toImage(); }

private:
    QGroupBox m_window;
    QGridLayout m_layout;
};

double medianMilliseconds(const std::function<void()>& work) {
    constexpr int rounds = 9;
    std::vector<double> times;
    times.reserve(rounds);
    for (int i = 0; i < rounds; ++i) {
        times.push_back(static_cast<double>(nanoseconds(work)) / 1e6);
    }
    std::nth_element(times.begin(), times.begin() + rounds / 2, times.end());
    return times[rounds / 2];
}

QByteArray qtPng(const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return png;
}

struct Times {
    double grab;
    double encode;
    double append;
};

/** What becomes of a picture, each step by itself; one of the recording's messages each time. */
Times measureSteps(Window& window, const QImage& image, VorskHost::RecordingWriter& recording) {
    constexpr int imageChanged = 5;
    Times times{};
    times.grab = medianMilliseconds([&] { window.grab(); });
    QByteArray png;
    times.encode = medianMilliseconds([&] { png = Vorsk::RecordStream::fastPng(image); });
    const QString name = QStringLiteral("uiCoverageData");
    times.append = medianMilliseconds([&] {
        if (!recording.appendMessage(1, name, {0, 1, imageChanged, png})) {
            qFatal("the recording ended");
        }
    });
    return times;
}

QJsonObject printed(QSize size, const Times& times) {
    const double all = (times.grab + times.encode + times.append) / 100;
    std::printf("%5d x %-5d %9.2f ms %3.0f %% %9.2f ms %3.0f %% %9.3f ms %3.0f %%\n", size.width(),
                size.height(), times.grab, times.grab / all, times.encode, times.encode / all,
                times.append, times.append / all);
    return {{QStringLiteral("width"), size.width()},
            {QStringLiteral("height"), size.height()},
            {QStringLiteral("grabMilliseconds"), times.grab},
            {QStringLiteral("encodeMilliseconds"), times.encode},
            {QStringLiteral("appendMilliseconds"), times.append}};
}

QJsonObject measureEncoding(QSize size, const QImage& image) {
    QByteArray ours;
    QByteArray theirs;
    const double ourTime = medianMilliseconds([&] { ours = Vorsk::RecordStream::fastPng(image); });
    const double theirTime = medianMilliseconds([&] { theirs = qtPng(image); });
    const bool isEqual = QImage::fromData(ours, "PNG") == QImage::fromData(theirs, "PNG");
    std::printf("%5d x %-5d %9.2f ms %9.2f ms %6.2f x %9d B %9d B %6.2f x %s\n", size.width(),
                size.height(), theirTime, ourTime, ourTime / theirTime, theirs.size(), ours.size(),
                static_cast<double>(ours.size()) / theirs.size(), isEqual ? "equal" : "DIFFERENT");
    return {{QStringLiteral("width"), size.width()},
            {QStringLiteral("height"), size.height()},
            {QStringLiteral("qtMilliseconds"), theirTime},
            {QStringLiteral("milliseconds"), ourTime},
            {QStringLiteral("qtBytes"), theirs.size()},
            {QStringLiteral("bytes"), ours.size()},
            {QStringLiteral("equal"), isEqual}};
}

} // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    const std::vector<QSize> sizes{QSize(80, 24), QSize(400, 300), QSize(1280, 800),
                                   QSize(2560, 1440)};
    std::printf("%13s %12s %12s %8s %11s %11s\n", "window", "Qt", "ours", "time", "Qt", "ours");
    QJsonArray results;
    for (const QSize size : sizes) {
        results.append(measureEncoding(size, Window(size).grab()));
    }
    const QTemporaryDir folder;
    VorskHost::RecordingWriter recording;
    if (!recording.open(folder.filePath(QStringLiteral("pictures.uirec")), {})) {
        return 1;
    }
    std::printf("\n%13s %18s %18s %18s\n", "window", "grab", "encode", "append");
    for (const QSize size : sizes) {
        Window window(size);
        results.append(printed(size, measureSteps(window, window.grab(), recording)));
    }
    const QStringList arguments = QCoreApplication::arguments();
    const int option = arguments.indexOf(QStringLiteral("--json"));
    if (option < 0 || option + 1 >= arguments.size()) {
        return 0;
    }
    QFile file(arguments.at(option + 1));
    return file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(results).toJson()) > 0 ? 0
                                                                                              : 1;
}
