"""Cuts the board's power while settings change and a recording runs: see ./test --board --cuts N.

Usage: powercuts.py PLACES CUTS, with the places of the keys that norda-unit-pictures has printed.

After each cut the data partition is looked at before anybody mounts it again: the file system, the
settings, the recording. Then the board is switched on, and has to come up.
"""
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import threading
import time

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
sys.path.insert(0, os.path.join(TOP, "image"))
from emulator import Board  # noqa: E402

FOLDER = os.path.join(TOP, "build", "board")
RECORDING = "log/drive.log"
SETTINGS = ("media/flash/nvm/settings.ini", "media/flash/nvm/factory/settings.ini")
SAVED_AFTER = 0.5  # seconds that another program has read a setting
LOST_AT_MOST = 1.0  # seconds of a recording
FIRST_PAGE, LAST_PAGE = 80, 85
LONGEST_USE = 15
FRAME = re.compile(rb"\((\d+\.\d{6})\) can0 [0-9A-F]{3,8}##?[0-9A-F]*\n")
PAGE = re.compile(r"(8[0-5])( [12])?")  # and how often it was opened without surviving

# What an independent program on the board sees of the settings, ten times a second.
WATCH = """while :; do
    all=; for file in {files}; do read -rd '' text <$file; all="$all $text"; done 2>/dev/null
    echo "seen" $EPOCHREALTIME $all; sleep 0.1
done
""".format(files=" ".join("/var/lib/norda/" + name for name in SETTINGS))


class Lost(Exception):
    """What a power cut must not have taken."""


def expect(condition, text):
    if not condition:
        raise Lost(text)


def read_settings(text):
    return dict(re.findall(r"(\w+)=(\d+(?: [12])?|true|false)(?=\s|$)", text))


class Witness(threading.Thread):
    """Follows the settings on the board until its power is cut."""

    def __init__(self, board):
        super().__init__(daemon=True)
        self.connection = board.connect_console()
        self.connection.sendall(WATCH.encode())
        self.seen = []  # (time on the board, settings)
        self.start()

    def run(self):
        with self.connection.makefile(errors="replace") as lines:
            try:
                for line in lines:
                    found = re.match(r"seen (\d+\.\d+) (.*)", line)
                    if found:
                        self.seen.append((float(found.group(1)), read_settings(found.group(2))))
            except OSError:  # the board is off
                pass

    def saved(self):
        """@return what was saved for sure, and what was seen since"""
        last = self.seen[-1][0]
        before = [settings for at, settings in self.seen if at <= last - SAVED_AFTER]
        since = [settings for at, settings in self.seen if at > last - SAVED_AFTER]
        return (before[-1] if before else {}), since


class Driver:
    """Touches keys at random."""

    def __init__(self, board, places):
        self.board, self.places = board, places
        self.pages = []  # (time here, page)

    def use(self, seconds):
        end = time.monotonic() + seconds
        while time.monotonic() < end:
            self.touch_one()
            time.sleep(min(random.uniform(0.05, 1.5), max(0, end - time.monotonic())))

    def touch_one(self):
        page = random.randint(FIRST_PAGE, LAST_PAGE)
        self.note(page)
        self.board.touch(*self.places[page - FIRST_PAGE], 0.05)
        if random.random() < 0.2:  # on the parking page this saves three settings
            self.board.touch(*self.places[-1], 0.05)
            time.sleep(0.3)
            self.note(*range(FIRST_PAGE, LAST_PAGE + 1))  # without a camera to close it goes back
            self.board.press_key("esc")

    def note(self, *pages):
        self.pages += [(time.monotonic(), page) for page in pages]

    def pages_since(self, seconds):
        return {page for at, page in self.pages if at > time.monotonic() - seconds}


class Disk:
    """The data partition of a board that is off."""

    def __init__(self, number):
        self.image = os.path.join(FOLDER, f"cut-{number}.img")
        shutil.copy(os.path.join(FOLDER, "data.img"), self.image)

    def check(self):
        replayed = subprocess.run(["e2fsck", "-p", self.image], capture_output=True, text=True)
        expect(replayed.returncode in (0, 1), "file system: " + replayed.stdout)
        checked = subprocess.run(["e2fsck", "-fn", self.image], capture_output=True, text=True)
        expect(checked.returncode == 0, "file system: " + checked.stdout)

    def read(self, name):
        file = self.image + ".file"
        subprocess.run(["debugfs", "-R", f"dump /{name} {file}", self.image], check=True,
                       capture_output=True)
        with open(file, "rb") as content:
            data = content.read()
        os.remove(file)
        return data

    def remove(self):
        os.remove(self.image)


