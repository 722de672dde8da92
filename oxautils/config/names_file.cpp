// SPDX-License-Identifier: Apache-2.0
#include "oxautils/config/names_file.h"

#include "files/fail.h"
#include "files/replace_file.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <cmath>

namespace OXA {

namespace {

constexpr double kMostWhole = 9007199254740992; // 2^53: greater numbers of JSON are not exact

/// The bits of each of `digits`, of a base that is a power of two.
QString digitsInBinary(const QString& digits, int base, int bitsOfDigit)
{
    QString bits;
    for (const QChar digit : digits) {
        bool ok = false;
        const int value = QString(digit).toInt(&ok, base);
        if (!ok)
            return {};
        bits += QString::number(value, 2).rightJustified(bitsOfDigit, '0');
    }
    return bits;
}

QString inBinary(QString digits, QChar base)
{
    digits.remove('_');
    if (base == 'b')
        return digitsInBinary(digits, 2, 1);
    if (base == 'o')
        return digitsInBinary(digits, 8, 3);
    if (base == 'h')
        return digitsInBinary(digits, 16, 4);
    bool ok = false;
    const quint64 value = digits.toULongLong(&ok);
    return ok ? QString::number(value, 2) : QString();
}

/// Reads the object of the file `path`; empty without the file.
bool readObject(const QString& path, QJsonObject& object, QString* error)
{
    QFile file(path);
    if (!file.exists())
        return true;
    if (!file.open(QIODevice::ReadOnly))
        return fail(error, path + ": cannot be read: " + file.errorString());
    QJsonParseError problem;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &problem);
    object = document.object();
    return document.isObject()
        || fail(error,
            path + ": is no JSON object: "
                + (document.isNull() ? problem.errorString() : QString("it is an array")));
}

bool readClocks(const QJsonObject& object, QMap<int, double>& clocks, QString* error)
{
    for (auto clock = object.begin(); clock != object.end(); ++clock) {
        bool isIndex = false;
        const int index = clock.key().toInt(&isIndex);
        const double hz = clock.value().toDouble();
        if (!isIndex || hz <= 0)
            return fail(error,
                QString("clocks: \"%1\" is not a core's index with a frequency in Hz")
                    .arg(clock.key()));
        clocks.insert(index, hz);
    }
    return true;
}

QString digitsOf(const QJsonValue& value)
{
    const double number = value.toDouble(-1);
    return number < 0 || number > kMostWhole || std::floor(number) != number
        ? binaryDigits(value.toString())
        : QString::number(qint64(number), 2);
}

bool readStates(const QJsonObject& object, StateNames& states, QString* error)
{
    for (auto signal = object.begin(); signal != object.end(); ++signal) {
        SignalStates& own = states[signal.key()];
        const QJsonObject about = signal.value().toObject();
        own.range = about.value("range").toString();
        const QJsonObject values = about.value("values").toObject();
        for (auto value = values.begin(); value != values.end(); ++value) {
            const QString digits = digitsOf(value.value());
            if (digits.isEmpty())
                return fail(error,
                    QString("states: \"%1\": the value of \"%2\" is no whole number from 0 to"
                            " 2^53, nor a text such as \"0x1f\"")
                        .arg(signal.key(), value.key()));
            own.values.insert(value.key(), digits);
        }
    }
    return true;
}

QJsonObject toJson(const SignalStates& states)
{
    QJsonObject values;
    for (auto value = states.values.begin(); value != states.values.end(); ++value) {
        bool ok = false;
        const quint64 number = value->toULongLong(&ok, 2);
        values[value.key()] = ok && double(number) <= kMostWhole ? QJsonValue(double(number))
                                                                 : QJsonValue("0b" + *value);
    }
    QJsonObject object {
        {"values", values}
    };
    if (!states.range.isEmpty())
        object["range"] = states.range;
    return object;
}

QString fileOf(const QString& configuration) { return configuration + ".names"; }

}

QString binaryDigits(const QString& text)
{
    static const QRegularExpression form(
        "^(?:\\d*\\s*'[sS]?([bodhBODH])\\s*|0([xXbB]))?([0-9a-fA-F_]+)$");
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch())
        return {};
    const QString base = (match.captured(1) + match.captured(2)).toLower();
    return inBinary(match.captured(3), base.isEmpty() ? 'd' : base == "x" ? 'h' : base.at(0));
}

bool readKnownNames(const QString& path, KnownNames& names, QString* error)
{
    names = KnownNames();
    QJsonObject object;
    QString problem;
    if (!readObject(fileOf(path), object, error))
        return false;
    return (readClocks(object["clocks"].toObject(), names.clocks, &problem)
               && readStates(object["states"].toObject(), names.states, &problem))
        || fail(error, fileOf(path) + ": " + problem);
}

bool addKnownStates(const QString& path, const StateNames& states, QString* error)
{
    if (states.isEmpty())
        return true;
    QJsonObject object;
    if (!readObject(fileOf(path), object, error))
        return false;
    const QJsonObject before = object;
    QJsonObject all = object["states"].toObject();
    for (auto signal = states.begin(); signal != states.end(); ++signal)
        all[signal.key()] = toJson(*signal);
    object["states"] = all;
    QString problem;
    return object == before
        || OXA_FILES::replaceFile(fileOf(path), QJsonDocument(object).toJson(), &problem)
        || fail(error, fileOf(path) + ": " + problem);
}

}
