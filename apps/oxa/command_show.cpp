// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "core_words.h"
#include "options.h"
#include "request.h"
#include "state_options.h"

#include "oxacapture/trigger/trigger_setup.h"
#include "oxautils/config/checksum.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/config/standard_config.h"
#include "oxautils/encoding/events_text.h"
#include "oxautils/encoding/signals_text.h"
#include "oxautils/encoding/storage_text.h"
#include "oxautils/encoding/unit_text.h"
#include "oxautils/model/limits.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {

constexpr char kSummary[] = "Print a configuration and the state of its checksum";

constexpr char kHelp[]
    = R"(The checksum is compared with the one computed from the file's content. A file with
another checksum was damaged, or changed by a program that does not update it; hosts
may refuse it. `oxa set FILE` corrects the checksum.

`oxa set` takes the texts of match units and trigger ports, after the name and the
number of bits, of expressions, and after "stores" and "forced by", as they are printed
here; --json has them as "text".

Programs write the trigger position when they arm a core. For captures from power-up
on, some devices use a trigger position one higher: the output lists these devices;
--json has them in "powerUp", which is null for a core that is not armed at power-up.)";

struct Options {
    QString file;
    bool json = false;
};

struct Checksum {
    QString stored;
    QString computed;

    const char* state() const
    {
        return stored.isEmpty() ? "missing" : stored == computed ? "matches" : "differs";
    }
};

QString bitsText(int count) { return count == 1 ? "1 bit" : QString("%1 bits").arg(count); }

QString storageText(int storage)
{
    return Words(kMemoryWords).has(storage) ? kMemoryWords[storage]
                                            : QString("storage %1").arg(storage);
}

QString edgeText(int trigType)
{
    return Words(kEdgeWords).has(trigType) ? kEdgeWords[trigType] : QString::number(trigType);
}

const char* expressionKind(const OXA::AoCore& core)
{
    return kExpressionWords[core.expressionType == OXA::DynamicExpressions];
}

/// What is shown of all cores.
struct Shown {
    QString file;
    OXA::StateNames states;
    QList<OXA::AoCore*> cores; ///< none in a Lite configuration
};

void showCore(TextOut& out, const OXA::AoCore& core, int position, const Shown& shown)
{
    out << "\ncore " << position << "  index " << core.index << ", clock " << core.sampleClock
        << ", " << edgeText(core.trigType) << " edge";
    if (!core.moduleName.isEmpty())
        out << ", module " << core.moduleName;
    out << "\n  data     " << bitsText(core.dataSignals().size()) << " x " << core.storageDepth
        << " samples in " << storageText(core.implementation) << ": "
        << OXA::signalsText(core.signalList) << "\n  windows  " << core.windowNum << " of "
        << core.captureAmount << " samples, " << core.triggerPos << " before the trigger\n";
    if (!core.storage.isDefault())
        out << "  stores   " << OXA::storageText(core.storage) << '\n';
    if (!core.events.isDefault())
        out << "  events   " << OXA::eventsText(shown.cores, core) << '\n';
    if (core.captureInitDataEnabled)
        out << "  armed    from power-up on; its windows then have "
            << OXA_CAPTURE::powerUpText(core, shown.file) << '\n';
    for (const OXA::TriggerPort* port : core.availableTriggers())
        out << "  T" << port->index << "       " << bitsText(port->singleSignals().size()) << ": "
            << OXA::signalsText(port->signalList) << '\n';
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits())
        out << "  M" << unit->index << "       " << OXA::unitText(*unit, shown.states) << '\n';
    out << "  trigger  " << expressionKind(core) << ", "
        << (core.expressions.isEmpty() ? QString("by force only")
                                       : core.expressions.join(", then "));
    if (core.expressionType == OXA::DynamicExpressions)
        out << "; tables in " << storageText(core.exImplementation);
    if (core.forceTriggerByFallingEdge)
        out << "; forced by the falling edge";
    out << '\n';
}

