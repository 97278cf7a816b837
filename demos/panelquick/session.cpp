#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

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

private:
    /** The visible control whose property has that value; null when there is none. */
    QQuickItem* find(const char* property, const QString& value) const;
    bool click(const char* property, const QString& value) const;
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
    const QQuickItem* const item = find(property, value);
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    QTest::mouseClick(m_window, Qt::LeftButton, Qt::NoModifier, place.center().toPoint());
    return true;
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

int main(int argc, char* argv[]) {
    QCoreApplication::setApplicationName(QStringLiteral("panel-quick"));
    const QGuiApplication application(argc, argv);
    PanelSession session;
    return QTest::qExec(&session, argc, argv);
}

#include "session.moc"
