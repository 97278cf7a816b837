// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include <QApplication>
#include <QProcess>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <iostream>
#include <string>

/*
 * An application that does what the lines on its standard input say, one after the other, and
 * answers each with a line when all of it is done: "click", "start" (another of itself), "there
 * LINE" (that one is to do LINE).
 */

namespace {

class Program {
public:
    Program() {
        m_layout.addWidget(&m_button);
        m_button.setText(QStringLiteral("Count"));
        m_window.setWindowTitle(QStringLiteral("Marked"));
        m_window.show();
        QCoreApplication::processEvents();
    }

    void perform(const QByteArray& line) {
        if (line == "click") {
            QTest::mouseClick(&m_button, Qt::LeftButton);
        } else if (line == "start") {
            m_other.start(QCoreApplication::applicationFilePath(), QStringList());
            answerOfOther();
        } else if (line.startsWith("there ")) {
            m_other.write(line.mid(6) + '\n');
            answerOfOther();
        }
        QCoreApplication::processEvents();
    }

    void end() {
        if (m_other.state() != QProcess::NotRunning) {
            m_other.closeWriteChannel();
            m_other.waitForFinished();
        }
    }

private:
    void answerOfOther() {
        while (!m_other.canReadLine() && m_other.waitForReadyRead()) {
        }
        m_other.readLine();
    }

    QWidget m_window;
    QVBoxLayout m_layout{&m_window};
    QPushButton m_button;
    QProcess m_other;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    Program program;
    std::cout << "ready" << std::endl;
    for (std::string line; std::getline(std::cin, line);) {
        program.perform(QByteArray::fromStdString(line));
        std::cout << "done" << std::endl;
    }
    program.end();
    return 0;
}
