"""What operators see without doing anything: a cut fibre, and services that are lost and come back."""

import signal

from story import Story


class Watching(Story):
    def test_a_cut_fibre_is_seen_as_it_happens(self) -> None:
        browser = self.as_operator("/olts/campus/ports/2")
        browser.sees("60 of 60 ONUs online")
        browser.run("window.was_not_loaded_again = true")
        self.service.control("cut", "2", "west")
        browser.sees("30 of 60 ONUs online", "30 ONUs offline: fibre at west")
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
