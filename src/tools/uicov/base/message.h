// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace Uicov::Base {

/**
 * Every error and warning that the command can print. Each has a short stable name, shown behind
 * its text in brackets, by which docs/messages.md explains cause and cure.
 */
enum class Message {
    WrongUse,
    InputMissing,
    InputUnreadable,
    InputEmpty,
    InputForeign,
    InputNewer,
    InputTorn,
    NoElements,
    ExtensionsMixed,
    EndedAbnormally,
    RecordingFull,
    RecordingTorn,
    RecordingDamaged,
    RecordsDamaged,
    OutputNotWritable,
    OutputNotARecording,
    ApplicationMissing,
    ApplicationNotExecutable,
    ApplicationNotStarted,
    WrongArchitecture,
    WrongQtVersion,
    StaticExecutable,
    StaticQt,
    LibrariesMissing,
    LibraryUnusable,
    SetupFailed,
    NothingRecorded,
    RecordingUnreadable,
    DataFileBusy,
    DataFileDamaged,
    OutputForeign,
    NoSuchRun,
    NoRunGoing,
    ConfigurationUnreadable,
    ConfigurationWrong,
    IgnoreRuleUnused,
    IgnoreRuleHidesUse,
    CriterionUnused,
    GateNotMet,
    NoSuchElement,
    NoBase,
    PageTooLarge
};

constexpr int messageCount = static_cast<int>(Message::PageTooLarge) + 1;

/** The stable name: lower case words joined by hyphens. */
QString messageName(Message message);

/** One thing that went wrong: the line's text, without the program's name in front. */
struct Problem {
    Message message;
    QString text;
};

} // namespace Uicov::Base
