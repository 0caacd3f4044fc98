"""How the console looks and is used, on small and large screens, light and dark, by keys alone, and with very much to show."""

import pathlib
import tempfile

from browser import Browser
from service import Service
from story import Story
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
ONUS = 2048
FULL = pathlib.Path(__file__).parent / "full.toml"

WHERE = """
    const element = document.activeElement;
    if (element === document.body) return null;
    const box = element.getBoundingClientRect();
    return {
        place: [...document.querySelectorAll("*")].indexOf(element),
        name: element.ariaLabel || element.textContent || element.id,
        seen: box.width > 0 && box.bottom > 0 && box.top < innerHeight,
    };
"""
# Rows that are in the document, and how many are needed: those that are seen, one that is cut at each end, and eight
# beyond each.
ROWS = """
    const table = document.querySelector("[role=grid]");
    const rows = [...table.querySelectorAll(".row.of")];
    const height = rows[0].getBoundingClientRect().height;
    const top = table.getBoundingClientRect().top;
    const seen = rows.filter((row) => row.getBoundingClientRect().bottom > top + height + 1);
    return {
        rows: rows.length,
        needed: Math.ceil(table.clientHeight / height) + 1 + 2 * 8,
        all: Number(table.getAttribute("aria-rowcount")) - 1,
        first: seen[0]?.textContent ?? "",
    };
"""
MOVES = """
    const outer = document.querySelector("main").appendChild(document.createElement("div"));
    outer.className = "loading";
    const line = outer.appendChild(document.createElement("div"));
    line.className = "line";
    const name = getComputedStyle(line).animationName;
    outer.remove();
    return name;
"""


class Looks(Story):
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

    def test_an_onu_is_found_by_keys_alone(self) -> None:
        browser = self.as_operator()
        browser.sees("What is wrong")
        self.service.operate("onu", "describe", "1", "4", "Old mill")
        browser.keys("/")
        self.assertEqual(browser.run("return document.activeElement.id"), "search")
        patiently(lambda: self.search_finds("old mi", "1/4"))
        browser.keys("ARROW_DOWN", "ARROW_UP", "ENTER")
        browser.sees("ONU 1/4", "Old mill")
        self.assertEqual(browser.run("return document.activeElement.id"), "main", "and not the top of the page")
        browser.keys("?")
        browser.one("dialog", "Keys")
        self.keeps_the_rules()
        browser.keys("ESCAPE", "g", "n")
        browser.one("[role=grid]", "ONUs of campus")
        browser.keys("END", "ENTER")
        browser.sees("of port 4 of campus")
        browser.keys("/")
        patiently(lambda: self.search_finds("old mi", "1/4"))
        self.keeps_the_rules()

    def as_newcomer(self, place: str) -> Browser:
        """Opens a page anew, so that the first Tab is the first one in it."""
        browser = self.as_operator(place)
        browser.driver.refresh()
        return browser

    def search_finds(self, words: str, where: str) -> bool:
        field = self.browser.one("input#search")
        self.browser.type_into(field, words)
        found = self.browser.one(".found").text
        return where in found and words in found.lower()  # and not what the first letters found

    def test_the_tab_key_goes_through_the_page_in_order(self) -> None:
        browser = self.as_newcomer("/olts/campus/onus/1/2")
        browser.one("button", "Change the bandwidth of ONU 1/2")
        browser.one("button", "Change the VLANs of UNI port 1")
        stops = []
        for _ in range(80):
            browser.keys("TAB")
            stop = browser.run(WHERE)
            if stop is None or stops and stop["name"] == stops[0]["name"]:
                break
            stops.append(stop)
        names = [stop["name"] for stop in stops]
        self.assertEqual(names[0], "To the content")
        self.assertIn("Change the bandwidth of ONU 1/2", names)
        self.assertIn("To the blacklist", names)
        self.assertEqual([stop["name"] for stop in stops if not stop["seen"]], [])
        places = [stop["place"] for stop in stops]
        self.assertEqual(places, sorted(places), names)

    def test_a_link_skips_to_the_content(self) -> None:
        browser = self.as_newcomer("/olts/campus/onus/1/2")
        browser.one("button", "Describe ONU 1/2")
        browser.keys("TAB", "ENTER")
        self.assertEqual(browser.run("return document.activeElement.id"), "main")
        browser.keys("TAB")
        self.assertTrue(browser.run("return document.activeElement.closest('main') !== null"))

    def test_colours_and_motion_are_as_somebody_wants_them(self) -> None:
        browser = self.as_operator()
        browser.sees("What is wrong")
        self.assertEqual(browser.run(MOVES), "none")
        browser.look(1366, 768, "dark", motion="no-preference")
        self.assertEqual(browser.run(MOVES), "breathe")
        ground = "return getComputedStyle(document.body).backgroundColor"
        dark = browser.run(ground)
        browser.press("Colours: system")
        light = browser.run(ground)
        self.assertNotEqual(light, dark, "light was chosen where the system is dark")
        browser.press("Colours: light")
        self.assertEqual(browser.run(ground), dark)
        browser.look(1366, 768, "light")
        self.assertEqual(browser.run(ground), dark, "dark was chosen where the system is light")
        browser.press("Colours: dark")
        self.assertEqual(browser.run(ground), light)

    def rows(self, browser: Browser, first: str, count: int) -> None:
        """Waits until a table begins with a row and has so many, no more of which are in the document than needed."""
        patiently(lambda: first in browser.run(ROWS)["first"])
        found = browser.run(ROWS)
        self.assertLessEqual(found["rows"], found["needed"])
        self.assertEqual(found["all"], count)

    def test_a_full_olt_scrolls_sorts_and_filters(self) -> None:
        with tempfile.TemporaryDirectory(prefix="full") as folder:
            service = Service(self.service.programs, pathlib.Path(folder), str(FULL), "full")
            self.addCleanup(setattr, self.browser, "url", self.browser.url)
            self.browser.url = service.url
            try:
                self.look_through(self.as_operator("/olts/full/onus"))
            finally:
                self.browser.leave()
                service.end()

    def look_through(self, browser: Browser) -> None:
        browser.sees(f"{ONUS:,} ONUs")
        self.rows(browser, "1/0", ONUS)
        row = browser.run("return document.querySelector('.row.of').getBoundingClientRect().height")
        browser.run(f"document.querySelector('[role=grid]').scrollTop = {1000 * row}")
        self.rows(browser, "8/104", ONUS)
        browser.keys("END")
        self.rows(browser, "16/", ONUS)
        browser.press("ONU ↑", ".sort")
        browser.run("document.querySelector('[role=grid]').scrollTop = 0")
        self.rows(browser, "16/127", ONUS)
        browser.choose("Port", "7")
        browser.sees(f"128 of {ONUS:,} ONUs")
        self.rows(browser, "7/127", 128)
        browser.type("Words", "7/12")
        browser.sees(f"9 of {ONUS:,} ONUs")
        self.rows(browser, "7/127", 9)
        self.keeps_the_rules()
        browser.picture("full")
        browser.go("/olts/full/ports/7")
        browser.sees("128 of 128 ONUs online", "How this port is split is not known.", "plant =")
        self.rows(browser, "7/0", 128)
