"""A systemd with a handful of units, on the bus in DBUS_SYSTEM_BUS_ADDRESS. Prints "ready" once it answers."""
import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.systemd1"
MANAGER = NAME + ".Manager"
UNITS = {"running.service": "active", "stopped.service": "inactive", "failed.service": "failed", "starting.service": "activating",
         "stopping.service": "deactivating", "engine@garage.service": "inactive"}


class Unit(dbus.service.Object):
    def __init__(self, bus, path, name):
        super().__init__(bus, path)
        self.name = name

    @dbus.service.method("org.freedesktop.DBus.Properties", in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        if name == "LoadState":
            return "loaded" if self.name in UNITS else "not-found"
        return UNITS.get(self.name, "inactive")


class Manager(dbus.service.Object):
    def __init__(self, bus):
        super().__init__(bus, "/org/freedesktop/systemd1")
        self.bus = bus
        self.loaded = {}

    @dbus.service.method(MANAGER, in_signature="s", out_signature="o")
    def LoadUnit(self, name):
        if name not in self.loaded:
            path = f"/org/freedesktop/systemd1/unit/u{len(self.loaded)}"
            self.loaded[name] = (path, Unit(self.bus, path, str(name)))
        return dbus.ObjectPath(self.loaded[name][0])

    @dbus.service.method(MANAGER, out_signature="a(ss)")
    def ListUnitFiles(self):
        files = [name.replace("@garage", "@") for name in UNITS]
        return [("/usr/lib/systemd/system/" + name, "enabled") for name in files]

    @dbus.service.method(MANAGER, in_signature="ss", out_signature="o")
    def StartUnit(self, name, mode):
        if name == "failed.service":
            raise dbus.exceptions.DBusException("no permission", name="org.freedesktop.DBus.Error.AccessDenied")
        UNITS[str(name)] = "active"
        return dbus.ObjectPath("/org/freedesktop/systemd1/job/1")

    @dbus.service.method(MANAGER, in_signature="ss", out_signature="o")
    def StopUnit(self, name, mode):
        UNITS[str(name)] = "inactive"
        return dbus.ObjectPath("/org/freedesktop/systemd1/job/2")


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
system_bus = dbus.SystemBus()
owned = dbus.service.BusName(NAME, system_bus)
manager = Manager(system_bus)
print("ready", flush=True)
GLib.MainLoop().run()
