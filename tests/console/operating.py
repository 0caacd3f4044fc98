"""What operators do: admit and release, change VLANs and bandwidth, clear alarms, upgrade, apply a configuration."""

import pathlib

from story import MARKUP, Story
from waiting import patiently


class Operating(Story):
    def address_waiting(self, port: int) -> str:
        rows = self.browser.run("return [...document.querySelectorAll('.waits')].map((row) => row.innerText)")
        return next((row.split()[3] for row in rows if f"port {port}" in row), "")

    def is_bound(self, place: str) -> bool:
        lines = self.service.operate("-o", "csv", "onu", "list", "3").splitlines()
        return any(line.startswith(place) for line in lines)

    def test_an_onu_is_released_turned_away_and_admitted_again(self) -> None:
        browser = self.as_operator("/olts/campus/onus/3/5")
        browser.press("Release")
        self.confirm("Release", "Release ONU 3/5?", "3/5")
        browser.sees("ONU 3/5 is released.")
        self.assertFalse(self.is_bound("3,5,"))
        browser.go("/olts/campus/waiting")
        mac = patiently(lambda: self.address_waiting(3))
        browser.press(f"Turn {mac} away")
        self.confirm("Turn away", mac)
        browser.sees("tries to come in", "Text")
        patiently(lambda: not self.address_waiting(3))
        self.assertIn(mac, self.service.operate("blacklist", "list", "3"))
        browser.press(f"Allow {mac} again")
        self.confirm("Allow")
        browser.sees("is off the blacklist", "It is empty.")
        patiently(lambda: self.address_waiting(3) == mac)
        browser.press(f"Admit {mac}")
        self.assertEqual(browser.one("input", "ONU id").get_attribute("value"), "5", "the first free one")
        self.keeps_the_rules()
        browser.type("Description", MARKUP)
        browser.press("Admit", "form button")
        self.confirm("Admit", f"Admit {mac} as ONU 3/5?")
        browser.sees("ONU 3/5 is admitted.")
        patiently(lambda: not self.address_waiting(3))
        browser.go("/olts/campus/onus/3/5")
        browser.sees("ONU 3/5", MARKUP)
        self.assertIn("ONU 3/5", browser.driver.title)
        self.assertTrue(self.is_bound("3,5,"))

    def test_vlans_are_changed_as_lists_and_shown_before_and_after(self) -> None:
        browser = self.as_operator("/olts/campus/onus/1/33")
        browser.sees("MAC addresses behind it", "06:92:1c:01:10:00")
        browser.press("Change the VLANs of UNI port 2")
        self.assertEqual(browser.run("return document.activeElement.closest('form').ariaLabel"), "VLANs of UNI port 2")
        browser.choose("VLAN mode", "trunk")
        browser.sees("The list has at least one VLAN.")
        for place, vlan in enumerate(["200", "100"], start=1):
            browser.press("Add a VLAN")
            browser.type(f"VLAN {place}", vlan)
        browser.type("VLAN of untagged frames", "7")
        change = browser.one("table.changes").text
        self.assertIn("VLAN mode transparent trunk", change)
        self.assertIn("VLANs none 100, 200", change)
        browser.press("Add a VLAN")
        browser.type("VLAN 3", "100")
        browser.sees("VLAN 100 is in the list twice.")
        self.assertFalse(browser.one("form button", "Change").is_enabled())
        self.keeps_the_rules()
        browser.driver.find_elements("css selector", ".entry button")[2].click()
        browser.press("Change", "form button")
        self.confirm("Change it", "1/33")
        browser.sees("is changed.", "untagged: 7")
        self.comes_to_say('"100,200"', "-o", "csv", "onu", "vlan", "1/33")
        self.assertEqual(browser.run("return document.activeElement.ariaLabel"), "Change the VLANs of UNI port 2")
        browser.press("Change the VLANs of UNI port 2")
        browser.choose("VLAN mode", "translation")
        for place, vlan in enumerate(["1100", "1200"], start=1):
            browser.type(f"In the network {place}", vlan)
        self.assertIn("VLANs 100, 200 100 → 1100, 200 → 1200", browser.one("table.changes").text)
        browser.press("Change", "form button")
        self.confirm("Change it")
        self.comes_to_say('"100:1100,200:1200"', "-o", "csv", "onu", "vlan", "1/33")

    def test_the_bandwidth_of_an_onu_is_changed_by_a_profile_and_by_hand(self) -> None:
        values = ["fixed=1000", "assured=20000", "maximum=90000", "priority=3", "weight=7"]
        self.service.operate("profile", "store", "sla", "name=evening", *values)
        browser = self.as_operator("/olts/campus/onus/1/8")
        browser.press("Change the bandwidth of ONU 1/8")
        browser.choose("As in the profile", "evening")
        browser.type("At most downstream, kbit/s", "400000")
        change = browser.one("table.changes").text
        self.assertIn("At most upstream, kbit/s 200000 90000", change)
        self.assertIn("At most downstream, kbit/s 300000 400000", change)
        browser.type("Fixed, kbit/s", "80000")
        browser.sees("Fixed and assured together are at most")
        browser.type("Fixed, kbit/s", "2000")
        self.keeps_the_rules()
        browser.press("Change", "form button")
        self.confirm("Change it", "1/8")
        browser.sees("The bandwidth of ONU 1/8 is changed.", "up to 90.0 Mbit/s", "up to 400.0 Mbit/s")
        browser.press("Count them")
        browser.sees("are counted from now on.", "Frames up with errors", "/s")
        self.comes_to_say("90000", "sla", "show", "1/8")
        self.comes_to_say("400000", "sla", "show", "1/8")

    def test_a_change_can_be_let_be(self) -> None:
        browser = self.as_operator("/olts/campus/onus/1/5")
        browser.press("Reboot")
        browser.sees("This affects service.", "1/5")
        self.keeps_the_rules()
        browser.picture("confirmation")
        browser.keys("ESCAPE")
        patiently(lambda: not browser.has("dialog h2", "Reboot ONU 1/5?"))
        self.assertIn("online", self.service.operate("onu", "show", "1", "5"))

    def test_an_alarm_is_cleared_by_keys_and_ends_with_its_cause(self) -> None:
        self.service.control("power", "1", "a-9", "off")
        self.addCleanup(self.service.control, "power", "1", "a-9", "on")
        browser = self.as_operator("/olts/campus/alarms")
        browser.type("Words", "power failed")
        browser.sees("offline: power failed")
        browser.run("document.querySelector('[role=grid]').focus()")
        browser.keys("ARROW_RIGHT", "ARROW_RIGHT")
        self.assertEqual(browser.run("return document.activeElement.ariaLabel"), "Clear offline: power failed")
        browser.keys("ENTER")
        browser.sees("The alarm is cleared. It comes back if its cause is still there.")
        self.assertIn("BSP_CMD_ONU_ALARM_CLEAR", (self.service.folder / "audit").read_text(encoding="utf-8"))
        # The last words of an ONU have no cause that lasts.
        browser.sees("No alarm is active.")
        browser.type("Words", "1/9")
        browser.sees("offline: no light")
        self.service.control("power", "1", "a-9", "on")
        self.service.control("step", "60")
        browser.sees("No alarm is active.")
        browser.choose("State", "cleared")
        browser.sees("offline: no light")

    def test_several_upgrades_go_on_to_their_end(self) -> None:
        kind = self.service.operate("-o", "csv", "upgrade", "status", "1").splitlines()
        of = dict(zip(kind[0].split(","), kind[1].split(",")))
        self.service.operate("upgrade", "add", "spring", of["vendor"], of["model"], "9.9.9", "400000")
        browser = self.as_operator("/olts/campus/upgrades")
        browser.press("Read firmware again")
        browser.choose("Firmware", "spring: 9.9.9")
        browser.type("ONUs", "10-12")
        browser.press("Upgrade")
        self.confirm("Upgrade", "which ends in a reboot?", "3 ONUs will be hit", "1/10", "1/11", "1/12")
        browser.sees("has begun", "3 ONUs under way")
        browser.sees(" %")
        browser.one("progress")
        self.keeps_the_rules()
        patiently(lambda: all(self.upgraded(onu, "9.9.9") for onu in ("1/10", "1/11", "1/12")))
        browser.sees("0 ONUs under way")

    def upgraded(self, onu: str, version: str) -> bool:
        self.service.control("step", "20")
        rows = self.browser.run("return [...document.querySelectorAll('[role=row]')].map((row) => row.textContent)")
        return any(row.startswith(onu) and "done" in row and version in row for row in rows)

    def test_a_configuration_goes_back_or_is_kept(self) -> None:
        saved = self.service.folder / "saved.cfg"
        self.service.operate("config", "save", str(saved))
        self.service.operate("onu", "describe", "1", "9", "later")
        browser = self.as_operator("/olts/campus/configuration")
        self.apply(saved)
        self.assertNotIn("later", self.service.operate("onu", "list", "1"))
        browser.press("Go back now")
        browser.sees("It went back to what was before.")
        self.assertIn("later", self.service.operate("onu", "list", "1"))
        browser.go("/")
        browser.go("/olts/campus/configuration")
        self.apply(saved)
        browser.press("Keep it")
        browser.sees("is kept")
        self.assertNotIn("later", self.service.operate("onu", "list", "1"))

    def apply(self, saved: pathlib.Path) -> None:
        self.browser.one("input", "A saved configuration").send_keys(str(saved))
        self.browser.sees("between campus and saved.cfg", "later")
        self.browser.press("Apply")
        self.confirm("Apply", "later")
        self.browser.sees("waits for its confirmation", "It goes back by itself")
        self.keeps_the_rules()
