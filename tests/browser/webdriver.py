"""As much of a browser's remote control as the tests need."""
import json
import os
import re
import subprocess
import tempfile
import urllib.request

ELEMENT = "element-6066-11e4-a52e-4f735466cecf"


class Browser:
    """A headless Chromium. Use it in a with statement."""

    def __init__(self, script=True):
        self.script = script

    def __enter__(self):
        self.profile = tempfile.TemporaryDirectory(prefix="quillbook-browser-", ignore_cleanup_errors=True)
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE,
                                       stderr=subprocess.DEVNULL, text=True)
        for line in self.driver.stdout:
            found = re.search(r"started successfully on port (\d+)", line)
            if found:
                break
        else:
            raise RuntimeError("chromedriver did not start")
        self.base = f"http://127.0.0.1:{found[1]}"
        arguments = ["--headless=new", "--disable-gpu", "--disable-dev-shm-usage", "--window-size=1280,900",
                     f"--user-data-dir={self.profile.name}"]
        if os.geteuid() == 0:
            arguments.append("--no-sandbox")  # root has none
        prefs = {} if self.script else {"profile.managed_default_content_settings.javascript": 2}
        options = {"goog:chromeOptions": {"args": arguments, "prefs": prefs}}
        answer = self.send("POST", "/session", {"capabilities": {"alwaysMatch": options}})
        self.base += f"/session/{answer['sessionId']}"
        return self

    def __exit__(self, *_):
        try:
            self.send("DELETE", "", None)
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.driver.stdout.close()
            self.profile.cleanup()

    def send(self, method, path, body):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.base + path, data, {"Content-Type": "application/json"}, method=method)
        with urllib.request.urlopen(request, timeout=120) as answer:
            return json.load(answer)["value"]

    def open(self, path):
        self.send("POST", "/url", {"url": path.resolve().as_uri()})

    def url(self):
        return self.send("GET", "/url", None)

    def find(self, selector, using="css selector"):
        return self.send("POST", "/element", {"using": using, "value": selector})[ELEMENT]

    def find_all(self, selector):
        return [found[ELEMENT] for found in self.send("POST", "/elements", {"using": "css selector",
                                                                            "value": selector})]

    def text(self, selector):
        return self.send("GET", f"/element/{self.find(selector)}/text", None)

    def click(self, element):
        self.send("POST", f"/element/{element}/click", {})

    def press(self, keys):
        actions = [{"type": kind, "value": key} for key in keys for kind in ("keyDown", "keyUp")]
        self.send("POST", "/actions", {"actions": [{"type": "key", "id": "keys", "actions": actions}]})

    def run(self, script):
        return self.send("POST", "/execute/sync", {"script": script, "args": []})

    def emulate(self, command, parameters):
        self.send("POST", "/goog/cdp/execute", {"cmd": f"Emulation.{command}", "params": parameters})
