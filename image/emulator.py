"""The running board: its picture, its touch screen, its console and its switch.

Usage: emulator.py FOLDER picture FILE | touch X Y | shell | run COMMAND... | wait SECONDS | stop
FOLDER has the sockets of the emulator.
"""
import json
import os
import re
import select
import socket
import sys
import termios
import time
import tty

WIDTH, HEIGHT = 1280, 720
FIRST_PAGE = "norda: first page"
PROMPT = "root@norda-board:"  # before it, the console loses what is typed


class BoardError(Exception):
    pass


def split(mark):
    return f"{mark[:3]}''{mark[3:]}"


def connect(path):
    connection = socket.socket(socket.AF_UNIX)
    try:
        connection.connect(path)
    except OSError:
        raise BoardError("expected a running board, found none") from None
    return connection


class Board:
    def __init__(self, folder):
        self.folder = os.path.abspath(folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def monitor(self, *commands):
        """Gives the emulator these commands, each (name, arguments), one after the other."""
        with connect(self.path("monitor.sock")) as connection:
            lines = connection.makefile("rw")
            json.loads(lines.readline())
            for name, arguments in (("qmp_capabilities", {}), *commands):
                lines.write(json.dumps({"execute": name, "arguments": arguments}) + "\n")
                lines.flush()
                self.expect_return(name, lines)

    @staticmethod
    def expect_return(name, lines):
        for line in lines:
            answer = json.loads(line)
            if "return" in answer:
                return
            if "error" in answer:
                raise BoardError(f"{name}: {answer['error']['desc']}")

    def picture(self, file):
        kind = "ppm" if file.endswith(".ppm") else "png"
        self.monitor(("screendump", {"filename": os.path.abspath(file), "format": kind}))

    def touch(self, x, y, seconds=0.15):
        """A finger on this pixel of the screen, for so long."""
        place = [
            {"type": "abs", "data": {"axis": "x", "value": x * 32767 // (WIDTH - 1)}},
            {"type": "abs", "data": {"axis": "y", "value": y * 32767 // (HEIGHT - 1)}},
        ]
        self.monitor(("input-send-event", {"events": place}))
        self.monitor(("input-send-event", {"events": [self.button(True)]}))
        time.sleep(seconds)
        self.monitor(("input-send-event", {"events": [self.button(False)]}))

    def press_key(self, name):
        """A key of the unit's housing, by the emulator's name for it: esc goes back."""
        self.monitor(("send-key", {"keys": [{"type": "qcode", "data": name}]}))

    @staticmethod
    def button(down):
        return {"type": "btn", "data": {"button": "left", "down": down}}

    def log(self):
        try:
            with open(self.path("serial.log"), errors="replace") as file:
                return file.read()
        except FileNotFoundError:  # not yet
            return ""

    def wait(self, seconds, text=FIRST_PAGE):
        """Until this text is on the serial console; by default the report of the first page."""
        end = time.monotonic() + seconds
        while text not in self.log():
            if time.monotonic() > end:
                raise BoardError(f"expected '{text}' within {seconds} s: see "
                                 + self.path("serial.log"))
            time.sleep(0.1)

    def connect_console(self):
        self.wait(60, PROMPT)
        return connect(self.path("serial.sock"))

    def run(self, command, seconds=60):
        """Runs a command on the board. @return its output and exit code"""
        begin, end = f"begin-{time.monotonic_ns()}", f"end-{time.monotonic_ns()}"
        # The console echoes the line: in it the marks are cut in two.
        line = f"echo {split(begin)}; ( {command}\n) 2>&1; echo {split(end)}:$?\n"
        pattern = re.compile(begin + r"\n(.*)" + end + r":(\d+)\n", re.DOTALL)
        with self.connect_console() as connection:
            connection.sendall(line.encode())
            found = self.read_until(connection, pattern, seconds)
        return found.group(1), int(found.group(2))

    def read_until(self, connection, pattern, seconds):
        text, end = "", time.monotonic() + seconds
        while not (found := pattern.search(text)):
            ready, _, _ = select.select([connection], [], [], max(0, end - time.monotonic()))
            data = connection.recv(65536) if ready else b""
            if not data:
                raise BoardError(f"expected an answer of the board within {seconds} s, got: "
                                 + text[-500:])
            text += data.decode(errors="replace").replace("\r", "")
        return found

    def shell(self):
        """The serial console, until Ctrl-]."""
        print("The board's console. Ctrl-] leaves it.", flush=True)
        before = termios.tcgetattr(0)
        try:
            tty.setraw(0)
            self.relay()
        finally:
            termios.tcsetattr(0, termios.TCSADRAIN, before)
            print()

    def relay(self):
        with self.connect_console() as connection:
            connection.sendall(b"\n")
            while True:
                ready, _, _ = select.select([0, connection], [], [])
                if connection in ready:
                    data = connection.recv(65536)
                    if not data:
                        return
                    os.write(1, data)
                if 0 in ready:
                    data = os.read(0, 4096)
                    if not data or b"\x1d" in data:
                        return
                    connection.sendall(data)

    def stop(self):
        with self.connect_console() as connection:
            connection.sendall(b"\nsystemctl poweroff\n")
            time.sleep(1)


def main(folder, action, *arguments):
    board = Board(folder)
    if action == "picture":
        board.picture(*arguments)
    elif action == "touch":
        board.touch(*map(int, arguments))
    elif action == "shell":
        board.shell()
    elif action == "run":
        text, code = board.run(" ".join(arguments))
        print(text, end="")
        return code
    elif action == "wait":
        board.wait(int(arguments[0]))
    elif action == "stop":
        board.stop()
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main(*sys.argv[1:]))
    except BoardError as error:
        sys.exit(f"board: {error}")
