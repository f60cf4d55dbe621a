#!/usr/bin/python3
"""A Grid on machines that are network namespaces: more sessions asked for than there are slots.

grid_trial.py TARNI [--nodes N] [--slots N] [--sessions N] [--kill] [--app COMMAND]

Every client drives a program of its own and reads back what it typed. With --kill, the first node is
killed in the middle and started again; whose session dies with it asks for another one. In the end nothing may be left of anything. Needs a network namespace of its
own, and root or what stands for it there (tests/support/in_network_namespace).
"""
import argparse
import collections
import concurrent.futures
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import threading
import time
import urllib.request
import uuid

from selenium import webdriver
from selenium.common.exceptions import WebDriverException
from selenium.webdriver.common.by import By
from selenium.webdriver.common.options import ArgOptions
from selenium.webdriver.support import expected_conditions as when
from selenium.webdriver.support.ui import WebDriverWait

MARK = f"TARNI_TRIAL={uuid.uuid4()}"
HUB = "10.99.0.1"
X_SOCKETS = "/tmp/.X11-unix"
BEGIN = time.monotonic()


def say(text):
    print(f"{time.monotonic() - BEGIN:6.1f} s  {text}", flush=True)


def wait_until(what, seconds, holds):
    deadline = time.monotonic() + seconds
    while not (result := holds()):
        if time.monotonic() > deadline:
            raise SystemExit(f"in vain waited for {what}")
        time.sleep(0.2)
    return result


def processes():
    """Those of this trial, by identifier, with their command lines."""
    found = {}
    for entry in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            if MARK.encode() in (entry / "environ").read_bytes():
                found[int(entry.name)] = (entry / "cmdline").read_bytes().replace(b"\0", b" ").decode()
        except OSError:
            pass
    return found


def children(pid):
    return [int(child) for tasks in pathlib.Path(f"/proc/{pid}/task").glob("*/children")
            for child in tasks.read_text().split()]


class Machine:
    """A network namespace on the bridge, with displays of its own."""

    def __init__(self, number):
        self.address = f"10.99.0.{number}"
        self.holder = subprocess.Popen(["unshare", "--net", "--mount", "sleep", "infinity"])
        outside = os.readlink("/proc/self/ns/net")
        wait_until("a network", 10, lambda: os.readlink(f"/proc/{self.holder.pid}/ns/net") != outside)
        for line in (f"link add port{number} type veth peer name eth0 netns {self.holder.pid}",
                     f"link set port{number} master bridge up"):
            subprocess.run(["ip", *line.split()], check=True)
        subprocess.run([*self.inside(), "mount", "-t", "tmpfs", "-o", "mode=1777", "tmpfs", X_SOCKETS], check=True)
        for line in ("link set lo up", f"addr add {self.address}/24 dev eth0", "link set eth0 up"):
            subprocess.run([*self.inside(), "ip", *line.split()], check=True)

    def inside(self):
        return ["nsenter", "-t", str(self.holder.pid), "-n", "-m", "-w"]

    def displays(self):
        return subprocess.run([*self.inside(), "ls", X_SOCKETS], check=True, capture_output=True).stdout.split()

    def start(self, *words):
        log = open(pathlib.Path(os.environ["TMPDIR"]) / "logs" / f"{self.address}.log", "a")
        return subprocess.Popen([*self.inside(), ARGUMENTS.tarni, "grid", *words, "--folder",
                                 f"{os.environ['TMPDIR']}/grid-{self.address}"],
                                stdout=log, stderr=log)


def grid_status():
    try:
        with urllib.request.urlopen(f"http://{HUB}:4444/status", timeout=10) as answer:
            return json.load(answer)["value"]
    except OSError:
        return {"nodes": []}


def slots_up(except_of=()):
    return sum(len(node["slots"]) for node in grid_status().get("nodes", [])
               if node["availability"] == "UP" and node["id"] not in except_of)


def busy_slots():
    return [slot for node in grid_status().get("nodes", []) for slot in node["slots"] if slot["session"]]


def drive(number):
    options = ArgOptions()
    options.set_capability("platformName", "linux")
    options.set_capability("appium:app", ARGUMENTS.app)
    driver = webdriver.Remote(f"http://{HUB}:4444", options=options)
    COUNTS["started"] += 1
    try:
        wait = WebDriverWait(driver, 60)
        wait.until(when.element_to_be_clickable((By.PARTIAL_LINK_TEXT, "Create new database"))).click()
        field = wait.until(when.visibility_of_element_located((By.ID, "databaseName")))
        field.clear()
        field.send_keys(f"client {number}")
        assert field.get_attribute("value") == f"client {number}", "another client's text"
    finally:
        driver.quit()
    COUNTS["served"] += 1
    SERVED.release()


