// SPDX-FileCopyrightText: the uicov authors
// SPDX-License-Identifier: MIT

#include "coverage/configurationfile.h"

#include "base/displaytext.h"
#include "base/spelling.h"
#include "coverage/criteria.h"
#include "run/controlnames.h"

#include <QFile>

#include <functional>
#include <string_view>

#include <toml++/toml.h>

namespace Uicov::Coverage {

using Base::Message;
using Base::Problem;

namespace {

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

/** Reads tables key by key; remembers the first thing that is wrong. */
class Reader {
public:
    using Handler = std::function<void(const toml::node&)>;
    using Handlers = QMap<QString, Handler>;

    explicit Reader(const QString& path)
        : m_path(path) {}

    const std::optional<Problem>& problem() const { return m_problem; }

    void fail(const toml::source_region& where, const QString& what) {
        if (!m_problem) {
            m_problem = Problem{Message::ConfigurationWrong, QStringLiteral("%1:%2:%3: ")
                                                                     .arg(m_path)
                                                                     .arg(where.begin.line)
                                                                     .arg(where.begin.column) +
                                                                 what};
        }
    }

    /** Hands each value to the handler of its key; a key without one is an error. */
    void readTable(const toml::node& node, const QString& name, const Handlers& handlers) {
        const toml::table* const table = node.as_table();
        if (table == nullptr) {
            fail(node.source(), QStringLiteral("[%1] has to be a table").arg(name));
            return;
        }
        for (const auto& entry : *table) {
            const QString key = textOf(entry.first.str());
            const auto handler = handlers.constFind(key);
            if (handler == handlers.cend()) {
                fail(entry.first.source(),
                     QStringLiteral("there is no %1 \"%2\"%3; the nearest known one is \"%4\"")
                         .arg(name.isEmpty() ? QStringLiteral("section") : QStringLiteral("key"),
                              key,
                              name.isEmpty() ? QString() : QStringLiteral(" in [%1]").arg(name),
                              Base::nearestSpelling(key, handlers.keys())));
                return;
            }
            (*handler)(entry.second);
        }
    }

    void readArray(const toml::node& node, const QString& name, const Handler& handler) {
        const toml::array* const array = node.as_array();
        if (array == nullptr) {
            fail(node.source(), name + QStringLiteral(" has to be a list"));
            return;
        }
        for (const toml::node& item : *array) {
            handler(item);
        }
    }

    QString text(const toml::node& node) {
        if (const auto value = node.value_exact<std::string>()) {
            return QString::fromStdString(*value);
        }
        fail(node.source(), QStringLiteral("a text in quotation marks is expected here"));
        return {};
    }

    QStringList texts(const toml::node& node) {
        QStringList result;
        readArray(node, QStringLiteral("this"),
                  [&](const toml::node& item) { result.append(text(item)); });
        return result;
    }

    double percent(const toml::node& node) {
        const auto value = node.is_number() ? node.value<double>() : std::nullopt;
        if (value && *value >= 0 && *value <= 100) {
            return *value;
        }
        fail(node.source(), QStringLiteral("a number from 0 to 100 is expected here"));
        return 0;
    }

    bool flag(const toml::node& node) {
        if (const auto value = node.value_exact<bool>()) {
            return *value;
        }
        fail(node.source(), QStringLiteral("true or false is expected here"));
        return false;
    }

    int number(const toml::node& node, int highest) {
        const auto value = node.value_exact<int64_t>();
        if (value && *value >= 0 && *value <= highest) {
            return static_cast<int>(*value);
        }
        fail(node.source(),
             QStringLiteral("a whole number from 0 to %1 is expected here").arg(highest));
        return 0;
    }

