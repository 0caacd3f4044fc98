// The web console: its screens by their addresses.
import m from "mithril";
import "../style/main.css";
import { read_session, session } from "./base/api";
import { live } from "./base/live";
import { forget_use } from "./base/store";
import { begin_theme } from "./base/theme";
import { listen_to_keys } from "./parts/keys";
import { shell } from "./parts/shell";
import { AlarmsScreen } from "./screens/alarms";
import { ConfigurationScreen } from "./screens/configuration";
import { EventsScreen } from "./screens/events";
import { OnuScreen } from "./screens/onu";
import { Onus } from "./screens/onus";
import { overview } from "./screens/overview";
import { PortScreen } from "./screens/port";
import { profiles } from "./screens/profiles";
import { UpgradesScreen } from "./screens/upgrades";
import { WaitingScreen } from "./screens/waiting";

type Arguments = Record<string, string>;

let shown = "";

// A screen starts anew when its address is another one, and keeps what was chosen on it until then.
function screen(title: (given: Arguments) => string, draw: (given: Arguments) => m.Children): m.Resolver {
    return {
        render: ({ attrs }) => {
            const address = m.route.get() ?? "/";
            if (address !== shown) {
                shown = address;
                forget_use();
                window.scrollTo(0, 0);
                document.title = `${title(attrs)} – PON console`;
            }
            return shell(() => [m(Screen, { key: address, draw: () => draw(attrs) })]);
        },
    };
}

let is_first = true;

// Whoever came by a key from what is gone now goes on in the new screen, and not at the top of the page.
function take_focus(): void {
    const main = document.getElementById("main");
    if (!is_first && document.activeElement === document.body) main?.focus({ preventScroll: true });
    is_first = false;
}

const Screen: m.Component<{ draw: () => m.Children }> = {
    oncreate: take_focus,
    view: ({ attrs }) => attrs.draw()
};

function given(attributes: Arguments, name: string): string { return attributes[name] ?? ""; }

function of_olt(what: string): (has: Arguments) => string { return (has) => `${what} of ${has.olt}`; }

const routes: Record<string, m.Resolver> = {
    "/": screen(() => "Overview", overview),
    "/events": screen(
        () => "Events",
        () => m(EventsScreen, {}),
    ),
    "/olts/:olt/onus": screen(of_olt("ONUs"), (has) => m(Onus, { olt: given(has, "olt"), ...has })),
    "/olts/:olt/onus/:port/:id": screen(
        (has) => `ONU ${has.port}/${has.id} of ${has.olt}`,
        (has) => m(OnuScreen, { olt: given(has, "olt"), port: Number(has.port), id: Number(has.id) }),
    ),
    "/olts/:olt/ports/:port": screen(
        (has) => `Port ${has.port} of ${has.olt}`,
        (has) => m(PortScreen, { olt: given(has, "olt"), port: Number(has.port) }),
    ),
    "/olts/:olt/waiting": screen(of_olt("Waiting ONUs"), (has) => m(WaitingScreen, { olt: given(has, "olt") })),
    "/olts/:olt/alarms": screen(of_olt("Alarms"), (has) => m(AlarmsScreen, { olt: given(has, "olt") })),
    "/olts/:olt/upgrades": screen(of_olt("Upgrades"), (has) => m(UpgradesScreen, { olt: given(has, "olt") })),
    "/olts/:olt/profiles": screen(of_olt("Profiles"), (has) => profiles(given(has, "olt"))),
    "/olts/:olt/configuration":
        screen(of_olt("Configuration"), (has) => m(ConfigurationScreen, { olt: given(has, "olt") })),
};

async function start(): Promise<void> {
    begin_theme(() => m.redraw());
    listen_to_keys();
    m.route.prefix("#");
    m.route(document.getElementById("page") as HTMLElement, "/", routes);
    for (;;) {
        try {
            await read_session();
            break;
        } catch {
            await new Promise((resolve) => window.setTimeout(resolve, 2000));
        }
    }
    if (session.now?.role) live.start();
    // Ages grow while nothing else changes.
    window.setInterval(() => m.redraw(), 10000);
    window.addEventListener("resize", () => m.redraw());
}

void start();
