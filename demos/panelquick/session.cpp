// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

/** A test of the panel as its makers might have it: it uses some of the panel and forgets the rest.
 */
class PanelSession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void namesTheRoom();
    void switchesNightSetback();
    void exportsAsTable();
    void changesTheSettings();
    void setsTheCircuit();
    void plansTheWeek();
    void writesTheLog();

private:
    /** The visible control whose property has that value; null when there is none. */
    QQuickItem* find(const char* property, const QString& value) const;
    bool click(const char* property, const QString& value) const;
    static void click(const QQuickItem* item, const QPoint& offset = {});
    /** Opens the service window and turns to that page as a technician does. */
    bool openService(const QString& page);
    /** The item of that class or object name in the window that is worked in. */
    QQuickItem* item(const char* name) const;
    /** Gives the item the keyboard and presses the key. */
    void press(QQuickItem* item, Qt::Key key) const;
    bool clickText(const QString& text) const { return click("text", text); }

    QQmlApplicationEngine* m_engine = nullptr;
    QQuickWindow* m_window = nullptr;
};

namespace {

/** Controls say their texts with mnemonics; a tester does not. */
bool matches(const QQuickItem* item, const char* property, const QString& value) {
    // What a control is made of repeats its text, but is no control itself.
    const bool isControl = item->metaObject()->indexOfProperty("hovered") != -1;
    return isControl && item->isVisible() && item->width() > 0 &&
           item->property(property).toString().remove(QLatin1Char('&')) == value;
}

QQuickItem* findBelow(QQuickItem* item, const char* property, const QString& value) {
    if (matches(item, property, value)) {
        return item;
    }
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* const found = findBelow(child, property, value)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

void PanelSession::init() {
    m_engine = new QQmlApplicationEngine(QUrl(QStringLiteral("qrc:/panelquick/PanelWindow.qml")));
    QVERIFY(!m_engine->rootObjects().isEmpty());
    m_window = qobject_cast<QQuickWindow*>(m_engine->rootObjects().constFirst());
    QVERIFY(m_window);
    m_window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(m_window));
}

void PanelSession::cleanup() {
    delete m_engine;
}

QQuickItem* PanelSession::find(const char* property, const QString& value) const {
    return findBelow(m_window->contentItem(), property, value);
}

bool PanelSession::click(const char* property, const QString& value) const {
    // Popups take their time to appear.
    if (!QTest::qWaitFor([&] { return find(property, value) != nullptr; })) {
        return false;
    }
    click(find(property, value));
    return true;
}

void PanelSession::click(const QQuickItem* item, const QPoint& offset) {
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    const QPoint point =
        offset.isNull() ? place.center().toPoint() : place.topLeft().toPoint() + offset;
    QTest::mouseClick(item->window(), Qt::LeftButton, Qt::NoModifier, point);
}

void PanelSession::namesTheRoom() {
    QVERIFY(click("placeholderText", QStringLiteral("Room name")));
    for (const QChar letter : QStringLiteral("Kitchen")) {
        QTest::keyClick(m_window, letter.toLatin1());
    }
    QTest::keyClick(m_window, Qt::Key_Return);
    QVERIFY(clickText(QStringLiteral("Apply")));
    QCOMPARE(find("placeholderText", QStringLiteral("Room name"))->property("text").toString(),
             QStringLiteral("Kitchen"));
}

void PanelSession::switchesNightSetback() {
    QQuickItem* const nightSetback = find("text", QStringLiteral("Night setback"));
    QVERIFY(nightSetback);
    nightSetback->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window, Qt::Key_Space);
    QVERIFY(nightSetback->property("checked").toBool());
}

void PanelSession::exportsAsTable() {
    QVERIFY(clickText(QStringLiteral("File")));
    QVERIFY(clickText(QStringLiteral("Export")));
    QVERIFY(clickText(QStringLiteral("As table")));
}

