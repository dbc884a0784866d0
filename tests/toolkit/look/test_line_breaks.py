"""Where names may go on in the next line."""

import pytest
from sembra.local.look.line_breaks import breakable


@pytest.mark.parametrize(
    ("name", "parts"),
    [
        ("dike_north-2026.sli", ["dike_", "north-", "2026", ".sli"]),
        ("soils/peat\\soft.txt", ["soils/", "peat\\", "soft", ".txt"]),
        ("Clay, organic", ["Clay, organic"]),
        ("level -1.5 m", ["level -1.5 m"]),
        ("no end_", ["no end_"]),
        ("a <b_c> & d", ["a &lt;b_", "c&gt; &amp; d"]),
        ("", [""]),
    ],
)
def test_names_break_between_their_words(name: str, parts: list[str]) -> None:
    assert str(breakable(name)) == "<wbr>".join(parts)
