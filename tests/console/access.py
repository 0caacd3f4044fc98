"""Who may do what: log-in, roles, sessions, two users."""

from browser import Browser
from service import PASSWORD
from story import Story

ASK = """
    const [operation, given, done] = arguments;
    const asking = async () => {
        const { token } = await (await fetch("/api/v1/session")).json();
        const headers = { "Content-Type": "application/json", "X-CSRF-Token": token };
        const body = JSON.stringify({ arguments: given });
        return (await fetch(`/api/v1/olts/campus/calls/${operation}`, { method: "POST", headers, body })).status;
    };
    asking().then(done, (error) => done(String(error)));
"""
REBOOT = ("bsp_pon_reboot_onu_batch", {"record": {"pon_port": 1, "onu_set": [1]}})
DESCRIBE = ("bsp_pon_onu_description", {"pon_port": 1, "onu_id": 1, "text": "office"})


class Access(Story):
    def test_a_wrong_password_is_refused(self) -> None:
        self.browser.log_in("read", "wrong")
        self.browser.sees("password is wrong")
        self.browser.one("input", "Password")
        self.keeps_the_rules()

    def test_each_role_is_offered_and_allowed_what_it_may_do(self) -> None:
        # Of each role: what is offered, and what is answered to who asks for what is not.
        may = {
            "read": (False, False, 403, 403),
            "write": (True, False, 200, 403),
            "service-affecting": (True, True, 200, 428),
        }
        for role, (describes, reboots, described, rebooted) in may.items():
            with self.subTest(role):
                self.browser.log_in(role)
                self.browser.one("nav a", "Overview")
                self.browser.go("/olts/campus/onus/1/1")
                self.browser.sees("ONU 1/1", "UNI ports", "transparent", "up to 200.0 Mbit/s")
                self.assertEqual(self.browser.has("button", "Describe ONU 1/1"), describes)
                for name in ("Reboot", "Release", "To the blacklist", "Change the bandwidth of ONU 1/1"):
                    self.assertEqual(self.browser.has("button", name), reboots, name)
                self.assertEqual(self.browser.driver.execute_async_script(ASK, *DESCRIBE), described)
                self.assertEqual(self.browser.driver.execute_async_script(ASK, *REBOOT), rebooted)
                self.browser.go("/olts/campus/waiting")
                self.browser.sees("1 ONU", "Blacklist")
                self.assertEqual(self.browser.has("button", "Admit"), reboots)
                self.browser.go("/olts/campus/configuration")
                self.browser.sees("Configuration")
                if role == "read":
                    self.browser.sees("You may not do this.")
                self.browser.press("Log out")
                self.browser.one("button", "Log in")

    def test_a_session_that_ended_asks_for_a_log_in_and_goes_on(self) -> None:
        browser = self.as_operator("/olts/campus/alarms")
        browser.sees("Severity")
        browser.forget()
        browser.go("/olts/campus/onus/1/2")
        browser.sees("Your session has ended")
        browser.type("User", "read")
        browser.type("Password", PASSWORD)
        browser.press("Log in")
        browser.sees("ONU 1/2")

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
