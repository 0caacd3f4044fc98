"""This module has what the writers share."""

GENERATED = "generated from the catalogue by catalog/generate.py; change the catalogue, not this file"


def quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def flag(value):
    return "true" if value else "false"
