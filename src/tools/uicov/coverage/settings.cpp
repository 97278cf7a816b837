// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/settings.h"

#include "coverage/configuration.h"
#include "coverage/configurationfile.h"

#include <QFile>

#include <algorithm>
#include <sstream>
#include <string_view>

#include <toml++/toml.h>

namespace Uicov::Coverage {

namespace {

QString valueOf(const toml::node& node) {
    std::ostringstream stream;
    stream << toml::node_view<const toml::node>(node);
    return QString::fromStdString(stream.str()).simplified();
}

void add(const toml::node& node, const QString& name, QVector<Setting>& settings);

void addTable(const toml::table& table, const QString& name, QVector<Setting>& settings) {
    for (const auto& entry : table) {
        const std::string_view text = entry.first.str();
        const QString key = QString::fromUtf8(text.data(), static_cast<int>(text.size()));
        add(entry.second, name.isEmpty() ? key : name + QLatin1Char('.') + key, settings);
    }
}

void add(const toml::node& node, const QString& name, QVector<Setting>& settings) {
    if (const toml::table* const table = node.as_table()) {
        addTable(*table, name, settings);
        return;
    }
    const toml::array* const array = node.as_array();
    if (array == nullptr || array->empty() || !array->front().is_table()) {
        settings.append({name, valueOf(node), static_cast<int>(node.source().begin.line)});
        return;
    }
    int number = 0;
    for (const toml::node& item : *array) {
        settings.append({QStringLiteral("%1[%2]").arg(name).arg(++number), valueOf(item),
                         static_cast<int>(item.source().begin.line)});
    }
}

} // namespace

std::optional<Base::Problem> readSettings(const QString& path, QVector<Setting>& settings) {
    Configuration configuration;
    if (auto problem = readConfiguration(path, configuration)) {
        return problem;
    }
    QFile file(path);
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    try {
        QVector<Setting> found;
        addTable(toml::parse(
                     std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size()))),
                 QString(), found);
        std::stable_sort(found.begin(), found.end(),
                         [](const Setting& a, const Setting& b) { return a.line < b.line; });
        settings = found;
    } catch (const toml::parse_error&) {
        // It could be read a moment ago.
        return Base::Problem{Base::Message::ConfigurationUnreadable,
                             path + QStringLiteral(": changes while it is read; try again")};
    }
    return std::nullopt;
}

} // namespace Uicov::Coverage
