"""One page that shows an input or a result file of D-Settlement, to be opened in a browser.

python -m sembra.local.look road.sli road.sld
"""

from sembra.local.look.page import make_page

__all__ = ["make_page"]
