"""The booted board, from power-on to the watchdog: see ./test --board.

Usage: board.py EXPECTED-PICTURES PLACES, with what norda-unit-pictures has written and printed.
"""
import os
import re
import subprocess
import sys
import time
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
TOP = os.path.dirname(HERE)
sys.path.insert(0, os.path.join(TOP, "image"))
from emulator import Board  # noqa: E402

SEEN = os.path.join(TOP, "build", "board", "pictures")
MOST_MEMORY_KB = 45 * 1024
CLOCK = "rectangle 0,0 127,110"  # in the status column: it shows the minute
# What the kernel says of this emulator.
EMULATOR_WARNINGS = ("Spectre v2: ", "missing clock-frequency property",
                     "drm_plane_enable_fb_damage_clips", "hrtimer: interrupt took")
PATIENCE = 10  # seconds: an emulator on a busy machine is slower than a board
PROMISED = 2  # seconds, from reverse gear to the picture
REVERSE, FORWARD = "1F0#FF", "1F0#03"


def run_board(option):
    subprocess.run([os.path.join(TOP, "board"), option], check=True)


def expected_pictures():
    return sys.argv[1]


def key_places():
    """Page by page, in the order of their keys."""
    with open(sys.argv[2]) as file:
        lines = [line.split() for line in file]
    return [(name, int(x), int(y)) for name, x, y in lines if name != "Camera"]


class Picture:
    """Some thousand pixels of a picture, right of the status column."""

    def __init__(self, ppm):
        with open(ppm, "rb") as file:
            data = file.read()
        assert data.startswith(b"P6\n1280 720\n255\n"), ppm
        first = len(data) - 1280 * 720 * 3
        self.bytes = [data[first + (y * 1280 + x) * 3] for y in range(3, 720, 11)
                      for x in range(131, 1280, 11)]

    def is_like(self, other):
        same = sum(abs(a - b) < 24 for a, b in zip(self.bytes, other.bytes))
        return same > 0.97 * len(self.bytes)


