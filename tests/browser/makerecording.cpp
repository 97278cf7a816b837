// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/recordingbuilder.h"
#include "uiabstraction/elementgeometry.h"

#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QPainter>

#include <cstdio>
#include <map>
#include <string>

/**
 * Makes the recordings that the tests of the page need and that no application would give them:
 * "colours", in which each element is a patch of the colour that it is called by; "hostile", whose
 * names are printed as JSON; "large"; and "controls", as large, of the controls extension.
 */
namespace {

using TestLib::RecordingBuilder;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::UIElement;
using Vorsk::UIAbstraction::UIEvent;

const QStringList clickable{QStringLiteral("clicked"), QStringLiteral("shown")};

void use(UIElement* element, const char* event) {
    element->increaseUsage(UIEvent(QLatin1String(event)));
}

UIElement* addWindow(RecordingBuilder& recording, UIElement* parent, const char* type,
                     const QString& title, const QRect& place, const QImage& picture) {
    UIElement* const window =
        recording.add(parent, QLatin1String(type),
                      parent == nullptr ? QStringLiteral("QMainWindow") : QStringLiteral("QDialog"),
                      title, {QStringLiteral("shown")});
    window->setWindowNode(true);
    window->setGeometry(ElementGeometry(place, true));
    window->setImage(picture);
    use(window, "shown");
    return window;
}

/** A button called by its colour; the state goes round with the number of the button. */
UIElement* addPatch(RecordingBuilder& recording, UIElement* parent, const char* type,
                    const QColor& colour, const QRect& place, int number) {
    UIElement* const patch =
        recording.add(parent, QLatin1String(type),
                      QLatin1String(qstrcmp(type, "MenuItem") == 0 ? "QAction" : "QPushButton"),
                      colour.name(), clickable);
    patch->setGeometry(ElementGeometry(place, true));
    if (number % 3 > 0) {
        use(patch, "shown");
    }
    if (number % 3 > 1) {
        use(patch, "clicked");
    }
    return patch;
}

QColor colourOf(int number) {
    return QColor::fromHsv(number * 47 % 360, 150 + number * 31 % 100, 90 + number * 37 % 160);
}

/** Something that looks like nothing else: what an element on another page of a tab might show. */
QImage chequered(const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            image.setPixelColor(x, y, (x / 3 + y / 5) % 2 == 0 ? Qt::black : Qt::white);
        }
    }
    return image;
}

/** Whatever is drawn is remembered in the order in which it is added. */
struct Scene {
    RecordingBuilder& recording;
    QImage picture;
    double scale = 1;
    int number = 0;

    UIElement* patch(UIElement* parent, const char* type, const QRect& place,
                     const QPoint& origin = QPoint()) {
        const QColor colour = colourOf(number);
        const QRect drawn = place.translated(origin);
        QPainter painter(&picture);
        painter.scale(scale, scale);
        painter.fillRect(drawn, colour);
        painter.end();
        UIElement* const element = addPatch(recording, parent, type, colour, place, number);
        ++number;
        return element;
    }
};

void addMenu(Scene& scene, UIElement* opener) {
    UIElement* const menu =
        scene.recording.add(opener, QStringLiteral("Menu"), QStringLiteral("QMenu"), QString(),
                            {QStringLiteral("shown")});
    menu->setWindowNode(true);
    menu->setGeometry(ElementGeometry(QRect(0, 0, 120, 60), true));
    use(menu, "shown");
    Scene inside{scene.recording, QImage(120, 60, QImage::Format_RGB32), 1, scene.number};
    inside.picture.fill(Qt::white);
    inside.patch(menu, "MenuItem", QRect(0, 0, 120, 30));
    inside.patch(menu, "MenuItem", QRect(0, 30, 120, 30));
    menu->setImage(inside.picture);
    scene.number = inside.number;
}

void addApart(RecordingBuilder& recording, UIElement* window) {
    const auto button = [&](const char* text) {
        return recording.add(window, QStringLiteral("Button"), QStringLiteral("QPushButton"),
                             QLatin1String(text), clickable);
    };
    button("without place");
    button("outside")->setGeometry(ElementGeometry(QRect(500, 10, 50, 20), true));
    button("empty")->setGeometry(ElementGeometry(QRect(20, 20, 0, 0), true));
    UIElement* const hidden = button("hidden");
    hidden->setGeometry(ElementGeometry(QRect(210, 220, 60, 40), true));
    hidden->setImage(chequered(QSize(60, 40)));
}

