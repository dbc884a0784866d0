"""One page that shows an input or a result file of D-Settlement, to be opened in a browser.

python -m sembra.local.look road.sli road.sld
"""

from typing import TYPE_CHECKING

if TYPE_CHECKING:
    from sembra.local.look.page import make_page

__all__ = ["make_page"]


def __getattr__(name: str) -> object:
    """Load the page when it is asked for: the command says itself that matplotlib is missing."""
    if name == "make_page":
        from sembra.local.look.page import make_page

        return make_page
    raise AttributeError(f"module {__name__!r} has no attribute {name!r}")
