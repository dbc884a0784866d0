"""Pictures, as parts of the page."""

import re
from dataclasses import dataclass
from io import BytesIO
from typing import TYPE_CHECKING
from xml.etree import ElementTree

import matplotlib.pyplot as plt
from markupsafe import Markup
from matplotlib.backends.backend_svg import FigureCanvasSVG

if TYPE_CHECKING:
    from matplotlib.figure import Figure
    from matplotlib.transforms import Bbox

_SVG = "http://www.w3.org/2000/svg"
_XLINK = "http://www.w3.org/1999/xlink"
_REFERENCE = re.compile(r"url\(#([^)]+)\)")
_POINTS = 72
"""The unit of length of the pictures, in an inch."""
_MARGIN = 0.05
"""Around a picture, in inches."""
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
        used = _lay_out(figure)
        figure.savefig(file, format="svg", bbox_inches=used, metadata=_NO_METADATA)
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


def _lay_out(figure: "Figure") -> "Bbox":
    """Settle where the parts of a figure stand, and return how far they reach, in inches.

    `savefig` would arrange them twice, as it draws the figure first only to find this out.
    """
    FigureCanvasSVG(figure)
    figure.set_dpi(_POINTS)
    layout = figure.get_layout_engine()
    if layout is not None:
        layout.execute(figure)
        figure.set_layout_engine("none")
    return figure.get_tightbbox().padded(_MARGIN)


def _rename(element: ElementTree.Element, name: str) -> None:
    """Put a name in front of an element's own and of those that it refers to."""
    for key, value in element.attrib.items():
        if key == "id":
            element.set(key, f"{name}-{value}")
        elif key == _LINK and value.startswith("#"):
            element.set(key, f"#{name}-{value[1:]}")
        elif "url(#" in value:
            element.set(key, _REFERENCE.sub(rf"url(#{name}-\1)", value))
