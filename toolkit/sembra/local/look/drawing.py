"""Pictures, as parts of the page."""

import re
from dataclasses import dataclass
from io import BytesIO
from typing import TYPE_CHECKING
from xml.etree import ElementTree

import matplotlib.pyplot as plt
from markupsafe import Markup

if TYPE_CHECKING:
    from matplotlib.figure import Figure

_SVG = "http://www.w3.org/2000/svg"
_XLINK = "http://www.w3.org/1999/xlink"
_REFERENCE = re.compile(r"url\(#([^)]+)\)")
_NO_METADATA = {"Date": None, "Creator": None}
_LINK = f"{{{_XLINK}}}href"


@dataclass(frozen=True)
class Drawing:
    """A picture: what stands below it, and its lines for wide and for narrow pages.

    `narrow` is None where one will do for both.
    """

    caption: str
    wide: Markup
    narrow: Markup | None = None


def svg(figure: "Figure", name: str, told: str) -> Markup:
    """Return a figure as an element of a page, and put the figure away.

    Args:
        figure: The figure.
        name: Begins all names within the element, which have to be the page's only ones.
        told: What the picture shows, for those who can't see it.
    """
    file = BytesIO()
    with plt.rc_context({"svg.fonttype": "none", "svg.hashsalt": name}):
        figure.savefig(
            file, format="svg", bbox_inches="tight", pad_inches=0.05, metadata=_NO_METADATA
        )
    plt.close(figure)
    ElementTree.register_namespace("", _SVG)
    ElementTree.register_namespace("xlink", _XLINK)
    root = ElementTree.fromstring(file.getvalue())
    for metadata in root.findall(f"{{{_SVG}}}metadata"):
        root.remove(metadata)
    for element in root.iter():
        _rename(element, name)
    for size in ("width", "height"):
        root.attrib.pop(size)
    root.attrib |= {"role": "img", "aria-label": told}
    return Markup(ElementTree.tostring(root, encoding="unicode"))


def _rename(element: ElementTree.Element, name: str) -> None:
    """Put a name in front of an element's own and of those that it refers to."""
    for key, value in element.attrib.items():
        if key == "id":
            element.set(key, f"{name}-{value}")
        elif key == _LINK and value.startswith("#"):
            element.set(key, f"#{name}-{value[1:]}")
        elif "url(#" in value:
            element.set(key, _REFERENCE.sub(rf"url(#{name}-\1)", value))