    QString choice(const toml::node& node, const QStringList& choices) {
        QString value = text(node);
        if (!m_problem && !choices.contains(value)) {
            fail(node.source(), QStringLiteral("\"%1\" is none of %2; the nearest one is \"%3\"")
                                    .arg(value, choices.join(QStringLiteral(", ")),
                                         Base::nearestSpelling(value, choices)));
        }
        return value;
    }

private:
    QString m_path;
    std::optional<Problem> m_problem;
};

void readIgnoreRule(Reader& reader, const toml::node& node, Configuration& configuration) {
    IgnoreRule rule;
    rule.line = static_cast<int>(node.source().begin.line);
    const auto into = [&reader](Pattern& pattern) {
        return [&](const toml::node& value) { pattern = Pattern(reader.text(value)); };
    };
    reader.readTable(
        node, QStringLiteral("ignore"),
        {{QStringLiteral("key"), into(rule.key)},
         {QStringLiteral("window"), into(rule.window)},
         {QStringLiteral("type"), into(rule.type)},
         {QStringLiteral("class"), into(rule.className)},
         {QStringLiteral("text"), into(rule.text)},
         {QStringLiteral("why"), [&](const auto& value) { rule.why = reader.text(value); }}});
    if (rule.toString().isEmpty()) {
        reader.fail(node.source(),
                    QStringLiteral("an ignore rule needs a key, window, type, class or text; it "
                                   "would hide everything"));
    }
    configuration.ignoreRules.append(rule);
}

void readLabelRule(Reader& reader, const toml::node& node, Configuration& configuration) {
    LabelRule rule;
    bool hasPattern = false;
    const auto pattern = [&](const toml::node& value) {
        hasPattern = true;
        rule.pattern =
            QRegularExpression(reader.text(value), QRegularExpression::UseUnicodePropertiesOption);
        if (!rule.pattern.isValid()) {
            reader.fail(value.source(),
                        QStringLiteral("this is no regular expression: character %1 and what is "
                                       "before it cannot stand like this")
                            .arg(rule.pattern.patternErrorOffset() + 1));
        }
    };
    reader.readTable(node, QStringLiteral("labels"),
                     {{QStringLiteral("pattern"), pattern},
                      {QStringLiteral("replace"),
                       [&](const auto& value) { rule.replacement = reader.text(value); }}});
    if (!hasPattern) {
        reader.fail(node.source(), QStringLiteral("a label rule needs a pattern"));
    }
    configuration.labelRules.append(rule);
}

void readCriteria(Reader& reader, const toml::node& node, Configuration& configuration) {
    const toml::table* const table = node.as_table();
    if (table == nullptr) {
        reader.fail(node.source(), QStringLiteral("[criteria] has to be a table"));
        return;
    }
    for (const auto& entry : *table) {
        const QStringList events = reader.texts(entry.second);
        if (events.isEmpty()) {
            reader.fail(entry.second.source(),
                        QStringLiteral("name the events that have to happen, as [\"checked\"]"));
        }
        for (const QString& criterion : events) {
            if (!Coverage::isCriterion(criterion)) {
                reader.fail(entry.second.source(),
                            QStringLiteral("\"%1\" is no criterion; name events, \"enabled\", "
                                           "\"way=menu\" or \"way=*\"")
                                .arg(criterion));
            }
        }
        configuration.criteria.insert(textOf(entry.first.str()), events);
    }
}

void readGroups(Reader& reader, const toml::node& node, Configuration& configuration) {
    const toml::table* const table = node.as_table();
    if (table == nullptr) {
        reader.fail(node.source(),
                    QStringLiteral("[groups] has to be a table of names and patterns"));
        return;
    }
    for (const auto& entry : *table) {
        const QStringList globs = entry.second.is_string() ? QStringList(reader.text(entry.second))
                                                           : reader.texts(entry.second);
        if (globs.isEmpty()) {
            reader.fail(entry.second.source(),
                        QStringLiteral("a group needs a pattern over the keys of its controls, as "
                                       "'*Button \"Sensor *\"'"));
        }
        QVector<Pattern> patterns;
        for (const QString& glob : globs) {
            patterns.append(Pattern(glob));
        }
        configuration.groups.append(qMakePair(textOf(entry.first.str()), patterns));
    }
}

void readNames(Reader& reader, const toml::node& node, Configuration& configuration) {
    const auto prefer = [&](const toml::node& value) {
        reader.readArray(value, QStringLiteral("prefer"), [&](const toml::node& item) {
            configuration.preferredNames.append(reader.choice(item, Runs::ControlNames::kinds()));
        });
    };
    reader.readTable(node, QStringLiteral("names"), {{QStringLiteral("prefer"), prefer}});
}

void readGates(Reader& reader, const toml::node& node, Gates& gates) {
    const auto windows = [&](const toml::node& value) {
        const toml::table* const table = value.as_table();
        if (table == nullptr) {
            reader.fail(value.source(), QStringLiteral("[gates.windows] has to be a table of "
                                                       "patterns and numbers"));
            return;
        }
        for (const auto& entry : *table) {
            gates.failUnderWindows.append(
                qMakePair(Pattern(textOf(entry.first.str())), reader.percent(entry.second)));
        }
    };
    const auto required = [&](const toml::node& value) {
        const QStringList patterns = reader.texts(value);
        for (const QString& pattern : patterns) {
            gates.requiredWindows.append(Pattern(pattern));
        }
    };
    const auto failOn = [&](const toml::node& value) {
        reader.readArray(value, QStringLiteral("fail-on"), [&](const toml::node& item) {
            gates.failOn.append(reader.choice(item, Gates::differences()));
        });
    };
    reader.readTable(node, QStringLiteral("gates"),
                     {{QStringLiteral("fail-under"),
                       [&](const auto& value) { gates.failUnder = reader.percent(value); }},
                      {QStringLiteral("windows"), windows},
                      {QStringLiteral("require-windows"), required},
                      {QStringLiteral("fail-on"), failOn}});
}

void readReport(Reader& reader, const toml::node& node, ReportDefaults& report) {
    reader.readTable(
        node, QStringLiteral("report"),
        {{QStringLiteral("precision"),
          [&](const auto& value) {
              report.precision = reader.number(value, ReportDefaults::mostDigits);
          }},
         {QStringLiteral("sort"),
          [&](const auto& value) { report.sort = reader.choice(value, ReportDefaults::sorts()); }},
         {QStringLiteral("skip-covered"),
          [&](const auto& value) { report.skipsCovered = reader.flag(value); }},
         {QStringLiteral("missed"),
          [&](const auto& value) { report.listsMissed = reader.flag(value); }}});
}

/** What is said of a line that the parser refuses: the line, and what it may be. */
QString notToml(const QByteArray& bytes, int line) {
    constexpr int mostColumns = 60;
    const QList<QByteArray> lines = bytes.split('\n');
    const QString text = QString::fromUtf8(lines.value(line - 1)).trimmed();
    return QStringLiteral("this is no TOML%1; a line is [SECTION] or KEY = VALUE, each key once, "
                          "with texts in quotation marks")
        .arg(text.isEmpty()
                 ? QString()
                 : QStringLiteral(": ") + Base::elided(Base::escaped(text), mostColumns));
}

} // namespace

QString defaultConfigurationFile() {
    return QStringLiteral("uicov.toml");
}

std::optional<Problem> readConfiguration(const QString& path, Configuration& configuration) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return Problem{Message::ConfigurationUnreadable,
                       path + QStringLiteral(": cannot be read: ") + file.errorString() +
                           QStringLiteral("; name another with --config, or --no-config")};
    }
    const QByteArray bytes = file.readAll();
    Reader reader(path);
    toml::table table;
    try {
        table = toml::parse(
            std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
    } catch (const toml::parse_error& error) {
        reader.fail(error.source(), notToml(bytes, static_cast<int>(error.source().begin.line)));
        return reader.problem();
    }
    configuration.path = path;
    const auto each = [&](void (*read)(Reader&, const toml::node&, Configuration&),
                          const char* name) {
        return [&reader, &configuration, read, name](const toml::node& node) {
            reader.readArray(node, QStringLiteral("[[%1]]").arg(QLatin1String(name)),
                             [&](const toml::node& item) { read(reader, item, configuration); });
        };
    };
    reader.readTable(table, QString(),
                     {{QStringLiteral("ignore"), each(readIgnoreRule, "ignore")},
                      {QStringLiteral("labels"), each(readLabelRule, "labels")},
                      {QStringLiteral("groups"),
                       [&](const auto& node) { readGroups(reader, node, configuration); }},
                      {QStringLiteral("names"),
                       [&](const auto& node) { readNames(reader, node, configuration); }},
                      {QStringLiteral("criteria"),
                       [&](const auto& node) { readCriteria(reader, node, configuration); }},
                      {QStringLiteral("gates"),
                       [&](const auto& node) { readGates(reader, node, configuration.gates); }},
                      {QStringLiteral("report"),
                       [&](const auto& node) { readReport(reader, node, configuration.report); }},
                      {QStringLiteral("redact"), [&](const auto& node) {
                           reader.readTable(node, QStringLiteral("redact"),
                                            {{QStringLiteral("patterns"), [&](const auto& value) {
                                                  configuration.redacted = reader.texts(value);
                                              }}});
                       }}});
    return reader.problem();
}

} // namespace Uicov::Coverage
