"""Drives the automation of the desktop as a stranger does: by python3-dbus and gdbus, over a bus that starts it."""

import os
import re
import select
import subprocess
import time
import unittest

import dbus
import dbus.bus

NAME = "Terravox.TdColors"
FACTORY = "/Terravox/TdColors"
COLORS = "Terravox.TdColors"
ENUM = "Terravox.TdColorsEnum"
STANDARD = "org.freedesktop.DBus.Error."
MOST, LEAST = 2**31 - 1, -(2**31)
S_OK, S_FALSE = 0, 1
METHOD, GET, PUT = 1, 2, 4


class Client:
    """A connection of its own. Signatures are given, so that wrong ones can be."""

    def __init__(self):
        self.bus = dbus.bus.BusConnection(os.environ["DBUS_SESSION_BUS_ADDRESS"])

    def call(self, path, interface, method, signature="", *arguments):
        return self.bus.call_blocking(NAME, path, interface, method, signature, arguments)

    def create(self, colors=(), method="CreateInstance"):
        path = self.call(FACTORY, "Terravox.ClassFactory", method)
        for color in colors:
            self.call(path, COLORS, "Add", "i", color)
        return path

    def count(self, path):
        return self.call(path, "org.freedesktop.DBus.Properties", "Get", "ss", COLORS, "Count")

    def list(self, path):
        return [self.call(path, COLORS, "Item", "i", i + 1) for i in range(self.count(path))]

    def is_there(self, path):
        try:
            self.count(path)
            return True
        except dbus.DBusException:
            return False

    def leave(self):
        self.bus.close()


def gdbus(path, method, *arguments):
    """What gdbus prints; each call is a client that leaves at once."""
    command = ["gdbus", "call", "--session", "--dest", NAME, "--object-path", path, "--method", method, *arguments]
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout.strip()


def until(condition, what, seconds=20):
    end = time.monotonic() + seconds
    while not condition():
        if time.monotonic() > end:
            raise AssertionError("waited in vain until " + what)
        time.sleep(0.02)


def exit_codes():
    try:
        with open(os.environ["TD_EXIT_CODES"], encoding="utf-8") as file:
            return file.read().split()
    except FileNotFoundError:
        return []