def client(number):
    """Until it is served; a client of a node that was cut off asks again."""
    begin = time.monotonic()
    while True:
        try:
            drive(number)
            return time.monotonic() - begin
        except WebDriverException as error:
            COUNTS["failed"] += 1
            say(f"client {number}: {str(error.msg).splitlines()[0][:300]}")
            if not ARGUMENTS.kill or COUNTS["failed"] > 10 * ARGUMENTS.sessions:
                raise
            time.sleep(2)


def cut_off(node):
    """Kills the node, Java and `tarni webdriver`; their programs have to end by themselves."""
    for pid in [*children(node.pid), node.pid]:
        os.kill(pid, signal.SIGKILL)
    node.wait()


def trial():
    subprocess.run(["ip", "link", "add", "name", "bridge", "type", "bridge"], check=True)
    subprocess.run(["ip", "link", "set", "bridge", "up"], check=True)
    subprocess.run(["ip", "addr", "add", "10.99.0.254/24", "dev", "bridge"], check=True)
    machines = [Machine(number) for number in range(1, ARGUMENTS.nodes + 2)]
    hub = machines[0].start("hub", "--address", HUB)
    wait_until("the hub", 180, lambda: "message" in grid_status())
    say("the hub answers")
    words = ["node", "--hub", HUB, "--sessions", str(ARGUMENTS.slots)]
    nodes = [machine.start(*words) for machine in machines[1:]]
    wait_until("the nodes", 180, lambda: slots_up() == ARGUMENTS.nodes * ARGUMENTS.slots)
    say(f"{slots_up()} slots on {ARGUMENTS.nodes} nodes")
    with concurrent.futures.ThreadPoolExecutor(ARGUMENTS.sessions) as pool:
        clients = [pool.submit(client, number) for number in range(ARGUMENTS.sessions)]
        if ARGUMENTS.kill:
            for _ in range(ARGUMENTS.sessions // 4):
                SERVED.acquire()
            dead = {node["id"] for node in grid_status().get("nodes", []) if machines[1].address in node["uri"]}
            cut_off(nodes[0])
            say(f"a node is killed; {COUNTS['served']} clients are served")
            nodes[0] = machines[1].start(*words)
            wait_until("the node to be back", 240,
                       lambda: slots_up(except_of=dead) == ARGUMENTS.nodes * ARGUMENTS.slots)
            say(f"it is back; {COUNTS['served']} clients are served")
        times = sorted(one.result() for one in clients)
    say(f"all {len(times)} clients are served, after {times[0]:.1f} to {times[-1]:.1f} s; "
        f"{COUNTS['started']} sessions started, {COUNTS['failed']} failed")
    wait_until("free slots", 60, lambda: not busy_slots())
    for process in [*nodes, hub]:
        process.terminate()
    for process in [*nodes, hub]:
        process.wait(60)
    say("hub and nodes have ended")
    displays = [name for machine in machines for name in machine.displays()]
    for machine in machines:
        machine.holder.kill()
        machine.holder.wait()
    return displays


def check_what_is_left(folder, displays):
    left = {pid: line for pid, line in processes().items() if pid != os.getpid()}
    files = [str(path) for path in folder.rglob("*") if path.name.startswith("tarni-session")]
    files += [str(path) for path in (folder / "runtime").rglob("*") if not path.is_dir()]
    say(f"left behind: {len(left)} processes, {len(files)} files, {len(displays)} displays")
    if left or files or displays:
        raise SystemExit(f"left behind: {left} {files} {displays}")


def main():
    name, value = MARK.split("=")
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        for part in ("runtime", "logs"):
            (folder / part).mkdir(mode=0o700)
        os.environ.update({name: value, "TMPDIR": str(folder), "XDG_RUNTIME_DIR": str(folder / "runtime")})
        try:
            check_what_is_left(folder, trial())
        except BaseException:
            for log in (folder / "logs").iterdir():
                print(f"--- {log.name}\n{log.read_text()[-6000:]}", file=sys.stderr)
            for pid in processes().keys() - {os.getpid()}:
                os.kill(pid, signal.SIGKILL)
            raise


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("tarni", type=os.path.abspath)
    parser.add_argument("--nodes", type=int, default=1)
    parser.add_argument("--slots", type=int, default=2)
    parser.add_argument("--sessions", type=int, default=4)
    parser.add_argument("--kill", action="store_true")
    parser.add_argument("--app", default="keepassxc")
    ARGUMENTS = parser.parse_args()
    COUNTS = collections.Counter()
    SERVED = threading.Semaphore(0)
    main()
