// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/coverageresult.h"
#include "report/html/appearances.h"
#include "report/html/pagemodelbuilder.h"
#include "run/run.h"
#include "testlib/testcase.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QTest>

using Uicov::Coverage::Configuration;
using Uicov::Coverage::CoverageResult;
using Uicov::Coverage::IgnoreRule;
using Uicov::Coverage::Pattern;
using Uicov::Coverage::RuleId;
using Uicov::Coverage::State;
using Uicov::Report::Html::Appearances;
using Uicov::Report::Html::PageModel;
using Uicov::Report::Html::PageModelBuilder;
using Uicov::Runs::Run;
using Uicov::Runs::RunElement;
using Apart = PageModel::Apart;

namespace {

QByteArray png(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

QImage plain(const QSize& size, const QColor& colour = Qt::lightGray) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

/** Something that no plain ground looks like. */
QImage striped(const QSize& size) {
    QImage image = plain(size, Qt::white);
    QPainter painter(&image);
    for (int x = 0; x < size.width(); x += 4) {
        painter.fillRect(x, 0, 2, size.height(), Qt::black);
    }
    return image;
}

struct RunMaker {
    Run run;

    RunMaker() { run.contexts = QStringList{QString()}; }

    int add(int parent, const char* type, const char* text,
            const std::optional<QRect>& place = std::nullopt, const QImage& picture = QImage()) {
        RunElement element;
        element.type = QLatin1String(type);
        element.text = QString::fromUtf8(text);
        element.isWindowNode = element.type == QLatin1String("Window");
        element.events = QStringList{QStringLiteral("clicked")};
        element.place = place;
        element.parent = parent;
        if (!picture.isNull()) {
            element.picture = png(picture); // its own bytes do as a name
            run.pictures.insert(element.picture, element.picture);
        }
        const int index = static_cast<int>(run.elements.size());
        run.elements.push_back(element);
        if (parent >= 0) {
            run.elements[static_cast<std::size_t>(parent)].children.append(index);
        }
        return index;
    }

    void click(int element) {
        run.elements[static_cast<std::size_t>(element)].hits.append(
            {QStringLiteral("clicked"), 0, 1});
    }
};

PageModel modelOf(const QVector<Run>& runs, const Configuration& configuration = {}) {
    CoverageResult coverage(configuration);
    Appearances appearances;
    for (const Run& run : runs) {
        coverage.add(run);
        appearances.add(run, coverage.tree());
    }
    coverage.finish();
    PageModel model;
    PageModelBuilder(coverage.tree(), appearances).build(model);
    return model;
}

PageModel::Node nodeOf(const PageModel& model, const char* label) {
    for (const PageModel::Node& node : model.nodes) {
        if (node.step.label == QLatin1String(label)) {
            return node;
        }
    }
    return {};
}

} // namespace

class TestPageModelBuilder : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothing() {
        const PageModel model = modelOf({});
        QVERIFY(model.windows.isEmpty());
        QVERIFY(model.nodes.isEmpty());
    }

    void windowsWithTheMostMissedComeFirstAndEmptyOnesNotAtAll() {
        RunMaker maker;
        for (const char* title : {"A", "B", "C"}) {
            const int window = maker.add(-1, "Window", title);
            maker.click(window);
            const int buttons = title[0] == 'B' ? 3 : 1;
            for (int i = 0; i < buttons; ++i) {
                maker.add(window, "Button", "x");
            }
        }
        const int silent = maker.add(-1, "Window", "D");
        maker.run.elements[static_cast<std::size_t>(silent)].events.clear();
        const PageModel model = modelOf({maker.run});
        QStringList titles;
        for (const PageModel::Window& window : model.windows) {
            titles.append(model.nodes.at(window.node).step.label);
        }
        QCOMPARE(titles,
                 (QStringList{QStringLiteral("B"), QStringLiteral("A"), QStringLiteral("C")}));
        QCOMPARE(model.totals.missed, 5);
        QCOMPARE(model.windows.first().lastNode - model.windows.first().node, 3);
    }

