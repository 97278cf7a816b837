// What encoding a window's picture costs: time and size, beside what Qt's own writer does.
#include "series.h"
#include "uiabstraction/pngwriter.h"

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

/** A window full of controls, as it is grabbed. */
QImage grabWindow(QSize size) {
    QGroupBox window(QStringLiteral("Everything"));
    QGridLayout layout(&window);
    const int columns = std::max(1, size.width() / 130);
    const int rows = std::max(1, size.height() / 35);
    for (int i = 0; i < columns * rows; ++i) {
        layout.addWidget(makeControl(i), i / columns, i % columns);
    }
    window.resize(size);
    return window.grab(QRect(QPoint(), size)).toImage();
}

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

QJsonObject measure(QSize size) {
    const QImage image = grabWindow(size);
    QByteArray ours;
    QByteArray theirs;
    const double ourTime = medianMilliseconds([&] { ours = Vorsk::UIAbstraction::fastPng(image); });
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
    std::printf("%13s %12s %12s %8s %11s %11s\n", "window", "Qt", "ours", "time", "Qt", "ours");
    QJsonArray results;
    for (const QSize size : {QSize(80, 24), QSize(400, 300), QSize(1280, 800), QSize(2560, 1440)}) {
        results.append(measure(size));
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