void fillColours(RecordingBuilder& recording) {
    recording.addProcess({{QStringLiteral("application"), QStringLiteral("palette")}});
    Scene scene{recording, QImage(400, 300, QImage::Format_RGB32)};
    scene.picture.fill(Qt::lightGray);
    UIElement* const window = addWindow(recording, nullptr, "Window", QStringLiteral("Palette"),
                                        QRect(0, 0, 400, 300), scene.picture);
    UIElement* const bar =
        recording.add(window, QStringLiteral("MenuBar"), QStringLiteral("QMenuBar"), QString(),
                      {QStringLiteral("shown")});
    const QPoint origin(10, 20);
    bar->setGeometry(ElementGeometry(QRect(origin, QSize(200, 30)), true));
    use(bar, "shown");
    addMenu(scene, scene.patch(bar, "MenuItem", QRect(0, 0, 60, 30), origin));
    scene.patch(bar, "MenuItem", QRect(70, 0, 60, 30), origin);
    UIElement* const unopened =
        recording.add(scene.patch(bar, "MenuItem", QRect(135, 0, 60, 30), origin),
                      QStringLiteral("Menu"), QStringLiteral("QMenu"), QString(), {});
    unopened->setTransparentNode(true);
    for (int i = 0; i < 6; ++i) {
        scene.patch(window, "Button", QRect(20 + i % 2 * 110, 70 + i / 2 * 40, 90, 28 - i));
    }
    scene.patch(window, "Button", QRect(360, 260, 80, 80)); // half of it is cut off
    addApart(recording, window);
    window->setImage(scene.picture);

    // As Qt Quick has its popups: everything in the coordinates of the scene.
    Scene popup{recording, QImage(200, 100, QImage::Format_RGB32), 1, scene.number};
    popup.picture.fill(Qt::darkGray);
    const QPoint corner(40, 50);
    UIElement* const dialog = addWindow(recording, window, "Dialog", QStringLiteral("Popup"),
                                        QRect(corner, QSize(200, 100)), popup.picture);
    popup.patch(dialog, "Button", QRect(60, 70, 80, 30), -corner);
    popup.patch(dialog, "Button", QRect(160, 110, 70, 30), -corner);
    dialog->setImage(popup.picture);

    // A screen with two pixels for each point.
    Scene dense{recording, QImage(400, 240, QImage::Format_RGB32), 2, popup.number};
    dense.picture.fill(Qt::white);
    UIElement* const sharp = addWindow(recording, nullptr, "Window", QStringLiteral("Sharp"),
                                       QRect(0, 0, 200, 120), dense.picture);
    dense.patch(sharp, "Button", QRect(10, 10, 60, 30));
    dense.patch(sharp, "Button", QRect(90, 70, 100, 40));
    sharp->setImage(dense.picture);

    UIElement* const blind =
        recording.add(nullptr, QStringLiteral("Window"), QStringLiteral("QMainWindow"),
                      QStringLiteral("Blind"), {QStringLiteral("shown")});
    blind->setWindowNode(true);
    blind->setGeometry(ElementGeometry(QRect(0, 0, 300, 100), true));
    addPatch(recording, blind, "Button", colourOf(dense.number), QRect(10, 10, 100, 40), 0);
    recording.addEnd();
}

QStringList hostileNames() {
    return {QStringLiteral("<script>globalThis.hacked = 1</script>"),
            QStringLiteral("</script><img src=x onerror=\"globalThis.hacked = 2\">"),
            QStringLiteral("</noscript><b>bold</b>"),
            QStringLiteral("<!-- --> ]]> <![CDATA["),
            QStringLiteral("\"double\" 'single' `back` &amp; &lt; \\ / ${1+1} {{title}}"),
            QStringLiteral("javascript:globalThis.hacked=3"),
            QStringLiteral("* ? [a-z] key"),
            QString::fromUtf8("שלום עולם"),
            QString::fromUtf8("مرحبا (1) abc"),
            QString::fromUtf8("evil \u202e txt.exe"),
            QString::fromUtf8("zero\u200bwidth\u2028line"),
            QStringLiteral("a\tb\nc\x01"
                           "d\x7f"
                           "e"),
            QString(QChar(0xd800)) + QStringLiteral("half"),
            QString::fromUtf8("日本語 🙂 ñ"),
            QStringLiteral("long ").repeated(2000),
            QStringLiteral("x").repeated(5000)};
}

void fillHostile(RecordingBuilder& recording) {
    const QStringList names = hostileNames();
    recording.addProcess({{QStringLiteral("application"), names.at(1)},
                          {QStringLiteral("platform"), names.at(0)},
                          {QStringLiteral("locale"), names.at(2)},
                          {QStringLiteral("label.") + names.at(0), names.at(1)}});
    recording.addMark(names.at(1));
    QImage picture(400, 500, QImage::Format_RGB32);
    picture.fill(Qt::white);
    UIElement* const window =
        addWindow(recording, nullptr, "Window", names.at(0), QRect(0, 0, 400, 500), picture);
    for (int i = 0; i < names.size(); ++i) {
        UIElement* const button =
            recording.add(window, QStringLiteral("Button"), names.at(i), names.at(i),
                          {names.at(i), QStringLiteral("shown")});
        button->setGeometry(ElementGeometry(QRect(10, 10 + i * 30, 180, 26), true));
        use(button, "shown");
        if (i % 2 == 0) {
            button->increaseUsage(UIEvent(names.at(i)));
        }
    }
    recording.addEnd();
    const QByteArray json = QJsonDocument(QJsonArray::fromStringList(names)).toJson();
    std::fwrite(json.constData(), 1, static_cast<std::size_t>(json.size()), stdout);
}

