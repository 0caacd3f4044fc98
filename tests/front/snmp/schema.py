"""What the core of SNMP has, as its program prints it."""

import subprocess


class Schema:
    def __init__(self, program):
        self.tables, self.columns, self.events, self.notifications, self.writable = {}, {}, {}, {}, set()
        lines = subprocess.run([program], check=True, capture_output=True, text=True).stdout.splitlines()
        for kind, oid, name, of in (line.split(" ") for line in lines):
            if kind in ("own", "standard"):
                index = [(part.split(":")[0], int(part.split(":")[1])) for part in of.split(",")]
                self.tables[name] = {"oid": oid, "index": index, "own": kind == "own"}
                table = name
            elif kind == "column":
                self.columns[oid] = {"name": name, "type": of, "table": table}
            elif kind == "event":
                self.events[oid] = {"name": name, "type": of}
            elif kind == "notification":
                self.notifications[oid] = name
            else:
                self.writable.add(oid)
