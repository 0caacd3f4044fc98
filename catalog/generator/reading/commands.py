"""This module reads status words and commands."""

from .entry import add, entries

CLASSES = {"read": "read", "write": "write", "service-affecting": "service_affecting"}
CALLS = {"set": "set", "get": "get", "dgram-set": "dgram_set", "dgram-get": "dgram_get"}


def read_statuses(catalogue, file):
    for status in entries(file, catalogue.load(file), "status", ["name", "value", "origin", "brief"]):
        status.value, status.brief = status.number("value"), status.text("brief")
        status.of_library = status.choice("origin", ["library", "service"]) == "library"
        if any(other.value == status.value for other in catalogue.statuses.values()):
            status.fail(f"value {status.value} is taken by another status")
        add(catalogue.statuses, status)


def read_commands(catalogue, file, table):
    for command in entries(file, table, "command", ["name", "code", "channel", "class", "brief"], ["call", "twin"]):
        command.code, command.brief = command.number("code"), command.text("brief")
        command.channel = command.lookup("channel", catalogue.channels)
        command.impact = CLASSES[command.choice("class", CLASSES)]
        if not command.name.startswith("BSP_CMD_"):
            command.fail("the name must start with BSP_CMD_")
        command.call = CALLS[command.choice("call", CALLS)] if command.get("call") else None
        twin = command.lookup("twin", catalogue.commands) if command.get("twin") else None
        if twin and (twin.code, twin.channel) != (command.code, command.channel):
            command.fail(f"'twin' names {twin.name}, which has another code or channel")
        for other in catalogue.commands.values():
            if other is not twin and (other.code, other.channel) == (command.code, command.channel) and (
                    not command.call or not other.call or command.call == other.call):
                command.fail(f"code {command.code} is {other.name} on this channel; two that share a code state the "
                             "'call' that each is for or, where nothing tells them apart, one its 'twin'")
        add(catalogue.commands, command)