void PanelSession::changesTheSettings() {
    QVERIFY(clickText(QStringLiteral("Settings...")));
    QTRY_VERIFY(find("text", QStringLiteral("Summer time")));
    QQuickItem* const summerTime = find("text", QStringLiteral("Summer time"));
    summerTime->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window, Qt::Key_Space);
    QVERIFY(summerTime->property("checked").toBool());
    QVERIFY(clickText(QStringLiteral("OK")));
    QTRY_VERIFY(!find("text", QStringLiteral("Summer time")));
}

bool PanelSession::openService(const QString& page) {
    if (!clickText(QStringLiteral("Service..."))) {
        return false;
    }
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto it = std::find_if(windows.cbegin(), windows.cend(), [](const QWindow* window) {
        return window->title() == QLatin1String("Service");
    });
    if (it == windows.cend()) {
        return false;
    }
    m_window = qobject_cast<QQuickWindow*>(*it);
    m_window->requestActivate();
    if (!QTest::qWaitForWindowActive(m_window) || !clickText(page)) {
        return false;
    }
    auto* const pages = item("QQuickSwipeView");
    // The pages slide: until then none of them takes presses where it will be.
    return QTest::qWaitFor([pages, page] {
        const auto* const current = pages->property("currentItem").value<QQuickItem*>();
        return current != nullptr && current->property("title").toString() == page &&
               current->mapToItem(pages, QPointF()).toPoint().isNull();
    });
}

QQuickItem* PanelSession::item(const char* name) const {
    const auto* const root = m_window->contentItem();
    QList<QQuickItem*> items = root->childItems();
    while (!items.isEmpty()) {
        QQuickItem* const candidate = items.takeFirst();
        if (candidate->inherits(name) || candidate->objectName() == QLatin1String(name)) {
            return candidate;
        }
        items += candidate->childItems();
    }
    return nullptr;
}

void PanelSession::press(QQuickItem* item, Qt::Key key) const {
    item->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window, key);
}

void PanelSession::setsTheCircuit() {
    QVERIFY(openService(QStringLiteral("Circuit")));
    QVERIFY(clickText(QStringLiteral("Cooling")));
    QVERIFY(find("text", QStringLiteral("Cooling"))->property("checked").toBool());
    QVERIFY(clickText(QStringLiteral("Holiday")));
    QVERIFY(find("text", QStringLiteral("Holiday"))->property("checked").toBool());
    press(item("QQuickComboBox"), Qt::Key_Down);
    QCOMPARE(item("QQuickComboBox")->property("currentIndex").toInt(), 1);
    press(item("QQuickSpinBox"), Qt::Key_Up);
    QCOMPARE(item("QQuickSpinBox")->property("value").toInt(), 1);
    press(item("QQuickSlider"), Qt::Key_Right);
    QCOMPARE(item("QQuickSlider")->property("value").toDouble(), 0.1);
    press(item("QQuickDial"), Qt::Key_Up);
    QCOMPARE(item("QQuickDial")->property("value").toDouble(), 0.1);
    // It waits for a sensor that is not connected.
    QVERIFY(clickText(QStringLiteral("Calibrate")));
}

void PanelSession::plansTheWeek() {
    QVERIFY(openService(QStringLiteral("Plan")));
    QVERIFY(clickText(QStringLiteral("Weekend")));
    QVERIFY(clickText(QStringLiteral("Copy to...")));
    QVERIFY(clickText(QStringLiteral("Sunday")));
    QVERIFY(find("text", QStringLiteral("Sunday"))->property("checked").toBool());
}

void PanelSession::writesTheLog() {
    QVERIFY(openService(QStringLiteral("Log")));
    QQuickItem* const note = item("QQuickTextArea");
    press(note, Qt::Key_O);
    press(note, Qt::Key_K);
    QCOMPARE(note->property("text").toString(), QStringLiteral("ok"));
    click(item("pressure"));
    QTest::keyClick(m_window, Qt::Key_E, Qt::ControlModifier);
    const QQuickItem* const manual = item("manual");
    click(manual, QPoint(10, qRound(manual->height() / 2)));
}

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("panel-quick"));
    const QGuiApplication application(argc, argv);
    PanelSession session;
    return QTest::qExec(&session, argc, argv);
}

#include "session.moc"
