"""A browser without a window, in which a test does what a person would do."""

import json
import pathlib
import shutil
import tempfile

from selenium import webdriver
from selenium.common.exceptions import StaleElementReferenceException
from selenium.webdriver.chrome.service import Service as Driver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys

from service import PASSWORD
from waiting import patiently

RULES = (pathlib.Path(__file__).parent / "rules.js").read_text(encoding="utf-8")
OPTIONS = ["--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--disable-extensions"]


class Browser:
    def __init__(self, url: str, pictures: pathlib.Path) -> None:
        self.url = url
        self.pictures = pictures
        self.profile = tempfile.mkdtemp()
        options = webdriver.ChromeOptions()
        for option in [*OPTIONS, f"--user-data-dir={self.profile}"]:
            options.add_argument(option)
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(service=Driver("/usr/bin/chromedriver"), options=options)
        self.look(1366, 768)

    def end(self) -> None:
        self.driver.quit()
        shutil.rmtree(self.profile, ignore_errors=True)

    def look(self, width: int, height: int, colours: str = "light", motion: str = "reduce") -> None:
        size = {"width": width, "height": height, "deviceScaleFactor": 1, "mobile": False}
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", size)
        wishes = {"prefers-color-scheme": colours, "prefers-reduced-motion": motion}
        features = [{"name": name, "value": value} for name, value in wishes.items()]
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {"features": features})

    def leave(self) -> None:
        """Leaves the page, so that it asks for nothing any more."""
        self.driver.get("about:blank")

    def forget(self) -> None:
        """Forgets who has logged in, wherever it was."""
        self.driver.execute_cdp_cmd("Network.clearBrowserCookies", {})

    def picture(self, name: str) -> None:
        self.driver.save_screenshot(str(self.pictures / f"{name}.png"))

    def log_in(self, user: str, password: str = PASSWORD) -> None:
        self.driver.get(self.url)
        self.type("User", user)
        self.type("Password", password)
        self.press("Log in")

    def go(self, place: str) -> None:
        self.driver.execute_script("location.hash = arguments[0]", place)

    def text(self) -> str:
        return self.driver.find_element(By.TAG_NAME, "body").text

    def sees(self, *words: str) -> None:
        """Waits until all of the words are on the page."""
        try:
            patiently(lambda: all(word in self.text() for word in words))
        except AssertionError as error:
            raise AssertionError(f"{words} not in:\n{self.text()}") from error

    def sees_not(self, words: str) -> None:
        patiently(lambda: words not in self.text())

    def one(self, selector: str, of: str = ""):
        """Waits for an element that is shown, and has a text or a name."""

        def found():
            try:
                for element in self.driver.find_elements(By.CSS_SELECTOR, selector):
                    if element.is_displayed() and of in (element.text, element.accessible_name, ""):
                        return element
            except StaleElementReferenceException:
                pass  # it was drawn again meanwhile
            return None

        try:
            return patiently(found)
        except AssertionError as error:
            raise AssertionError(f"no {selector} {of!r} in:\n{self.text()}") from error

    def has(self, selector: str, of: str) -> bool:
        elements = self.driver.find_elements(By.CSS_SELECTOR, selector)
        return any(of in (element.text, element.accessible_name) for element in elements)

    def press(self, name: str, selector: str = "button") -> None:
        self.one(selector, name).click()

    def type(self, label: str, words: str) -> None:
        self.type_into(self.one("input", label), words)

    def type_into(self, field, words: str) -> None:
        """Types by keys alone, as a person would, so that the page learns of each."""
        field.send_keys(Keys.CONTROL + "a" + Keys.NULL, words or Keys.BACKSPACE)

    def choose(self, label: str, option: str) -> None:
        patiently(lambda: self.one("select", label).find_elements(By.XPATH, f"option[.='{option}']"))[0].click()

    def keys(self, *keys: str) -> None:
        """Presses keys where the focus is."""
        for key in keys:
            self.driver.switch_to.active_element.send_keys(getattr(Keys, key, key))

    def run(self, script: str):
        return self.driver.execute_script(script)

    def broken_rules(self, *only: str) -> list[str]:
        return self.driver.execute_script(RULES, *only)

    def complaints(self) -> list[str]:
        """Returns the errors in the browser's console, but for refusals, which a test asks for."""
        entries = [entry["message"] for entry in self.driver.get_log("browser") if entry["level"] == "SEVERE"]
        return [entry for entry in entries if "Failed to load resource" not in entry]

    def foreign_requests(self) -> list[str]:
        """Returns what was asked of anybody else."""
        messages = [json.loads(entry["message"])["message"] for entry in self.driver.get_log("performance")]
        asked = [one["params"]["request"]["url"] for one in messages if one["method"] == "Network.requestWillBeSent"]
        assert any(url.startswith(self.url) for url in asked), "no request was recorded"
        return [url for url in asked if not url.startswith((self.url, "data:", "blob:", "chrome:"))]
