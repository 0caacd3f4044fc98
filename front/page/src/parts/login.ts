// The log-in, also over a screen whose session has ended: the address stays, so that it goes on where it was.
import m from "mithril";
import { log_in, session } from "../base/api";
import { live } from "../base/live";
import { forget_all } from "../base/store";
import { input } from "./parts";

export const LogIn: m.Closure = () => {
    let user = "";
    let password = "";
    let failed = "";
    let under_way = false;

    async function submit(event: Event): Promise<void> {
        event.preventDefault();
        under_way = true;
        failed = "";
        try {
            await log_in(user, password);
            forget_all();
            live.start();
        } catch (error) {
            failed = (error as Error).message;
            password = "";
            document.getElementById("password")?.focus();
        }
        under_way = false;
        m.redraw();
    }

    return {
        view: () => m(
            "main.login",
            m(
                "form",
                { onsubmit: submit },
                m("h1", "PON console"),
                session.ended && m("p.muted", "Your session has ended. Log in to go on where you were."),
                input(
                    "User",
                    user,
                    (value) => (user = value),
                    { autocomplete: "username", required: true, autofocus: true, name: "user" }
                ),
                input(
                    "Password",
                    password,
                    (value) => (password = value),
                    { type: "password", autocomplete: "current-password", required: true, name: "password" }
                ),
                m("p.failed", { role: "alert" }, failed),
                m("button.primary", { type: "submit", disabled: under_way }, under_way ? "Logging in …" : "Log in"),
            ),
        ),
    };
};
