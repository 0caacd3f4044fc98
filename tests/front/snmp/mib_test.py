"""Compares BSP-PON-MIB, and the standards of others, with what the core of SNMP has.

mib_test.py SCHEMA-PROGRAM FOLDER-OF-THE-MIB
"""

import os
import re
import subprocess
import sys
import tempfile
import unittest

from schema import Schema

PROGRAM, FOLDER = sys.argv[1:3]
MIB = os.path.join(FOLDER, "BSP-PON-MIB.txt")
MODULES = os.path.join(os.path.dirname(os.path.abspath(__file__)), "mibs")

# The type of the core for a base type of the structure of management information.
TYPES = {"Integer32": "integer", "Enumeration": "integer", "OctetString": "octets", "ObjectIdentifier": "oid",
         "Unsigned32": "gauge32", "Gauge32": "gauge32", "Counter32": "counter32", "Counter64": "counter64",
         "TimeTicks": "time_ticks"}
IETF = "/usr/lib/python3/dist-packages/pysnmp_mibs"
# And for the names of types in modules of IETF.
BASES = {"Integer": "integer", "Integer32": "integer", "InterfaceIndex": "integer", "IANAifType": "integer",
         "TruthValue": "integer", "PhysicalIndex": "integer", "PhysicalIndexOrZero": "integer",
         "PhysicalClass": "integer", "EntitySensorDataType": "integer", "EntitySensorDataScale": "integer",
         "EntitySensorPrecision": "integer", "EntitySensorValue": "integer", "EntitySensorStatus": "integer",
         "OctetString": "octets", "DisplayString": "octets", "PhysAddress": "octets", "MacAddress": "octets",
         "SnmpAdminString": "octets", "DateAndTime": "octets", "ObjectIdentifier": "oid", "AutonomousType": "oid",
         "Unsigned32": "gauge32", "Gauge32": "gauge32", "Counter32": "counter32", "Counter64": "counter64",
         "TimeTicks": "time_ticks", "TimeStamp": "time_ticks"}
STANDARDS = ["IF-MIB", "ENTITY-MIB", "ENTITY-SENSOR-MIB", "BRIDGE-MIB", "Q-BRIDGE-MIB", "DOT3-EPON-MIB"]


def smi(tool, *arguments):
    return subprocess.run([tool, "-c", "/dev/null", *arguments], capture_output=True, text=True,
                          env={**os.environ, "SMIPATH": MODULES}, timeout=60)


def lint(file):
    done = smi("smilint", "-s", "-l", "6", file)
    return done.stdout + done.stderr


def read_mib():
    text = smi("smidump", "-f", "python", MIB).stdout
    values = {}
    exec(text, values)  # smidump writes a program that sets this one variable
    return values["MIB"]


