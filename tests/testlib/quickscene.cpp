// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "testlib/quickscene.h"

#include <QQmlComponent>
#include <QTest>
#include <QUrl>

namespace TestLib {

namespace {

QByteArray importLines(QuickScene::Imports imports) {
    switch (imports) {
    case QuickScene::Imports::Controls1:
        return "import QtQuick 2.9; import QtQuick.Window 2.2; import QtQuick.Controls 1.4; ";
    case QuickScene::Imports::Controls2:
        return "import QtQuick 2.9; import QtQuick.Window 2.2; import QtQuick.Controls 2.3; "
               "import QtQuick.Layouts 1.3; ";
    case QuickScene::Imports::Templates2:
        return "import QtQuick 2.9; import QtQuick.Window 2.2; import QtQuick.Controls 2.3; "
               "import QtQuick.Templates 2.3 as T; ";
    case QuickScene::Imports::Pointers:
        return "import QtQuick 2.15; import QtQuick.Window 2.2; ";
    case QuickScene::Imports::Latest2:
        return "import QtQuick 2.15; import QtQuick.Window 2.15; import QtQuick.Controls 2.15; ";
    case QuickScene::Imports::Quick:
        break;
    }
    return "import QtQuick 2.9; import QtQuick.Window 2.2; ";
}

QQuickItem* findItem(QQuickItem* item, const QString& objectName) {
    if (item->objectName() == objectName) {
        return item;
    }
    const QList<QQuickItem*> children = item->childItems();
    for (QQuickItem* child : children) {
        if (QQuickItem* const found = findItem(child, objectName)) {
            return found;
        }
    }
    return nullptr;
}

} // namespace

QuickScene::QuickScene(const QByteArray& qml, Imports imports, const QString& typeName) {
    QObject* const object = create(qml, imports, typeName);
    m_window.reset(qobject_cast<QQuickWindow*>(object));
    if (m_window != nullptr) {
        return;
    }
    m_root = qobject_cast<QQuickItem*>(object);
    m_window = std::make_unique<QQuickWindow>();
    m_window->resize(400, 300);
    m_root->setParent(m_window.get());
    m_root->setParentItem(m_window->contentItem());
}

QuickScene::~QuickScene() = default;

QQuickItem* QuickScene::item(const char* objectName) const {
    return findItem(m_window->contentItem(), QLatin1String(objectName));
}

QObject* QuickScene::object(const char* objectName) const {
    if (QQuickItem* const found = item(objectName)) {
        return found;
    }
    return m_window->findChild<QObject*>(QLatin1String(objectName));
}

QObject* QuickScene::create(const QByteArray& qml, Imports imports, const QString& typeName) {
    QQmlComponent component(&m_engine);
    component.setData(importLines(imports) + qml,
                      QUrl(QStringLiteral("qrc:/scene/%1.qml").arg(typeName)));
    if (!component.isReady()) {
        qFatal("%s", qPrintable(component.errorString()));
    }
    return component.create();
}

bool QuickScene::show() {
    m_window->show();
    return QTest::qWaitForWindowExposed(m_window.get());
}

void QuickScene::click(QQuickItem* item) const {
    QTest::mouseClick(m_window.get(), Qt::LeftButton, Qt::NoModifier, centre(item));
}

QPoint QuickScene::centre(const QQuickItem* item) {
    return item->mapRectToScene(QRectF(0, 0, item->width(), item->height())).center().toPoint();
}

} // namespace TestLib
