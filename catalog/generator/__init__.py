"""Reads the catalogue's TOML files and writes what is generated from them."""
