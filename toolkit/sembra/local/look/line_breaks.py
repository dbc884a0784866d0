"""Where the names of files, projects and materials may go on in the next line."""

import re

from markupsafe import Markup

_PLACES = re.compile(r"(?<=\w[_/\\-])(?=\w)|(?<=\w)(?=\.[^\W\d_])")
"""Behind what joins words, and before an extension: not within a word or a number."""


def breakable(text: str) -> Markup:
    """Return a text as the page has it, with the places at which a browser may break its words."""
    return Markup("<wbr>").join(_PLACES.split(text))