class BoardTest(unittest.TestCase):
    """In the order of their names: the first takes the board as it was switched on."""

    board = Board(os.path.join(TOP, "build", "board", "run"))

    def on_board(self, command, seconds=60):
        text, code = self.board.run(command, seconds)
        self.assertEqual(code, 0, f"{command}: {text}")
        return text.strip()

    def until(self, question, wanted, seconds=60):
        """Asks until the answer has the wanted text."""
        end, answer = time.monotonic() + seconds, ""
        while time.monotonic() < end:
            answer = question()
            if wanted in answer:
                return
            time.sleep(0.3)
        self.fail(f"expected '{wanted}' within {seconds} s, got '{answer}'")

    def property_of(self, service, name):
        return self.on_board(f"systemctl show --value -p {name} {service}")

    def monotonic(self, name, service=""):
        """A time stamp of the service manager, in seconds since the kernel's start."""
        stamp = self.on_board(f"systemctl show --value -p {name}TimestampMonotonic {service}")
        return int(stamp) / 1e6

    def status(self):
        return self.property_of("norda-unit", "StatusText")

    def until_status(self, wanted, seconds=60):
        self.until(self.status, wanted, seconds)

    def open_all_pages(self, state):
        """Touches each page's key, each seen to have opened its page."""
        for name, x, y in key_places():
            self.board.touch(x, y)
            self.until_status(f"{name} (")
            time.sleep(1)
            yield name
        self.assertIn(state, self.status())

    def memory_kb(self, service, kind):
        """@param kind  Rss, or Pss for a share of the pages that other processes have, too"""
        main = self.property_of(service, "MainPID")
        line = self.on_board(f"grep ^{kind}: /proc/{main}/smaps_rollup")
        return int(line.split()[1])

    def switches(self, service):
        """How often each thread of a service has gone to sleep."""
        main = self.property_of(service, "MainPID")
        lines = self.on_board(f"grep ^voluntary_ctxt /proc/{main}/task/*/status")
        return {line.split("/")[4]: int(line.split()[1]) for line in lines.splitlines()}

    def test_a_services_run(self):
        for service in ("vcan0", "norda-ecu", "norda-moduled", "norda-unit"):
            self.assertEqual(self.property_of(service, "ActiveState"), "active", service)
        for service in ("norda-ecu", "norda-moduled", "norda-unit"):
            self.assertEqual(self.property_of(service, "NRestarts"), "0", service)
        self.until_status("module connected")

    def test_a_phases_of_the_boot(self):
        splash = self.on_board("dmesg | sed -n 's/^\\[ *\\([0-9.]*\\)\\] norda: splash/\\1/p'")
        ends = [("kernel, up to the splash", float(splash)),
                ("first stage", self.monotonic("Userspace")),
                ("systemd", self.monotonic("InactiveExit", "norda-unit")),
                ("unit, up to the first page", self.monotonic("ActiveEnter", "norda-unit"))]
        for (phase, end), (_, start) in zip(ends, [("", 0), *ends]):
            self.assertGreater(end, start, phase)
            print(f"{phase}: {end - start:.1f} s")
        for service in ("systemd-udevd", "vcan0", "norda-ecu", "norda-moduled"):
            self.assertGreater(self.monotonic("InactiveExit", service), ends[-1][1], service)

    def test_b_log_has_no_warnings(self):
        lines = self.on_board("journalctl -b -q -p warning --no-pager -o cat").splitlines()
        own = [line for line in lines if not any(text in line for text in EMULATOR_WARNINGS)]
        self.assertEqual(own, [])
        self.assertEqual(self.on_board("systemctl --failed --no-legend --plain"), "")

    def test_c_root_is_read_only(self):
        text, code = self.board.run("touch /etc/written")
        self.assertNotEqual(code, 0, text)
        self.on_board("touch /var/lib/norda/written && rm /var/lib/norda/written")

    def test_d_memory(self):
        for kind in ("Rss", "Pss"):
            unit, module = (self.memory_kb(service, kind)
                            for service in ("norda-unit", "norda-moduled"))
            print(f"{kind}: unit {unit} kB, module {module} kB")
        self.assertLess(unit + module, MOST_MEMORY_KB)  # with the shared pages counted once

    def test_e_module_asks_the_car(self):
        self.on_board("timeout 30 candump -n 20 vcan0,7E8:7FF")

    def test_e_tester_is_answered(self):
        """With the identification number, which the module does not ask for."""
        text = self.on_board("(sleep 1; cansend vcan0 7DF#0209020000000000) & "
                             "timeout 10 candump vcan0,7E8:7FF | grep -m 1 '49 02'")
        self.assertIn("7E8", text)

    def test_f_pages_open_by_finger(self):
        for name in self.open_all_pages("module connected"):
            self.board.picture(os.path.join(SEEN, f"connected-{name.lower()}.png"))

    def start_service(self, name, command):
        """Until the end of the test."""
        self.on_board(f"systemd-run -q --collect -p SuccessExitStatus=1 --unit {name} {command}")
        self.addCleanup(self.on_board, f"systemctl stop {name}")

    def display(self):
        file = os.path.join(SEEN, "display.ppm")
        self.board.picture(file)
        return Picture(file)

    def select_reverse(self):
        """@return after how many seconds the camera is seen"""
        start = time.monotonic()
        self.on_board(f"cansend vcan0 {REVERSE}")
        self.until_camera()
        return time.monotonic() - start

    def camera(self):
        wanted = os.path.join(SEEN, "camera.ppm")
        subprocess.run(["convert-im6.q16", os.path.join(expected_pictures(), "camera.png"), wanted],
                       check=True)
        return Picture(wanted)

    def until_display(self, condition, expected):
        end = time.monotonic() + PATIENCE
        while not condition(self.display()):
            self.assertLess(time.monotonic(), end, f"expected {expected}")
            time.sleep(0.05)

    def until_camera(self):
        camera = self.camera()
        self.until_display(lambda shown: shown.is_like(camera), "the camera's picture")

    def select_forward(self):
        camera = self.camera()
        self.on_board(f"cansend vcan0 {FORWARD}")
        self.until_display(lambda shown: not shown.is_like(camera), "the page below the camera")

    def check_reverse(self, when, prepare=lambda: None):
        """The emulator itself may be held up, so one of three is enough."""
        for _ in range(3):
            prepare()
            took = self.select_reverse()
            self.select_forward()
            print(f"reverse{when}: {took:.1f} s")
            if took <= PROMISED:
                return
        self.fail(f"expected the camera's picture within {PROMISED} s")

    def test_f_reverse(self):
        name, x, y = next(place for place in key_places() if place[0] == "About")
        self.board.touch(x, y)
        self.until_status(f"{name} (")
        time.sleep(1)
        page = self.display()
        self.check_reverse("")
        self.until_display(lambda shown: shown.is_like(page), "the page as it was")

    def test_f_reverse_during_a_page_change(self):
        for name, x, y in key_places():
            self.check_reverse(f" after {name} was touched", lambda: self.board.touch(x, y, 0.05))

    def test_f_reverse_on_a_full_bus(self):
        """As many frames as 500 kbit/s carry."""
        self.start_service("full", "cangen vcan0 -g 0.25 -I 7FF -L 8")
        time.sleep(3)
        self.check_reverse(" on a full bus")

    def test_g_module_is_killed(self):
        self.on_board("systemctl kill -s KILL norda-moduled")
        self.until(lambda: self.property_of("norda-moduled", "NRestarts"), "1")
        self.until_status("module connected")

    def test_h_unit_is_killed(self):
        page = self.status().split(" (")[0]
        self.on_board("systemctl kill -s KILL norda-unit")
        self.until(lambda: self.property_of("norda-unit", "NRestarts"), "1")
        self.until(lambda: self.property_of("norda-unit", "ActiveState"), "active", 120)
        self.until_status(page)

    def test_h_unit_starts_in_reverse(self):
        identifier, data = REVERSE.split("#")
        self.start_service("gear", f"cangen vcan0 -g 50 -I {identifier} -L 1 -D {data}")
        self.on_board("systemctl restart norda-unit", 180)
        start = time.monotonic()
        self.until_camera()
        print(f"reverse before the first page: {time.monotonic() - start:.1f} s after it")

    def test_i_watchdog(self):
        restarts = int(self.property_of("norda-unit", "NRestarts"))
        self.on_board("systemctl kill -s STOP norda-unit")
        self.until(lambda: self.property_of("norda-unit", "NRestarts"), str(restarts + 1), 120)
        self.until(lambda: self.property_of("norda-unit", "ActiveState"), "active", 120)

    def test_j_pictures_without_a_module(self):
        self.on_board("systemctl mask --runtime --now norda-moduled && systemctl restart norda-unit",
                      180)
        self.until_status("no module")
        for name in self.open_all_pages("no module"):
            self.compare(name.lower() + ".png")

    def compare(self, file):
        seen, wanted = os.path.join(SEEN, "seen"), os.path.join(SEEN, "wanted")
        for folder in (seen, wanted):
            subprocess.run(["rm", "-rf", folder], check=True)
            os.makedirs(folder)
        self.board.picture(os.path.join(SEEN, file))
        for source, folder in ((SEEN, seen), (expected_pictures(), wanted)):
            subprocess.run(["convert-im6.q16", os.path.join(source, file), "-fill", "black",
                            "-draw", CLOCK, os.path.join(folder, file)], check=True)
        compared = subprocess.run(
            [os.path.join(TOP, "build/release/bin/norda-compare-pictures"), wanted, seen],
            capture_output=True, text=True)
        print(file, (compared.stdout + compared.stderr).strip())
        self.assertEqual(compared.returncode, 0, file)

    def test_k_idle_unit_sleeps(self):
        time.sleep(5)
        seconds, before = 60, self.switches("norda-unit")
        time.sleep(seconds)
        after = self.switches("norda-unit")
        a_second = sum(after[thread] - before.get(thread, 0) for thread in after) / seconds
        print(f"idle: the unit wakes {a_second:.2f} times a second")
        # The watchdog's report is one each five seconds, the clock one a minute.
        self.assertLess(a_second, 1)

    def test_l_boots_without_its_data_partition(self):
        """There is a page all the same, and settings last as long as the power."""
        run_board("--stop")
        self.assertIn("reboot: Power down", self.board.log())
        with open(os.path.join(TOP, "build", "board", "data.img"), "r+b") as data:
            size = os.path.getsize(data.name)
            data.truncate(0)
            data.truncate(size)
        run_board("--boot")
        self.assertIn("/dev/vdb: expected the data partition; nothing is kept", self.board.log())
        self.assertEqual(self.on_board("findmnt -no FSTYPE /var/lib/norda"), "tmpfs")
        self.assertEqual(self.on_board("stat -c %U /var/log/norda"), "norda")
        self.until(lambda: self.property_of("norda-moduled", "ActiveState"), "active")
        self.assertEqual(self.property_of("norda-unit", "ActiveState"), "active")


if __name__ == "__main__":
    os.makedirs(SEEN, exist_ok=True)
    unittest.main(argv=sys.argv[:1], verbosity=2)