class Automation(unittest.TestCase):
    def setUp(self):
        self.client = Client()

    def tearDown(self):
        self.client.leave()

    def refuses(self, error, *call, client=None):
        with self.assertRaises(dbus.DBusException) as caught:
            (client or self.client).call(*call)
        self.assertEqual(caught.exception.get_dbus_name(), error, call)

    def test_members(self):
        other = self.client.create([0, 4])
        rows = [  # the list before, the call, its answer, the list after
            ([1, 2, 3], ("Remove", "ii", 2, 10), 2, [1]),
            ([1, 2, 3], ("Remove", "ii", 1, MOST), 3, []),
            ([1, 2], ("Remove", "ii", 3, 1), 0, [1, 2]),
            ([1, 2], ("Remove", "ii", 1, -1), 0, [1, 2]),
            ([1, 2], ("InsertAt", "ii", LEAST, 9), True, [9, 1, 2]),
            ([1, 2], ("InsertAt", "ii", 2, 9), True, [1, 9, 2]),
            ([1, 2], ("InsertAt", "ii", MOST, 9), True, [1, 2, 9]),
            ([1, 2], ("Exchange", "ii", 1, 2), True, [2, 1]),
            ([1, 2], ("Exchange", "ii", 1, 3), False, [1, 2]),
            ([1, 2], ("RemoveAll", ""), None, []),
            ([], ("Add", "i", -1), True, [-1]),
            ([7], ("Item", "i", 1), 7, [7]),
            ([7], ("Item", "i", MOST), 0, [7]),
            ([7, 8], ("SetItem", "ii", 2, 5), None, [7, 5]),
            ([7, 8], ("SetItem", "ii", 3, 5), None, [7, 8]),
            ([7], ("MakeGradientColorset", "iii", 3, 0, 0x020406), 3, [0, 0x010203, 0x020406]),
            ([7], ("MakeGradientColorset", "iii", -1, 0, 1), 0, []),
            ([7], ("MakeGradientColorset", "iii", 2, 0x01000000, 1), 0, [7]),
            ([7], ("MakeGradientColorset", "iii", 1, 0x80000005 - 2**32, 0), 1, [0xFFFFFF]),  # the window's colour
            ([7], ("MakeGradientColorsetEx", "io", 3, other), 3, [0, 2, 4]),
            ([7], ("MakeGradientColorsetEx", "io", 3, FACTORY), 0, [7]),
            ([7], ("MakeGradientColorsetEx", "io", 3, "/no/such/object"), 0, [7]),
            ([7], ("MakeStockGradientColorset", "iib", 3, -1, False), 0, []),
            ([7], ("MakeStockGradientColorset", "iib", -1, 0, True), 0, []),
            ([7], ("MakeRandomColorset", "i", -1), 0, []),
        ]
        for before, call, answer, after in rows:
            with self.subTest(call=call):
                path = self.client.create(before)
                self.assertEqual(self.client.call(path, COLORS, *call), answer)
                self.assertEqual(self.client.list(path), after)
                self.client.call(path, COLORS, "Release")

    def test_ramps_and_random_colors(self):
        path, other = self.client.create(), self.client.create()
        self.client.call(path, COLORS, "MakeStockGradientColorset", "iib", 9, 0, False)
        self.client.call(other, COLORS, "MakeStockGradientColorset", "iib", 9, 0, True)
        self.assertEqual(self.client.list(path), self.client.list(other)[::-1])
        began = None
        while began != int(time.time()):  # until both fall into one second
            began = int(time.time())
            for each in (path, other):
                self.assertEqual(self.client.call(each, COLORS, "MakeRandomColorset", "i", 20), 20)
        self.assertEqual(self.client.list(path), self.client.list(other))

    def test_errors(self):
        path = self.client.create([1])
        walk = self.client.call(path, COLORS, "_NewEnum")
        properties = "org.freedesktop.DBus.Properties"
        rows = [
            ("UnknownMethod", path, COLORS, "Add", "s", "red"),
            ("UnknownMethod", path, COLORS, "Add", ""),
            ("UnknownMethod", path, COLORS, "Add", "ii", 1, 2),
            ("UnknownMethod", path, COLORS, "Paint", ""),
            ("UnknownMethod", path, COLORS, "MakeGradientColorsetEx", "is", 1, path),
            ("PropertyReadOnly", path, properties, "Set", "ssv", COLORS, "Count", dbus.Int32(3)),
            ("PropertyReadOnly", path, COLORS, "Invoke", "iuav", 1, PUT, [dbus.Int32(3)]),
            ("UnknownObject", FACTORY + "/999999", COLORS, "RemoveAll", ""),
            ("InvalidArgs", walk, ENUM, "Next", "i", -1),
            ("InvalidArgs", walk, ENUM, "Skip", "i", LEAST),
            ("UnknownMethod", path, COLORS, "Invoke", "iuav", 99, METHOD, []),
            ("UnknownMethod", path, COLORS, "Invoke", "iuav", 1, METHOD, []),
            ("InvalidArgs", path, COLORS, "Invoke", "iuav", 6, METHOD, []),
            ("InvalidArgs", path, COLORS, "Invoke", "iuav", 6, METHOD, ["red"]),
            ("InvalidArgs", path, COLORS, "Invoke", "iuav", 6, METHOD, [dbus.Int64(2**40)]),
            ("InvalidArgs", path, COLORS, "Invoke", "iuav", 6, METHOD, [dbus.Array([1], "i")]),
            ("InvalidArgs", path, COLORS, "Invoke", "iuav", 8, METHOD, [dbus.Int32(2), dbus.Int32(2)]),
            ("LimitsExceeded", path, COLORS, "MakeRandomColorset", "i", MOST),
            ("LimitsExceeded", path, COLORS, "MakeGradientColorset", "iii", MOST, 0, 1),
            ("LimitsExceeded", path, COLORS, "MakeGradientColorsetEx", "io", MOST, path),
            ("LimitsExceeded", path, COLORS, "MakeStockGradientColorset", "iib", MOST, 0, False),
            ("LimitsExceeded", path, COLORS, "Invoke", "iuav", 10, METHOD, [dbus.Int32(MOST)]),
        ]
        for error, *call in rows:
            with self.subTest(call=call):
                self.refuses(STANDARD + error, *call)
        self.refuses("Terravox.Error.UnknownName", path, COLORS, "GetIDsOfNames", "as", ["Count", "Colour"])
        self.assertEqual(self.client.list(path), [1])

    def test_changes_of_count_are_told(self):
        path = self.client.create()
        command = ["gdbus", "monitor", "--session", "--dest", NAME, "--object-path", path]
        with subprocess.Popen(["timeout", "20", *command], stdout=subprocess.PIPE, text=True) as monitor:
            while "is owned by" not in monitor.stdout.readline():
                self.assertIsNone(monitor.poll())
            while not select.select([monitor.stdout], [], [], 0.2)[0]:  # it says so before it listens
                self.client.call(path, COLORS, "Add", "i", 1)
            told = monitor.stdout.readline()
            monitor.terminate()
        self.assertRegex(told, rf"PropertiesChanged \('{COLORS}', {{'Count': <[1-9]\d*>}}")

    def test_limits(self):
        path = self.client.create()
        self.assertEqual(self.client.call(path, COLORS, "MakeRandomColorset", "i", 65536), 65536)
        self.refuses(STANDARD + "LimitsExceeded", path, COLORS, "Add", "i", 1)
        self.refuses(STANDARD + "LimitsExceeded", path, COLORS, "InsertAt", "ii", 1, 1)
        walk = self.client.call(path, COLORS, "_NewEnum")
        code, colors = self.client.call(walk, ENUM, "Next", "i", MOST)
        self.assertEqual((code, len(colors)), (S_FALSE, 65536))
        for _ in range(254):
            self.client.create()
        self.refuses(STANDARD + "LimitsExceeded", FACTORY, "Terravox.ClassFactory", "CreateInstance", "")
        self.refuses(STANDARD + "LimitsExceeded", path, COLORS, "_NewEnum", "")
        self.refuses(STANDARD + "LimitsExceeded", walk, ENUM, "Clone", "")
        other = Client()
        other.create()  # the limit is each client's own
        other.leave()
        self.client.call(walk, ENUM, "Release")
        self.client.create()

    def test_members_by_number(self):
        path = self.client.create([5, 6])
        names = ["Count", "Remove", "InsertAt", "Exchange", "RemoveAll", "Add", "MakeGradientColorset",
                 "MakeGradientColorsetEx", "MakeStockGradientColorset", "MakeRandomColorset", "Item", "_NewEnum"]
        numbers = self.client.call(path, COLORS, "GetIDsOfNames", "as", [name.upper() for name in names])
        self.assertEqual(numbers, [*range(1, 12), -4])

        def invoke(number, kinds, *arguments):
            return self.client.call(path, COLORS, "Invoke", "iuav", number, kinds, arguments)

        self.assertEqual(invoke(1, GET), [2])
        self.assertEqual(invoke(0, METHOD | GET, dbus.Int32(2)), [6])  # the default member
        self.assertEqual(invoke(11, PUT, dbus.Int32(1), dbus.UInt32(0x80000001)), [])
        self.assertEqual(invoke(11, GET, dbus.Byte(1)), [0x80000001 - 2**32])
        self.assertEqual(invoke(9, METHOD, dbus.Int64(2), dbus.Int16(0), True), [2])
        self.assertEqual(invoke(8, METHOD, dbus.Int32(3), path), [3])
        self.assertEqual(invoke(8, METHOD, dbus.Int32(1), dbus.ObjectPath("/nowhere")), [0])
        self.assertEqual(invoke(5, METHOD), [])
        [walk] = invoke(-4, METHOD | GET)
        self.assertEqual(self.client.call(walk, ENUM, "Reset"), S_OK)

    def test_introspection_tells_all_members(self):
        path = self.client.create()
        xml = self.client.call(path, "org.freedesktop.DBus.Introspectable", "Introspect")
        mine = xml[xml.index(f'<interface name="{COLORS}">'):]
        mine = mine[:mine.index("</interface>")]
        self.assertIn('<property name="Count" type="i" access="read"/>', mine)
        self.assertEqual(len(re.findall("<method ", mine)), 15)
        self.assertNotIn("message", mine)

    def test_enumerator(self):
        path = self.client.create([1, 2, 3])
        walk = self.client.call(path, COLORS, "_NewEnum")
        self.assertEqual(self.client.call(walk, ENUM, "Next", "i", 2), (S_OK, [1, 2]))
        copy = self.client.call(walk, ENUM, "Clone")
        self.assertEqual(self.client.call(walk, ENUM, "Next", "i", MOST), (S_FALSE, [3]))
        self.assertEqual(self.client.call(walk, ENUM, "Next", "i", 1), (S_FALSE, []))
        self.assertEqual(self.client.call(walk, ENUM, "Reset"), S_OK)
        self.assertEqual(self.client.call(walk, ENUM, "Skip", "i", 3), S_OK)
        self.assertEqual(self.client.call(walk, ENUM, "Skip", "i", MOST), S_FALSE)
        self.assertEqual(self.client.call(copy, ENUM, "Next", "i", 1), (S_OK, [3]))
        self.client.call(path, COLORS, "Release")
        for call in (("Next", "i", 1), ("Skip", "i", 1), ("Reset", ""), ("Clone", "")):
            self.refuses("Terravox.Error.Unexpected", walk, ENUM, *call)
        self.client.call(walk, ENUM, "Release")
        self.refuses(STANDARD + "UnknownObject", walk, ENUM, "Release", "")

    def test_two_clients(self):
        other = Client()
        path = other.create([1, 2])
        walk = self.client.call(path, COLORS, "_NewEnum")  # mine, though the collection is not
        mine = self.client.create()
        self.assertEqual(self.client.call(mine, COLORS, "MakeGradientColorsetEx", "io", 2, path), 2)
        self.refuses(STANDARD + "AccessDenied", path, COLORS, "Release", "")
        self.refuses(STANDARD + "AccessDenied", walk, ENUM, "Release", "", client=other)
        self.assertEqual(other.list(path), [1, 2])
        other.leave()
        until(lambda: not self.client.is_there(path), "the objects of a client that left were gone")
        self.refuses("Terravox.Error.Unexpected", walk, ENUM, "Next", "i", 1)
        self.assertEqual(self.client.list(mine), [1, 2])

    def test_shell(self):
        """Each call is a client of its own: what it makes goes with it, but for shared objects."""
        path = gdbus(FACTORY, "Terravox.ClassFactory.CreateInstance").split("'")[1]
        until(lambda: not self.client.is_there(path), "the object of a call was gone")
        path = gdbus(FACTORY, "Terravox.ClassFactory.CreateShared").split("'")[1]
        self.assertEqual(gdbus(path, COLORS + ".MakeGradientColorset", "2", "0", "16777215"), "(2,)")
        walk = gdbus(path, COLORS + "._NewEnum").split("'")[1]
        self.assertEqual(gdbus(walk, ENUM + ".Next", "9"), "(1, [<0>, <16777215>])")
        gdbus(walk, ENUM + ".Release")
        gdbus(path, COLORS + ".Release")
        self.assertFalse(self.client.is_there(path))

    def test_killed_client(self):
        script = f"import dbus; print(dbus.Interface(dbus.SessionBus().get_object('{NAME}', '{FACTORY}')," \
                 " 'Terravox.ClassFactory').CreateInstance(), flush=True); import time; time.sleep(60)"
        with subprocess.Popen(["/usr/bin/python3", "-c", script], stdout=subprocess.PIPE, text=True) as process:
            path = process.stdout.readline().strip()
            self.assertTrue(self.client.is_there(path))
            process.kill()
        until(lambda: not self.client.is_there(path), "the objects of a client that was killed were gone")

    def test_end_and_new_start(self):
        """The program ends by itself, without an error, when its last client has gone; the next call starts another."""
        client = Client()
        client.create()
        shared = client.create(method="CreateShared")
        ended = len(exit_codes())
        time.sleep(1.5)  # longer than it stays with nothing to do
        self.assertEqual(len(exit_codes()), ended, "ended though clients held objects")
        self.assertEqual(subprocess.run([os.environ["TD_PROGRAM"], "--automation"], check=False,
                                        stderr=subprocess.DEVNULL).returncode, 1, "served a name that is taken")
        client.call(shared, COLORS, "Release")
        client.leave()
        until(lambda: len(exit_codes()) > ended, "the program ended")
        self.assertFalse(self.client.bus.name_has_owner(NAME))
        self.client.create()
        self.assertTrue(self.client.bus.name_has_owner(NAME))

    @classmethod
    def tearDownClass(cls):
        watcher = Client()
        until(lambda: not watcher.bus.name_has_owner(NAME), "the name was free")
        # The ordinary desktop serves the name too, and ends as its user wants.
        environment = dict(os.environ, QT_QPA_PLATFORM="offscreen")
        with subprocess.Popen([os.environ["TD_PROGRAM"]], env=environment) as desktop:
            until(lambda: watcher.bus.name_has_owner(NAME), "the desktop served the name")
            assert watcher.list(watcher.create([3])) == [3]
            desktop.terminate()
        environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nowhere"
        alone = subprocess.run([os.environ["TD_PROGRAM"], "--automation"], env=environment, capture_output=True,
                               text=True, check=False)
        assert alone.returncode == 1 and "no session bus" in alone.stderr, alone.stderr
        until(lambda: exit_codes(), "the program ended")
        assert set(exit_codes()) == {"0"}, exit_codes()


if __name__ == "__main__":
    if os.path.exists(os.environ["TD_EXIT_CODES"]):
        os.remove(os.environ["TD_EXIT_CODES"])
    unittest.main(verbosity=2)
