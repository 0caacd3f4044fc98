#!/usr/bin/python3
"""Holds the broker of a fleet to who may what: a real mosquitto with the configuration, authority and permissions that
are shipped."""

import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from broker import ADDRESS, PATIENCE, SHIPPED, Broker, authority, patiently, permissions  # noqa: E402

TABLE = """
[groups]
north = ["north-1", "north-2"]
[[client]]
name = "monitor"
class = "read"
olts = ["all"]
[[client]]
name = "desk"
class = "write"
olts = ["@north"]
[[client]]
name = "operator"
class = "service-affecting"
olts = ["all"]
[[bridge]]
name = "bridge-north"
olts = ["@north"]
[[bridge]]
name = "bridge-south"
olts = ["south-1"]
"""

# Of whom there is a certificate, but no word in the table.
STRANGER = "stranger"
CLIENTS = {"monitor": 1, "desk": 2, "operator": 3}
CLASSES = ("read", "write", "service-affecting")
OLTS = {"bridge-north": ("north-1", "north-2"), "bridge-south": ("south-1",)}
EVERYBODY = [*CLIENTS, *OLTS, STRANGER]

# Who may publish there, and who may read it. These lines are the rule; the table above is only an example of it.
RULES: dict[str, tuple[set[str], set[str]]] = {}
for bridge, names in OLTS.items():
    RULES[f"pon/bridge/{bridge}/state"] = ({bridge}, set(CLIENTS))
    for olt in names:
        for rank, impact in enumerate(CLASSES, 1):
            for client, most in CLIENTS.items():
                may = rank <= most and (client != "desk" or bridge == "bridge-north")
                RULES[f"pon/olt/{olt}/call/{impact}/{client}"] = ({client} if may else set(), {bridge})
        readers = {"monitor", "operator"} | ({"desk"} if bridge == "bridge-north" else set())
        for told in ("inventory", "event", "audit"):
            RULES[f"pon/olt/{olt}/{told}"] = ({bridge}, readers)
for client in CLIENTS:
    # Whoever publishes to itself learns by that when all has come that was there before.
    RULES[f"pon/client/{client}/session-1"] = ({client, *OLTS}, {client})
for topic in ("pon", "pon/olt/north-1", "pon/olt/north-1/call/raw/operator", "elsewhere/olt/north-1/call/read/operator",
              "pon/olt/north-1/call/read/stranger", "pon/client/stranger/session-1", "pon/bridge/bridge-east/state"):
    RULES[topic] = (set(OLTS) if topic.startswith("pon/client/") else set(), set())


class BrokerTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory(prefix="broker")
        cls.broker = Broker(pathlib.Path(cls.folder.name) / "b", TABLE, EVERYBODY, more="log_type all\n")

    @classmethod
    def tearDownClass(cls) -> None:
        cls.broker.end()
        cls.folder.cleanup()

    def refused(self, *words: str) -> str:
        command = ["mosquitto_pub", "-V", "5", "-p", str(self.broker.port), *words, "-q", "1", "-t", "pon/x", "-m", "x"]
        done = subprocess.run(command, capture_output=True, text=True, check=False, timeout=PATIENCE)
        self.assertNotEqual(done.returncode, 0, f"it came in: {words}")
        return done.stdout + done.stderr

    def test_each_may_publish_what_is_permitted_and_nothing_else(self) -> None:
        # Of the calls, those of one OLT of each bridge, so that the test is quick.
        topics = [topic for topic in RULES if "north-2" not in topic]
        for name in EVERYBODY:
            allowed = [topic for topic in topics if self.broker.publish(name, topic)]
            self.assertEqual(allowed, [topic for topic in topics if name in RULES[topic][0]], name)

    def test_each_reads_what_is_permitted_and_nothing_else(self) -> None:
        readers = {name: self.reader(name) for name in EVERYBODY}
        published = [topic for topic, (writers, _) in RULES.items() if writers]
        for topic in published:
            self.assertTrue(self.broker.publish(sorted(RULES[topic][0])[0], topic))
        # The last that each may read is its end, so that nothing has to be waited for in vain.
        ends = {client: ("bridge-north", f"pon/client/{client}/end") for client in CLIENTS}
        ends |= {bridge: ("operator", f"pon/olt/{names[0]}/call/read/operator") for bridge, names in OLTS.items()}
        for name, (writer, topic) in ends.items():
            self.assertTrue(self.broker.publish(writer, topic, "end"))
            expected = [f"{topic} x" for topic in published if name in RULES[topic][1]]
            self.assertEqual(self.lines_until_end(readers[name]), expected, name)
        self.assertNotIn(f"Sending PUBLISH to reader-{STRANGER}", self.broker.log())
        for name in ends:
            self.assertIn(f"Sending PUBLISH to reader-{name}", self.broker.log())

    def reader(self, name: str) -> subprocess.Popen[str]:
        command = ["mosquitto_sub", *self.broker.words_of(name), "-i", f"reader-{name}", "-t", "#", "-F", "%t %p"]
        reader = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)

        def end() -> None:
            reader.kill()
            reader.wait(timeout=PATIENCE)
            reader.stdout.close()

        self.addCleanup(end)
        patiently(lambda: self.broker.has_said(f"Sending SUBACK to reader-{name}"))
        return reader

    def lines_until_end(self, reader: subprocess.Popen[str]) -> list[str]:
        lines = []
        for line in reader.stdout:
            if line.endswith(" end\n"):
                return lines
            lines.append(line.rstrip("\n"))
        raise AssertionError(f"the reader ended after {lines}")

    def test_nobody_comes_in_without_a_certificate_of_this_authority(self) -> None:
        here = self.broker.certificates
        self.refused("-h", ADDRESS)
        self.refused("-h", ADDRESS, "--cafile", f"{here}/ca.crt")
        other = pathlib.Path(self.folder.name) / "other"
        authority(other, "init")
        authority(other, "client", "operator")
        foreign = ["--cert", f"{other}/operator.crt", "--key", f"{other}/operator.key"]
        self.refused("-h", ADDRESS, "--cafile", f"{here}/ca.crt", *foreign)
        # The certificate of a broker is none of a client, and a client does not take a broker of another name.
        server = ["--cert", f"{here}/server.crt", "--key", f"{here}/server.key"]
        self.refused("-h", ADDRESS, "--cafile", f"{here}/ca.crt", *server)
        own = ["--cert", f"{here}/operator.crt", "--key", f"{here}/operator.key"]
        self.refused("-h", "localhost", "--cafile", f"{here}/ca.crt", *own)
        self.refused("-h", ADDRESS, "--cafile", f"{other}/ca.crt", *own)

    def test_a_last_will_is_permitted_no_more_than_its_client(self) -> None:
        reader = self.reader("monitor")
        for name in ("desk", "bridge-north"):
            will = ["--will-topic", "pon/bridge/bridge-north/state", "--will-payload", f"will of {name}", "--will-qos", "1"]
            command = ["mosquitto_sub", *self.broker.words_of(name), "-i", f"dying-{name}", "-t", "pon/none", *will]
            dying = subprocess.Popen(command)
            patiently(lambda: self.broker.has_said(f"Sending SUBACK to dying-{name}"))
            dying.kill()
            dying.wait(timeout=PATIENCE)
            patiently(lambda: self.broker.has_said(f"Client dying-{name} closed its connection"))
        self.broker.publish("bridge-north", "pon/client/monitor/end", "end")
        self.assertEqual(self.lines_until_end(reader), ["pon/bridge/bridge-north/state will of bridge-north"])

    def test_what_is_too_long_is_not_taken(self) -> None:
        reader = self.reader("monitor")
        long = pathlib.Path(self.folder.name) / "long"
        for size in (1 << 21, 1 << 23):
            long.write_bytes(b"x" * size)
            command = ["mosquitto_pub", *self.broker.words_of("bridge-north"), "-t", "pon/olt/north-1/event", "-f", str(long)]
            subprocess.run(command, capture_output=True, check=False, timeout=PATIENCE)
        self.broker.publish("bridge-north", "pon/client/monitor/end", "end")
        sizes = [len(line.split()[1]) for line in self.lines_until_end(reader)]
        self.assertEqual(sizes, [1 << 21])

    def test_a_permission_is_taken_away_while_the_broker_runs(self) -> None:
        topic = "pon/olt/north-1/call/read/desk"
        self.assertTrue(self.broker.publish("desk", topic))
        try:
            self.broker.permit(TABLE.replace('"desk"', '"another-desk"'))
            self.broker.reload()
            patiently(lambda: not self.broker.publish("desk", topic))
        finally:
            self.broker.permit(TABLE)
            self.broker.reload()
        patiently(lambda: self.broker.publish("desk", topic))

    def test_inventories_survive_a_restart(self) -> None:
        self.broker.publish("bridge-north", "pon/olt/north-2/inventory", "kept", "-r")
        self.broker.end(signal.SIGTERM)
        self.broker.start()
        command = ["mosquitto_sub", *self.broker.words_of("monitor"), "-t", "pon/olt/north-2/inventory", "-C", "1"]
        said = subprocess.run(command, capture_output=True, text=True, check=True, timeout=PATIENCE).stdout
        self.assertEqual(said, "kept\n")
        self.broker.publish("bridge-north", "pon/olt/north-2/inventory", "", "-r")


class AuthorityTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory(prefix="authority")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name) / "a"

    def complaint(self, *words: str) -> str:
        done = subprocess.run([SHIPPED / "authority", *words], check=False, capture_output=True, text=True)
        self.assertEqual(done.returncode, 1)
        return done.stderr

    def test_replaces_nothing_and_says_what_is_wrong(self) -> None:
        here = str(self.folder)
        self.assertIn(f"make it with: authority {here} init", self.complaint(here, "client", "anna"))
        authority(self.folder, "init")
        authority(self.folder, "client", "anna")
        before = {path.name: path.read_bytes() for path in self.folder.iterdir()}
        self.assertIn("there is an authority in", self.complaint(here, "init"))
        self.assertIn("is there already", self.complaint(here, "bridge", "anna"))
        self.assertIn("is no name", self.complaint(here, "client", "a/b"))
        self.assertIn("is no name", self.complaint(here, "client", ""))
        self.assertIn("at most 64", self.complaint(here, "client", "x" * 65))
        self.assertIn("the authority's own", self.complaint(here, "client", "ca"))
        for words in ((), (here,), (here, "revoke", "anna"), (here, "client"), (here, "init", "x")):
            self.assertIn("use it as", self.complaint(*words))
        self.assertEqual({path.name: path.read_bytes() for path in self.folder.iterdir()}, before)

    def test_keys_are_for_their_owner_alone(self) -> None:
        authority(self.folder, "init")
        authority(self.folder, "bridge", "b")
        modes = {path.name: oct(path.stat().st_mode & 0o777) for path in self.folder.iterdir()}
        self.assertEqual(modes, {"ca.crt": "0o644", "ca.key": "0o600", "b.crt": "0o644", "b.key": "0o600"})


class PermissionsTest(unittest.TestCase):
    WRONG = {
        "root = 7": "root: a text is needed",
        'root = "a//b"': "root: '' is no name",
        'roots = "a"': "there is no key 'roots'",
        "[groups]\nnorth = []": "groups.north: a list of names is needed",
        "groups = 7": "groups: it is a table",
        '[[client]]\nname = "a"\nclass = "all"\nolts = ["all"]': "class 'all' is none of read, write, service-affecting",
        '[[client]]\nname = "a"\nclass = "read"': "client a: olts: a list of names is needed",
        '[[client]]\nname = "a"\nclass = "read"\nolts = ["@none"]': "there is no group 'none'",
        '[[client]]\nname = "a"\nclass = "read"\nolts = ["all", "b"]': "'all' stands alone",
        '[[client]]\nname = "a"\nclass = "read"\nolts = ["north-+"]': "'north-+' is no name",
        '[[client]]\nname = "a\\nuser b"\nclass = "read"\nolts = ["all"]': "is no name",
        '[client]\nname = "a"': "[[client]]",
        '[[bridge]]\nname = "b"\nolts = ["a"]\nclass = "read"': "there is no key 'class'",
        '[[bridge]]\nname = "b"\nolts = ["a"]\n[[client]]\nname = "b"\nclass = "read"\nolts = ["a"]': "of this name already",
        "[[client]": "Expected",
    }

    def test_says_what_is_wrong_with_a_table(self) -> None:
        with tempfile.TemporaryDirectory() as folder:
            table = pathlib.Path(folder) / "t.toml"
            for text, complaint in self.WRONG.items():
                table.write_text(text, encoding="utf-8")
                done = subprocess.run([SHIPPED / "permissions", table], check=False, capture_output=True, text=True)
                self.assertEqual((done.returncode, done.stdout), (1, ""), text)
                self.assertIn(complaint, done.stderr, text)

    def test_the_shipped_table_is_one(self) -> None:
        self.assertIn("user operator\n", permissions(SHIPPED / "pon-permissions.toml"))


if __name__ == "__main__":
    unittest.main()
