"""Looks at pages of the built site with a browser, as a reader opens them from files, and keeps pictures of them.

    shown_test.py SITE PICTURES
"""

import pathlib
import sys
import unittest

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.wait import WebDriverWait

OPTIONS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-extensions"]
PAGES = ["index", "tutorial", "architecture", "glossary", "rest", "reference/index", "reference/mib",
         "reference/operations/admission_binding", "manual/ponfront.toml.5"]
LOOKS = {"light": (1280, 1000, "light"), "dark": (1280, 1000, "dark"), "phone": (360, 740, "light")}
MIDDLE = 128  # between dark and light, of a colour's parts
PATIENCE = 30  # seconds
# Returns the colours of the ground and of the text, and how much of the page is beside the screen.
STATE = """
const parts = colour => colour.match(/[0-9.]+/g).slice(0, 3).map(Number);
const style = getComputedStyle(document.body);
return [parts(style.backgroundColor), parts(style.color), document.documentElement.scrollWidth - innerWidth];
"""


class Site(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        options = webdriver.ChromeOptions()
        for option in OPTIONS:
            options.add_argument(option)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        cls.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        cls.addClassCleanup(cls.driver.quit)

    def look(self, look):
        width, height, colours = LOOKS[look]
        size = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False}
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", size)
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia",
                                    {"features": [{"name": "prefers-color-scheme", "value": colours}]})
        self.driver.execute_cdp_cmd("Emulation.setScrollbarsHidden", {"hidden": True})

    def open(self, page, query=""):
        self.driver.get((SITE / page).resolve().as_uri() + query)

    def errors(self):
        return [entry["message"] for entry in self.driver.get_log("browser") if entry["level"] == "SEVERE"]

    def is_dark(self):
        ground, text, _ = self.driver.execute_script(STATE)
        return max(ground) < MIDDLE < min(text)

    def test_pages_are_as_the_system_asks_and_fit_the_screen(self):
        for look, (_, _, colours) in LOOKS.items():
            self.look(look)
            for page in PAGES:
                with self.subTest(page=page, look=look):
                    self.open(f"{page}.html")
                    self.driver.save_screenshot(str(PICTURES / f"{page.replace('/', '-')}-{look}.png"))
                    self.assertEqual(self.is_dark(), colours == "dark")
                    self.assertEqual(self.driver.execute_script(STATE)[2], 0)
                    self.assertEqual(self.errors(), [])

    def test_a_reader_may_choose_the_other_colours(self):
        self.look("light")
        self.open("index.html")
        button = self.driver.find_element(By.CSS_SELECTOR, ".theme-toggle-content .theme-toggle")
        seen = set()
        for _ in range(3): # as the system asks, light and dark
            button.click()
            seen.add(self.is_dark())
        self.assertEqual(seen, {True, False})

    def test_what_is_in_the_reference_is_found(self):
        self.look("light")
        self.open("search.html", "?q=bsp_pon_no_bind_onu_all")
        found = WebDriverWait(self.driver, PATIENCE).until(
            lambda driver: driver.find_elements(By.CSS_SELECTOR, "#search-results li a"))
        self.assertTrue(any("admission_binding.html" in link.get_attribute("href") for link in found))


if __name__ == "__main__":
    SITE, PICTURES = map(pathlib.Path, sys.argv[1:3])
    PICTURES.mkdir(exist_ok=True)
    unittest.main(argv=sys.argv[:1])
