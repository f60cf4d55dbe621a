#!/usr/bin/python3
"""What the agent costs a program that nobody drives, by its number of views.

    guest.py BUILD [--rounds N] [--seconds N] [--views N...] [--programs widgets-5...]

Each round runs every program without the agent and with it, one after the other. The table has the medians of
the rounds, and in brackets half of what lies between the least and the most.
"""
import argparse
import json
import os
import statistics
import subprocess
import time

PROGRAMS = ("widgets-5", "widgets-6", "quick-5", "quick-6")
VIEWS = (100, 1000, 10000, 100000)
# What is measured, its unit, and how much more it may be with the agent, by the number of views.
FIGURES = (
    ("rest", "% of a core", lambda views: 0.1 if views <= 1000 else 1),
    ("wakeUps", "wake-ups a second", None),
    ("memory", "MB", lambda views: 4 + views * 200 / 1e6),
    ("start", "ms to the first window", lambda views: 15),
    ("startWork", "ms of work to the first window", lambda views: 15),
    ("click", "µs a click", None),
    ("paint", "µs a repaint", None),
    ("scroll", "µs a scroll", None),
)


def run(build, program, views, seconds, with_agent):
    kind, major = program.split("-")
    environment = dict(os.environ, QT_QPA_PLATFORM="offscreen", QT_QUICK_BACKEND="software")
    if with_agent:
        environment["LD_PRELOAD"] = f"{build}/lib/libtarni.so"
    command = [f"{build}/bin/bench-guest-{major}", kind, str(views), str(seconds)]
    started = time.monotonic()
    with subprocess.Popen(
        command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True
    ) as process:
        if process.stdout.readline() != "shown\n":
            raise SystemExit(f"{' '.join(command)} ended before it had shown its window")
        shown = (time.monotonic() - started) * 1000
        return {"start": shown, **json.loads(process.stdout.read())}


def half_range(values):
    return (max(values) - min(values)) / 2


def number(value):
    return f"{value:.3f}" if abs(value) < 1 else f"{value:.1f}"


def row(name, unit, aim, views, bare, guest):
    without, carried = ([each[name] for each in runs] for runs in (bare, guest))
    more = statistics.median(carried) - statistics.median(without)
    spread = max(half_range(without), half_range(carried))
    cells = [unit, number(statistics.median(without)), number(statistics.median(carried)),
             f"{number(more)} (±{number(spread)})", "-", "-"]
    if aim:
        # What lies within the spread of the aim is not decided.
        verdict = "not clear" if abs(more - aim(views)) <= spread else "yes" if more < aim(views) else "NO"
        cells[4:] = f"{aim(views):g}", verdict
    return cells


def main():
    asked = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    asked.add_argument("build")
    asked.add_argument("--rounds", type=int, default=3)
    asked.add_argument("--seconds", type=int, default=5)
    asked.add_argument("--views", type=int, nargs="+", default=VIEWS)
    asked.add_argument("--programs", nargs="+", default=PROGRAMS, choices=PROGRAMS)
    words = asked.parse_args()
    print(f"{os.cpu_count()} cores, load {os.getloadavg()[0]:.1f}, {words.rounds} rounds\n")
    print("| program | views | what | without | with | more | aim | met |")
    print("|---|---|---|---|---|---|---|---|")
    for program in words.programs:
        for views in words.views:
            rounds = [
                [run(words.build, program, views, words.seconds, with_agent) for with_agent in (False, True)]
                for _ in range(words.rounds)
            ]
            bare, guest = zip(*rounds)
            for name, unit, aim in FIGURES:
                cells = row(name, unit, aim, views, bare, guest)
                print(f"| {program} | {views:,} | {' | '.join(cells)} |", flush=True)


main()
