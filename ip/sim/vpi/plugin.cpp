// SPDX-License-Identifier: Apache-2.0
// A simulated target: a socket for the pads of a design's test access port, and a recorded stimulus
// for its other ports.
//
//   $oxa_target(tck, tms, tdi, tdo, values, clocks);
//
// drives the variables tck, tms, tdi, values and clocks, and reads the net tdo. Simulation time
// advances only when a client requests it. Command line options:
//
//   +oxa_jtag=ADDRESS      address for remote_bitbang (docs/simulated-target.md)
//   +oxa_control=ADDRESS   address for control lines (docs/simulated-target.md)
//   +oxa_settle=1          unknown registers and memories start at 0
//   +oxa_bench=1           the design has its own bench: "run" counts the times at which something
//                          happens, and ends when a net changes that "look" has read; JTAG takes
//                          no simulation time
//   +oxa_find=MODULE       prints the paths of a module's instances and ends
//
// with an ADDRESS as in clients/server_socket.h. It ends when its control client disconnects, or
// the process that started it ends.

#include "clients/simulation.h"
#include "instances.h"
#include "stopped.h"
#include "target.h"

#include <vpi_user.h>

#include <memory>

namespace oxa_target {

namespace {

std::unique_ptr<Target> target;

PLI_INT32 callTarget(PLI_BYTE8*)
{
    vpiHandle arguments[ArgumentCount] = {};
    const vpiHandle call = vpi_handle(vpiSysTfCall, nullptr);
    const vpiHandle list = vpi_iterate(vpiArgument, call);
    for (int i = 0; list && i < ArgumentCount; ++i) {
        arguments[i] = vpi_scan(list);
        if (!arguments[i])
            break;
    }
    if (target || !arguments[ArgumentCount - 1]) {
        stop("$oxa_target is called once, with tck, tms, tdi, tdo, values and clocks");
        return 0;
    }
    target = std::make_unique<Target>(vpi_handle(vpiScope, call), arguments);
    target->start();
    return 0;
}

// $finish of a bench: the captures are still to be read.
PLI_INT32 callFinish(PLI_BYTE8*)
{
    static bool isTold = false;
    s_vpi_time now = {};
    now.type = vpiScaledRealTime;
    vpi_get_time(vpi_handle(vpiScope, vpi_handle(vpiSysTfCall, nullptr)), &now);
    if (!isTold)
        vpi_printf("oxa_target: $finish at %g; the design continues\n", now.real);
    isTold = true;
    return 0;
}

PLI_INT32 find(p_cb_data)
{
    printInstances(option("oxa_find"));
    stop({});
    return 0;
}

PLI_INT32 endOfSimulation(p_cb_data)
{
    if (option("oxa_bench") && !isStopped())
        vpi_printf("oxa_target: the bench has ended, and its clocks with it\n");
    target.reset(); // closes the sockets
    return 0;
}

void callAt(PLI_INT32 reason, PLI_INT32 (*function)(p_cb_data))
{
    s_cb_data callback = {};
    callback.reason = reason;
    callback.cb_rtn = function;
    vpi_register_cb(&callback);
}

void registerTarget()
{
    s_vpi_systf_data task = {};
    task.type = vpiSysTask;
    task.tfname = "$oxa_target";
    task.calltf = callTarget;
    vpi_register_systf(&task);
    if (option("oxa_bench")) {
        task.tfname = "$finish";
        task.calltf = callFinish;
        vpi_register_systf(&task);
    }
    callAt(cbEndOfSimulation, endOfSimulation);
    if (option("oxa_find"))
        callAt(cbStartOfSimulation, find);
}

}

}

extern "C" {
__attribute__((visibility("default"))) void (*vlog_startup_routines[])()
    = {oxa_target::registerTarget, nullptr};
}
