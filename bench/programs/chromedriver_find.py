#!/usr/bin/python3
"""Finds all spans of a page with chromedriver and prints how long each search took.

    chromedriver_find.py PAGE COUNT     seconds, one search a line
"""

import http.client
import json
import subprocess
import sys
import time

PORT = 9515
BROWSER = "/usr/bin/chromium-headless-shell"


class Driver:
    def __init__(self):
        self.connection = http.client.HTTPConnection("127.0.0.1", PORT)
        self.session = ""

    def ask(self, method, path, body=None):
        text = json.dumps(body) if body is not None else None
        self.connection.request(method, f"/session{self.session}{path}", text)
        answer = json.loads(self.connection.getresponse().read())["value"]
        if isinstance(answer, dict) and "error" in answer:
            sys.exit(answer["message"])
        return answer

    def open(self, page):
        options = {"binary": BROWSER, "args": ["--no-sandbox", "--headless"]}
        wanted = {"alwaysMatch": {"browserName": "chrome", "goog:chromeOptions": options}}
        self.session = "/" + self.ask("POST", "", {"capabilities": wanted})["sessionId"]
        self.ask("POST", "/url", {"url": f"file://{page}"})


def wait_for_port(driver):
    for _ in range(200):
        try:
            driver.connection.connect()
            return
        except OSError:
            time.sleep(0.05)
    sys.exit("chromedriver does not answer")


def main():
    page, count = sys.argv[1], int(sys.argv[2])
    process = subprocess.Popen(["chromedriver", f"--port={PORT}"], stdout=subprocess.DEVNULL)
    try:
        driver = Driver()
        wait_for_port(driver)
        driver.open(page)
        for _ in range(count):
            start = time.perf_counter()
            found = driver.ask("POST", "/elements", {"using": "css selector", "value": "span"})
            seconds = time.perf_counter() - start
            if len(found) != 10000:
                sys.exit(f"{len(found)} elements")
            print(f"{seconds:.9f}")
        driver.ask("DELETE", "")
    finally:
        process.terminate()


main()
