#ifndef APPS_OXA_OPTIONS_H
#define APPS_OXA_OPTIONS_H

#include <CLI/CLI.hpp>
#include <QStringList>

/// Adds an option that takes one text, in the locale's encoding.
CLI::Option* addText(
    CLI::App& command, const std::string& names, QString& value, const std::string& help);

/// Adds an option that takes one text and may be repeated.
CLI::Option* addTexts(
    CLI::App& command, const std::string& names, QStringList& values, const std::string& help);

/// Accepts only numbers from `least` to `most`.
CLI::Validator between(double least, double most);

/// The options that select a part.
struct PartOptions {
    QString part;
    QString device;
    QString deviceDb;
};

/// Adds --device-db.
CLI::Option* addCatalogueOption(CLI::App& command, QString& file);

/// Adds --part, --device and --device-db; returns the first, so that it can be required.
CLI::Option* addPartOptions(CLI::App& command, PartOptions& options);

#endif
