#!/usr/bin/env python3
"""Decodes CAN frames with canmatrix, for tests to compare their own decoding with.

decodeframes.py FILE.dbc FRAMES: each line of FRAMES holds an identifier as DBC files have it and
the data as hex. Prints a line for each frame: name, raw value and physical value of each signal.
"""

import sys
import warnings

warnings.simplefilter("ignore")
import canmatrix.formats


def text(number):
    return repr(number) if isinstance(number, int) else repr(float(number))


def main(dbc, frames):
    messages = {}
    for frame in canmatrix.formats.loadp_flat(dbc).frames:
        messages[frame.arbitration_id.to_compound_integer()] = frame
    with open(frames) as lines:
        for line in lines:
            identifier, data = line.split()
            decoded = messages[int(identifier)].decode(bytearray.fromhex(data))
            print(" ".join(f"{name} {text(signal.raw_value)} {text(signal.phys_value)}"
                           for name, signal in decoded.items()))


main(*sys.argv[1:])
