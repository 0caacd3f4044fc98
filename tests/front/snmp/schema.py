"""What the core of SNMP has, as its program prints it."""

import subprocess


class Schema:
    def __init__(self, program):
        self.tables, self.columns, self.events, self.notifications, self.writable = {}, {}, {}, {}, set()
        self.words = {}  # of enumerations, by the names of their objects
        lines = subprocess.run([program], check=True, capture_output=True, text=True).stdout.splitlines()
        for kind, oid, name, of in (line.split(" ") for line in lines):
            if kind in ("own", "standard"):
                index = []
                for part in of.split(";"):
                    index_name, width, *words = part.split(":")
                    index.append((index_name, int(width)))
                    if words:
                        self.words[index_name] = words[0].split(",")
                self.tables[name] = {"oid": oid, "index": index, "own": kind == "own"}
                table = name
            elif kind == "column":
                of, *words = of.split(":")
                self.columns[oid] = {"name": name, "type": of, "table": table}
                if words:
                    self.words[name] = words[0].split(",")
            elif kind == "event":
                self.events[oid] = {"name": name, "type": of}
            elif kind == "notification":
                self.notifications[oid] = name
            else:
                self.writable.add(oid)
