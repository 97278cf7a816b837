// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>
#include <QPoint>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>

#include <memory>

namespace TestLib {

/**
 * Objects made from QML text, with their engine. A window stands for what an application shows; an
 * item at the root of the text is put into a window of 400 x 300 pixels that is made for it. Text
 * that is not sound ends the program.
 */
class QuickScene {
public:
    /** What the text imports: nothing but Qt Quick, or a generation of the controls as well; with
     * Templates2 those that the second one is made of too, as T; with Pointers the Qt Quick that
     * has pointer handlers; with Latest2 the second generation beside these. */
    enum class Imports { Quick, Controls1, Controls2, Templates2, Pointers, Latest2 };

    /**
     * @param qml      one object without the import lines
     * @param typeName of the QML type that the text stands for, as if it were a file of that name
     */
    explicit QuickScene(const QByteArray& qml, Imports imports = Imports::Quick,
                        const QString& typeName = QStringLiteral("Scene"));
    ~QuickScene();

    QQuickWindow* window() const { return m_window.get(); }
    /** The item at the root of the text; null when that is a window. */
    QQuickItem* root() const { return m_root; }
    /** What has that objectName, wherever it is in the item tree or owned by the window; null
     * when nothing has. */
    QQuickItem* item(const char* objectName) const;
    QObject* object(const char* objectName) const;
    /** One more object, owned by the caller. */
    QObject* create(const QByteArray& qml, Imports imports = Imports::Quick,
                    const QString& typeName = QStringLiteral("Scene"));

    /** Shows the window and waits until it can be seen; false when that does not happen. */
    bool show();

    // Input as a person gives it, through the window.
    void click(QQuickItem* item) const;
    static QPoint centre(const QQuickItem* item);

private:
    Q_DISABLE_COPY(QuickScene)

    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem* m_root = nullptr;
};

} // namespace TestLib

Q_DECLARE_METATYPE(TestLib::QuickScene::Imports)
