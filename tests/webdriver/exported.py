#!/usr/bin/python3
"""A recorded session as a test of another language: exported.py TARNI SESSION --python | --javascript

It does with the program what was recorded, and fails by its name where a check does not hold.
"""
import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CLIENTS = Path(__file__).parent / "clients"
RUNNERS = {
    "--python": ("test_it.py", ["/usr/bin/python3", "-m", "pytest", "-p", "no:cacheprovider"]),
    "--javascript": ("it.test.mjs", ["node", "--test"]),
}


def check(text):
    element = {"locators": [{"find": {"identifier": "buttonNewDatabase"}}]}
    return json.dumps({"act": "check", "element": element, "textIs": text})


class Exported(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        (self.folder / "node_modules").symlink_to(CLIENTS / "node_modules")
        server = subprocess.Popen([TARNI, "webdriver", "--port", "0"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(server.stdout.close)
        self.addCleanup(server.wait)
        self.addCleanup(server.terminate)
        address = server.stdout.readline().strip()
        self.environment = {**os.environ, "TARNI_WEBDRIVER": address, "TARNI_SECRET_PASSWORDEDIT": "s3cret"}

    def outcome(self, session):
        """Of the test that the lines of a session become: its exit code and what it says."""
        name, runner = RUNNERS[LANGUAGE]
        (self.folder / "it.json").write_text("\n".join(session).rstrip() + "\n")
        subprocess.run([TARNI, "export", self.folder / "it.json", LANGUAGE, "-o", self.folder / name], check=True)
        done = subprocess.run([*runner, name], cwd=self.folder, env=self.environment, text=True, capture_output=True)
        return done.returncode, done.stdout + done.stderr

    def test_it_does_what_was_recorded(self):
        opening, *steps = Path(SESSION).read_text().splitlines()
        code, said = self.outcome([opening, check("Create new database") + ",", *steps])
        self.assertEqual(code, 0, said)

    def test_a_check_that_does_not_hold_fails_by_its_name(self):
        code, said = self.outcome(['{"tarniSession":2,"program":["keepassxc"],"steps":[', check("No such text"), "]}", ""])
        self.assertNotEqual(code, 0, said)
        self.assertIn('shows "No such text"', said)


if __name__ == "__main__":
    TARNI, SESSION, LANGUAGE = sys.argv[1:4]
    unittest.main(argv=sys.argv[:1])
