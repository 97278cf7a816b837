#include "console/message.h"

namespace Uicov::Console {

QString messageName(Message message) {
    // No default: a message without a name is a compiler warning.
    switch (message) {
    case Message::WrongUse:
        return QStringLiteral("wrong-use");
    case Message::InputMissing:
        return QStringLiteral("input-missing");
    case Message::InputUnreadable:
        return QStringLiteral("input-unreadable");
    case Message::InputEmpty:
        return QStringLiteral("input-empty");
    case Message::InputForeign:
        return QStringLiteral("input-foreign");
    case Message::InputNewer:
        return QStringLiteral("input-newer");
    case Message::InputTorn:
        return QStringLiteral("input-torn");
    case Message::NoElements:
        return QStringLiteral("no-elements");
    case Message::EndedAbnormally:
        return QStringLiteral("ended-abnormally");
    case Message::RecordingFull:
        return QStringLiteral("recording-full");
    case Message::RecordingTorn:
        return QStringLiteral("recording-torn");
    case Message::RecordingDamaged:
        return QStringLiteral("recording-damaged");
    case Message::RecordsDamaged:
        return QStringLiteral("records-damaged");
    case Message::OutputNotWritable:
        return QStringLiteral("output-not-writable");
    case Message::OutputNotARecording:
        return QStringLiteral("output-not-a-recording");
    case Message::ApplicationMissing:
        return QStringLiteral("application-missing");
    case Message::ApplicationNotExecutable:
        return QStringLiteral("application-not-executable");
    case Message::ApplicationNotStarted:
        return QStringLiteral("application-not-started");
    case Message::WrongArchitecture:
        return QStringLiteral("wrong-architecture");
    case Message::WrongQtVersion:
        return QStringLiteral("wrong-qt-version");
    case Message::StaticExecutable:
        return QStringLiteral("static-executable");
    case Message::StaticQt:
        return QStringLiteral("static-qt");
    case Message::LibrariesMissing:
        return QStringLiteral("libraries-missing");
    case Message::LibraryUnusable:
        return QStringLiteral("library-unusable");
    case Message::SetupFailed:
        return QStringLiteral("setup-failed");
    case Message::NothingRecorded:
        return QStringLiteral("nothing-recorded");
    case Message::RecordingUnreadable:
        return QStringLiteral("recording-unreadable");
    case Message::DataFileBusy:
        return QStringLiteral("data-file-busy");
    case Message::DataFileDamaged:
        return QStringLiteral("data-file-damaged");
    case Message::OutputForeign:
        return QStringLiteral("output-foreign");
    case Message::NoSuchRun:
        return QStringLiteral("no-such-run");
    case Message::NoRunGoing:
        return QStringLiteral("no-run-going");
    case Message::ConfigurationUnreadable:
        return QStringLiteral("configuration-unreadable");
    case Message::ConfigurationWrong:
        return QStringLiteral("configuration-wrong");
    case Message::IgnoreRuleUnused:
        return QStringLiteral("ignore-rule-unused");
    case Message::IgnoreRuleHidesUse:
        return QStringLiteral("ignore-rule-hides-use");
    case Message::CriterionUnused:
        return QStringLiteral("criterion-unused");
    case Message::GateNotMet:
        return QStringLiteral("gate-not-met");
    case Message::NoSuchElement:
        return QStringLiteral("no-such-element");
    case Message::PageTooLarge:
        return QStringLiteral("page-too-large");
    }
    return {};
}

} // namespace Uicov::Console
