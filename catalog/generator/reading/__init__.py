"""This package reads and checks the entries of the TOML files. Each module reads one kind."""
