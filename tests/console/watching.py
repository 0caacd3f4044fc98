"""What operators see without doing anything: a cut fibre, and services that are lost and come back."""

import signal

from browser import Browser
from story import Story


class Watching(Story):
    def test_a_cut_fibre_is_seen_as_it_happens(self) -> None:
        browser = self.as_operator("/olts/campus/ports/2")
        browser.sees("60 of 60 ONUs online")
        browser.run("window.was_not_loaded_again = true")
        self.service.control("cut", "2", "west")
        browser.sees("30 of 60 ONUs online", "30 ONUs offline: fibre at west")
        browser.sees("likely cut here: 30 ONUs fell together", "Nobody below west is online", "cable 2 → street → west")
        self.goes_through_the_tree(browser)
        self.assertIn("30 ONUs of port 2", browser.run("return document.querySelector('[role=log]').textContent"))
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

    def goes_through_the_tree(self, browser: Browser) -> None:
        """By keys: into the branch that was cut, to an ONU in it, and back."""
        active = """
            const tree = document.querySelector("[role=tree]");
            return document.getElementById(tree.getAttribute("aria-activedescendant")).ariaLabel;
        """
        browser.run("document.querySelector('[role=tree]').focus()")
        self.assertIn("cable 2", browser.run(active))
        browser.keys("ARROW_RIGHT", "ARROW_RIGHT")
        self.assertIn("west, 1:32", browser.run(active))
        self.assertIn("30 offline, likely cut here: 30 ONUs fell together", browser.run(active))
        browser.keys("ARROW_DOWN")
        self.assertIn("ONU 2/1 dormitory: offline", browser.run(active))
        browser.keys("ARROW_LEFT", "ARROW_LEFT")
        branch = browser.one("[role=treeitem][aria-selected=true]")
        self.assertEqual(branch.get_attribute("aria-expanded"), "false")
        browser.keys("ARROW_RIGHT")
        self.keeps_the_rules()
        browser.picture("tree")

    def test_an_olt_that_is_lost_comes_back(self) -> None:
        browser = self.as_operator()
        browser.sees("answers")
        self.service.olt.end(signal.SIGKILL)
        browser.sees("does not answer", "lost for")
        self.assertFalse(browser.run("return document.querySelector('.tile.good') !== null"))
        self.keeps_the_rules()
        browser.picture("lost")
        self.service.olt = self.service.started_olt()
        browser.sees("answers")
        browser.sees_not("lost for")

    def test_a_daemon_that_is_lost_comes_back(self) -> None:
        browser = self.as_operator("/olts/campus/onus")
        browser.one("[role=grid]")
        self.service.front.end(signal.SIGKILL)
        browser.sees("The console's server does not answer", "1/1")
        self.keeps_the_rules()
        self.service.front = self.service.started_front()
        # Sessions end with the daemon.
        browser.one("button", "Log in")
        browser.log_in("read")
        browser.sees("live")
