"""This package writes what the Python bindings have of the catalogue."""
