"""The entries of the TOML files, read and checked, one module a kind."""
