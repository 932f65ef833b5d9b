# The handbook's build: German, a theme of its own, and a page per window for the program's F12 key.

from pathlib import Path

project = "Kalvo"
author = "Kalvo"
language = "de"
html_title = "Kalvo-Handbuch"
root_doc = "index"
exclude_patterns = ["_thema"]
html_theme = "kalvo"
html_theme_path = ["_thema"]
html_logo = "../../src/widgets/icons/app.svg"
html_sidebars = {"**": []}
html_copy_source = False
html_show_copyright = False
html_show_search_summary = False  # would need a server
html_use_index = True
html_domain_indices = False
smartquotes = False

# A label of this kind in the texts, e.g. "fenster-frmsuchen", is what F12 in that window opens.
WINDOW_LABEL = "fenster-"

# What the theme's base brings along and no page uses.
UNUSED = ["_sphinx_javascript_frameworks_compat.js", "basic.css", "file.png", "jquery.js", "minus.png", "plus.png",
          "pygments.css", "underscore.js"]

REDIRECT = """<!DOCTYPE html>
<html lang="de"><head><meta charset="utf-8"><title>Kalvo-Handbuch</title>
<meta http-equiv="refresh" content="0; url=../{target}"></head>
<body><p><a href="../{target}">Weiter zum Handbuch</a></p></body></html>
"""


def write_window_pages(app, exception):
    """fenster/NAME.html for each label: a file can be opened from outside, a place within one not everywhere."""
    if exception is not None or app.builder.format != "html":
        return
    folder = Path(app.outdir) / "fenster"
    folder.mkdir(exist_ok=True)
    for label, (page, anchor) in app.env.get_domain("std").anonlabels.items():
        if label.startswith(WINDOW_LABEL):
            target = f"{page}.html#{anchor}"
            (folder / (label[len(WINDOW_LABEL):] + ".html")).write_text(REDIRECT.format(target=target), "utf-8")


def remove_unused(app, exception):
    if exception is None and app.builder.format == "html":
        for name in UNUSED:
            (Path(app.outdir) / "_static" / name).unlink(missing_ok=True)


def setup(app):
    app.connect("build-finished", remove_unused)
    app.connect("build-finished", write_window_pages)
