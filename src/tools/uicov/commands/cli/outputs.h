// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QFileDevice>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace Uicov::Console {
class Terminal;
}

namespace Uicov::Commands::Cli {

/** Several outputs of one command. Each is there as a whole or not at all. */
class Outputs {
public:
    /** Told whether it goes to standard output. */
    using Maker = std::function<QByteArray(bool)>;

    explicit Outputs(Console::Terminal& terminal);

    using Readers = std::optional<QFileDevice::Permissions>;

    /**
     * @param path "-" for standard output; nothing is written for an empty one
     * @param readers who besides the owner may read it; nothing where that is not limited
     */
    void add(const std::string& path, const Maker& maker, Readers readers = std::nullopt);
    /**
     * False when one could not be written, which has been told; the others are. None is when two go
     * to one place, as the later would take the place of the other.
     */
    bool write();

private:
    struct Output {
        std::string path;
        Maker maker;
        Readers readers;
    };

    bool areApart() const;
    bool writeOne(const Output& output);

    Console::Terminal& m_terminal;
    std::vector<Output> m_outputs;
};

} // namespace Uicov::Commands::Cli
