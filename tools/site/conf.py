"""How Sphinx makes the pages of the documentation: see make_site.py."""

from pygments.lexers.basic import VBScriptLexer

project = "ZYNVue"
extensions = ["myst_parser"]
myst_heading_anchors = 6
suppress_warnings = ["misc.highlighting_failure"]  # pieces of programs
root_doc = "index"

html_theme = "furo"
html_title = "ZYNVue"
html_static_path = ["static"]
html_css_files = ["zyn.css"]
html_copy_source = False
html_show_sourcelink = False
html_show_search_summary = False  # it needs a server
html_use_index = False


def setup(app):
    app.add_lexer("vb", VBScriptLexer)