    void whatRulesLeaveOutIsShownAndNotCounted() {
        RunMaker maker;
        const int panel = maker.add(-1, "Window", "Panel", QRect(0, 0, 100, 80));
        maker.add(panel, "Button", "Stop", QRect(10, 10, 40, 20));
        maker.add(panel, "Button", "OK", QRect(60, 10, 40, 20));
        maker.add(-1, "Window", "About", QRect(0, 0, 100, 80));
        Configuration configuration;
        IgnoreRule rule;
        rule.window = Pattern(QStringLiteral("About"));
        configuration.ignoreRules.append(rule);
        rule.window = Pattern();
        rule.text = Pattern(QStringLiteral("Stop"));
        configuration.ignoreRules.append(rule);
        const PageModel model = modelOf({maker.run}, configuration);
        QCOMPARE(model.totals.elements, 2);
        const PageModel::Node stop = nodeOf(model, "Stop");
        QVERIFY(stop.isListed() && !stop.isCountable);
        QCOMPARE(stop.ignoredBy, RuleId(1));
        QCOMPARE(stop.place, std::make_optional(QRect(10, 10, 40, 20)));
        QCOMPARE(nodeOf(model, "OK").ignoredBy, RuleId::None);
        // A window with nothing but that is there, behind all others.
        QCOMPARE(model.windows.size(), 2);
        QCOMPARE(model.windows.last().totals.elements, 0);
        QCOMPARE(nodeOf(model, "About").ignoredBy, RuleId(0));
    }

    void statesAreThoseThatTheCriteriaAskFor() {
        RunMaker maker;
        const int panel = maker.add(-1, "Window", "Panel");
        const int button = maker.add(panel, "Button", "OK");
        maker.run.elements[static_cast<std::size_t>(button)].events.append(
            QStringLiteral("pressed"));
        maker.click(button);
        Configuration configuration;
        configuration.criteria.insert(QStringLiteral("Button"), {QStringLiteral("pressed")});
        QCOMPARE(nodeOf(modelOf({maker.run}), "OK").state, State::Used);
        QCOMPARE(nodeOf(modelOf({maker.run}, configuration), "OK").state, State::Shown);
    }

    void whyAnElementIsNotOutlined_data() {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<bool>("isPlaced");
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<int>("apart");
        const QImage none;
        const auto row = [](const char* name, const QRect& place, bool isPlaced,
                            const QImage& picture, Apart apart) {
            QTest::newRow(name) << place << isPlaced << picture << static_cast<int>(apart);
        };
        row("outlined", QRect(10, 10, 40, 20), true, none, Apart::None);
        row("partly outside", QRect(90, 70, 40, 20), true, none, Apart::None);
        row("never told", QRect(), false, none, Apart::NeverPlaced);
        row("no size", QRect(10, 10, 0, 20), true, none, Apart::NoSize);
        row("outside", QRect(100, 10, 40, 20), true, none, Apart::Outside);
        row("left of it", QRect(-40, 10, 40, 20), true, none, Apart::Outside);
        row("hidden", QRect(10, 10, 40, 20), true, striped(QSize(40, 20)), Apart::Hidden);
    }

    void whyAnElementIsNotOutlined() {
        QFETCH(QRect, place);
        QFETCH(bool, isPlaced);
        QFETCH(QImage, picture);
        QFETCH(int, apart);
        RunMaker maker;
        const int window =
            maker.add(-1, "Window", "Panel", QRect(0, 0, 100, 80), plain(QSize(100, 80)));
        maker.add(window, "Button", "OK", isPlaced ? std::optional<QRect>(place) : std::nullopt,
                  picture);
        const PageModel model = modelOf({maker.run});
        const PageModel::Node node = nodeOf(model, "OK");
        QCOMPARE(static_cast<int>(node.apart), apart);
        QCOMPARE(node.place.has_value(), node.apart == Apart::None);
        QCOMPARE(node.surface != PageModel::SurfaceId::None, node.apart == Apart::None);
        QCOMPARE(node.picture != PageModel::PictureId::None, !picture.isNull());
    }

    void whatIsNotInTheNewestPictureIsSaidToBeElsewhere() {
        RunMaker older;
        const int window =
            older.add(-1, "Window", "Panel", QRect(0, 0, 100, 80), plain(QSize(100, 80)));
        older.add(window, "Button", "OK", QRect(1, 1, 20, 10));
        RunMaker newer;
        newer.add(-1, "Window", "Panel", QRect(0, 0, 100, 80), plain(QSize(100, 80), Qt::red));
        const PageModel model = modelOf({older.run, newer.run});
        QCOMPARE(static_cast<int>(nodeOf(model, "OK").apart),
                 static_cast<int>(Apart::ElsewhereThen));
    }