/** Not noise, which no interface is, and yet another one for each window. */
QImage busyPicture(int seed) {
    QImage picture(800, 600, QImage::Format_RGB32);
    picture.fill(QColor(240, 240, 240));
    QPainter painter(&picture);
    unsigned state = static_cast<unsigned>(seed) * 2654435761U + 1;
    for (int i = 0; i < 900; ++i) {
        state = state * 1664525U + 1013904223U;
        const int x = static_cast<int>(state >> 8U) % 800;
        const int y = static_cast<int>(state >> 16U) % 600;
        painter.fillRect(x, y, 3 + i % 40, 2 + i % 7, QColor(i % 256, (i * 7) % 256, x % 256));
    }
    return picture;
}

void fillLarge(RecordingBuilder& recording) {
    recording.addProcess({{QStringLiteral("application"), QStringLiteral("large")}});
    constexpr int windows = 200;
    constexpr int elements = 24;
    for (int w = 0; w < windows; ++w) {
        UIElement* const window =
            addWindow(recording, nullptr, "Window", QStringLiteral("Window %1").arg(w),
                      QRect(0, 0, 800, 600), busyPicture(w));
        for (int i = 0; i < elements; ++i) {
            const QString text = QStringLiteral("Action %1 of %2").arg(i).arg(w);
            UIElement* const element = recording.add(
                window, QStringLiteral("Button"), QStringLiteral("QPushButton"), text, clickable);
            element->setGeometry(
                ElementGeometry(QRect(20 + i % 4 * 190, 30 + i / 4 * 90, 170, 40), true));
            if ((i + w) % 3 > 0) {
                use(element, "shown");
            }
            if ((i + w) % 3 > 1) {
                use(element, "clicked");
            }
        }
    }
    recording.addEnd();
}

/** A view of the controls extension, which a person saw. */
UIElement* addView(RecordingBuilder& recording, UIElement* parent, const char* type,
                   const QString& title) {
    UIElement* const view = recording.add(parent, QLatin1String(type), QStringLiteral("QWidget"),
                                          title, {QStringLiteral("seen")});
    view->setWindowNode(parent == nullptr);
    view->setGeometry(ElementGeometry(QRect(0, 0, 800, 600), true));
    view->setAttribute(QStringLiteral("showing"), QStringLiteral("true"));
    use(view, "seen");
    return view;
}

/** 10,000 controls on 100 pages, each with its picture. */
void fillControls(RecordingBuilder& recording) {
    recording.addProcess({{QStringLiteral("application"), QStringLiteral("controls")},
                          {QStringLiteral("extension"), QStringLiteral("libqtuicontrols")}});
    constexpr int windows = 10;
    constexpr int pages = 10;
    constexpr int controls = 100;
    constexpr int columns = 10;
    constexpr quint64 microseconds = 1000;
    for (int w = 0; w < windows; ++w) {
        UIElement* const window =
            addView(recording, nullptr, "Window", QStringLiteral("Window %1").arg(w));
        for (int p = 0; p < pages; ++p) {
            UIElement* const page =
                addView(recording, window, "Page", QStringLiteral("Page %1 of %2").arg(p).arg(w));
            for (int i = 0; i < controls; ++i) {
                UIElement* const control = recording.add(
                    page, QStringLiteral("Button"), QStringLiteral("QPushButton"),
                    QStringLiteral("Control %1 of %2").arg(i).arg(p), {QStringLiteral("clicked")});
                control->setGeometry(ElementGeometry(
                    QRect(10 + i % columns * 78, 10 + i / columns * 58, 70, 40), true));
                recording.setTime(static_cast<quint64>(w * pages + p) * microseconds);
                if ((i + p + w) % 3 == 0) {
                    use(control, "clicked");
                }
            }
            page->setImage(busyPicture(w * pages + p));
        }
        window->setImage(busyPicture(w * pages));
    }
    recording.addEnd();
}

} // namespace

int main(int argc, char* argv[]) {
    const std::map<std::string, void (*)(RecordingBuilder&)> kinds{{"colours", fillColours},
                                                                   {"hostile", fillHostile},
                                                                   {"large", fillLarge},
                                                                   {"controls", fillControls}};
    if (argc != 3 || kinds.count(argv[1]) == 0) {
        std::fputs("makerecording: colours|hostile|large|controls FILE\n", stderr);
        return 1;
    }
    RecordingBuilder recording;
    kinds.at(argv[1])(recording);
    return recording.write(QFile::decodeName(argv[2])) ? 0 : 1;
}
