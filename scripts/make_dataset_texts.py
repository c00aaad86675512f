#!/usr/bin/env python3
"""Writes data/DatasetID<id>.txt: one line for each byte of the tune, "bit n ..." lines under the flag bytes.

The box settings form and the preset question show these lines. Run it after a change of the tables below;
the four files are kept in the tree, so neither the build nor the program needs Python.
"""
from pathlib import Path

DATASETS = (104, 106, 107, 108)
DATA = Path(__file__).resolve().parent.parent / "data"

SINGLE = {
    0: "Mirror of byte 22", 1: "Flags A", 2: "Flags B", 3: "Load inputs of ignition and fuel",
    4: "Load input of PWM", 5: "Sensor inputs", 6: "Ignition pulses every engine cycle, master box",
    7: "Fuel correction at low air temperature", 8: "Low air temperature limit",
    9: "Fuel correction at high air temperature", 10: "High air temperature limit",
    11: "In boost level", 12: "Unused", 13: "Analog 2 curve generator, gain",
    14: "Analog 2 curve generator, offset", 15: "Analog synchronisation and fuel pulses",
    16: "Ignition pulses every engine cycle, slave box", 17: "Fuel cut RPM",
    18: "RPM to allow open injectors", 19: "Boost level to open injectors",
    20: "Max total retard clip", 21: "Fuel pulse of forced injection", 22: "Flags C", 23: "Boost limit",
    30: "Analog 2 function limit", 31: "Acceleration enrichment threshold",
    32: "Acceleration enrichment gain", 33: "Acceleration enrichment sustain",
    34: "RPM indicator (led 2)", 35: "Base fuel calibration", 40: "Boost control start value",
    41: "Boost control P (proportional)", 42: "Boost control I (sum)",
    43: "Boost control D (difference)", 44: "Ignition flags", 45: "Unused", 250: "Reserved, always 0",
    251: "Reserved, always 0", 252: "Reserved", 253: "Reserved", 254: "Card checksum",
}
TRIM = {24: "master, injector E", 36: "master, injector A", 37: "master, injector B", 38: "master, injector C",
        39: "master, injector D", 25: "slave, injector A", 26: "slave, injector B", 27: "slave, injector C",
        28: "slave, injector D", 29: "slave, injector E"}
# First byte, entries, name; where runs overlap a byte gets all its names.
TABLES = (
    (46, 33, "Ignition load table, entry {}"), (79, 21, "Ignition RPM table, entry {}"),
    (100, 33, "Fuel load table, entry {}"), (133, 21, "Fuel RPM table, entry {}"),
    (154, 21, "Analog 2 table, entry {}"), (175, 21, "Analog 1 limit table, entry {}"),
    (196, 33, "PWM load table, entry {}"), (229, 21, "PWM RPM table, entry {}"),
)
ALSO = {79: ["the ignition of all RPMs with the MAF-sim limit"],
        173: ["boost activation level in Mode4"], 174: ["output level at activation in Mode4"]}
for _n in range(2, 22):
    ALSO.setdefault(78 + _n, []).append(f"MAF-sim limit, entry {_n}")
for _n in range(22, 42):
    ALSO.setdefault(132 + _n, []).append(f"fuel RPM table at 250 RPM, entry {_n}")
for _n in range(1, 18):
    ALSO.setdefault(174 + _n, []).append(f"MAF-sim output, entry {_n}")


def pair(low, text):
    """Lines of a two-bit field whose lower bit is @p low."""
    return {low: f"{text}, low bit", low + 1: f"{text}, high bit"}


FLAGS_C = {0: "Fuel pulses of its own: synchronised or PWM (0: stock pulse extended)", **pair(1, "Analog 2 mode"),
           4: "MAF simulation on, normal Analog 1 out off", 5: "Extra injectors by 100 Hz PWM",
           **pair(6, "Digital I/O mode")}
BITS = {
    0: FLAGS_C, 22: FLAGS_C,
    1: {2: "Fuel enrichment only for pulses above 4 ms", 3: "Slave mode",
        6: "Fuel RPM table in 250 RPM steps; the same bit enables the max ignition retard",
        7: "Also retard on acceleration enrichment"},
    2: {2: "PWM on output IgnB, digital I/O Mode5", 3: "PWM as on/off switch above 50 %",
        5: "Closed loop boost control", 6: "MAF simulation on Analog 1 out (0: Analog 2 out)",
        7: "MAF-sim limit on, ignition RPM table off"},
    3: {**pair(0, "Ignition load, subtracted input"), **pair(2, "Ignition load, main input"),
        **pair(4, "Fuel load, subtracted input"), **pair(6, "Fuel load, main input")},
    4: pair(0, "PWM load input"),
    5: {**pair(0, "Boost sensor input"), **pair(2, "MAF-sim pressure input"),
        **pair(4, "Acceleration enrichment input"), **pair(6, "Intake air temperature input")},
    15: {0: "Analog 1 once every engine cycle", 1: "Analog 2 once every engine cycle",
         2: "Analog 3 once every engine cycle", 3: "Analog 4 once every engine cycle",
         6: "Two fuel pulses per cycle"},
    44: {**pair(0, "Ignition mode, master"), **pair(2, "Ignition mode, slave"),
         4: "Ignition load table in percent and RPM table in degrees",
         5: "High precision of the ignition RPM table", 6: "Injector trim individual",
         7: "Acceleration enrichment by the simulated MAF signal"},
}
# What a dataset lacks or adds, by byte or by (byte, bit); the presets hold these bytes at the value named.
NO_AIR_TEMPERATURE = {7: "from dataset 108 on, keep 128", 8: "from dataset 108 on, keep 255",
                      9: "from dataset 108 on, keep 128", 10: "from dataset 108 on, keep 0"}
NO_CLOSED_LOOP = {(2, 5): "not in this dataset, keep 0",
                  **{n: "closed loop only, not in this dataset" for n in range(40, 44)}}
NOTES = {
    104: {**NO_AIR_TEMPERATURE, **NO_CLOSED_LOOP, 31: "not in this dataset, keep 255",
          32: "not in this dataset, keep 0", 33: "not in this dataset, keep 0",
          (15, 6): "not in this dataset, keep 0", (44, 7): "not in this dataset, keep 0"},
    106: {**NO_AIR_TEMPERATURE, **NO_CLOSED_LOOP, (2, 2): "set by the bypass mode",
          (22, 6): "cleared by the bypass mode", (22, 7): "cleared by the bypass mode"},
    107: NO_AIR_TEMPERATURE,
    108: {},
}


def byte_text(byte):
    """What @p byte holds in every dataset."""
    for first, count, name in TABLES:
        if first <= byte < first + count:
            return "; ".join([name.format(byte - first + 1), *ALSO.get(byte, [])])
    return SINGLE.get(byte) or f"Injector pulse offset, {TRIM[byte]}"


def lines(dataset):
    """All lines of one file: each byte, followed by its bits."""
    notes = {key: f" ({text})" for key, text in NOTES[dataset].items()}
    for byte in range(255):
        yield byte_text(byte) + notes.get(byte, "")
        for bit, text in sorted(BITS.get(byte, {}).items()):
            yield f"bit {bit} {text}{notes.get((byte, bit), '')}"
    yield f"Dataset of the tune, {dataset}"


for _dataset in DATASETS:
    text = "".join(line + "\r\n" for line in lines(_dataset))
    (DATA / f"DatasetID{_dataset}.txt").write_bytes(text.encode("cp1252"))
