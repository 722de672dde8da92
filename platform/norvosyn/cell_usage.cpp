// SPDX-License-Identifier: Apache-2.0
#include "cell_usage.h"

#include "target_device.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace NorvoSyn {
namespace {

/// A resource of devices, and the cells that use one of it each.
struct Kind {
    const char* what;
    const char* cells[3];
    int TargetDevice::*available;
};

constexpr Kind kKinds[] = {
    {"look-up tables", {"QX_LUT4"},                      &TargetDevice::luts        },
    {"registers",      {"QX_DFF", "QX_DFFC", "QX_DFFR"}, &TargetDevice::registers   },
    {"block SRAMs",    {"QX_BSRAM"},                     &TargetDevice::blocks      },
    {"shadow SRAMs",   {"QX_SSRAM"},                     &TargetDevice::shadowBlocks},
};

int used(const QJsonObject& counts, const Kind& kind)
{
    int sum = 0;
    for (const char* cell : kind.cells)
        sum += cell ? counts.value(cell).toInt() : 0;
    return sum;
}

}

QStringList resourceProblems(const QString& usageFile, const TargetDevice& target)
{
    QFile file(usageFile);
    file.open(QIODevice::ReadOnly);
    const QJsonObject design
        = QJsonDocument::fromJson(file.readAll()).object()["design"].toObject();
    if (design.isEmpty())
        return {"RESOURCE_CHECK: the synthesis engine did not count the netlist's cells"};

    QStringList problems;
    const QJsonObject counts = design["num_cells_by_type"].toObject();
    for (const Kind& kind : kKinds) {
        const int count = used(counts, kind);
        if (count > target.*kind.available)
            problems << QString("RESOURCE_CHECK: the netlist takes %1 %2, the device has %3")
                            .arg(QString::number(count), kind.what,
                                QString::number(target.*kind.available));
    }
    return problems;
}

}
