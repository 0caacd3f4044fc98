"""This module knows the files that the generator reads and writes."""


class Checkout:
    """This class reads and writes the files by their paths from the root."""

    def __init__(self, root):
        self.root = root

    def inputs(self, folder):
        return [str(path.relative_to(self.root)) for path in sorted((self.root / folder).glob("*.toml"))]

    def read(self, name):
        return (self.root / name).read_text(encoding="utf-8")

    def write(self, name, text):
        (self.root / name).parent.mkdir(parents=True, exist_ok=True)
        (self.root / name).write_text(text, encoding="utf-8")
