"""Reads a page as a browser would, as far as the tests need it."""

from html.parser import HTMLParser

ADDRESSES = {"href", "src", "srcset", "action", "data", "poster", "xlink:href"}
VOID = {"meta", "link", "br", "wbr", "hr", "img", "input"}


class ReadPage(HTMLParser):
    """The texts, names and addresses of a page, and whether its elements are closed.

    `texts` are those outside of styles, `names` the values of `id`, `addresses` what refers to
    something, `links` the names within the page that something refers to.
    """

    def __init__(self, html: str) -> None:
        super().__init__()
        self.texts: list[str] = []
        self.names: list[str] = []
        self.addresses: list[str] = []
        self.open: list[str] = []
        self.feed(html)
        self.close()

    def handle_starttag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        """Take note of an element that begins."""
        if tag not in VOID:
            self.open.append(tag)
        self._read(attrs)

    def handle_startendtag(self, tag: str, attrs: list[tuple[str, str | None]]) -> None:
        """Take note of an element without content."""
        self._read(attrs)

    def handle_endtag(self, tag: str) -> None:
        """Close an element, which has to be the one that was opened last."""
        assert self.open.pop() == tag

    def handle_data(self, data: str) -> None:
        """Keep a text."""
        if data.strip() and "style" not in self.open:
            self.texts.append(data.strip())

    def _read(self, attrs: list[tuple[str, str | None]]) -> None:
        self.names += [value for name, value in attrs if name == "id" and value]
        self.addresses += [value for name, value in attrs if name in ADDRESSES and value]
