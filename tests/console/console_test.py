"""Uses the web console of ponfront as people do, with a real browser.

    console_test.py PONSIM PONCTL PONFRONT SCENARIO PICTURES [NAME...]

PICTURES is the folder that keeps what was seen. Names are those of tests, as Console.test_a_wrong_password_is_refused.
"""

import os
import pathlib
import signal
import sys
import tempfile
import unittest

from browser import Browser
from service import PASSWORD, Service
from waiting import patiently

SCREENS = {
    "overview": "/",
    "onus": "/olts/campus/onus",
    "port": "/olts/campus/ports/1",
    "onu": "/olts/campus/onus/1/3",
    "waiting": "/olts/campus/waiting",
    "alarms": "/olts/campus/alarms",
    "upgrades": "/olts/campus/upgrades",
    "profiles": "/olts/campus/profiles",
    "configuration": "/olts/campus/configuration",
    "events": "/events",
}
# Each look with the screens that are looked at so. Colours and sizes are apart from each other in the styles.
LOOKS = {
    "phone": ((360, 740, "light"), SCREENS),
    "desk": ((1366, 768, "dark"), SCREENS),
    "wall": ((3840, 2160, "light"), ["overview", "onus"]),
}
MARKUP = '<img src="x" onerror="document.title=1">'


