"""A headless Chromium driven over WebDriver, with the standard library alone."""
import base64
import json
import re
import subprocess
import tempfile
import urllib.error
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"
SWITCHES = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
            "--disable-background-networking", "--disable-component-update", "--disable-sync",
            "--window-size=1400,1000"]


class Browser:
    """A browser with an empty profile of its own; close() ends it and the driver."""

    def __init__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True)
        self.address = f"http://127.0.0.1:{self._port()}"
        self.session = ""
        options = {"args": [*SWITCHES, f"--user-data-dir={self.profile.name}"]}
        answer = self._send("POST", "/session", {"capabilities": {"alwaysMatch": {
            "browserName": "chrome", "goog:chromeOptions": options,
            "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.session = "/session/" + answer["sessionId"]

    def _port(self):
        for line in self.driver.stdout:
            match = re.search(r"successfully on port (\d+)", line)
            if match:
                return int(match.group(1))
        raise RuntimeError("chromedriver does not start")

    def _send(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.address + path, data, method=method)
        try:
            with urllib.request.urlopen(request, timeout=120) as response:
                return json.load(response)["value"]
        except urllib.error.HTTPError as error:
            raise RuntimeError(error.read().decode("utf-8", "replace")) from error

    def post(self, path, body):
        return self._send("POST", self.session + path, body)

    def open(self, url):
        self.post("/url", {"url": url})

    def run(self, script, *arguments):
        """The value of a script's `return`."""
        return self.post("/execute/sync", {"script": script, "args": list(arguments)})

    def find(self, selector):
        return self.post("/element", {"using": "css selector", "value": selector})[ELEMENT]

    def click(self, selector):
        self.post(f"/element/{self.find(selector)}/click", {})

    def press(self, text):
        """Presses keys in whatever has the focus."""
        keys = [{"type": kind, "value": key} for key in text for kind in ("keyDown", "keyUp")]
        self.post("/actions", {"actions": [{"type": "key", "id": "keys", "actions": keys}]})

    def hover(self, selector):
        move = {"type": "pointerMove", "duration": 0, "x": 0, "y": 0,
                "origin": {ELEMENT: self.find(selector)}}
        self.post("/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": [move]}]})

    def log(self):
        """What the page wrote on its console, and what failed to load, since the last call."""
        return self.post("/se/log", {"type": "browser"})

    def screenshot(self, path):
        path.write_bytes(base64.b64decode(self._send("GET", self.session + "/screenshot")))

    def close(self):
        if self.session:
            self._send("DELETE", self.session)
        self.driver.terminate()
        self.driver.wait(30)
        self.driver.stdout.close()
        self.profile.cleanup()