class Module(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.schema = Schema(PROGRAM)
        cls.mib = read_mib()
        cls.nodes = cls.mib["nodes"]

    def base_type(self, syntax):
        """Returns the base type of the syntax of a node; types of the base modules have names of their own."""
        kind = syntax["type"]
        while True:
            if kind.get("module") in ("", None) and "basetype" in kind:
                return kind["basetype"]
            if kind.get("module") == "BSP-PON-MIB":
                kind = self.mib["typedefs"][kind["name"]]
                if "parent module" in kind:
                    kind = {"module": kind["parent module"]["name"], "name": kind["parent module"]["type"]}
                continue
            return {"MacAddress": "OctetString", "DateAndTime": "OctetString", "TruthValue": "Enumeration",
                    "TimeStamp": "TimeTicks"}.get(kind["name"], kind["name"])

    def test_has_nothing_to_complain_of(self):
        self.assertEqual(lint(MIB), "")

    def test_would_be_complained_of(self):
        with open(MIB, encoding="ascii") as file:
            text = file.read()
        with tempfile.TemporaryDirectory() as folder:
            broken = os.path.join(folder, "BSP-PON-MIB.txt")
            with open(broken, "w", encoding="ascii") as file:
                file.write(text.replace("OBJECTS     { bspOltName,", "OBJECTS     {", 1))
            self.assertIn("bspOltName", lint(broken))

    def test_has_the_tables_of_the_core_and_their_indexes(self):
        mine = {name: (table["oid"], table["index"]) for name, table in self.schema.tables.items() if table["own"]}
        entries = {}
        for name, node in self.nodes.items():
            if node["nodetype"] == "row":
                index = [(one, 6 if self.base_type(self.nodes[one]["syntax"]) == "OctetString" else 1)
                         for one in node["linkage"]]
                entries[name] = (node["oid"], index)
        self.assertEqual(entries, mine)

    def test_has_the_columns_of_the_core_with_their_types(self):
        mine = {column["name"]: (oid, column["type"]) for oid, column in self.schema.columns.items()
                if self.schema.tables[column["table"]]["own"]}
        columns = {name: (node["oid"], TYPES[self.base_type(node["syntax"])]) for name, node in self.nodes.items()
                   if node["nodetype"] == "column" and node["access"] != "noaccess"}
        self.assertEqual(columns, mine)

    def test_has_the_words_of_the_core_for_states(self):
        for name, words in self.schema.words.items():
            kind = self.nodes[name]["syntax"]["type"]
            labels = {int(value["number"]): label for label, value in kind.items() if isinstance(value, dict)
                      and value.get("nodetype") == "namednumber"}
            self.assertEqual(labels, dict(enumerate(words, 1)), name)
        self.assertGreater(len(self.schema.words), 6)

    def test_says_which_columns_can_be_set(self):
        columns = {node["oid"] for node in self.nodes.values() if node.get("access") == "readwrite"}
        self.assertEqual(columns, self.schema.writable)

    def test_has_the_objects_of_notifications(self):
        objects = {node["oid"]: (name, TYPES[self.base_type(node["syntax"])]) for name, node in self.nodes.items()
                   if node.get("access") == "notifyonly"}
        self.assertEqual(objects, {oid: (event["name"], event["type"]) for oid, event in self.schema.events.items()})

    def test_has_the_notifications_and_what_they_always_have(self):
        always = [event["name"] for event in self.schema.events.values()][:-1]
        notifications = {node["oid"]: name for name, node in self.mib["notifications"].items()}
        self.assertEqual(notifications, self.schema.notifications)
        for name, node in self.mib["notifications"].items():
            self.assertEqual(list(node["objects"]), always, name)

    def test_says_the_unit_of_what_is_counted_or_measured(self):
        for name, node in self.nodes.items():
            if node["nodetype"] == "column" and self.base_type(node["syntax"]) in ("Counter64", "Gauge32"):
                self.assertIn("units", node, name)

    def test_can_be_read_by_the_tools_of_net_snmp(self):
        # The tools say it on their error output when they make this folder, so they find it.
        with tempfile.TemporaryDirectory() as kept:
            os.mkdir(os.path.join(kept, "cert_indexes"))
            done = subprocess.run(["snmptranslate", "-M", MODULES + ":" + FOLDER, "-m", "BSP-PON-MIB", "-On",
                                   "BSP-PON-MIB::bspOnuState"], capture_output=True, text=True,
                                  env={**os.environ, "SNMP_PERSISTENT_DIR": kept}, timeout=60)
        self.assertEqual((done.stdout, done.stderr), (".1.3.6.1.4.1.8072.9999.9999.1.4.1.4\n", ""))


class Standards(unittest.TestCase):
    """Debian's package of the modules of IETF has them as programs, of which these lines are read:

    ifMtu = MibTableColumn((1, 3, 6, 1, 2, 1, 2, 2, 1, 4), Integer32()).setMaxAccess("readonly")
    ifEntry = MibTableRow((1, 3, 6, 1, 2, 1, 2, 2, 1)).setIndexNames((0, "IF-MIB", "ifIndex"))
    """

    @classmethod
    def setUpClass(cls):
        cls.schema = Schema(PROGRAM)
        cls.rows, cls.columns = {}, {}
        for module in STANDARDS:
            with open(os.path.join(IETF, module + ".py"), encoding="utf-8") as file:
                for line in file:
                    found = re.match(r"(\w+) = MibTable(Row|Column)\(\(([0-9, ]+)\)(?:, (\w+)\()?", line)
                    if not found:
                        continue
                    name, kind, oid, syntax = found.groups()
                    oid = oid.replace(", ", ".")
                    if kind == "Row":
                        cls.rows[name] = (oid, re.findall(r'\(\d, "[^"]+", "(\w+)"\)', line))
                    else:
                        cls.columns[name] = (oid, BASES.get(syntax, syntax), re.search(r'setMaxAccess\("(\w+)"\)', line).group(1))

    def test_have_the_tables_of_the_core_and_their_indexes(self):
        augmented = {"ifXEntry": ["ifIndex"]}
        for name, table in self.schema.tables.items():
            if not table["own"]:
                oid, index = self.rows[name]
                self.assertEqual(oid, table["oid"])
                self.assertEqual(index or augmented[name], [of for of, _ in table["index"]])

    def test_have_the_columns_of_the_core_with_their_types(self):
        compared = 0
        for oid, column in self.schema.columns.items():
            if not self.schema.tables[column["table"]]["own"]:
                mine = (oid, column["type"])
                self.assertEqual(self.columns[column["name"]][:2], mine, column["name"])
                self.assertNotEqual(self.columns[column["name"]][2], "noaccess", column["name"])
                compared += 1
        self.assertGreater(compared, 50)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
