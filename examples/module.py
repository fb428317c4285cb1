#!/usr/bin/python3
"""A vehicle module of its own: opens the doors one after the other, for the units on this session's
bus. Needs python3-dbus and python3-gi; start a unit with NORDA_MODULE_BUS=session."""

import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "com.stavel.norda.Module"
PATH = "/com/stavel/norda/Module"
INTERFACE = "com.stavel.norda.Adaptor1"
DOORS = 6  # a bit for each: four doors, hood, trunk
STEP_MS = 1000


class Module(dbus.service.Object):
    """Its signals and methods have the names and types of the interface; it needs only a few."""

    doors = 0

    @dbus.service.signal(INTERFACE, signature="y")
    def doorStatus(self, bits):
        self.doors = bits

    @dbus.service.method(INTERFACE, out_signature="a(sav)")
    def Snapshot(self):
        """The last of each signal, for a unit that comes later."""
        return [("doorStatus", [dbus.Byte(self.doors)])]

    @dbus.service.method(INTERFACE, out_signature="ua(sav)")
    def MissingValues(self):
        """After this silence in milliseconds a unit asks; if nobody answers, it shows these."""
        return 3 * STEP_MS, [("doorStatus", [dbus.Byte(0)])]

    @dbus.service.method(INTERFACE)
    def Ping(self):
        pass

    def open_next(self):
        self.doorStatus(self.doors << 1 | 1 if self.doors < (1 << DOORS) - 1 else 0)
        return True  # again after the same time


DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
module = Module(bus, PATH)
if bus.request_name(NAME, dbus.bus.NAME_FLAG_DO_NOT_QUEUE) != dbus.bus.REQUEST_NAME_REPLY_PRIMARY_OWNER:
    sys.exit(f"{NAME}: expected a free name, another module has it")
GLib.timeout_add(STEP_MS, module.open_next)
GLib.MainLoop().run()
