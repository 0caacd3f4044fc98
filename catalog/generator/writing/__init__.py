"""This package writes what is generated. Each module writes one file."""
