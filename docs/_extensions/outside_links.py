"""Links from a page to files of the repository outside the documentation.

In the repository they lead to the file; on the site, which doesn't have it, only its name is left.
"""

from pathlib import Path
from typing import Any

from docutils import nodes
from sphinx.application import Sphinx


def _replace(app: Sphinx, document: nodes.document, name: str) -> None:
    here = Path(app.env.doc2path(name)).parent
    site = Path(app.srcdir).resolve()
    for link in list(document.findall(nodes.reference)):
        target = str(link.get("refuri", ""))
        if target.startswith(".."):
            path = (here / target.partition("#")[0]).resolve()
            if path.exists() and not path.is_relative_to(site):
                link.replace_self(nodes.literal(text=str(path.relative_to(site.parent))))


def setup(app: Sphinx) -> dict[str, Any]:
    """Let Sphinx know."""
    app.connect("doctree-resolved", lambda app, document, name: _replace(app, document, name))
    return {"parallel_read_safe": True, "parallel_write_safe": True}
