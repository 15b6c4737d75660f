"""Starting a sandbox for a test, and talking to it."""
import json
import re
import subprocess
import tempfile
import unittest
import urllib.request
from pathlib import Path

PROGRAM = Path(__file__).resolve().parents[2] / "sandbox" / "sandbox"


class Sandbox:
    """A running sandbox; `port` maps "http", "smtp", "smtps" and "page" to port numbers."""

    def __init__(self, folder, *arguments):
        self.folder = Path(folder)
        self.process = subprocess.Popen([PROGRAM, "--folder", folder, "--with-parent", *arguments],
                                        stdout=subprocess.PIPE, text=True)
        self.ready = self.process.stdout.readline()
        self.port = {name: int(port) for name, port in re.findall(r"(\w+)=(\d+)", self.ready)}

    def end(self):
        self.process.terminate()
        self.process.stdout.close()
        return self.process.wait()

    def api(self, path, wishes=None):
        data = None if wishes is None else json.dumps(wishes).encode()
        with urllib.request.urlopen(f"http://127.0.0.1:{self.port['page']}/api/{path}", data, timeout=20) as answer:
            return json.load(answer)

    def lines(self, name):
        text = (self.folder / name).read_text(encoding="utf-8")
        return [json.loads(line) for line in text.split("\n") if line]


class SandboxTest(unittest.TestCase):
    """One sandbox for the tests of a class, emptied before each."""

    arguments = ()

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.sandbox = Sandbox(folder.name, *cls.arguments)
        cls.addClassCleanup(cls.sandbox.end)

    def setUp(self):
        self.sandbox.api("reset", {})
