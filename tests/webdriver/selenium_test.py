#!/usr/bin/python3
"""Selenium's own client drives keepassxc: selenium_test.py TARNI"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.options import ArgOptions
from selenium.webdriver.support import expected_conditions as when
from selenium.webdriver.support.ui import WebDriverWait


class KeePassXC(unittest.TestCase):
    def setUp(self):
        self.server = subprocess.Popen([TARNI, "webdriver", "--port", "0"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(self.server.wait)
        self.addCleanup(self.server.terminate)
        options = ArgOptions()
        options.set_capability("platformName", "linux")
        options.set_capability("appium:app", "keepassxc")
        reports = tempfile.TemporaryDirectory()
        self.addCleanup(reports.cleanup)
        options.set_capability("tarni:report", reports.name)
        self.driver = webdriver.Remote(self.server.stdout.readline().strip(), options=options)
        self.addCleanup(self.server.stdout.close)
        self.addCleanup(self.driver.quit)
        self.wait = WebDriverWait(self.driver, 30)

    def clickable(self, how, what):
        return self.wait.until(when.element_to_be_clickable((how, what)))

    def test_a_database_is_made_step_by_step(self):
        driver = self.driver
        self.assertEqual(driver.title, "KeePassXC")
        button = self.clickable(By.PARTIAL_LINK_TEXT, "Create new database")
        self.assertGreater(button.rect["width"], 50)
        self.assertTrue(driver.get_screenshot_as_png().startswith(b"\x89PNG"))
        self.assertIn("<UIApplication>", driver.page_source)
        button.click()
        name = self.wait.until(when.visibility_of_element_located((By.ID, "databaseName")))
        name.clear()
        name.send_keys("Ada's")
        self.assertEqual(name.get_attribute("value"), "Ada's")
        ActionChains(driver).move_to_element(name).click().send_keys("!").perform()
        self.assertIn("!", name.text)
        self.assertTrue(driver.find_elements(By.CSS_SELECTOR, "#databaseDescription"))
        driver.find_element(By.XPATH, "//*[@text='Cancel' and @visible='true']").click()
        self.wait.until(when.invisibility_of_element(name))
        driver.quit()
        report = pathlib.Path(driver.capabilities["tarni:report"]).read_text()
        for told in ("Passed", "value UITextField", "Ada's", "data:image/png", "Cancel"):
            self.assertIn(told, report)


if __name__ == "__main__":
    TARNI = sys.argv.pop(1)
    unittest.main()
