// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/message.h"
#include "testlib/testcase.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using Uicov::Base::Message;

class TestMessage : public TestLib::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyMessageHasANameOfItsOwn() {
        QSet<QString> names;
        const QRegularExpression form(QStringLiteral("^[a-z]+(-[a-z]+)*$"));
        for (int i = 0; i < Uicov::Base::messageCount; ++i) {
            const QString name = Uicov::Base::messageName(static_cast<Message>(i));
            QVERIFY2(form.match(name).hasMatch(), qPrintable(name));
            names.insert(name);
        }
        QCOMPARE(names.size(), Uicov::Base::messageCount);
    }

    /** Both ways: none is missing there, and none there is gone here. */
    void everyMessageIsExplained() {
        QFile file(QStringLiteral(UICOV_SOURCE_DIR "/docs/messages.md"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        QStringList explained;
        const QRegularExpression heading(QStringLiteral("^### `(uicov )?([a-z-]+)`$"),
                                         QRegularExpression::MultilineOption);
        auto it = heading.globalMatch(text);
        while (it.hasNext()) {
            explained.append(it.next().captured(2));
        }
        QStringList names;
        for (int i = 0; i < Uicov::Base::messageCount; ++i) {
            names.append(Uicov::Base::messageName(static_cast<Message>(i)));
        }
        names.sort();
        explained.sort();
        QCOMPARE(explained, names);
    }
};

QTEST_GUILESS_MAIN(TestMessage)
#include "tst_message.moc"
