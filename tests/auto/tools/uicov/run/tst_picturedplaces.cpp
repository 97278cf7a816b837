// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "run/picturedplaces.h"
#include "testlib/testcase.h"
#include "uiabstraction/uielement.h"

#include <QTest>

using Uicov::Runs::PicturedPlaces;
using Vorsk::UIAbstraction::ElementGeometry;
using Vorsk::UIAbstraction::StandardType;
using Vorsk::UIAbstraction::UIElement;

/** A window with a button and a page with a box. */
class TestPicturedPlaces : public TestLib::TestCase {
    Q_OBJECT

    std::unique_ptr<UIElement> m_window;
    UIElement* m_button = nullptr;
    UIElement* m_page = nullptr;
    UIElement* m_box = nullptr;
    PicturedPlaces m_places;

    static UIElement* make(const char* type, const QRect& place) {
        auto* const element =
            new UIElement(QStringLiteral("QWidget"), StandardType(QLatin1String(type)), QString());
        element->setGeometry(ElementGeometry(place, true));
        return element;
    }

    QByteArray pictureOf(const UIElement* element) const {
        const auto sight = m_places.sightOf(element);
        return sight ? *sight->picture : QByteArray("none");
    }

private Q_SLOTS:
    void init() {
        TestLib::TestCase::init();
        m_places = PicturedPlaces();
        m_window.reset(make("Window", QRect(0, 0, 100, 100)));
        m_button = make("Button", QRect(10, 10, 20, 20));
        m_page = make("Page", QRect(0, 50, 100, 50));
        m_box = make("CheckBox", QRect(10, 60, 20, 20));
        m_window->addChild(m_button);
        m_window->addChild(m_page);
        m_page->addChild(m_box);
    }

    void cleanup() {
        m_window.reset();
        TestLib::TestCase::cleanup();
    }

    void whatWasNeverPicturedHasNoPicture() {
        QVERIFY(!m_places.sightOf(m_button));
        QVERIFY(!m_places.sightOf(nullptr));
    }

    void aPictureIsOfWhatBelongsToItsViewAlone() {
        m_places.taken(*m_window, "window");
        QCOMPARE(pictureOf(m_button), QByteArray("window"));
        QCOMPARE(m_places.sightOf(m_button)->place, QRect(10, 10, 20, 20));
        QCOMPARE(pictureOf(m_box), QByteArray("none"));
        m_places.taken(*m_page, "page");
        QCOMPARE(pictureOf(m_box), QByteArray("page"));
        QCOMPARE(pictureOf(m_button), QByteArray("window"));
    }

    void thePlaceStaysThatOfThePicture() {
        m_places.taken(*m_window, "window");
        m_button->setGeometry(ElementGeometry(QRect(50, 10, 20, 20), true));
        QCOMPARE(m_places.sightOf(m_button)->place, QRect(10, 10, 20, 20));
    }

    void whatANewerPictureDoesNotShowKeepsTheOlderOne_data() {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<bool>("isHidden");
        QTest::addColumn<QByteArray>("picture");
        QTest::newRow("still there") << QRect(10, 10, 20, 20) << false << QByteArray("newer");
        QTest::newRow("hidden") << QRect(10, 10, 20, 20) << true << QByteArray("older");
        QTest::newRow("out of sight") << QRect() << false << QByteArray("older");
        QTest::newRow("outside") << QRect(200, 10, 20, 20) << false << QByteArray("older");
        QTest::newRow("partly outside") << QRect(90, 10, 20, 20) << false << QByteArray("newer");
    }

    void whatANewerPictureDoesNotShowKeepsTheOlderOne() {
        QFETCH(QRect, place);
        QFETCH(bool, isHidden);
        QFETCH(QByteArray, picture);
        m_places.taken(*m_window, "older");
        m_button->setGeometry(ElementGeometry(place, true));
        if (isHidden) {
            m_button->setAttribute(QStringLiteral("hidden"), QStringLiteral("true"));
        }
        m_places.taken(*m_window, "newer");
        QCOMPARE(pictureOf(m_button), picture);
    }

    void allOnOnePictureShareIt() {
        auto* const second = make("Button", QRect(40, 10, 20, 20));
        m_window->addChild(second);
        m_places.taken(*m_window, "window");
        QCOMPARE(m_places.sightOf(second)->picture.get(),
                 m_places.sightOf(m_button)->picture.get());
    }
};

QTEST_APPLESS_MAIN(TestPicturedPlaces)
#include "tst_picturedplaces.moc"
