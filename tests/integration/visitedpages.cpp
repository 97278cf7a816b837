// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

/** Visits a page five times, which makes it anew each time, and checks a box of it at each. */
class VisitedPages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void fiveVisits();
};

namespace {

/** The visible control with that text; null when there is none. */
QQuickItem* find(QQuickItem* item, const QString& text) {
    if (item->inherits("QQuickAbstractButton") && item->isVisible() &&
        item->property("text").toString() == text) {
        return item;
    }
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* const found = find(child, text)) {
            return found;
        }
    }
    return nullptr;
}

bool click(QQuickWindow* window, const QString& text) {
    if (!QTest::qWaitFor([&] { return find(window->contentItem(), text) != nullptr; })) {
        return false;
    }
    const QQuickItem* const item = find(window->contentItem(), text);
    const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, place.center().toPoint());
    return true;
}

} // namespace

void VisitedPages::fiveVisits() {
    const QQmlApplicationEngine engine(QUrl(QStringLiteral("qrc:/VisitedPages.qml")));
    QVERIFY(!engine.rootObjects().isEmpty());
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
    QVERIFY(window);
    QVERIFY(QTest::qWaitForWindowExposed(window));
    for (int visit = 0; visit < 5; ++visit) {
        QVERIFY(click(window, QStringLiteral("Visit")));
        QVERIFY(click(window, QStringLiteral("Green")));
        QVERIFY(find(window->contentItem(), QStringLiteral("Green"))->property("checked").toBool());
        QVERIFY(click(window, QStringLiteral("Back")));
        QTRY_VERIFY(find(window->contentItem(), QStringLiteral("Green")) == nullptr);
    }
}

int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    VisitedPages visits;
    return QTest::qExec(&visits, argc, argv);
}

#include "visitedpages.moc"