void showCore(TextOut& out, const OXA::AOCore_Lite& core, int position, const Shown&)
{
    out << "\ncore " << position << "  index " << core.index << ", clock " << core.sampleClock
        << ", " << edgeText(core.trigType) << " edge";
    if (!core.moduleName.isEmpty())
        out << ", module " << core.moduleName;
    out << "\n  data     " << bitsText(core.dataSignals().size()) << " x " << core.captureAmount
        << " samples in " << storageText(core.implementation) << ": "
        << OXA::signalsText(core.signalList) << '\n';
    if (core.inputRegisterEnabled)
        out << "           after an input register\n";
    if (core.captureInitDataEnabled)
        out << "  armed    from power-up on\n";
}

template <typename Core> void showCores(TextOut& out, const QList<Core*>& cores, const Shown& shown)
{
    for (int position = 0; position < cores.size(); ++position)
        showCore(out, *cores.at(position), position, shown);
}

QJsonValue powerUpJson(const OXA::AoCore& core, const Shown& shown)
{
    if (!core.captureInitDataEnabled)
        return {};
    const OXA_CAPTURE::PowerUpShift shift = OXA_CAPTURE::powerUpShift(core, shown.file);
    QJsonObject object;
    object.insert("devices", QJsonArray::fromStringList(shift.devices));
    object.insert("triggerPosition", shift.devices.isEmpty() ? core.triggerPos : shift.position);
    return object;
}

QJsonObject toJson(const OXA::MatchUnit& unit, const OXA::StateNames& states)
{
    const QString text = OXA::unitText(unit, states);
    return {
        {"index",      unit.index                                                   },
        {"type",       OXA::type2string(unit.matchType)                             },
        {"function",   OXA::func2string(unit.matchFunc)                             },
        {"value0",     unit.value0                                                  },
        {"value1",     unit.value1                                                  },
        {"counter",    unit.counterEnable ? QJsonValue(unit.counter) : QJsonValue() },
        {"continuous", unit.continuous                                              },
        {"port",       unit.trigger ? QJsonValue(unit.trigger->index) : QJsonValue()},
        {"text",       text                                                         },
    };
}

QJsonObject toJson(const OXA::CoreStorage& storage)
{
    QJsonObject object {
        {"keep",    OXA::kKeepWords[storage.keep]},
        {"gapBits", storage.gapBits              },
        {"limit",   storage.limit                },
        {"text",    OXA::storageText(storage)    },
    };
    if (storage.keep == OXA::CoreStorage::When)
        object.insert("when", storage.when);
    else
        object.insert("watch", QJsonArray::fromStringList(storage.watch));
    return object;
}

QJsonObject eventsJson(const OXA::AoCore& core, const QList<OXA::AoCore*>& cores)
{
    QJsonArray forcing;
    for (const int place : OXA::forcingPlaces(cores, core))
        forcing += place;
    const QString text = OXA::eventsText(cores, core);
    return {
        {"forcedBy",   forcing               },
        {"triggerOut", core.events.triggerOut},
        {"stamps",     core.events.stamps    },
        {"text",       text                  },
    };
}

