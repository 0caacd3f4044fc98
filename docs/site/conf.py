"""Configures Sphinx for the site."""

# pylint: disable=invalid-name
project = "bsp_pon"
extensions = ["myst_parser"]
root_doc = "index"
html_theme = "furo"
html_title = "bsp_pon"
html_show_copyright = False
html_show_sourcelink = False
html_copy_source = False
# Browsers do not let a page read another one from a file, which the beginnings of what was found would need.
html_show_search_summary = False
html_static_path = ["static"]
html_css_files = ["site.css"]
# The blocks of the pages are command lines, TOML and C beside each other, and none of them is marked.
highlight_language = "none"
# Headings have the anchors that links from page to page name, as on the forges that show the same files.
myst_heading_anchors = 4
# Links name pages and headings only; the other kinds of things that Sphinx knows need not be searched for them.
myst_ref_domains = ["std"]
nitpicky = True
# Two dashes are those of an option, and are not to become one that is long.
smartquotes = False
