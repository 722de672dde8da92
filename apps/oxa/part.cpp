#include "part.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int kMostSuggestions = 3;

/// The least number of characters to insert, drop or change to make one text of the other.
int editDistance(const QString& a, const QString& b)
{
    std::vector<int> row(size_t(b.size()) + 1);
    for (size_t j = 0; j < row.size(); ++j)
        row[j] = int(j);
    for (int i = 1; i <= a.size(); ++i) {
        int diagonal = row[0];
        row[0] = i;
        for (int j = 1; j <= b.size(); ++j) {
            const int changed = diagonal + (a.at(i - 1) == b.at(j - 1) ? 0 : 1);
            diagonal = row[size_t(j)];
            row[size_t(j)] = std::min({changed, diagonal + 1, row[size_t(j) - 1] + 1});
        }
    }
    return row.back();
}

QString quotedList(const QStringList& texts) { return "\"" + texts.join("\", \"") + "\""; }

void sayUnknown(const PartOptions& options, QTextStream& err)
{
    err << "error: no part \"" << options.part << "\"";
    if (!options.device.isEmpty())
        err << " of device \"" << options.device << "\"";
    err << " in the catalogue";
    const QStringList nearest = nearestParts(options.part);
    if (nearest.isEmpty())
        err << "; `oxa devices` lists them\n";
    else
        err << "; did you mean " << quotedList(nearest) << "?\n";
}

}

bool loadCatalogue(const PartOptions& options, QTextStream& err)
{
    QString error;
    if (options.deviceDb.isEmpty() || DEV::DeviceDb::instance().load(options.deviceDb, &error))
        return true;
    err << "error: " << error << '\n';
    return false;
}

std::optional<DEV::ChipInfo> findPart(const PartOptions& options, QTextStream& err)
{
    if (!loadCatalogue(options, err))
        return {};
    QStringList devices;
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips) {
        if (chip.partNumber == options.part
            && (options.device.isEmpty() || chip.name == options.device))
            devices += chip.name;
    }
    if (devices.isEmpty()) {
        sayUnknown(options, err);
        return {};
    }
    if (devices.size() > 1) {
        err << "error: part \"" << options.part
            << "\" is of several devices; add --device and one of " << quotedList(devices) << '\n';
        return {};
    }
    return DEV::DeviceDb::instance().find(options.part, devices.first());
}

QJsonObject partJson(const DEV::ChipInfo& chip)
{
    const auto count = [&chip](int i) { return chip.resources.value(i).toInt(); };
    return {
        {"part",          chip.partNumber        },
        {"series",        chip.series            },
        {"device",        chip.name              },
        {"grade",         chip.grade             },
        {"speed",         chip.speed             },
        {"package",       chip.package           },
        {"variant",       chip.variant           },
        {"luts",          count(0)               },
        {"adders",        count(1)               },
        {"registers",     count(2)               },
        {"ios",           count(3)               },
        {"shadowSram",    chip.resources.value(4)},
        {"blockSramKbit", count(5)               },
    };
}

QStringList nearestParts(const QString& text)
{
    struct Candidate {
        int distance;
        QString part;
    };
    std::vector<Candidate> candidates;
    const int farthest = std::max(2, text.size() / 3);
    const QString wanted = text.toUpper();
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips) {
        const int distance = editDistance(wanted, chip.partNumber.toUpper());
        if (distance <= farthest)
            candidates.push_back({distance, chip.partNumber});
    }
    std::stable_sort(candidates.begin(), candidates.end(),
        [](const Candidate& a, const Candidate& b) { return a.distance < b.distance; });
    QStringList parts;
    for (const Candidate& candidate : candidates)
        parts += candidate.part;
    parts.removeDuplicates();
    return parts.mid(0, kMostSuggestions);
}
