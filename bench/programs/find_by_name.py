#!/usr/bin/python3
"""Finds an element by its name over the accessibility bus and prints how long each search took.

    find_by_name.py APPLICATION NAME COUNT     seconds, one search a line
"""

import sys
import time

import pyatspi


def application(name):
    deadline = time.monotonic() + 30
    while time.monotonic() < deadline:
        for program in pyatspi.Registry.getDesktop(0):
            if program and program.name == name:
                return program
        time.sleep(0.05)
    sys.exit(f"{name} is not on the accessibility bus")


def main():
    program, name, count = application(sys.argv[1]), sys.argv[2], int(sys.argv[3])
    for _ in range(count):
        start = time.perf_counter()
        found = pyatspi.findDescendant(program, lambda element: element.name == name)
        seconds = time.perf_counter() - start
        if not found:
            sys.exit(f"nothing is called {name}")
        print(f"{seconds:.9f}")


main()