QJsonObject toJson(const OXA::AoCore& core, const Shown& shown)
{
    QJsonArray ports;
    for (const OXA::TriggerPort* port : core.availableTriggers())
        ports += QJsonObject {
            {"index",   port->index                                      },
            {"signals", QJsonArray::fromStringList(port->singleSignals())},
            {"text",    OXA::signalsText(port->signalList)               }
        };
    QJsonArray units;
    for (const OXA::MatchUnit* unit : core.enabledMatchUnits())
        units += toJson(*unit, shown.states);
    const QJsonValue powerUp = powerUpJson(core, shown);
    const QJsonArray signalNames = QJsonArray::fromStringList(core.dataSignals());
    const QJsonArray expressions = QJsonArray::fromStringList(core.expressions);
    QJsonObject object {
        {"index",           core.index                      },
        {"module",          core.moduleName                 },
        {"sampleClock",     core.sampleClock                },
        {"edge",            edgeText(core.trigType)         },
        {"storageDepth",    core.storageDepth               },
        {"captureAmount",   core.captureAmount              },
        {"windowCount",     core.windowNum                  },
        {"triggerPosition", core.triggerPos                 },
        {"powerUp",         powerUp                         },
        {"storage",         storageText(core.implementation)},
        {"signals",         signalNames                     },
        {"ports",           ports                           },
        {"units",           units                           },
        {"expressionType",  expressionKind(core)            },
        {"expressions",     expressions                     },
    };
    if (!core.storage.isDefault())
        object.insert("stores", toJson(core.storage));
    if (!core.events.isDefault())
        object.insert("events", eventsJson(core, shown.cores));
    return object;
}

QJsonObject toJson(const OXA::AOCore_Lite& core, const Shown&)
{
    return {
        {"index",         core.index                                    },
        {"module",        core.moduleName                               },
        {"sampleClock",   core.sampleClock                              },
        {"edge",          edgeText(core.trigType)                       },
        {"captureAmount", core.captureAmount                            },
        {"storage",       storageText(core.implementation)              },
        {"signals",       QJsonArray::fromStringList(core.dataSignals())},
    };
}

template <typename Core> QJsonArray toJson(const QList<Core*>& cores, const Shown& shown)
{
    QJsonArray array;
    for (const Core* core : cores)
        array += toJson(*core, shown);
    return array;
}

void printJson(TextOut& out, const Shown& shown, const OXA::Configuration& configuration,
    const QString& version, const Checksum& checksum)
{
    const bool lite = configuration.mode == OXA::Lite;
    const QJsonArray cores
        = lite ? toJson(configuration.liteCores, shown) : toJson(configuration.cores, shown);
    const char* mode = lite ? "Lite" : "Standard";
    const QJsonObject sum {
        {"state",    checksum.state() },
        {"stored",   checksum.stored  },
        {"computed", checksum.computed},
    };
    out.setResult({
        {"file",     shown.file},
        {"mode",     mode      },
        {"version",  version   },
        {"checksum", sum       },
        {"cores",    cores     },
    });
}

void print(TextOut& out, const Shown& shown, const OXA::Configuration& configuration,
    const QString& version, const Checksum& checksum)
{
    const bool lite = configuration.mode == OXA::Lite;
    const int count = configuration.cores.size() + configuration.liteCores.size();
    out << shown.file << ": " << (lite ? "Lite" : "Standard") << ", version " << version << ", "
        << count << (count == 1 ? " core" : " cores") << "\nchecksum ";
    if (checksum.stored == checksum.computed)
        out << checksum.stored << " matches\n";
    else
        out << (checksum.stored.isEmpty() ? "missing" : checksum.stored + " differs")
            << "; expected " << checksum.computed << '\n';
    showCores(out, configuration.cores, shown);
    showCores(out, configuration.liteCores, shown);
}

int run(const Options& options, Io& io)
{
    const OXA::ParseOnce once;
    OXA::Configuration configuration;
    if (!readConfiguration(options.file, configuration, io.err))
        return kUnusable;
    const QString version = OXA::versionFromOxaConfigFile(options.file);
    const Checksum checksum {
        OXA::readOXACRCForXml(options.file), OXA::computeOXACRCForXml(options.file)};
    const Shown shown {options.file, knownStates(options.file, io.err), configuration.cores};
    if (options.json)
        printJson(io.out, shown, configuration, version, checksum);
    else
        print(io.out, shown, configuration, version, checksum);
    return kDone;
}

}

void addShow(CLI::App& app, Io& io, int& status)
{
    Command command(app, "show", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.configuration(options->file);
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
