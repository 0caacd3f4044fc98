"""Checks that the picture of ponctl shows what a page shows, which another test has typed.

    picture_test.py PAGE COMMAND PICTURE

With WRITE_TYPED=1 in its environment it writes the picture.
"""

import os
import pathlib
import sys
from xml.sax.saxutils import escape

WIDTH, HEIGHT, MARGIN = 8.4, 18, 20  # of a letter and a line, and around them
STYLE = """  <style>
    rect { fill: #1b2026; }
    text { font: 14px monospace; fill: #d7dfe6; white-space: pre; }
    .typed { fill: #8cc9a1; font-weight: bold; }
  </style>"""


def block_of(page, command):
    """Returns the line with the command, and what stands below it."""
    lines = page.read_text(encoding="utf-8").splitlines()
    start = lines.index(f"$ {command}")
    end = next(at for at in range(start + 1, len(lines)) if lines[at].startswith(("$ ", "```")))
    return lines[start:end]


def row_of(at, line):
    kind, top = "printed" if at else "typed", MARGIN + HEIGHT * at + 13
    return f'  <text class="{kind}" x="{MARGIN}" y="{top}" xml:space="preserve">{escape(line)}</text>'


def picture_of(lines):
    width = round(2 * MARGIN + WIDTH * max(map(len, lines)))
    height = 2 * MARGIN + HEIGHT * len(lines)
    title = f"A terminal: {lines[0].removeprefix('$ ')}, and what it prints"
    rows = [row_of(at, line) for at, line in enumerate(lines) if line]
    return "\n".join([f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width} {height}" width="{width}" height="{height}" '
                      'role="img" aria-labelledby="title">', f'  <title id="title">{escape(title)}</title>', STYLE,
                      f'  <rect width="{width}" height="{height}" rx="8"/>', *rows, "</svg>", ""])


def main():
    page, command, picture = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    made = picture_of(block_of(page, command))
    if os.environ.get("WRITE_TYPED"):
        picture.write_text(made, encoding="utf-8")
    if not picture.exists() or picture.read_text(encoding="utf-8") != made:
        print(f"{picture} does not show what {page} does; run this test with WRITE_TYPED=1 in its environment", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