def check_settings(disk, witness, recent_pages):
    text = " ".join(disk.read(name).decode() for name in SETTINGS)
    expect("\0" not in text, f"settings: expected text, got {text!r}")
    found = read_settings(text)
    saved, since = witness.saved()
    for key, value in saved.items():
        expect(key in found, f"{key}: expected {value}, got nothing in {text!r}")
        allowed = {value} | {settings.get(key) for settings in since}
        if key == "UnitLastPage":
            allowed = {page.split()[0] for page in allowed if page} | set(map(str, recent_pages))
            expect(PAGE.fullmatch(found[key]), f"{key}: expected a page, got {found[key]}")
        expect(found[key].split()[0] in allowed,
               f"{key}: expected one of {allowed}, got {found[key]}; seen: {witness.seen[-20:]}")
    return found.get("UnitLastPage")


def check_recording(disk, cut_at):
    """@return how much of it is lost, in seconds"""
    lines = disk.read(RECORDING).splitlines(keepends=True)
    expect(len(lines) > 1, "recording: expected frames, got none")
    times = [FRAME.fullmatch(line) for line in lines[:-1]]  # the last may be a part of one
    for line, matched in zip(lines, times):
        expect(matched, f"recording: expected a frame, got {line!r}")
    lost = cut_at - float(times[-1].group(1))
    expect(lost < LOST_AT_MOST, f"recording: {lost:.2f} s are lost")
    return lost


def boot():
    subprocess.run([os.path.join(TOP, "board"), "--boot"], check=True, stdout=subprocess.DEVNULL)


def start_recording(board):
    """From the next start of the module on, at each boot anew."""
    board.run("(. /etc/norda/moduled.conf; echo \"OPTIONS=\\\"$OPTIONS --log-can "
              "/var/log/norda/drive.log\\\"\" >/var/lib/norda/moduled.conf); "
              "sync; systemctl restart norda-moduled")


def until_recording(board):
    text, code = board.run("for i in {1..100}; do [ /var/lib/norda/%s -nt /run/systemd/notify ] && "
                           "exit 0; sleep 0.3; done; exit 1" % RECORDING)
    expect(code == 0, "expected a recording " + text)


def check_boot(board, page):
    text, _ = board.run("systemctl show --value -p StatusText norda-unit; "
                        "journalctl -b -k -q --no-pager | grep 'EXT4-fs error'")
    expect("EXT4-fs error" not in text, text)
    kept, starts = (page or "").split()[0:1], (page or "").split()[1:2]
    if kept and starts != ["2"]:  # it is not suspected of having ended the unit
        expect(f"({kept[0]})" in text, f"expected page {kept[0]}, got {text}")


def cut(board, places, number):
    """@return the page that is saved"""
    witness, driver = Witness(board), Driver(board, places)
    used = random.uniform(1, LONGEST_USE)
    driver.use(used)
    with open(board.path("pid")) as file:
        os.kill(int(file.read()), signal.SIGKILL)
    os.remove(board.path("pid"))
    recent = driver.pages_since(SAVED_AFTER + 2)
    witness.join(5)
    expect(witness.seen, "expected to see the settings")
    disk = Disk(number)
    disk.check()
    page = check_settings(disk, witness, recent)
    lost = check_recording(disk, witness.seen[-1][0])
    disk.remove()
    print(f"cut {number}: after {used:.1f} s: file system clean, page {page}, "
          f"the recording ends {max(0, lost):.2f} s before the cut", flush=True)
    return page


def main(file, cuts):
    with open(file) as lines:
        places = [tuple(map(int, line.split()[1:])) for line in lines]
    board = Board(os.path.join(FOLDER, "run"))
    seed = random.randrange(1 << 32)
    random.seed(seed)
    print(f"seed {seed}", flush=True)
    start_recording(board)
    for number in range(1, int(cuts) + 1):
        until_recording(board)
        page = cut(board, places, number)
        boot()
        check_boot(board, page)
    print(f"{cuts} power cuts, nothing lost that was saved")


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except Lost as lost:
        sys.exit(f"powercuts: {lost}")
