#include "core_bench.h"

#include "support/files.h"
#include "support/patience.h"

#include "oxautils/generate/oxa_prepare.h"
#include "oxautils/generate/standard_files.h"

#include <QProcess>

namespace {

constexpr char kBenchTail[] = R"(
    .tms_pad_i(tms), .tck_pad_i(tck), .tdi_pad_i(tdi), .tdo_pad_o(tdo));

    integer script, out, c, sample;
    initial begin
        $readmemb("samples.txt", samples);
        script = $fopen("script.txt", "r");
        out = $fopen("tdo.txt", "w");
        sample = 0;
        c = $fgetc(script);
        while (c != -1) begin
            case (c)
                "n", "e": begin
                    if (c == "n") begin
                        row = samples[sample];
                        sample = sample + 1;
                    end
                    #1 clk = 1;
                    #1 clk = 0;
                end
                default: begin
                    tms = c == "a" || c == "b";
                    tdi = c == "1" || c == "b";
                    if (c == "u") tdi = 0;
                    if (c == "d") tdi = 1;
                    #1 $fwrite(out, "%b", tdo);
                    if (c == "u" || c == "d") tdi = ~tdi;  // together with TCK
                    tck = 1;
                    #1 tck = 0;
                end
            endcase
            #1 c = $fgetc(script);
        end
        $fclose(out);
        $finish;
    end
endmodule
)";

constexpr char kTargetTail[] = R"(
    .tms_pad_i(tms), .tck_pad_i(tck), .tdi_pad_i(tdi), .tdo_pad_o(tdo));

    initial $oxa_target(tck, tms, tdi, tdo, row, clk);
endmodule
)";

// What `program` prints when it fails, else nothing.
QString failureOf(const QString& program, const QStringList& arguments, const QString& dir)
{
    QProcess process;
    process.setWorkingDirectory(dir);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!finished(process))
        return program + ": " + process.errorString();
    const QString output = QString::fromLocal8Bit(process.readAll());
    const bool ok = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return ok ? QString() : program + " failed:\n" + output;
}

}

CoreBench::CoreBench()
{
    arg.configFile = path("test.oxa");
    arg.workDir = path("work");
    arg.ipDir = OXA_BINARY_DIR "/share/oxautils/ip";
}

QByteArray CoreBench::benchSource(const QByteArray& tail) const
{
    const QByteArray width = QByteArray::number(signalNames.size());
    QByteArray text = "module bench;\n"
                      "reg tms = 1, tck = 0, tdi = 0, clk = 0;\n"
                      "wire tdo;\n";
    text += "reg [0:" + width + "-1] row = 0;\n";
    text += "reg [0:" + width + "-1] samples[0:65535];\n";
    text += "qx_oxa dut (\n";
    for (int i = 0; i < signalNames.size(); ++i)
        text += "    ." + OXA::escapedSignalName(signalNames.at(i)).toUtf8() + "(row["
            + QByteArray::number(i) + "]),\n";
    for (const QString& clock : risingClocks)
        text += "    ." + OXA::escapedSignalName(clock).toUtf8() + "(clk),\n";
    for (const QString& clock : fallingClocks)
        text += "    ." + OXA::escapedSignalName(clock).toUtf8() + "(~clk),\n";
    return text + tail;
}

QString CoreBench::compile(const QString& output, const QStringList& design) const
{
    QStringList arguments {"-g2005", "-s", "bench", "-o", output, "bench.v"};
    arguments += design;
    for (const char* model : {"IBUF.v", "OBUF.v", "QX_JTAG.v"})
        arguments += QString(OXA_BINARY_DIR "/share/oxautils/sim/") + model;
    return failureOf("iverilog", arguments, m_dir.path());
}

QString CoreBench::build()
{
    QStringList design;
    writeFile(path("bench.v"), benchSource(kBenchTail));
    return generate(design) ? compile("bench.vvp", design) : "nothing was generated";
}

QString CoreBench::buildTarget(const QString& netlist)
{
    QStringList design {"-y", OXA_BINARY_DIR "/share/oxautils/cells", netlist};
    writeFile(path("bench.v"), benchSource(kTargetTail));
    return !netlist.isEmpty() || generate(design) ? compile("target.vvp", design)
                                                  : "nothing was generated";
}

bool CoreBench::generate(QStringList& design) const
{
    OXA::OxaPrepare prepare;
    if (prepare.prepare(arg) != 1)
        return false;
    design.clear();
    for (const QString& directory : prepare.includePaths)
        design += "-I" + directory;
    design += prepare.files;
    return true;
}

BenchRun CoreBench::run(const QByteArray& script, const QByteArrayList& samples) const
{
    writeFile(path("script.txt"), script);
    writeFile(path("samples.txt"), samples.join('\n') + '\n');
    BenchRun run;
    run.error = failureOf("vvp", {"-N", "bench.vvp"}, m_dir.path());
    run.tdo = bytesOf(path("tdo.txt"));
    return run;
}
