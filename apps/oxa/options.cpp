#include "options.h"

static constexpr int kDigits = 12; // of a limit

CLI::Option* addText(
    CLI::App& command, const std::string& names, QString& value, const std::string& help)
{
    return command
        .add_option_function<std::string>(
            names,
            [&value](const std::string& text) { value = QString::fromLocal8Bit(text.c_str()); },
            help)
        ->type_name("TEXT");
}

CLI::Option* addTexts(
    CLI::App& command, const std::string& names, QStringList& values, const std::string& help)
{
    return command
        .add_option_function<std::vector<std::string>>(
            names,
            [&values](const std::vector<std::string>& texts) {
                for (const std::string& text : texts)
                    values += QString::fromLocal8Bit(text.c_str());
            },
            help)
        ->type_name("TEXT")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

CLI::Validator between(double least, double most)
{
    // CLI11's own message prints the largest number in full, and its range check accepts NaN.
    const auto check = [least, most](const std::string& text) {
        double number = 0;
        if (CLI::detail::lexical_cast(text, number) && number >= least && number <= most)
            return std::string();
        return QString("\"%1\" is not a number from %2 to %3")
            .arg(QString::fromStdString(text), QString::number(least, 'g', kDigits),
                QString::number(most, 'g', kDigits))
            .toStdString();
    };
    return CLI::Validator(check, "");
}

CLI::Option* addCatalogueOption(CLI::App& command, QString& file)
{
    return addText(command, "--device-db", file,
        "Device catalogue to use instead of the built-in one (also: OXA_DEVICE_DB)")
        ->type_name("FILE");
}

CLI::Option* addPartOptions(CLI::App& command, PartOptions& options)
{
    CLI::Option* part = addText(
        command, "--part", options.part, "Part number to build for; `oxa devices` lists them")
                            ->type_name("PN");
    addText(command, "--device", options.device,
        "Device name, when several devices have the part number")
        ->type_name("NAME")
        ->needs(part);
    addCatalogueOption(command, options.deviceDb);
    return part;
}
