"""A page in a Chromium without a window, driven over its debugging pipe."""

import base64
import json
import os
import signal
import subprocess
import time

PATIENCE = 60  # seconds; a browser on a loaded machine starts slowly


class Browser:
    def __init__(self, program, profile):
        to_browser, self._out = os.pipe()
        self._in, from_browser = os.pipe()

        def connect():  # the browser reads from 3 and writes to 4
            os.dup2(to_browser, 10)
            os.dup2(from_browser, 11)
            os.dup2(10, 3)
            os.dup2(11, 4)

        self._process = subprocess.Popen(
            [program, "--headless", "--no-sandbox", "--disable-gpu", "--remote-debugging-pipe",
             f"--user-data-dir={profile}", "--host-resolver-rules=MAP * ~NOTFOUND", "about:blank"],
            preexec_fn=connect, close_fds=False, start_new_session=True,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_browser)
        os.close(from_browser)
        os.set_blocking(self._in, False)
        self._received = b""
        self._number = 0
        self._session = None
        self.problems = []  # console errors, exceptions and failed requests
        self.requests = []
        target = self.call("Target.createTarget", url="about:blank")["targetId"]
        self._session = self.call("Target.attachToTarget", targetId=target, flatten=True)["sessionId"]
        for domain in ("Page", "Runtime", "Log", "Network"):
            self.call(f"{domain}.enable")

    def close(self):
        """Asks it to end, which ends its helpers too: killed, it leaves them writing to the profile."""
        self._session = None
        try:
            self.call("Browser.close")
            self._process.wait(PATIENCE)
        except (OSError, RuntimeError, subprocess.TimeoutExpired):
            os.killpg(self._process.pid, signal.SIGKILL)
            self._process.wait()

    def call(self, method, **params):
        """A command of the protocol. Returns its result."""
        self._number += 1
        message = {"id": self._number, "method": method, "params": params}
        if self._session:
            message["sessionId"] = self._session
        os.write(self._out, json.dumps(message).encode() + b"\0")
        reply = self._wait(lambda received: received.get("id") == self._number)
        if "error" in reply:
            raise RuntimeError(f"{method}: {reply['error']['message']}")
        return reply["result"]

    def open(self, url):
        """Loads a page, until it and its pictures are there."""
        self.call("Page.navigate", url="about:blank")
        self.call("Page.navigate", url=url)
        end = time.monotonic() + PATIENCE
        while self.value("location.href + document.readyState") != url + "complete":
            if time.monotonic() > end:
                raise RuntimeError(f"{url}: not loaded within {PATIENCE} s")
            time.sleep(0.05)

    def value(self, expression):
        """What an expression is on the page, promises awaited."""
        reply = self.call("Runtime.evaluate", expression=expression, returnByValue=True,
                          awaitPromise=True)
        if "exceptionDetails" in reply:
            raise RuntimeError(f"{expression}: {reply['exceptionDetails']}")
        return reply["result"].get("value")

    def set_screen(self, width, height, scheme="light"):
        self.call("Emulation.setDeviceMetricsOverride", width=width, height=height,
                  deviceScaleFactor=1, mobile=width < 600)
        self.call("Emulation.setEmulatedMedia",
                  features=[{"name": "prefers-color-scheme", "value": scheme}])

    def picture(self, file, whole=False):
        reply = self.call("Page.captureScreenshot", captureBeyondViewport=whole)
        with open(file, "wb") as out:
            out.write(base64.b64decode(reply["data"]))

    def _wait(self, is_wanted):
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            while b"\0" in self._received:
                text, self._received = self._received.split(b"\0", 1)
                message = json.loads(text)
                self._note(message)
                if is_wanted(message):
                    return message
            try:
                self._received += os.read(self._in, 1 << 20)
            except BlockingIOError:
                time.sleep(0.01)
        raise RuntimeError(f"the browser did not answer within {PATIENCE} s")

    def _note(self, message):
        method, params = message.get("method"), message.get("params", {})
        if method == "Runtime.exceptionThrown":
            self.problems.append(params["exceptionDetails"].get("text", "exception"))
        elif method == "Runtime.consoleAPICalled" and params["type"] in ("error", "warning"):
            self.problems.append(f"console: {params['args']}")
        elif method == "Log.entryAdded" and params["entry"]["level"] in ("error", "warning"):
            self.problems.append(params["entry"]["text"])
        elif method == "Network.loadingFailed":
            self.problems.append(f"not loaded: {params['errorText']}")
        elif method == "Network.requestWillBeSent":
            self.requests.append(params["request"]["url"])
