// SPDX-License-Identifier: Apache-2.0
#include "oxautils/encoding/storage_text.h"

#include "files/fail.h"
#include "oxautils/encoding/unit_text.h"
#include "oxautils/model/limits.h"

#include <QRegularExpression>

namespace OXA {

namespace {

constexpr char kForms[] = "write \"all\", \"changes\", \"changes of NAME NAME\" or \"when "
                          "EXPRESSION\"; after the last three optionally \", gap BITS\" and "
                          "\", limit SAMPLES\"";

/// What follows the first part of a text; -1: not there.
struct Amounts {
    qint64 gap = -1;
    qint64 limit = -1;
};

QRegularExpression form(const char* pattern)
{
    return QRegularExpression(pattern,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

/// Removes ", gap N" and ", limit N" from the end of `text`.
bool takeAmounts(QString& text, Amounts& amounts, QString* error)
{
    static const QRegularExpression last = form("^(.*),\\s*(gap|limit)\\s+(\\S+)\\s*$");
    for (auto match = last.match(text); match.hasMatch(); match = last.match(text)) {
        const QString name = match.captured(2).toLower();
        qint64& amount = name == "gap" ? amounts.gap : amounts.limit;
        const qint64 most = name == "gap" ? CoreStorage::kMostGapBits : CoreStorage::kMostLimit;
        bool ok = false;
        const qint64 number = match.captured(3).toLongLong(&ok);
        if (!ok || number < 0 || number > most)
            return fail(error,
                QString("\"%1 %2\": write a number from 0 to %3")
                    .arg(name, match.captured(3), QString::number(most)));
        if (amount >= 0)
            return fail(error, QString("\"%1\" is there twice").arg(name));
        amount = number;
        text = match.captured(1);
    }
    return true;
}

/// Reads the first part of a text.
bool readKeep(const QString& text, bool dynamic, CoreStorage& storage, QString* error)
{
    static const QRegularExpression first = form("^\\s*(all|changes\\s+of|changes|when)\\b(.*)$");
    static const QRegularExpression more = form(",\\s+(.*)$|,$");
    const auto afterComma = more.match(text);
    if (afterComma.hasMatch())
        return fail(error,
            QString("\"%1\" after a comma is neither \"gap BITS\" nor \"limit SAMPLES\"; spaces "
                    "separate names")
                .arg(afterComma.captured(1)));
    const auto match = first.match(text);
    const QString word = match.captured(1).toLower();
    const QString rest = match.captured(2).trimmed();
    const bool takesMore = word == "when" || word.endsWith("of");
    if (word.isEmpty() || takesMore == rest.isEmpty())
        return fail(error, kForms);
    if (word == "when") {
        storage.keep = CoreStorage::When;
        storage.when = expressionFromText(rest, dynamic);
    } else if (word != "all") {
        storage.keep = CoreStorage::Changes;
        storage.watch = watchFromText(rest);
    }
    return true;
}

}

QString storageText(const CoreStorage& storage)
{
    if (storage.isDefault())
        return kKeepWords[CoreStorage::All];
    QString text = kKeepWords[storage.keep];
    if (storage.keep == CoreStorage::When)
        text += ' ' + storage.when;
    else if (!storage.watch.isEmpty())
        text += " of " + watchText(storage.watch);
    text += QString(", gap %1").arg(storage.gapBits);
    return storage.limit == 0 ? text : text + QString(", limit %1").arg(storage.limit);
}

bool storageFromText(const QString& text, AoCore& core, QString* error)
{
    QString first = text;
    Amounts amounts;
    CoreStorage storage;
    if (!takeAmounts(first, amounts, error)
        || !readKeep(first, core.expressionType == DynamicExpressions, storage, error))
        return false;
    const bool hasAmount = amounts.gap >= 0 || amounts.limit >= 0;
    if (storage.isDefault() && hasAmount)
        return fail(error, "\"all\" has no gap and no limit");
    const CoreStorage& before = core.storage;
    if (!storage.isDefault() && !before.isDefault()) {
        storage.gapBits = before.gapBits;
        storage.limit = before.limit;
    }
    if (amounts.gap >= 0)
        storage.gapBits = int(amounts.gap);
    if (amounts.limit >= 0)
        storage.limit = amounts.limit;
    core.storage = storage;
    return true;
}

}