class Console(unittest.TestCase):
    service: Service
    browser: Browser
    programs: dict[str, str]
    scenario: str
    pictures: pathlib.Path

    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory(prefix="console")
        cls.service = Service(cls.programs, pathlib.Path(cls.folder.name), cls.scenario)
        cls.browser = Browser(cls.service.url, cls.pictures)
        cls.addClassCleanup(cls.folder.cleanup)
        cls.addClassCleanup(cls.service.end)
        cls.addClassCleanup(cls.browser.end)

    def setUp(self) -> None:
        self.browser.look(1366, 768)
        self.browser.driver.delete_all_cookies()

    def tearDown(self) -> None:
        self.browser.picture(self.id().rsplit(".", 1)[-1])
        self.assertEqual(self.browser.complaints(), [])
        self.assertEqual(self.browser.foreign_requests(), [])

    def as_operator(self, place: str = "/") -> Browser:
        self.browser.log_in("service-affecting")
        self.browser.one("nav a", "Overview")
        self.browser.go(place)
        return self.browser

    def test_a_wrong_password_is_refused(self) -> None:
        self.browser.log_in("read", "wrong")
        self.browser.sees("password is wrong")
        self.browser.one("input", "Password")

    def test_each_role_is_offered_what_it_may_do(self) -> None:
        offered = {"read": (False, False), "write": (True, False), "service-affecting": (True, True)}
        for role, (may_describe, may_reboot) in offered.items():
            with self.subTest(role):
                self.browser.log_in(role)
                self.browser.one("nav a", "Overview")
                self.browser.go("/olts/campus/onus/1/1")
                self.browser.sees("ONU 1/1", "UNI ports", "transparent")
                self.assertEqual(self.browser.has("button", "Describe ONU 1/1"), may_describe)
                self.assertEqual(self.browser.has("button", "Reboot"), may_reboot)
                self.browser.press("Log out")
                self.browser.one("button", "Log in")

    def test_a_session_that_ended_asks_for_a_log_in_and_goes_on(self) -> None:
        browser = self.as_operator("/olts/campus/alarms")
        browser.sees("Severity")
        browser.driver.delete_all_cookies()
        browser.go("/olts/campus/onus/1/2")
        browser.sees("Your session has ended")
        browser.type("User", "read")
        browser.type("Password", PASSWORD)
        browser.press("Log in")
        browser.sees("ONU 1/2")

    def test_an_onu_is_found_by_keys_alone(self) -> None:
        browser = self.as_operator()
        browser.sees("What is wrong")
        self.service.operate("onu", "describe", "1", "4", "Old mill")
        browser.keys("/")
        self.assertEqual(browser.run("return document.activeElement.id"), "search")
        patiently(lambda: self.search_finds("old mi", "1/4"))
        browser.keys("ARROW_DOWN", "ARROW_UP", "ENTER")
        browser.sees("ONU 1/4", "Old mill")
        browser.keys("?")
        browser.one("dialog", "Keys")
        browser.keys("ESCAPE", "g", "n")
        browser.one("[role=grid]", "ONUs of campus")
        browser.keys("END", "ENTER")
        browser.sees("of port 4 of campus")

    def search_finds(self, words: str, where: str) -> bool:
        field = self.browser.one("input#search")
        field.clear()
        field.send_keys(words)
        return where in self.browser.one(".found").text

    def test_a_waiting_onu_is_admitted(self) -> None:
        browser = self.as_operator("/olts/campus/waiting")
        browser.one(".waiting button").click()
        browser.type("ONU id", "70")
        browser.type("Description", MARKUP)
        browser.press("Admit", "form button")
        browser.sees("This affects service.")
        browser.press("Admit", "dialog button")
        browser.sees("ONU 4/70 is admitted.", "Nobody waits.")
        browser.go("/olts/campus/onus/4/70")
        browser.sees("ONU 4/70", MARKUP)
        self.assertIn("ONU 4/70", browser.driver.title)
        self.assertIn("4/70", self.service.operate("-o", "csv", "onu", "list", "4").replace(",", "/"))

    def test_a_vlan_is_changed_and_shown_before_and_after(self) -> None:
        browser = self.as_operator("/olts/campus/onus/1/3")
        browser.press("Change the VLAN of UNI port 1")
        browser.choose("VLAN mode", "tag")
        browser.type("VLAN of untagged frames", "123")
        change = browser.one("table.changes").text
        self.assertIn("VLAN mode translation tag", change)
        self.assertIn("VLAN of untagged frames 418 123", change)
        browser.press("Change", "form button")
        browser.sees("This affects service.", "1/3")
        browser.press("Change it")
        browser.sees("is changed.")
        patiently(lambda: "123" in self.service.operate("onu", "vlan", "1/3"))

    def test_a_change_can_be_let_be(self) -> None:
        browser = self.as_operator("/olts/campus/onus/1/5")
        browser.press("Reboot")
        browser.sees("This affects service.", "1/5")
        browser.picture("confirmation")
        browser.keys("ESCAPE")
        patiently(lambda: not browser.has("dialog h2", "Reboot ONU 1/5?"))
        self.assertIn("online", self.service.operate("onu", "show", "1", "5"))

    def test_a_cut_fibre_is_seen_as_it_happens(self) -> None:
        browser = self.as_operator("/olts/campus/ports/2")
        browser.sees("60 of 60 ONUs online")
        browser.run("window.was_not_loaded_again = true")
        self.service.control("cut", "2", "west")
        browser.sees("30 of 60 ONUs online", "30 ONUs offline: fibre at west")
        browser.go("/")
        browser.sees("30 ONUs of port 2")
        browser.go("/olts/campus/onus?state=offline")
        browser.sees("30 of ")
        browser.keys("ENTER")
        browser.sees("of port 2", "fibre at west", "since", "– dBm", "not measured")
        browser.picture("why_offline")
        self.service.control("mend", "2", "west")
        self.service.control("step", "10")
        browser.go("/olts/campus/ports/2")
        browser.sees("60 of 60 ONUs online", "All its ONUs are online.")
        self.assertTrue(browser.run("return window.was_not_loaded_again"))

    def test_an_upgrade_goes_on_to_its_end(self) -> None:
        kind = self.service.operate("-o", "csv", "upgrade", "status", "1").splitlines()
        of = dict(zip(kind[0].split(","), kind[1].split(",")))
        self.service.operate("upgrade", "add", "spring", of["vendor"], of["model"], "9.9.9", "400000")
        browser = self.as_operator("/olts/campus/upgrades")
        browser.press("Read firmware again")
        browser.choose("Firmware", "spring: 9.9.9")
        browser.type("ONUs", "2")
        browser.press("Upgrade")
        browser.sees("which ends in a reboot?")
        browser.press("Upgrade", "dialog button")
        browser.sees("has begun")
        self.service.control("step", "300")
        patiently(lambda: self.row_of("1/2", "9.9.9"))

    def row_of(self, onu: str, words: str) -> bool:
        rows = self.browser.run("return [...document.querySelectorAll('[role=row]')].map((row) => row.textContent)")
        return any(row.startswith(onu) and words in row for row in rows)

    def test_an_olt_that_is_lost_comes_back(self) -> None:
        browser = self.as_operator()
        browser.sees("answers")
        self.service.olt.end(signal.SIGKILL)
        browser.sees("does not answer", "lost for")
        self.assertFalse(browser.run("return document.querySelector('.tile.good') !== null"))
        browser.picture("lost")
        self.service.olt = self.service.started_olt()
        browser.sees("answers")
        browser.sees_not("lost for")

    def test_a_daemon_that_is_lost_comes_back(self) -> None:
        browser = self.as_operator("/olts/campus/onus")
        browser.one("[role=grid]")
        self.service.front.end(signal.SIGKILL)
        browser.sees("The console's server does not answer", "1/1")
        self.service.front = self.service.started_front()
        # Sessions end with the daemon.
        browser.one("button", "Log in")
        browser.log_in("read")
        browser.sees("live")

    def test_two_users_see_what_the_other_does(self) -> None:
        browser = self.as_operator("/olts/campus/onus/1/6")
        browser.sees("ONU 1/6")
        other = Browser(self.service.url, self.pictures)
        try:
            other.log_in("write")
            other.one("nav a", "Overview")
            other.go("/olts/campus/onus/1/6")
            other.press("Describe ONU 1/6")
            other.type("Description", "of the other")
            other.press("Change", "form button")
            other.sees("is described.")
            browser.sees("of the other")
            self.assertEqual(other.complaints(), [])
        finally:
            other.end()

    def test_a_configuration_goes_back_or_is_kept(self) -> None:
        saved = pathlib.Path(self.folder.name) / "saved.cfg"
        self.service.operate("config", "save", str(saved))
        self.service.operate("onu", "describe", "1", "9", "later")
        browser = self.as_operator("/olts/campus/configuration")
        browser.one("input", "A saved configuration").send_keys(str(saved))
        browser.sees("between campus and saved.cfg", "later")
        browser.press("Apply")
        browser.press("Apply", "dialog button")
        browser.sees("waits for its confirmation")
        browser.press("Keep it")
        browser.sees("is kept")
        self.assertNotIn("later", self.service.operate("onu", "list", "1"))

    def test_only_rows_that_are_seen_are_in_the_document(self) -> None:
        browser = self.as_operator("/olts/campus/onus")
        browser.one("[role=grid]")
        rows = browser.run("return document.querySelectorAll('.row.of').length")
        count = int(browser.one("[role=grid]").get_attribute("aria-rowcount")) - 1
        self.assertGreaterEqual(count, 146)
        self.assertLess(rows, 60)
        browser.press("Distance, m")
        self.assertEqual(browser.one("[role=columnheader][aria-sort]").get_attribute("aria-sort"), "ascending")
        browser.type("Words", "office 1/1")
        browser.sees(f" of {count} ONUs")

    def test_every_screen_keeps_the_rules(self) -> None:
        browser = self.as_operator()
        for look, (how, names) in LOOKS.items():
            browser.look(*how)
            for name in names:
                with self.subTest(screen=name, look=look):
                    browser.go(SCREENS[name])
                    patiently(lambda: browser.run("return !document.querySelector('.loading, .starting')"))
                    self.assertEqual(browser.broken_rules(), [])
                    browser.picture(f"{name}-{look}")


if __name__ == "__main__":
    ponsim, ponctl, ponfront, Console.scenario, pictures, *names = sys.argv[1:]
    Console.programs = {"ponsim": ponsim, "ponctl": ponctl, "ponfront": ponfront}
    Console.pictures = pathlib.Path(pictures)
    os.makedirs(pictures, exist_ok=True)
    unittest.main(argv=[sys.argv[0], *names], verbosity=2)
