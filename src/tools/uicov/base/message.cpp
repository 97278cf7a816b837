// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "base/message.h"

#include <array>
#include <cstddef>

namespace Uicov::Base {

namespace {

struct Entry {
    Message message;
    const char* name;
};

/** In the order of the enumeration. */
constexpr std::array<Entry, messageCount> entries{{
    {Message::WrongUse, "wrong-use"},
    {Message::InputMissing, "input-missing"},
    {Message::InputUnreadable, "input-unreadable"},
    {Message::InputEmpty, "input-empty"},
    {Message::InputForeign, "input-foreign"},
    {Message::InputNewer, "input-newer"},
    {Message::InputTorn, "input-torn"},
    {Message::NoElements, "no-elements"},
    {Message::ExtensionsMixed, "extensions-mixed"},
    {Message::EndedAbnormally, "ended-abnormally"},
    {Message::RecordingFull, "recording-full"},
    {Message::RecordingTorn, "recording-torn"},
    {Message::RecordingDamaged, "recording-damaged"},
    {Message::RecordsDamaged, "records-damaged"},
    {Message::OutputNotWritable, "output-not-writable"},
    {Message::OutputNotARecording, "output-not-a-recording"},
    {Message::ApplicationMissing, "application-missing"},
    {Message::ApplicationNotExecutable, "application-not-executable"},
    {Message::ApplicationNotStarted, "application-not-started"},
    {Message::WrongArchitecture, "wrong-architecture"},
    {Message::WrongQtVersion, "wrong-qt-version"},
    {Message::StaticExecutable, "static-executable"},
    {Message::StaticQt, "static-qt"},
    {Message::LibrariesMissing, "libraries-missing"},
    {Message::LibraryUnusable, "library-unusable"},
    {Message::SetupFailed, "setup-failed"},
    {Message::NothingRecorded, "nothing-recorded"},
    {Message::RecordingUnreadable, "recording-unreadable"},
    {Message::DataFileBusy, "data-file-busy"},
    {Message::DataFileDamaged, "data-file-damaged"},
    {Message::OutputForeign, "output-foreign"},
    {Message::NoSuchRun, "no-such-run"},
    {Message::NoRunGoing, "no-run-going"},
    {Message::ConfigurationUnreadable, "configuration-unreadable"},
    {Message::ConfigurationWrong, "configuration-wrong"},
    {Message::IgnoreRuleUnused, "ignore-rule-unused"},
    {Message::IgnoreRuleHidesUse, "ignore-rule-hides-use"},
    {Message::CriterionUnused, "criterion-unused"},
    {Message::GateNotMet, "gate-not-met"},
    {Message::NoSuchElement, "no-such-element"},
    {Message::NoBase, "no-base"},
    {Message::PageTooLarge, "page-too-large"},
}};

constexpr bool isComplete() {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].name == nullptr || static_cast<std::size_t>(entries[i].message) != i) {
            return false;
        }
    }
    return true;
}

static_assert(isComplete(), "a message has no name, or not in its place");

} // namespace

QString messageName(Message message) {
    return QString::fromLatin1(entries[static_cast<std::size_t>(message)].name);
}

} // namespace Uicov::Base
