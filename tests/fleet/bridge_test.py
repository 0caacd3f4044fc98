#!/usr/bin/python3
"""Holds a real bridge behind a real broker to what is promised to whoever speaks MQTT 5, with programs of mosquitto.

bridge_test.py PONSIM PONBRIDGE PONCTL
"""

import json
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from broker import PATIENCE, patiently  # noqa: E402
from rig import Olt, Rig  # noqa: E402

DESCRIBE = "BSP_CMD_ONU_DESCRIPTION_SET"


def question(onu: int = 2) -> dict:
    return {"call": {"operation": "bsp_pon_get_w_onu_spec_id", "arguments": {"pon_port": 1, "onu_id": onu}}}


def change(identifier: str | None, text: str, onu: int = 2) -> dict:
    asked = {"call": {"operation": "bsp_pon_onu_description", "arguments": {"pon_port": 1, "onu_id": onu, "text": text}}}
    return asked if identifier is None else {"id": identifier, **asked}


def release(identifier: str, onu: int) -> dict:
    arguments = {"pon_port": 1, "onu_id": onu}
    return {"id": identifier, "call": {"operation": "bsp_pon_no_bind_onu_spec_id", "arguments": arguments}}


class Listener:
    """What comes on a topic, a line for each message."""

    def __init__(self, rig: Rig, client: str, topic: str) -> None:
        command = ["mosquitto_sub", *rig.broker.words_of(client), "-t", topic, "-F", "%t %p", "-d"]
        command = ["timeout", str(4 * PATIENCE), "stdbuf", "-oL", *command]
        self.running = subprocess.Popen(command, stdout=subprocess.PIPE, text=True)
        for line in self.running.stdout:
            if line.startswith("Subscribed"):
                return
        raise AssertionError(f"nothing is told about {topic}")

    def next(self) -> dict:
        return json.loads(self.message()[1])

    def message(self) -> tuple[str, str]:
        for line in self.running.stdout:
            if re.match(r"pon/\S+ ", line):
                topic, text = line.rstrip("\n").split(" ", 1)
                return topic, text
        raise AssertionError("it ended without a message")

    def end(self) -> None:
        self.running.terminate()
        self.running.wait(timeout=PATIENCE)
        self.running.stdout.close()


class BridgeTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls) -> None:
        cls.folder = tempfile.TemporaryDirectory(prefix="rig")
        cls.rig = Rig(PROGRAMS, pathlib.Path(cls.folder.name) / "r", olts=4, onus=8, bridges=1)
        cls.addClassCleanup(cls.folder.cleanup)
        cls.addClassCleanup(cls.rig.end)
        cls.rig.start()
        cls.olt: Olt = cls.rig.olts[0]

    def ask(self, asked: dict, impact: str, client: str = "operator", olt: str = "", *more: str) -> dict:
        """Sends a request as any program can, and returns its answer."""
        olt = olt or self.olt.name
        command = ["mosquitto_rr", *self.rig.broker.words_of(client), "-t", f"pon/olt/{olt}/call/{impact}/{client}"]
        command += ["-e", f"pon/client/{client}/session-1", "-m", json.dumps(asked), "-W", str(PATIENCE), *more]
        done = subprocess.run(command, capture_output=True, text=True, check=False, timeout=2 * PATIENCE)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return json.loads(done.stdout)

    def publish(self, asked: dict, impact: str, client: str, reply: str, *more: str) -> None:
        topic = f"pon/olt/{self.olt.name}/call/{impact}/{client}"
        properties = ["-D", "publish", "response-topic", reply, "-D", "publish", "correlation-data", "c"]
        self.assertTrue(self.rig.broker.publish(client, topic, json.dumps(asked), *properties, *more))

    def listener(self, client: str, topic: str) -> Listener:
        listener = Listener(self.rig, client, topic)
        self.addCleanup(listener.end)
        return listener

    def described(self, onu: int = 2) -> str:
        listed = self.rig.directly(self.olt, "-o", "json", "onu", "list", "1", "--where", f"onu_id={onu}")
        return json.loads(listed)[0]["description"]

    def assert_problem(self, answer: dict, problem: str) -> None:
        self.assertEqual(answer.get("problem"), problem, answer)

    def test_a_question_is_answered(self) -> None:
        outcome = self.ask(question(), "read", "monitor")["outcome"]
        self.assertEqual(outcome["status_name"], "BSP_OK")
        self.assertEqual(outcome["operation"], "bsp_pon_get_w_onu_spec_id")

    def test_a_change_is_made_once_however_often_it_comes(self) -> None:
        before = self.olt.writes(DESCRIBE)
        answers = self.listener("twice", "pon/client/twice/#")
        self.publish(change("once-1", "first"), "write", "twice", "pon/client/twice/s", "--repeat", "3")
        said = [answers.next() for _ in range(3)]
        self.assertEqual(said[0]["outcome"]["status_name"], "BSP_OK")
        self.assertEqual(said[1:], said[:1] * 2)
        self.assertEqual((self.described(), self.olt.writes(DESCRIBE)), ("first", before + 1))
        # The same id for something else is a mistake, and nothing is done.
        self.assert_problem(self.ask(change("once-1", "second"), "write"), "wrong")
        # A bridge that was killed remembers.
        self.rig.bridges["hut-1"].end(signal.SIGKILL)
        self.rig.bridges["hut-1"].launch()
        self.rig.bridges["hut-1"].await_ready()
        self.assertEqual(self.ask(change("once-1", "first"), "write")["outcome"]["status_name"], "BSP_OK")
        self.assertEqual((self.described(), self.olt.writes(DESCRIBE)), ("first", before + 1))

    def test_nobody_does_more_than_the_class_of_the_topic(self) -> None:
        before = self.described()
        self.assert_problem(self.ask(change("high-1", "no"), "read"), "refused")
        self.assert_problem(self.ask(change("high-2", "no"), "read", "monitor"), "refused")
        self.assert_problem(self.ask(release("high-3", 2), "write"), "refused")
        self.assertEqual(self.described(), before)
        self.assertEqual(self.ask(release("high-4", 8), "service-affecting")["outcome"]["status_name"], "BSP_OK")

    def test_what_is_wrong_is_said_and_nothing_is_done(self) -> None:
        self.assert_problem(self.ask(change(None, "no"), "write"), "wrong")
        self.assert_problem(self.ask({"call": {"operation": "bsp_pon_there_is_none"}}, "read"), "wrong")
        self.assert_problem(self.ask({"call": []}, "read"), "wrong")
        self.assert_problem(self.ask({}, "read"), "wrong")

    def test_an_answer_goes_to_whoever_asked_and_to_nobody_else(self) -> None:
        others = self.listener("monitor", "pon/client/#")
        own = self.listener("twice", "pon/client/#")
        # The second request is answered, so the first one was not: they come to the same OLT one after the other.
        self.publish(change("other-1", "no"), "write", "twice", "pon/client/monitor/s")
        self.publish(question(), "read", "twice", "pon/client/twice/s")
        self.assertIn("outcome", own.next())
        self.publish(question(), "read", "monitor", "pon/client/monitor/end")
        self.assertEqual(others.message()[0], "pon/client/monitor/end")
        self.assertNotEqual(self.described(), "no")

    def test_who_did_what_is_told_and_kept(self) -> None:
        audit = self.listener("monitor", f"pon/olt/{self.olt.name}/audit")
        self.ask(change("audit-1", "audited"), "write")
        entry = audit.next()
        self.assertIn("operator", json.dumps(entry))
        self.assertIn(DESCRIBE, json.dumps(entry))
        self.assertNotIn("audited", json.dumps(entry))
        self.ask(change("audit-2", "no"), "read", "monitor")
        self.assertIn("monitor", json.dumps(audit.next()))

    def test_a_request_that_was_kept_by_the_broker_is_not_executed_later(self) -> None:
        topic = f"pon/olt/{self.olt.name}/call/write/twice"
        before = self.described()
        self.rig.bridges["hut-1"].end()
        self.assertTrue(self.rig.broker.publish("twice", topic, json.dumps(change("kept-1", "kept")), "-r"))
        self.rig.bridges["hut-1"].launch()
        self.rig.bridges["hut-1"].await_ready()
        self.ask(question(), "read")
        self.assertEqual(self.described(), before)
        self.assertTrue(self.rig.broker.publish("twice", topic, "", "-r"))

    def test_it_is_told_whether_a_bridge_is_there(self) -> None:
        states = self.listener("monitor", "pon/bridge/hut-1/state")
        bridge = self.rig.bridges["hut-1"]
        for how in (signal.SIGTERM, signal.SIGKILL):
            bridge.end(how)
            patiently(lambda: states.next()["state"], lambda state: state == "offline")
            bridge.launch()
            patiently(lambda: states.next()["state"], lambda state: state == "online")

    def test_it_comes_back_when_the_broker_does_and_tells_all_again(self) -> None:
        self.rig.broker.end(signal.SIGKILL)
        for file in self.rig.broker.folder.glob("mosquitto.db*"):
            file.unlink()
        self.rig.broker.start()
        self.rig.await_answers({olt.name for olt in self.rig.olts})
        self.assertIn("outcome", self.ask(question(), "read"))


if __name__ == "__main__":
    PROGRAMS = dict(zip(("ponsim", "ponbridge", "ponctl"), sys.argv[1:4]))
    unittest.main(argv=sys.argv[:1] + sys.argv[4:])
