// SPDX-License-Identifier: Apache-2.0
#include "part.h"

#include "oxautils/model/edit_distance.h"

#include <dev/device_facts.h>

#include <algorithm>
#include <vector>

namespace {

constexpr int kMostSuggestions = 3;

QString quotedList(const QStringList& texts) { return "\"" + texts.join("\", \"") + "\""; }

void sayUnknown(const PartOptions& options, TextOut& err)
{
    const QString device
        = options.device.isEmpty() ? QString() : " of device \"" + options.device + "\"";
    const QStringList nearest = nearestParts(options.part);
    err.error("no part \"" + options.part + "\"" + device + " in the catalogue"
        + (nearest.isEmpty() ? QString("; `oxa devices` lists them")
                             : "; did you mean " + quotedList(nearest) + "?"));
}

}

QString namedCatalogue(const PartOptions& options)
{
    static const QString environment = qEnvironmentVariable("OXA_DEVICE_DB"); // before it is unset
    return options.deviceDb.isEmpty() ? environment : options.deviceDb;
}

bool loadCatalogue(const PartOptions& options, TextOut& err)
{
    // When the named catalogue cannot be read, do not use the built-in one instead.
    const QString named = namedCatalogue(options);
    qunsetenv("OXA_DEVICE_DB");
    QString error;
    if (named.isEmpty() || DEV::DeviceDb::instance().load(named, &error))
        return true;
    err.error(error, named);
    return false;
}

std::optional<DEV::ChipInfo> findPart(const PartOptions& options, TextOut& err)
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
        err.error("part \"" + options.part
            + "\" belongs to several devices; add --device with one of " + quotedList(devices));
        return {};
    }
    return DEV::DeviceDb::instance().find(options.part, devices.first());
}

QJsonObject partJson(const DEV::ChipInfo& chip)
{
    const auto count = [&chip](DEV::ResourceEntry i) { return chip.resources.value(i).toInt(); };
    return {
        {"part",          chip.partNumber                           },
        {"series",        chip.series                               },
        {"device",        chip.name                                 },
        {"grade",         chip.grade                                },
        {"speed",         chip.speed                                },
        {"package",       chip.package                              },
        {"variant",       chip.variant                              },
        {"luts",          count(DEV::LutEntry)                      },
        {"adders",        count(DEV::AdderEntry)                    },
        {"registers",     count(DEV::RegisterEntry)                 },
        {"ios",           count(DEV::IoEntry)                       },
        {"shadowSram",    chip.resources.value(DEV::ShadowSramEntry)},
        {"blockSramKbit", count(DEV::BlockSramEntry)                },
    };
}

QStringList nearestParts(const QString& text)
{
    struct Candidate {
        int distance;
        QString part;
    };
    std::vector<Candidate> candidates;
    const int farthest = std::max(2, int(text.size()) / 3);
    const std::string wanted = text.toStdString();
    const QList<DEV::ChipInfo> chips = DEV::DeviceDb::instance().chips();
    for (const DEV::ChipInfo& chip : chips) {
        const int distance = OXA::editDistance(wanted, chip.partNumber.toStdString(), farthest);
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
