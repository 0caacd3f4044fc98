"""Makes the page of the web console: bundles scripts and styles, and writes them as a source of the daemon.

    bundle.py ESBUILD SOURCES WORK OUTPUT

SOURCES is the folder of the page, WORK one for what is in between, OUTPUT the source in C++. Scripts and styles have
names that follow from their bytes, so that a browser keeps them for good; only index.html is asked for again.
"""

import gzip
import hashlib
import os
import pathlib
import subprocess
import sys

TYPES = {
    ".css": "text/css; charset=utf-8",
    ".html": "text/html; charset=utf-8",
    ".js": "text/javascript; charset=utf-8",
    ".svg": "image/svg+xml",
}
# Where Debian's packages keep modules for bundling, and libraries for browsers.
MODULES = ["/usr/lib/nodejs", "/usr/share/nodejs", "/usr/share/javascript"]


def bundle(esbuild: str, sources: pathlib.Path, work: pathlib.Path) -> None:
    options = ["--bundle", "--minify", "--charset=utf8", "--target=es2020", "--log-level=warning"]
    # Mithril looks for what Node calls "global".
    options.append("--define:global=window")
    subprocess.run(
        [esbuild, *options, f"--outdir={work}", "src/main.ts"],
        cwd=sources,
        env={**os.environ, "NODE_PATH": ":".join(MODULES)},
        check=True,
    )


def hashed_name(name: str, content: bytes) -> str:
    stem, suffix = os.path.splitext(name)
    return f"{stem}-{hashlib.sha256(content).hexdigest()[:12]}{suffix}"


def files_of(sources: pathlib.Path, work: pathlib.Path) -> dict[str, bytes]:
    """Returns what is served, by its path. In index.html the names of the others stand as they are served."""
    index = (sources / "index.html").read_text(encoding="utf-8")
    files = {}
    for name, folder in (("main.js", work), ("main.css", work), ("icon.svg", sources)):
        content = (folder / name).read_bytes()
        served = f"/assets/{hashed_name(name, content)}"
        assert index.count(f'"{name}"') == 1, f"index.html does not name {name} once"
        index = index.replace(f'"{name}"', f'"{served}"')
        files[served] = content
    files["/"] = index.encode()
    return files


def literal_of(content: bytes) -> str:
    lines = [content[at : at + 40] for at in range(0, len(content), 40)]
    return "\n".join('    "' + "".join(f"\\{byte:03o}" for byte in line) + '"' for line in lines)


def source_of(files: dict[str, bytes]) -> str:
    lines = ['#include "page/page.h"', "", "#include <array>", "", "namespace front", "{", "namespace", "{", ""]
    rows = []
    for number, (path, content) in enumerate(sorted(files.items())):
        packed = gzip.compress(content, 9, mtime=0)
        lines += [f"constexpr char content_{number}[] =", literal_of(packed) + ";", ""]
        media = TYPES[pathlib.PurePath(path).suffix or ".html"]
        is_hashed = "true" if path.startswith("/assets/") else "false"
        rows.append(f'    PageFile{{"{path}", "{media}", {{content_{number}, {len(packed)}}}, {is_hashed}}},')
    lines += [f"constexpr std::array<PageFile, {len(rows)}> files{{{{", *rows, "}};", "", "} // namespace", ""]
    lines += ["std::span<const PageFile> page_files()", "{", "    return files;", "}", "", "} // namespace front", ""]
    return "\n".join(lines)


def main(esbuild: str, sources: str, work: str, output: str) -> None:
    os.makedirs(work, exist_ok=True)
    bundle(esbuild, pathlib.Path(sources), pathlib.Path(work))
    pathlib.Path(output).write_text(source_of(files_of(pathlib.Path(sources), pathlib.Path(work))), encoding="utf-8")


if __name__ == "__main__":
    main(*sys.argv[1:])
