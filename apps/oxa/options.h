// SPDX-License-Identifier: Apache-2.0
#ifndef APPS_OXA_OPTIONS_H
#define APPS_OXA_OPTIONS_H

#include <QStringList>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}

// CLI11 behind plain classes: its header takes seconds to compile, so one source includes it.

/// An option or an argument of a command. Each function returns the option itself.
class Option {
public:
    explicit Option(CLI::Option* option);

    Option typeName(const std::string& word) const; ///< of its value in --help
    Option required() const;
    Option needs(const Option& other) const;
    Option needs(const std::string& other) const;
    Option excludes(const Option& other) const;
    Option excludes(const std::string& other) const;
    Option atLeast(int values) const; ///< takes as many values as follow, not one
    Option separate() const; ///< puts an empty text between the values of two uses
    Option between(double least, double most) const; ///< accepts only these numbers
    Option oneOf(const std::vector<std::string>& words) const;

private:
    CLI::Option* m_option;
};

/// A command of the program. The functions add options; what `value` refers to has to outlive the
/// command. Texts are in the locale's encoding.
class Command {
public:
    Command(CLI::App& app, const std::string& name, const std::string& summary,
        const std::string& details);

    Option text(const std::string& names, QString& value, const std::string& help);
    /// The argument FILE, the configuration; "-" is the standard input.
    Option configuration(QString& file);
    /// May be repeated.
    Option texts(const std::string& names, QStringList& values, const std::string& help);
    Option flag(const std::string& names, bool& value, const std::string& help);
    /// A flag that a text may follow.
    Option flagOrText(
        const std::string& names, bool& given, QString& value, const std::string& help);
    Option number(const std::string& names, int& value, const std::string& help);
    Option number(const std::string& names, std::optional<int>& value, const std::string& help);
    Option number(const std::string& names, qint64& value, const std::string& help);
    Option number(const std::string& names, double& value, const std::string& help);
    Option number(
        const std::string& names, const std::function<void(double)>& set, const std::string& help);
    /// May be repeated.
    Option numbers(const std::string& names, std::vector<int>& values, const std::string& help);

    /// An option that was added before.
    Option option(const std::string& name) const;

    /// What the command does.
    void setRun(const std::function<void()>& run);

private:
    CLI::App* m_app;
};

/// Ends the call with the error that the option `names` is missing.
[[noreturn]] void missing(const std::string& names);

/// The options that select a part.
struct PartOptions {
    QString part;
    QString device;
    QString deviceDb;
};

/// Adds --device-db.
Option addCatalogueOption(Command& command, QString& file);

/// Adds --part, --device and --device-db; returns the first, so that it can be required.
Option addPartOptions(Command& command, PartOptions& options);

#endif
