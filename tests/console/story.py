"""What the stories share: a service, a browser, and what holds at the end of each."""

import pathlib
import unittest

from browser import Browser
from service import Service
from waiting import patiently

MARKUP = '<img src="x" onerror="document.title=1">'


class Story(unittest.TestCase):
    service: Service
    browser: Browser
    pictures: pathlib.Path

    def setUp(self) -> None:
        self.browser.look(1366, 768)
        self.browser.forget()

    def tearDown(self) -> None:
        self.browser.picture(self.id().rsplit(".", 1)[-1])
        self.browser.leave()
        self.assertEqual(self.browser.complaints(), [])
        self.assertEqual(self.browser.foreign_requests(), [])

    def as_operator(self, place: str = "/") -> Browser:
        self.browser.log_in("service-affecting")
        self.browser.one("nav a", "Overview")
        self.browser.go(place)
        return self.browser

    def keeps_the_rules(self) -> None:
        """What is shown now keeps them, in both palettes."""
        self.assertEqual(self.browser.broken_rules(), [])
        self.browser.look(1366, 768, "dark")
        self.assertEqual(self.browser.broken_rules("colours"), [], "dark")
        self.browser.look(1366, 768)

    def confirm(self, yes: str, *words: str) -> None:
        """Agrees to what affects service, once the page has said whom it hits."""
        self.browser.sees("This affects service.", *words)
        self.browser.press(yes, "dialog button")

    def comes_to_say(self, words: str, *asked: str) -> None:
        """The OLT itself comes to say something when it is asked."""
        patiently(lambda: words in self.service.operate(*asked))
