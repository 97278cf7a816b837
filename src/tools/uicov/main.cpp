// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/filesizelimit.h"
#include "commands/commandline.h"
#include "console/terminal.h"

#include <QCoreApplication>
#include <QSet>

#include <string>
#include <vector>

namespace {

Uicov::Console::Terminal* ofMessages = nullptr;

/** What Qt and the libraries below it say in their own way becomes a warning as any other. */
void reportMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& text) {
    static QSet<QString> told;
    if (ofMessages == nullptr || told.contains(text)) {
        return;
    }
    told.insert(text);
    const bool isOfPicture = text.startsWith(QLatin1String("libpng"));
    ofMessages->warning({Uicov::Base::Message::RecordsDamaged,
                         (isOfPicture ? QStringLiteral("a picture is damaged and not shown: ")
                                      : QStringLiteral("Qt says: ")) +
                             text});
}

} // namespace

int main(int argc, char** argv) {
    Uicov::Base::outliveFileSizeLimit();
    // Taken first: Qt takes arguments out that it knows, and they may be the application's.
    const std::vector<std::string> arguments(argv + (argc > 0 ? 1 : 0), argv + argc);
    int programArguments = qMin(argc, 1);
    const QCoreApplication application(programArguments, argv);
    Uicov::Console::Terminal terminal;
    ofMessages = &terminal;
    qInstallMessageHandler(reportMessage);
    return Uicov::Commands::CommandLine(terminal).run(arguments);
}
