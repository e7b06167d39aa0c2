# SPDX-License-Identifier: MIT
"""For mkdocs: the search index as a script too, since pages that are opened as files can't fetch it."""

import os


def on_post_build(config, **kwargs):
    folder = os.path.join(config["site_dir"], "search")
    with open(os.path.join(folder, "search_index.json"), encoding="utf-8") as index:
        text = index.read()
    with open(os.path.join(folder, "search_index.js"), "w", encoding="utf-8") as script:
        # Releases of the theme from 9 on look for the name themselves.
        script.write(f"var __index = {text};\nwindow.rmonSearchIndex && rmonSearchIndex(__index);\n")
