#ifndef APPS_OXA_OPTIONS_H
#define APPS_OXA_OPTIONS_H

#include <CLI/CLI.hpp>
#include <QStringList>

/// Adds an option that takes one text, in the locale's encoding.
CLI::Option* addText(
    CLI::App& command, const std::string& names, QString& value, const std::string& help);

/// Adds an option that may be repeated and takes a text each time.
CLI::Option* addTexts(
    CLI::App& command, const std::string& names, QStringList& values, const std::string& help);

/// Refuses what is no number from `least` to `most`.
CLI::Validator between(double least, double most);

/// What names a part, for commands that need one.
struct PartOptions {
    QString part;
    QString device;
    QString deviceDb;
};

/// Adds --device-db.
CLI::Option* addCatalogueOption(CLI::App& command, QString& file);

/// Adds --part, --device and --device-db; the first is returned, so that it can be required.
CLI::Option* addPartOptions(CLI::App& command, PartOptions& options);

#endif
