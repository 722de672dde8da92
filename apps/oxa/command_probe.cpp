// SPDX-License-Identifier: Apache-2.0
#include "command.h"
#include "core_words.h"
#include "interrupt.h"
#include "link_options.h"
#include "options.h"
#include "request.h"
#include "simulation_inputs.h"

#include "oxacapture/target/probe.h"
#include "oxautils/config/parse_once.h"
#include "oxautils/encoding/crc32.h"
#include "oxautils/encoding/events_text.h"

#include <QJsonArray>

namespace {

using namespace OXA_CAPTURE;

constexpr char kSummary[] = "Show which analyzer is in a running chip";

constexpr char kHelp[]
    = R"(The devices of the chain as OpenOCD knows them; for each that may have an analyzer, the
cores: their shape, the checksums of what they were built from, whether they are armed,
and whether their sample clocks run; then the builds remembered on this computer that
the chip was made from. With FILEs, whether the chip was built from them, and how they
differ. Nothing is changed: cores that are armed stay armed.

A device may have an analyzer when OpenOCD's configuration has an entry for it in
oxautils_er1, when it is the only one, or with --tap: other instructions could do
something in it.

Cores do not count the edges of their clocks. A clock that runs is at least as fast, and
less than a fraction of TCK, as is said; one that stands had fewer than three edges in
half a second.

  oxa probe
  oxa probe uart.oxa soc.oxa --openocd :7777
  oxa probe --serial /dev/ttyUSB1

Exit status 1: there is no analyzer. docs/on-a-board.md has the messages and what to do.)";

struct Options {
    QStringList files;
    ChipAddress chip = usualChip();
    bool json = false;
};

const char* stateWord(const CoreStatus& status)
{
    if (status.atRest())
        return status.armed ? "captured" : "idle";
    return !status.armed ? "stopping" : status.running ? "running" : "armed";
}

constexpr const char* kClockWords[] = {"unknown", "standing", "running"}; // as ProbedClock::State

QStringList hexOf(const QList<quint32>& numbers)
{
    QStringList texts;
    for (const quint32 number : numbers)
        texts += OXA::hexText(number);
    return texts;
}

QString frequencyText(double hz)
{
    const double kilohertz = 1000;
    return hz < kilohertz ? QString("%1 Hz").arg(hz, 0, 'g', 2)
                          : QString("%1 kHz").arg(hz / kilohertz, 0, 'g', 2);
}

QString clockText(const ProbedClock& clock)
{
    QStringList limits;
    if (clock.state != ProbedClock::Running)
        return kClockWords[clock.state];
    if (clock.leastHz > 0)
        limits += "at least " + frequencyText(clock.leastHz);
    if (clock.mostOfTck > 0)
        limits += QString("less than 1/%1 of TCK").arg(qint64(1 / clock.mostOfTck));
    return QStringList {kClockWords[clock.state], limits.join(" and ")}.join(
        limits.isEmpty() ? "" : ", ");
}

const char* edgeWord(const CoreIdentity& core) { return kEdgeWords[core.fallingEdge]; }

constexpr int kColumn = 13; // of what is said about a unit

const char* expressionWord(const CoreIdentity& core) { return kExpressionWords[core.dynamic]; }

void printUnits(const CoreIdentity& core, TextOut& out)
{
    out << "\n    trigger      " << counted(core.expressions, "expression") << ", "
        << expressionWord(core) << "; at most " << counted(core.mostWindows, "window");
    if (core.keep != OXA::CoreStorage::All)
        out << "; stores " << storageText(core);
    if (core.stamps)
        out << "; with stamps";
    if (!core.forcedBy.isEmpty())
        out << "\n    forced by    " << OXA::forcedByText(core.forcedBy);
    for (const CoreIdentity::Port& port : core.ports)
        out << "\n    " << QString("T%1").arg(port.number).leftJustified(kColumn)
            << counted(port.signalCount, "signal");
    for (const CoreIdentity::Unit& unit : core.units) {
        out << "\n    " << QString("M%1").arg(unit.number).leftJustified(kColumn)
            << OXA::type2string(unit.matchType) << " at T" << unit.port;
        if (unit.counterBits > 0)
            out << ", counter of " << counted(unit.counterBits, "bit");
    }
}

void print(const ProbedCore& core, TextOut& out)
{
    const CoreIdentity& identity = core.identity;
    out << "  core at position " << identity.position << ": "
        << (identity.lite ? "Lite, " : "Standard, ") << counted(identity.signalCount, "signal")
        << " x " << counted(identity.depth, "sample") << ", " << edgeWord(identity) << " edge";
    if (identity.armedAtPowerUp)
        out << ", armed from power-up on";
    if (!identity.lite)
        printUnits(identity, out);
    out << "\n    fingerprint  " << OXA::hexText(core.fingerprint) << "\n    names        "
        << (core.names.isEmpty() ? QString("unknown") : hexOf(core.names).join(' '))
        << "\n    state        " << stateWord(core.status) << "\n    clock        "
        << clockText(core.clock) << '\n';
}