    void aPictureThatTheWindowHasAnywayIsNotKept() {
        QImage whole = plain(QSize(100, 80));
        const QImage own = striped(QSize(40, 20));
        QPainter(&whole).drawImage(10, 10, own);
        RunMaker maker;
        const int window = maker.add(-1, "Window", "Panel", QRect(0, 0, 100, 80), whole);
        maker.add(window, "Button", "OK", QRect(10, 10, 40, 20), own);
        const PageModel model = modelOf({maker.run});
        QCOMPARE(nodeOf(model, "OK").picture, PageModel::PictureId::None);
        QCOMPARE(model.pictures.size(), 1);
    }

    void equalPicturesAreKeptOnce() {
        RunMaker maker;
        for (const char* title : {"A", "B"}) {
            maker.add(-1, "Window", title, QRect(0, 0, 100, 80), plain(QSize(100, 80)));
        }
        const PageModel model = modelOf({maker.run});
        QCOMPARE(model.pictures.size(), 1);
        QCOMPARE(model.surfaces.at(0).picture, PageModel::PictureId(0));
        QCOMPARE(model.surfaces.at(1).picture, PageModel::PictureId(0));
    }

    void aPictureThatCannotBeReadIsNone() {
        RunMaker maker;
        const int window = maker.add(-1, "Window", "Panel", QRect(0, 0, 100, 80));
        maker.run.elements[static_cast<std::size_t>(window)].picture = "broken";
        maker.run.pictures.insert("broken", "no picture at all");
        const PageModel model = modelOf({maker.run});
        QCOMPARE(model.surfaces.first().picture, PageModel::PictureId::None);
        QVERIFY(model.pictures.isEmpty());
    }

    void aWindowWithoutPlaceIsAsLargeAsWhatIsInIt() {
        RunMaker maker;
        const int window = maker.add(-1, "Window", "Panel");
        maker.add(window, "Button", "OK", QRect(10, 10, 40, 20));
        maker.add(window, "Button", "Cancel", QRect(60, 40, 40, 20));
        const PageModel model = modelOf({maker.run});
        QCOMPARE(model.surfaces.first().bounds, QRect(QPoint(10, 10), QPoint(99, 59)));
    }

    void dialogsAreOverTheirWindows() {
        RunMaker maker;
        const int panel = maker.add(-1, "Window", "Panel");
        maker.add(maker.add(panel, "Window", "Settings"), "Button", "OK");
        const PageModel model = modelOf({maker.run});
        QCOMPARE(model.windows.size(), 2);
        QCOMPARE(model.nodes.at(model.windows.at(0).node).step.label, QStringLiteral("Settings"));
        QCOMPARE(model.windows.at(0).over, 1);
        QCOMPARE(model.windows.at(1).over, -1);
    }

    void menusHangOnWhatOpensThem() {
        RunMaker maker;
        const int window = maker.add(-1, "Window", "Panel", QRect(0, 0, 100, 80));
        const int bar = maker.add(window, "MenuBar", "", QRect(0, 0, 100, 20));
        const int file = maker.add(bar, "MenuItem", "File", QRect(0, 0, 30, 20));
        const int menu = maker.add(file, "Menu", "", QRect(0, 0, 50, 20));
        maker.add(menu, "MenuItem", "Open", QRect(0, 0, 50, 20));
        const int help = maker.add(bar, "MenuItem", "Help", QRect(30, 0, 30, 20));
        const int closed = maker.add(help, "Menu", "");
        maker.run.elements[static_cast<std::size_t>(closed)].isTransparentNode = true;
        const PageModel model = modelOf({maker.run});
        QCOMPARE(model.surfaces.size(), 2);
        QCOMPARE(nodeOf(model, "File").opens, PageModel::SurfaceId(1));
        QCOMPARE(nodeOf(model, "Help").opens, PageModel::SurfaceId::None);
        QCOMPARE(model.nodes.at(model.surfaces.at(1).opener).step.label, QStringLiteral("File"));
        QCOMPARE(nodeOf(model, "Open").surface, PageModel::SurfaceId(1));
        const auto isUnopened = [](const PageModel::Node& node) { return node.isUnopenedMenu; };
        QCOMPARE(std::count_if(model.nodes.cbegin(), model.nodes.cend(), isUnopened), 1);
    }
};

QTEST_GUILESS_MAIN(TestPageModelBuilder)

#include "tst_pagemodelbuilder.moc"
