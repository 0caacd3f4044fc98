"""This package writes the reference. Each module writes the pages of one kind."""