void print(const ProbedDevice& device, const QStringList& files, TextOut& out)
{
    QStringList facts;
    if (!device.idCode.isEmpty())
        facts += "IDCODE " + device.idCode;
    if (!device.instruction.isEmpty())
        facts += "instruction " + device.instruction;
    if (!device.error.isEmpty())
        facts += device.error;
    else if (device.cores.empty())
        facts += "not tried";
    out << device.name << (facts.isEmpty() ? "" : ": ") << facts.join(", ") << '\n';
    for (const ProbedCore& core : device.cores)
        print(core, out);
    for (int i = 0; i < device.differences.size(); ++i)
        out << "  " << files.at(i) << ": "
            << (device.differences.at(i).isEmpty() ? "fits" : device.differences.at(i)) << '\n';
    for (const OXA::RememberedBuild& build : device.remembered)
        out << "  built from " << build.text() << '\n';
}

QJsonObject clockJson(const ProbedClock& clock)
{
    return {
        {"state",     kClockWords[clock.state]                                        },
        {"leastHz",   clock.leastHz > 0 ? QJsonValue(clock.leastHz) : QJsonValue()    },
        {"mostOfTck", clock.mostOfTck > 0 ? QJsonValue(clock.mostOfTck) : QJsonValue()},
    };
}

QJsonObject coreJson(const ProbedCore& core)
{
    const CoreIdentity& identity = core.identity;
    QJsonArray forcedBy;
    for (const int place : identity.forcedBy)
        forcedBy += place;
    QJsonArray ports;
    for (const CoreIdentity::Port& port : identity.ports)
        ports += QJsonObject {
            {"index", port.number     },
            {"width", port.signalCount}
        };
    QJsonArray units;
    for (const CoreIdentity::Unit& unit : identity.units)
        units += QJsonObject {
            {"index",       unit.number                     },
            {"port",        unit.port                       },
            {"type",        OXA::type2string(unit.matchType)},
            {"counterBits", unit.counterBits                }
        };
    return {
        {"position",        identity.position                            },
        {"mode",            identity.lite ? "Lite" : "Standard"          },
        {"width",           identity.signalCount                         },
        {"storageDepth",    identity.depth                               },
        {"mostWindows",     identity.mostWindows                         },
        {"edge",            edgeWord(identity)                           },
        {"armedAtPowerUp",  identity.armedAtPowerUp                      },
        {"expressionCount", identity.expressions                         },
        {"expressionType",  expressionWord(identity)                     },
        {"forcedBy",        forcedBy                                     },
        {"stamps",          identity.stamps                              },
        {"ports",           ports                                        },
        {"units",           units                                        },
        {"fingerprint",     OXA::hexText(core.fingerprint)               },
        {"nameSums",        QJsonArray::fromStringList(hexOf(core.names))},
        {"state",           stateWord(core.status)                       },
        {"clock",           clockJson(core.clock)                        },
    };
}

QJsonObject deviceJson(const ProbedDevice& device, const QStringList& files)
{
    QJsonArray cores;
    for (const ProbedCore& core : device.cores)
        cores += coreJson(core);
    QJsonArray configurations;
    for (int i = 0; i < device.differences.size(); ++i)
        configurations += QJsonObject {
            {"file",       files.at(i)                       },
            {"fits",       device.differences.at(i).isEmpty()},
            {"difference", device.differences.at(i)          }
        };
    QJsonArray remembered;
    for (const OXA::RememberedBuild& build : device.remembered)
        remembered += QJsonObject {
            {"file",   build.original                  },
            {"copy",   build.configuration             },
            {"device", build.device                    },
            {"time",   build.time.toString(Qt::ISODate)},
        };
    return {
        {"name",           device.name       },
        {"idcode",         device.idCode     },
        {"instruction",    device.instruction},
        {"cores",          cores             },
        {"error",          device.error      },
        {"configurations", configurations    },
        {"remembered",     remembered        },
    };
}

/// Tells what was found; whether there is an analyzer.
bool tell(const std::vector<ProbedDevice>& devices, const Options& options, Io& io)
{
    bool found = false;
    QJsonArray array;
    for (const ProbedDevice& device : devices) {
        found = found || !device.cores.empty();
        if (options.json)
            array += deviceJson(device, options.files);
        else
            print(device, options.files, io.out);
    }
    if (options.json)
        io.out.setResult({
            {"devices", array}
        });
    if (!found)
        io.err.error("no analyzer was found");
    return found;
}

int run(const Options& options, Io& io)
{
    const OXA::ParseOnce once;
    std::vector<std::unique_ptr<OXA::Configuration>> configurations; // which the builds point to
    std::vector<std::vector<BuiltConfiguration>> builds;
    Messages messages;
    for (const QString& file : options.files) {
        configurations.push_back(std::make_unique<OXA::Configuration>());
        OXA::Configuration& configuration = *configurations.back();
        if (!readConfiguration(file, configuration, io.err))
            return kUnusable;
        builds.push_back(
            builtConfigurations(file, configuration.cores, configuration.liteCores, messages));
    }
    if (!report(messages, io.err))
        return kUnusable;
    const Interrupt interrupt([] {});
    std::vector<ProbedDevice> devices;
    QString error;
    if (!probe(
            options.chip, builds, [&interrupt] { return !interrupt.happened(); }, devices,
            &error)) {
        io.err.error(error);
        return kJobFailed;
    }
    return tell(devices, options, io) ? kDone : kJobFailed;
}

}

void addProbe(CLI::App& app, Io& io, int& status)
{
    Command command(app, "probe", kSummary, kHelp);
    auto options = std::make_shared<Options>();
    command.texts("FILE", options->files, "Configurations that the chip may be built from")
        .typeName("FILE");
    addLinkOptions(command, options->chip);
    command.flag("--json", options->json, "For programs: one JSON object");
    command.setRun([&io, &status, options] { status = run(*options, io); });
}
