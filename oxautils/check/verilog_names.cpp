// SPDX-License-Identifier: Apache-2.0
#include "oxautils/check/verilog_names.h"

#include "oxautils/model/shown_text.h"
#include "oxautils/model/verilog_word.h"

#include <QRegularExpression>
#include <QSet>
#include <QStringList>

namespace OXA {

namespace {

// Those of Verilog-2005.
constexpr char kKeywords[]
    = "always and assign automatic begin buf bufif0 bufif1 case casex casez cell cmos config "
      "deassign default defparam design disable edge else end endcase endconfig endfunction "
      "endgenerate endmodule endprimitive endspecify endtable endtask event for force forever fork "
      "function generate genvar highz0 highz1 if ifnone incdir include initial inout input "
      "instance "
      "integer join large liblist library localparam macromodule medium module nand negedge nmos "
      "nor noshowcancelled not notif0 notif1 or output parameter pmos posedge primitive pull0 "
      "pull1 "
      "pulldown pullup pulsestyle_ondetect pulsestyle_onevent rcmos real realtime reg release "
      "repeat rnmos rpmos rtran rtranif0 rtranif1 scalared showcancelled signed small specify "
      "specparam strong0 strong1 supply0 supply1 table task time tran tranif0 tranif1 tri tri0 "
      "tri1 "
      "triand trior trireg unsigned use uwire vectored wait wand weak0 weak1 while wire wor xnor "
      "xor";

constexpr char kWrapperNames[]
    = "tms_pad_i tck_pad_i tdi_pad_i tdo_pad_o tms_i_c tck_i_c tdi_i_c tdo_o_c oxa_jtag_tck "
      "oxa_jtag_reset run_test_idle_er1 run_test_idle_er2 shift_dr_capture_dr update_dr pause_dr "
      "enable_er1 enable_er2 oxa_jtag_tdi tdo_er1 tms_ibuf tck_ibuf tdi_ibuf tdo_obuf u_qx_jtag "
      "u_icon_top u_ao_top";

QSet<QString> wordsOf(const char* text)
{
    const QStringList words = QString(text).split(' ');
    return {words.begin(), words.end()};
}
}

QString nameComplaint(const QString& name)
{
    static const QSet<QString> keywords = wordsOf(kKeywords);
    static const QRegularExpression needsEscape("[^a-zA-Z0-9_$]");
    if (name.isEmpty())
        return "a signal has no name";
    if (const char* fault = wordFault(name))
        return QString("the signal name \"%1\" %2").arg(shownText(name), fault);
    if (needsEscape.match(name).hasMatch())
        return {}; // an escaped name is always legal
    if (name.at(0) == '$' || (name.at(0) >= '0' && name.at(0) <= '9'))
        return QString("signal \"%1\" begins with a character that cannot begin a Verilog name")
            .arg(name);
    if (keywords.contains(name))
        return QString("signal \"%1\" has a keyword of Verilog as its name").arg(name);
    return {};
}

bool isWrapperName(const QString& name)
{
    static const QSet<QString> names = wordsOf(kWrapperNames);
    static const QRegularExpression ofCores("^(control\\d+|u_la\\d+_top)$");
    return names.contains(name) || ofCores.match(name).hasMatch();
}

}
