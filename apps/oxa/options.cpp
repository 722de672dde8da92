// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include "oxautils/config/parse_once.h"

#include <CLI/CLI.hpp>
#include <QFile>
#include <QString>

#include <unistd.h>

namespace {

constexpr int kDigits = 12; // of a limit

// CLI11's own message prints the largest number in full, and its range check accepts NaN.
std::string whyNotBetween(const std::string& text, double least, double most)
{
    double number = 0;
    if (CLI::detail::lexical_cast(text, number) && number >= least && number <= most)
        return {};
    return QString("\"%1\" is not a number from %2 to %3")
        .arg(QString::fromStdString(text), QString::number(least, 'g', kDigits),
            QString::number(most, 'g', kDigits))
        .toStdString();
}

}

Option::Option(CLI::Option* option)
    : m_option(option)
{
}

Option Option::typeName(const std::string& word) const { return Option(m_option->type_name(word)); }

Option Option::required() const { return Option(m_option->required()); }

Option Option::needs(const Option& other) const { return Option(m_option->needs(other.m_option)); }

Option Option::needs(const std::string& other) const { return Option(m_option->needs(other)); }

Option Option::excludes(const Option& other) const
{
    return Option(m_option->excludes(other.m_option));
}

Option Option::excludes(const std::string& other) const
{
    return Option(m_option->excludes(other));
}

Option Option::atLeast(int values) const
{
    return Option(m_option->expected(values, CLI::detail::expected_max_vector_size));
}

Option Option::separate() const
{
    m_option->inject_separator();
    return *this;
}

Option Option::between(double least, double most) const
{
    const auto check
        = [least, most](const std::string& text) { return whyNotBetween(text, least, most); };
    return Option(m_option->check(CLI::Validator(check, "")));
}

Option Option::oneOf(const std::vector<std::string>& words) const
{
    return Option(m_option->check(CLI::IsMember(words)));
}

Command::Command(
    CLI::App& app, const std::string& name, const std::string& summary, const std::string& details)
    : m_app(app.add_subcommand(name, summary))
{
    m_app->footer(details + "\n");
}

Option Command::text(const std::string& names, QString& value, const std::string& help)
{
    const auto set
        = [&value](const std::string& text) { value = QString::fromLocal8Bit(text.c_str()); };
    return Option(m_app->add_option_function<std::string>(names, set, help)->type_name("TEXT"));
}

Option Command::configuration(QString& file)
{
    const auto set = [&file](const std::string& text) {
        file = QString::fromLocal8Bit(text.c_str());
        QFile input;
        if (file == "-" && input.open(STDIN_FILENO, QIODevice::ReadOnly | QIODevice::Text))
            OXA::setConfigurationText(file, input.readAll());
    };
    return Option(m_app
                      ->add_option_function<std::string>(
                          "FILE", set, "The configuration; - is standard input")
                      ->type_name("TEXT")
                      ->required());
}

Option Command::texts(const std::string& names, QStringList& values, const std::string& help)
{
    const auto add = [&values](const std::vector<std::string>& texts) {
        for (const std::string& text : texts)
            values += QString::fromLocal8Bit(text.c_str());
    };
    return Option(m_app->add_option_function<std::vector<std::string>>(names, add, help)
                      ->type_name("TEXT")
                      ->expected(1)
                      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll));
}

Option Command::flag(const std::string& names, bool& value, const std::string& help)
{
    return Option(m_app->add_flag(names, value, help));
}

Option Command::flagOrText(
    const std::string& names, bool& given, QString& value, const std::string& help)
{
    const auto set = [&given, &value](const std::vector<std::string>& texts) {
        given = true;
        if (!texts.empty())
            value = QString::fromLocal8Bit(texts.front().c_str());
    };
    return Option(m_app->add_option_function<std::vector<std::string>>(names, set, help)
                      ->type_name("TEXT")
                      ->expected(0, 1));
}

Option Command::number(const std::string& names, int& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help)->type_name("N"));
}

Option Command::number(const std::string& names, std::optional<int>& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help)->type_name("N"));
}

Option Command::number(const std::string& names, qint64& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help)->type_name("N"));
}

Option Command::number(const std::string& names, double& value, const std::string& help)
{
    return Option(m_app->add_option(names, value, help)->type_name("N"));
}

Option Command::number(
    const std::string& names, const std::function<void(double)>& set, const std::string& help)
{
    return Option(m_app->add_option_function<double>(names, set, help)->type_name("N"));
}

Option Command::numbers(const std::string& names, std::vector<int>& values, const std::string& help)
{
    return Option(m_app->add_option(names, values, help)
                      ->type_name("N")
                      ->expected(1)
                      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll));
}

Option Command::option(const std::string& name) const { return Option(m_app->get_option(name)); }

void Command::setRun(const std::function<void()>& run) { m_app->callback(run); }

void missing(const std::string& names) { throw CLI::RequiredError(names); }

Option addCatalogueOption(Command& command, QString& file)
{
    return command
        .text("--device-db", file,
            "Device catalogue to use instead of the built-in one (also: OXA_DEVICE_DB)")
        .typeName("FILE");
}

Option addPartOptions(Command& command, PartOptions& options)
{
    const Option part
        = command.text("--part", options.part, "Part number to build for; `oxa devices` lists them")
              .typeName("PN");
    command
        .text("--device", options.device, "Device name, when several devices have the part number")
        .typeName("NAME")
        .needs(part);
    addCatalogueOption(command, options.deviceDb);
    return part;
}
