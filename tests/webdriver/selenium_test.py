#!/usr/bin/python3
"""Selenium's own client drives keepassxc, kate and a page in falkon: selenium_test.py TARNI"""
import pathlib
import subprocess
import sys
import tempfile
import unittest

from selenium import webdriver
from selenium.common.exceptions import UnexpectedAlertPresentException
from selenium.webdriver.common.by import By
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.common.options import ArgOptions
from selenium.webdriver.support import expected_conditions as when
from selenium.webdriver.support.ui import Select, WebDriverWait

PAGE = pathlib.Path(__file__).resolve().parents[2] / "samples/web/pages/form.html"


class Programs(unittest.TestCase):
    def begin(self, app, more={}):
        server = subprocess.Popen([TARNI, "webdriver", "--port", "0"], stdout=subprocess.PIPE, text=True)
        self.addCleanup(server.wait)
        self.addCleanup(server.terminate)
        options = ArgOptions()
        for name, value in {"platformName": "linux", "appium:app": app, **more}.items():
            options.set_capability(name, value)
        driver = webdriver.Remote(server.stdout.readline().strip(), options=options)
        self.addCleanup(server.stdout.close)
        self.addCleanup(driver.quit)
        self.wait = WebDriverWait(driver, 30)
        return driver

    def clickable(self, how, what):
        return self.wait.until(when.element_to_be_clickable((how, what)))

    def visible(self, how, what):
        return self.wait.until(when.visibility_of_element_located((how, what)))

    def test_a_database_is_made_step_by_step(self):
        reports = tempfile.TemporaryDirectory()
        self.addCleanup(reports.cleanup)
        driver = self.begin("keepassxc", {"tarni:report": reports.name})
        self.assertEqual(driver.title, "KeePassXC")
        button = self.clickable(By.PARTIAL_LINK_TEXT, "Create new database")
        self.assertGreater(button.rect["width"], 50)
        self.assertTrue(driver.get_screenshot_as_png().startswith(b"\x89PNG"))
        self.assertIn("<UIApplication>", driver.page_source)
        button.click()
        name = self.visible(By.ID, "databaseName")
        name.clear()
        name.send_keys("Ada's")
        self.assertEqual(name.get_attribute("value"), "Ada's")
        ActionChains(driver).move_to_element(name).click().send_keys("!").perform()
        self.assertIn("!", name.text)
        self.assertTrue(driver.find_elements(By.CSS_SELECTOR, "#databaseDescription"))
        driver.find_element(By.XPATH, "//UIButton[@text='Continue']").click()

        slider = self.visible(By.ID, "decryptionTimeSlider")
        ActionChains(driver).drag_and_drop_by_offset(slider.find_element(By.NAME, "Handle"), 120, 0).perform()
        self.wait.until(lambda _: int(slider.get_attribute("value")) > 10)
        driver.find_element(By.ID, "compatibilitySelection").click()
        self.clickable(By.XPATH, "//*[starts-with(@text, 'KDBX 3')]").click()
        self.wait.until(when.text_to_be_present_in_element((By.ID, "compatibilitySelection"), "KDBX 3"))
        driver.find_element(By.LINK_TEXT, "Continue").click()

        self.clickable(By.LINK_TEXT, "Done").click()
        self.wait.until(lambda _: "without a password?" in driver.switch_to.alert.text)
        driver.switch_to.alert.dismiss()
        self.clickable(By.XPATH, "(//*[@text='Cancel' and @visible='true'])[last()]").click()
        self.wait.until(when.staleness_of(name))
        driver.quit()
        report = pathlib.Path(driver.capabilities["tarni:report"]).read_text()
        for told in ("Passed", "value UITextField", "Ada's", "data:image/png", "Cancel"):
            self.assertIn(told, report)

    def test_a_letter_is_written_in_kate(self):
        driver = self.begin("kate --startanon")
        self.clickable(By.LINK_TEXT, "New File").click()
        editor = driver.switch_to.active_element
        editor.send_keys("Dear Ada", Keys.ENTER, "Lovelace", Keys.CONTROL, "z")
        self.assertEqual(editor.text.strip(), "Dear Ada")
        driver.find_element(By.LINK_TEXT, "Edit").click()
        self.clickable(By.XPATH, "//UIActionButton[@text='Redo']").click()
        self.wait.until(lambda _: editor.text == "Dear Ada\nLovelace")

    def test_a_page_is_filled_in(self):
        driver = self.begin("falkon", {
            "appium:arguments": ["--no-remote", "--private-browsing", str(PAGE)],
            "appium:environment": {"QTWEBENGINE_DISABLE_SANDBOX": "1", "QT_QUICK_BACKEND": "software"},
            "appium:autoWebview": True})
        self.clickable(By.NAME, "customer").send_keys("Ada")
        colour = driver.find_element(By.NAME, "colour")
        Select(colour).select_by_visible_text("Blue")
        self.assertEqual(driver.execute_script("return arguments[0].value", colour), "Blue")
        driver.find_element(By.XPATH, "//button[text()='Ask']").click()
        with self.assertRaises(UnexpectedAlertPresentException):
            driver.find_element(By.ID, "said")
        self.assertEqual(driver.switch_to.alert.text, "Really?")
        driver.switch_to.alert.accept()
        self.assertEqual(driver.find_element(By.ID, "said").text, "alert closed")


if __name__ == "__main__":
    TARNI = sys.argv.pop(1)
    unittest.main()
