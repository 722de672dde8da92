#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Says where a design goes from one clock's domain into another's but through ao_sync or a memory.

  crossings.py NETLIST.json TOP

The netlist is Yosys' after proc, flatten and memory, with ao_sync_* and the pads' cells as black
boxes. Exit status 1: there are such crossings. What goes through
STAGES comes straight from a register."""
import json
import sys

REGISTERS = ("$dff", "$sdff", "$adff", "ao_sync")

module = json.load(open(sys.argv[1]))["modules"][sys.argv[2]]
cells = module["cells"]
names = {}
for name, net in module["netnames"].items():
    for bit in net["bits"]:
        names.setdefault(bit, name)

driver = {}
for cell in cells.values():
    for port, bits in cell["connections"].items():
        if cell["port_directions"][port] == "output":
            for bit in bits:
                driver[bit] = cell


def clock_of(bit):
    """The net that a clock comes from, through inverters and multiplexers of constants."""
    while bit in driver and driver[bit]["type"] in ("$not", "$logic_not", "$mux"):
        inputs = driver[bit]["connections"]
        bit = inputs["A"][0] if isinstance(inputs["A"][0], int) else inputs["B"][0]
    return bit


def ports_of(cell):
    """(clock, inputs, outputs) for each domain of a cell that has a clock, none for others."""
    pins = cell["connections"]
    if cell["type"].startswith("ao_sync"):
        return [(clock_of(pins["clk_i"][0]), [], pins["q_o"])]
    if cell["type"] == "QX_JTAG":
        return [(pins["tck_o"][0], pins["tdo_er1_i"],
                 [b for p, d in cell["port_directions"].items() if d == "output" for b in pins[p]])]
    if cell["type"].startswith("$mem"):
        found = []
        number = {name: int(value, 2) for name, value in cell["parameters"].items() if "PORTS" in name
                  or name in ("ABITS", "WIDTH")}
        for side in ("RD", "WR"):
            for i in range(number[side + "_PORTS"]):
                def part(pin, width):
                    return pins[side + "_" + pin][i * width:(i + 1) * width]
                data, width = part("DATA", number["WIDTH"]), number["WIDTH"]
                enable = part("EN", 1 if side == "RD" else width)
                inputs = part("ADDR", number["ABITS"]) + enable + (data if side == "WR" else [])
                found.append((clock_of(part("CLK", 1)[0]), inputs, data if side == "RD" else []))
        return found
    if "CLK" not in pins:
        return []
    return [(clock_of(pins["CLK"][0]), [b for p, bits in pins.items() if p not in ("CLK", "Q") for b in bits],
             pins["Q"])]


domain = {}  # of what drives a bit; a set for logic
for cell in cells.values():
    for clock, _, outputs in ports_of(cell):
        for bit in outputs:
            domain[bit] = {clock}


def domains(bit):
    if bit not in domain:
        domain[bit] = set()  # a constant, a pad, a watched signal
        if bit in driver:
            domain[bit] = set().union(*(domains(b) for p, bits in driver[bit]["connections"].items()
                                        if driver[bit]["port_directions"][p] == "input" for b in bits))
    return domain[bit]


sys.setrecursionlimit(100000)
wrong = checked = 0
for name, cell in cells.items():
    for clock, inputs, _ in ports_of(cell):
        for bit in inputs:
            checked += 1
            others = domains(bit) - {clock}
            if others:
                wrong += 1
                print(f"{names.get(bit)} of {[names[c] for c in others]} is read by {name} of {names[clock]}")
    if cell["type"].startswith("ao_sync") and int(cell["parameters"].get("STAGES", "10"), 2) > 0:
        for bit in cell["connections"]["d_i"]:
            checked += 1
            if bit in driver and not driver[bit]["type"].startswith(REGISTERS):
                wrong += 1
                print(f"{names[bit]} goes through logic into {name}")
print(f"{checked} bits, {wrong} wrong")
sys.exit(wrong > 0 or checked == 0)
