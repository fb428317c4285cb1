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
CLOCK = "rectangle 0,0 100,110"  # in the status column: it shows the minute


def expected_pictures():
    return sys.argv[1]


def key_places():
    """Page by page, in the order of their keys."""
    with open(sys.argv[2]) as file:
        lines = [line.split() for line in file]
    return [(name, int(x), int(y)) for name, x, y in lines]


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

    def memory_kb(self, service):
        main = self.property_of(service, "MainPID")
        rss = self.on_board(f"sed -n 's/^VmRSS:[^0-9]*\\([0-9]*\\).*/\\1/p' /proc/{main}/status")
        return int(rss)

    def switches(self, service):
        """How often the threads of a service have gone to sleep."""
        main = self.property_of(service, "MainPID")
        lines = self.on_board(f"grep -h ^voluntary_ctxt /proc/{main}/task/*/status")
        return sum(int(line.split()[1]) for line in lines.splitlines())

    def test_a_services_run(self):
        for service in ("vcan0", "norda-ecu", "norda-moduled", "norda-unit"):
            self.assertEqual(self.property_of(service, "ActiveState"), "active", service)
        for service in ("norda-ecu", "norda-moduled", "norda-unit"):
            self.assertEqual(self.property_of(service, "NRestarts"), "0", service)
        self.until_status("module connected")
        print(self.on_board("systemd-analyze time; systemd-analyze blame | head -n 12"))

    def test_b_log_has_no_warnings(self):
        self.assertEqual(self.on_board("journalctl -b -q -p warning --no-pager -o cat"), "")
        self.assertEqual(self.on_board("systemctl --failed --no-legend --plain"), "")

    def test_c_root_is_read_only(self):
        text, code = self.board.run("touch /etc/written")
        self.assertNotEqual(code, 0, text)
        self.on_board("touch /var/lib/norda/written && rm /var/lib/norda/written")

    def test_d_memory(self):
        unit, module = self.memory_kb("norda-unit"), self.memory_kb("norda-moduled")
        print(f"resident: unit {unit} kB, module {module} kB")
        self.assertLess(unit + module, MOST_MEMORY_KB)

    def test_e_a_tester_is_answered(self):
        text = self.on_board("(sleep 0.5; cansend vcan0 7DF#0201000000000000) & "
                             "timeout 5 candump -n 1 vcan0,7E8:7FF")
        self.assertIn("7E8", text)
        self.on_board("timeout 10 candump -n 20 vcan0,7E8:7FF")

    def test_f_pages_open_by_finger(self):
        for name in self.open_all_pages("module connected"):
            self.board.picture(os.path.join(SEEN, f"connected-{name.lower()}.png"))

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

    def test_i_watchdog(self):
        self.on_board("systemctl kill -s STOP norda-unit")
        self.until(lambda: self.property_of("norda-unit", "NRestarts"), "2", 120)
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
        a_second = (self.switches("norda-unit") - before) / seconds
        print(f"idle: the unit wakes {a_second:.2f} times a second")
        # The watchdog's report is one each five seconds, the clock one a minute.
        self.assertLess(a_second, 1)


if __name__ == "__main__":
    os.makedirs(SEEN, exist_ok=True)
    unittest.main(argv=sys.argv[:1], verbosity=2)
