#!/usr/bin/python3
"""What a played step takes of a program at rest, and what recording takes of memory.

    play.py TARNI     milliseconds from the end of a step to the end of the next; MB
"""
import json
import os
import pathlib
import socket
import statistics
import subprocess
import sys
import tempfile
import time

FORM = pathlib.Path(__file__).resolve().parent / "programs" / "form.py"
STEPS = 100
RECORDED = 5000


def environment(folder):
    names = {"XDG_RUNTIME_DIR": folder, "QT_QPA_PLATFORM": "offscreen"}
    return {**os.environ, **names}


def session(path, labels):
    """Two things in turn: what is pressed twice in one place waits to be no double click."""
    elements = [{"locators": [{"find": {"identifier": name}}]} for name in ("name", "change")]
    steps = [{"act": "click", "element": elements[number % 2]} for number in range(STEPS)]
    lines = ",\n".join(json.dumps(step) for step in steps)
    path.write_text('{"tarniSession":2,"program":%s,"steps":[\n%s\n]}\n' % (json.dumps(program(labels)), lines))


def program(labels):
    return ["/usr/bin/python3", str(FORM), str(labels)]


def played(tarni, folder, labels, more):
    path = pathlib.Path(folder) / "session.json"
    session(path, labels)
    command = [tarni, "--json", "play", str(path), "--trust", *more]
    pipes = {"stdout": subprocess.PIPE, "stderr": subprocess.DEVNULL}
    with subprocess.Popen(command, text=True, env=environment(folder), **pipes) as playing:
        ends = []
        for line in playing.stdout:
            if '"number":' in line:
                assert json.loads(line)["passed"], line
                ends.append(time.perf_counter())
    assert len(ends) == STEPS, f"{len(ends)} steps"
    took = sorted((end - begin) * 1000 for begin, end in zip(ends, ends[1:]))
    return statistics.median(took), took[len(took) * 19 // 20]


class Channel:
    def __init__(self, tarni, folder, labels):
        command = [tarni, "run", "--", *program(labels)]
        self.process = subprocess.Popen(command, env=environment(folder), stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        sessions = pathlib.Path(folder) / "tarni"
        while not (found := list(sessions.glob("*.session"))):
            time.sleep(0.05)
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(str(found[0]))
        self.lines = self.socket.makefile("r")
        self.told = 0

    def ask(self, method, **parameters):
        request = {"jsonrpc": "2.0", "id": 1, "method": method, "params": parameters}
        self.socket.sendall(json.dumps(request).encode() + b"\n")
        while "id" not in (answer := json.loads(self.lines.readline())):
            self.told += 1
        return answer["result"]

    def end(self):
        self.socket.close()
        self.process.terminate()
        self.process.wait()


def memory_after(tarni, labels, is_recorded):
    """MB of the program when a person has acted, and how many steps were told."""
    with tempfile.TemporaryDirectory() as folder:
        channel = Channel(tarni, folder, labels)
        channel.ask("wait.for", conditions=[{"find": {"identifier": "change"}, "is": "visible"}])
        places = [channel.ask("element.find", identifier=name)["elements"][0]["element"] for name in ("name", "change")]
        if is_recorded:
            channel.ask("record.start")
        for number in range(RECORDED):
            steps = [{"move": {"element": places[number % 2]}}, {"down": "left"}, {"up": "left"}]
            channel.ask("input.pointer", steps=steps, person=True)
        channel.ask("wait.rest")
        used = channel.ask("app.costs")["memoryBytes"] / 1e6
        channel.end()
        return used, channel.told


def main():
    tarni = sys.argv[1]
    for labels in (100, 1000):
        for words, more, aim in (("without pictures", [], 20), ("with pictures", ["--report"], 60)):
            with tempfile.TemporaryDirectory() as folder:
                os.chmod(folder, 0o700)
                middle, most = played(tarni, folder, labels, [*more, folder + "/report"] if more else [])
            print(f"play: a step {words}, {labels:,} elements: {middle:.1f} ms, {most:.1f} ms of 19 in 20 (aim < {aim} ms)")
        (bare, _), (recorded, told) = (memory_after(tarni, labels, is_recorded) for is_recorded in (False, True))
        print(f"record: {RECORDED:,} acts, {told:,} steps told, {labels:,} elements: "
              f"{bare:.1f} MB, {recorded:.1f} MB when recorded")


main()
