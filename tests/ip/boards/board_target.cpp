// SPDX-License-Identifier: Apache-2.0
#include "board_target.h"

#include "support/files.h"

namespace {

constexpr int kPosition = 20; // of the trigger
constexpr int kCountBits = 8;
constexpr int kNoiseBits = 12;

int noiseAfter(int noise)
{
    const int bit = ~(noise >> 11 ^ noise >> 5 ^ noise >> 3 ^ noise) & 1;
    return (noise << 1 | bit) & 0xfff;
}

QString binary(int value, int bits) { return QString::number(value, 2).rightJustified(bits, '0'); }

}

QString BoardTarget::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setWorkingDirectory(m_dir.path());
    process.start(program, arguments);
    const bool done = finished(process) && process.exitCode() == 0;
    m_said = process.readAllStandardOutput();
    return done ? QString() : program + ": " + process.readAllStandardError() + m_said;
}

QString BoardTarget::attach(int samples, const QStringList& options)
{
    m_samples = samples;
    QString error = run(OXA_PROGRAM,
        {"add", "counter.oxa", "--clock", "counter/clk", "--data", "counter/count", "counter/noise",
            "--trigger", "counter/count", "--samples", QString::number(samples), "--position",
            QString::number(kPosition), "--design", design(), "--top", "counter"});
    if (error.isEmpty())
        error = run(
            OXA_PROGRAM, QStringList {"attach", "counter.oxa", "--work-dir", "work"} + options);
    writeFile(path("list"), m_said);
    return error;
}

QString BoardTarget::start(const QString& module, const QStringList& sources)
{
    QString error = run("iverilog",
        QStringList {"-g2012", "-DDUT=" + module, "-s", "counter_bench", "-o", "target.vvp",
            here + "counter_bench.v"}
            + sources);
    if (!error.isEmpty())
        return error;
    m_simulation.start("vvp",
        {"-n", "-M", OXA_BINARY_DIR "/lib/oxautils", "-m", "oxa_target", path("target.vvp"),
            "+oxa_jtag=tcp:0"});
    const QByteArray port = m_simulation.after("remote_bitbang at port ");
    if (port.isEmpty())
        return m_simulation.said();
    m_port = wires.start(port);
    startOpenOcd("tcl_port 0; init");
    m_address = tclAddress(m_openocd);
    return m_address.isEmpty() ? QString(m_openocd.said()) : QString();
}

void BoardTarget::startOpenOcd(const QString& commands)
{
    m_openocd.end();
    m_openocd.start("openocd",
        {"-c",
            "adapter driver remote_bitbang; remote_bitbang host 127.0.0.1; remote_bitbang port "
                + m_port + "; " + script,
            "-f", path("work/board/openocd.cfg"), "-c", commands});
}

QString BoardTarget::bypass(int irLength)
{
    startOpenOcd(QString("tcl_port disabled; init; set tap [lindex [jtag names] 0];"
                         " irscan $tap %1; echo bypass=[drscan $tap 16 0xa5c3]; shutdown")
                     .arg((1 << irLength) - 1));
    const bool delays = m_openocd.says("bypass=4b86");
    return delays && !m_openocd.said().contains("interrogation failed") ? QString()
                                                                        : m_openocd.said();
}

QString BoardTarget::probe()
{
    const QString error = run(OXA_PROGRAM, {"probe", "counter.oxa", "--openocd", m_address});
    const bool ok = m_said.contains("counter.oxa: fits\n") && m_said.contains("running, at least ")
        && !m_said.contains("of TCK");
    return error.isEmpty() && !ok ? QString(m_said) : error;
}

QString BoardTarget::capture(int value)
{
    QString error = run(OXA_PROGRAM,
        {"capture", "counter.oxa", "--openocd", m_address, "--unit",
            "M0=" + binary(value, kCountBits), "--timeout", patienceSeconds(), "--bits", "-o",
            "out.csv"});
    if (!error.isEmpty())
        return error;
    const QStringList rows
        = QString(bytesOf(path("out.csv"))).split('\n', Qt::SkipEmptyParts).mid(1);
    const int trigger = rows.indexOf(QRegularExpression("0,0,\\d+,1,.*"));
    if (trigger > kPosition || rows.size() != m_samples - kPosition + trigger)
        return QString("%1 rows, the trigger is in row %2").arg(rows.size()).arg(trigger);
    int noise = rows.first().section(',', 4 + kCountBits).remove(',').toInt(nullptr, 2);
    for (int i = 0; i < rows.size(); ++i, noise = noiseAfter(noise)) {
        const QString samples
            = binary((value + i - trigger) & 0xff, kCountBits) + binary(noise, kNoiseBits);
        const QString row = QString("0,0,%1,%2,").arg(i).arg(i == trigger)
            + samples.split("", Qt::SkipEmptyParts).join(',');
        if (rows.at(i) != row)
            return "is " + rows.at(i) + " instead of " + row;
    }
    return {};
}
