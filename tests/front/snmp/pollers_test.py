"""Checks that what pollers read is what the core of SNMP has.

pollers_test.py SCHEMA-PROGRAM FOLDER-OF-SNMP
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest
import uuid

import yaml

from schema import Schema

PROGRAM, FOLDER = sys.argv[1:3]
SCHEMA = Schema(PROGRAM)
NAMES = {column["name"]: oid for oid, column in SCHEMA.columns.items()}
NUMBERS = {"integer", "gauge32", "counter32", "counter64", "time_ticks"}
COUNTERS = {"counter32", "counter64"}


def path(name):
    return os.path.join(FOLDER, "pollers", name)


def read(name):
    with open(path(name), encoding="utf-8") as file:
        return yaml.safe_load(file)


def table_of(oid):
    """Returns the table that a column belongs to."""
    return SCHEMA.tables[SCHEMA.columns[oid]["table"]]


class Exporter(unittest.TestCase):
    """The module of prometheus-snmp-exporter."""

    TYPES = {"gauge": NUMBERS - COUNTERS, "counter": COUNTERS, "DisplayString": {"octets"}, "PhysAddress48": {"octets"}}

    def setUp(self):
        self.module = read("snmp_exporter.yml")["bsp_pon"]

    def load(self, file):
        return subprocess.run(["prometheus-snmp-exporter", "--config.file", file, "--dry-run"], capture_output=True,
                              text=True, timeout=60)

    def test_is_loaded(self):
        done = self.load(path("snmp_exporter.yml"))
        self.assertEqual(done.returncode, 0, done.stderr)

    def test_would_not_be_loaded_with_a_key_that_is_wrong(self):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "snmp.yml")
            with open(path("snmp_exporter.yml"), encoding="utf-8") as good, open(file, "w", encoding="utf-8") as bad:
                bad.write(good.read().replace("  metrics:", "  metrix:"))
            self.assertNotEqual(self.load(file).returncode, 0)

    def test_walks_tables(self):
        tables = {table["oid"].rsplit(".", 1)[0] for table in SCHEMA.tables.values()}
        self.assertLessEqual(set(self.module["walk"]), tables)

    def test_has_metrics_of_columns_that_are_walked(self):
        for metric in self.module["metrics"]:
            column = SCHEMA.columns[metric["oid"]]
            self.assertEqual(metric["name"], column["name"])
            self.assertIn(column["type"], self.TYPES[metric["type"]], metric["name"])
            self.assertIn(table_of(metric["oid"])["oid"].rsplit(".", 1)[0], self.module["walk"])
            self.assertEqual([(index["labelname"], index["type"]) for index in metric["indexes"]],
                             [(name, "gauge") for name, width in table_of(metric["oid"])["index"]])
            for lookup in metric.get("lookups", []):
                self.assertEqual(SCHEMA.columns[lookup["oid"]]["name"], lookup["labelname"])
                self.assertEqual(lookup["labels"], [name for name, _ in table_of(lookup["oid"])["index"]])


class LibreNms(unittest.TestCase):
    """The definitions of LibreNMS."""

    CLASSES = {"count", "current", "dbm", "state", "temperature", "voltage"}
    KEYS = {"oid", "value", "num_oid", "index", "descr", "group", "divisor", "low_limit", "low_warn_limit",
            "state_name", "states"}

    def setUp(self):
        self.discovery = read("librenms.yaml")

    def sensors(self):
        for kind, sensors in self.discovery["modules"]["sensors"].items():
            for sensor in sensors["data"]:
                yield kind, sensor

    def test_has_the_keys_of_discovery(self):
        self.assertEqual(set(self.discovery), {"mib", "modules"})
        self.assertEqual(set(self.discovery["modules"]), {"os", "sensors"})
        self.assertLessEqual(set(self.discovery["modules"]["sensors"]), self.CLASSES)
        for _, sensor in self.sensors():
            self.assertLessEqual(set(sensor), self.KEYS)
            self.assertLessEqual({"oid", "value", "num_oid", "index", "descr"}, set(sensor))

    def test_has_sensors_of_columns_that_are_numbers(self):
        for _, sensor in self.sensors():
            oid = NAMES[sensor["value"]]
            self.assertEqual(sensor["num_oid"], f".{oid}.{{{{ $index }}}}")
            self.assertEqual(sensor["oid"] + "Entry", SCHEMA.columns[oid]["table"].replace("Entry", "Table") + "Entry")
            self.assertIn(SCHEMA.columns[oid]["type"], NUMBERS - COUNTERS)
            arcs = sum(width for _, width in table_of(oid)["index"])
            for number in re.findall(r"\$subindex(\d+)", sensor["descr"]):
                self.assertLess(int(number), arcs)
            for name in re.findall(r"\$(bsp\w+)", sensor["descr"]):
                self.assertEqual(SCHEMA.columns[NAMES[name]]["table"], SCHEMA.columns[oid]["table"])

    def test_keeps_sensors_apart(self):
        indexes = [(kind, sensor["index"]) for kind, sensor in self.sensors()]
        self.assertEqual(len(indexes), len(set(indexes)))

    def test_says_what_states_mean(self):
        for kind, sensor in self.sensors():
            self.assertEqual(kind == "state", "states" in sensor)
            for state in sensor.get("states", []):
                self.assertEqual(set(state), {"value", "generic", "graph", "descr"})
                self.assertIn(state["generic"], range(4))

    def test_names_what_the_device_is(self):
        for oid in self.discovery["modules"]["os"].values():
            module, name = oid.split("::")
            self.assertEqual(module, "BSP-PON-MIB")
            self.assertEqual(SCHEMA.columns[NAMES[name.removesuffix(".1")]]["type"], "octets")
        device = read("librenms.os.yaml")
        self.assertEqual(device["os"], "bsp-pon")
        self.assertLessEqual({"os", "text", "type", "discovery"}, set(device))
        for condition in device["discovery"]:
            self.assertIn(condition["snmpwalk"]["oid"].split("::")[1], NAMES)


class Zabbix(unittest.TestCase):
    """The template of Zabbix."""

    TYPES = {"UNSIGNED": NUMBERS, "FLOAT": NUMBERS, "CHAR": {"octets"}}
    ITEM = {"uuid", "name", "type", "snmp_oid", "key", "delay", "value_type", "trends", "units", "valuemap",
            "preprocessing", "trigger_prototypes"}

    def setUp(self):
        self.exported = read("zabbix.yaml")["zabbix_export"]
        self.template = self.exported["templates"][0]
        self.rules = self.template["discovery_rules"]

    def items(self):
        return [item for rule in self.rules for item in rule["item_prototypes"]]

    def test_has_the_keys_of_an_export(self):
        self.assertEqual(set(self.exported), {"version", "date", "groups", "templates"})
        self.assertEqual(set(self.template),
                         {"uuid", "template", "name", "description", "groups", "discovery_rules", "valuemaps"})
        for rule in self.rules:
            self.assertEqual(set(rule), {"uuid", "name", "type", "snmp_oid", "key", "delay", "item_prototypes"})
        for item in self.items():
            self.assertLessEqual(set(item), self.ITEM)
            self.assertEqual(item["type"], "SNMP_AGENT")
            self.assertIn("[{#SNMPINDEX}]", item["key"])
            for step in item.get("preprocessing", []):
                self.assertIn(step["type"], {"MULTIPLIER", "CHANGE_PER_SECOND"})

    def test_has_ids_of_its_own(self):
        with open(path("zabbix.yaml"), encoding="utf-8") as file:
            ids = re.findall(r"uuid: (\w+)", file.read())
        self.assertEqual(len(ids), len(set(ids)))
        for text in ids:
            self.assertEqual((uuid.UUID(text).version, uuid.UUID(text).hex), (4, text))
        keys = [item["key"] for item in self.items()] + [rule["key"] for rule in self.rules]
        self.assertEqual(len(keys), len(set(keys)))

    def test_finds_rows_by_columns(self):
        for rule in self.rules:
            words = re.fullmatch(r"discovery\[(.*)\]", rule["snmp_oid"]).group(1).split(",")
            self.assertTrue(words and len(words) % 2 == 0)
            for macro, oid in zip(words[::2], words[1::2]):
                self.assertRegex(macro, r"^\{#[A-Z]+\}$")
                self.assertIn(oid, SCHEMA.columns)
            macros = set(words[::2]) | {"{#SNMPINDEX}"}
            for item in rule["item_prototypes"]:
                self.assertLessEqual(set(re.findall(r"\{#\w+\}", str(item))), macros)
                # Rows of other tables would have other indexes.
                column = item["snmp_oid"].removesuffix(".{#SNMPINDEX}")
                self.assertEqual(SCHEMA.columns[column]["table"], SCHEMA.columns[words[1]]["table"])

    def test_has_items_of_columns_of_the_right_type(self):
        for item in self.items():
            column = SCHEMA.columns[item["snmp_oid"].removesuffix(".{#SNMPINDEX}")]
            self.assertIn(column["type"], self.TYPES[item.get("value_type", "UNSIGNED")], item["key"])
            steps = {step["type"] for step in item.get("preprocessing", [])}
            self.assertEqual("CHANGE_PER_SECOND" in steps, column["type"] in COUNTERS, item["key"])
            if item.get("value_type", "UNSIGNED") == "UNSIGNED":
                self.assertNotIn("0.01", str(item.get("preprocessing")))

    def test_has_triggers_and_meanings_that_are_there(self):
        keys = {item["key"] for item in self.items()}
        meanings = {meaning["name"] for meaning in self.template["valuemaps"]}
        for item in self.items():
            if "valuemap" in item:
                self.assertIn(item["valuemap"]["name"], meanings)
            for trigger in item.get("trigger_prototypes", []):
                template, key = re.match(r"last\(/([^/]+)/(.+)\)[=<>]", trigger["expression"]).groups()
                self.assertEqual(template, self.template["template"])
                self.assertIn(key, keys)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
