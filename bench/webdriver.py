#!/usr/bin/python3
"""What commands of WebDriver take, by one client, on a program and on a page of the same content.

    webdriver.py TARNI     a table: milliseconds, medians, tarni webdriver against chromedriver
"""
import pathlib
import statistics
import subprocess
import sys
import threading
import time

from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.options import ArgOptions

FOLDER = pathlib.Path(__file__).resolve().parent / "programs"
LABELS = 5000
SESSIONS = 8
TEXT = "The quick brown fox jumps over the lazy dog again."  # 50 characters


class Tarni:
    label, text = "UILabel", "//*[@text='item 77']"

    def __init__(self, tarni):
        self.process = subprocess.Popen([tarni, "webdriver", "--port", "0"], stdout=subprocess.PIPE, text=True)
        self.url = self.process.stdout.readline().strip()

    def begin(self, labels=LABELS):
        options = ArgOptions()
        options.set_capability("platformName", "linux")
        options.set_capability("appium:app", "/usr/bin/python3")
        options.set_capability("appium:arguments", [str(FOLDER / "form.py"), str(labels)])
        options.set_capability("tarni:display", "1000x700")
        return webdriver.Remote(self.url, options=options)


class Chromedriver:
    label, text = "span", "//*[text()='item 77']"
    PORT = 9515

    def __init__(self):
        self.process = subprocess.Popen(["chromedriver", f"--port={self.PORT}"], stdout=subprocess.DEVNULL)
        self.url = f"http://127.0.0.1:{self.PORT}"
        time.sleep(1)

    def begin(self, labels=LABELS):
        options = webdriver.ChromeOptions()
        for argument in ("--headless", "--no-sandbox", "--window-size=1000,700"):
            options.add_argument(argument)
        driver = webdriver.Remote(self.url, options=options)
        driver.get(f"file://{FOLDER}/form.html?{labels}")
        return driver


def took(work, rounds):
    times = []
    for _ in range(rounds):
        start = time.perf_counter()
        work()
        times.append((time.perf_counter() - start) * 1000)
    return statistics.median(times)


def measure(server, rounds):
    driver = server.begin()
    label = driver.find_element(By.XPATH, server.text)
    field, button = driver.find_element(By.ID, "name"), driver.find_element(By.ID, "change")
    rows = {
        "find by id": lambda: driver.find_element(By.ID, "change"),
        "find by css": lambda: driver.find_element(By.CSS_SELECTOR, f"{server.label}"),
        "find by xpath, text": lambda: driver.find_element(By.XPATH, server.text),
        "find by xpath, position": lambda: driver.find_element(By.XPATH, f"(//{server.label})[78]"),
        "text": lambda: label.text,
        "rect": lambda: label.rect,
        "displayed": lambda: label.is_displayed(),
        "enabled": lambda: button.is_enabled(),
        "attribute": lambda: button.get_attribute("id"),
        "click": lambda: button.click(),
    }
    table = {name: took(work, rounds) for name, work in rows.items()}
    table["send 50 keys"] = took(lambda: field.send_keys(TEXT), rounds // 4)
    assert TEXT in field.get_attribute("value")
    table["screenshot"] = took(driver.get_screenshot_as_png, rounds // 4)
    table["source"] = took(lambda: driver.page_source, rounds // 4)
    find_all = lambda: driver.find_elements(By.CSS_SELECTOR, server.label)
    assert len(find_all()) == LABELS
    table["find all of 5,000"] = took(find_all, rounds // 4)
    driver.quit()

    def begin_and_end():
        starting = server.begin(1)
        starting.find_element(By.ID, "name")
        begun.append(starting)

    begun = []
    table["new session to first command"] = took(begin_and_end, 5)
    for one in begun:
        one.quit()
    return table


def side_by_side(server):
    """Commands a second of all sessions together; each has to read its own text."""
    drivers = [server.begin(20) for _ in range(SESSIONS)]
    counts = [0] * SESSIONS
    until = time.perf_counter() + 5

    def work(number, driver):
        while time.perf_counter() < until:
            field = driver.find_element(By.ID, "name")
            field.clear()
            field.send_keys(f"User {number}")
            assert field.get_attribute("value") == f"User {number}", "sessions are mixed up"
            counts[number] += 4

    threads = [threading.Thread(target=work, args=pair) for pair in enumerate(drivers)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    for driver in drivers:
        driver.quit()
    return sum(counts) / 5, min(counts)


def main():
    tables, sums = [], []
    for server in (Tarni(sys.argv[1]), Chromedriver()):
        try:
            tables.append(measure(server, 40))
            sums.append(side_by_side(server))
        finally:
            server.process.terminate()
            server.process.wait()
    print(f"{'':30} {'tarni':>9} {'chromedriver':>13} {'times faster':>13}")
    for name, here in tables[0].items():
        there = tables[1][name]
        print(f"{name:30} {here:9.2f} {there:13.2f} {there / here:13.1f}")
    for (per_second, least), name in zip(sums, ("tarni", "chromedriver")):
        print(f"{SESSIONS} sessions side by side, {name}: {per_second:.0f} commands/s, the slowest {least} in 5 s")


if __name__ == "__main__":
    main()
