# Configures the documentation site. Sphinx reads the pages from a copy, which tools/dev/docs.sh makes.
import re

from pygments.lexer import RegexLexer, words
from pygments.token import Comment, Keyword, Name, Number, Operator, String, Text

project = "ZKTUtil"
author = "The ZKTUtil authors"
project_copyright = "2026 The ZKTUtil authors"
extensions = ["myst_parser"]
root_doc = "index"
include_patterns = ["*.md", "docs/**"]
exclude_patterns = ["README.md"]  # index.md begins with the content of README.md
# Links to headings use the anchors that Markdown viewers generate.
myst_heading_anchors = 4
myst_enable_extensions = ["html_image"]

html_theme = "alabaster"
html_theme_options = {
    "description": "Native utilities for Xojo",
    "font_family": "sans-serif",
    "head_font_family": "sans-serif",
    "page_width": "1160px",
    "sidebar_width": "260px",
    "show_powered_by": False,
    "show_relbars": True,
}
html_sidebars = {"**": ["about.html", "searchbox.html", "navigation.html"]}
html_title = "ZKTUtil"
html_copy_source = False
html_show_sphinx = False
# Browsers do not let a page opened from disk read other pages, so search results have no excerpts.
html_show_search_summary = False


class XojoLexer(RegexLexer):
    """Highlights Xojo code."""

    name = "Xojo"
    flags = re.IGNORECASE
    tokens = {
        "root": [
            (r"'.*|//.*", Comment.Single),
            (r'"(?:""|[^"\n])*"', String),
            (r"#\w+", Comment.Preproc),
            (r"&[chobu][0-9a-f]+|\b\d+(?:\.\d+)?\b", Number),
            (words("""AddressOf And As ByRef ByVal Call Case Catch Class Const Declare Dim Do Else ElseIf End Exit
                   Extends False Finally For Function If In Is Lib Loop Mod Module Next New Nil Not Or Private Property Public
                   Raise Return Select Self Shared Step Sub Then To True Try Until Var Wend While""".split(),
                   prefix=r"\b", suffix=r"\b"), Keyword),
            (words("""Boolean Color Currency Date DateTime Double Int32 Int64 Integer Object Ptr Single String UInt32
                   UInt64 Variant""".split(), prefix=r"\b", suffix=r"\b"), Keyword.Type),
            (r"\w+", Name),
            (r"[-+*/\\=<>^&]", Operator),
            (r"\s+|.", Text),
        ]
    }


def setup(app):
    app.add_lexer("xojo", XojoLexer)
