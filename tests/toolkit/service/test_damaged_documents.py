"""Damaged documents: every one gives an input file or a refusal in plain words.

The damage is another in each run; `SEMBRA_SEED` repeats one.
"""

import copy
import json
import random
import re
import time
from typing import Any

import pytest
from sembra.local.service.document import RefusalError, read_document
from sembra.local.service.filling import fill

from tests.seeds import new_seed
from tests.toolkit.documents import document_1d, document_2d, drain, soil
from tests.toolkit.growth import growth

LOADS = {
    "non_uniform_loads": [
        {"name": "Bank", "points": [(0.0, 0.0), (5.0, 2.0)], "time": 0, "end_time": 9}
        | {"gamma_dry": 18.0, "gamma_wet": 20.0, "temporary": False}
    ],
    "other_loads": [
        {"name": "Sand", "type": 3, "time": 0, "unit_weight": 20.0, "height": 1.0}
        | {"y_application": 0.0}
    ],
    "residual_times": [1, 10],
    "soils": [soil(), soil("Peat")],
    "vertical_drain": drain(detailed_schedule=[(0.0, 40.0, 0.0), (9.0, 0.0, 1.0)]),
}
DOCUMENTS = [document_1d(**LOADS), document_2d(**LOADS)]
VALUES: list[Any] = [
    *(0, -1, 1, 2**63, -(2**64), 10**400, 1e308, -1e308, 5e-324, -0.0, 0.1 + 0.2, 99, 3.7),
    *(None, True, False, "", "x", "Clay", "[END OF INPUT DATA]", "a\nb", "\u2028", "{{ 7 * 7 }}"),
    *(
        "\x00",
        "é" * 1000,
        [],
        {},
        [[]],
        [1, 2],
        [1, 2, 3],
        {"x": 1},
        [None] * 1000,
        {"a": {"b": 1}},
    ),
]
TEXTS = [
    "NaN",
    "Infinity",
    "1e999",
    '"\\ud800"',
    "01",
    "",
    "}",
    "]",
    ",",
    '"',
    "\\",
    "\x00",
    "[" * 300,
]
GROWTH = 100_000
"""Bytes that may be kept after many documents: what the interpreter and the libraries remember."""
INSIDE = re.compile(r"Traceback|\b\w+Error\b|pydantic|jinja|object at 0x|<class", re.IGNORECASE)


def places(value: Any) -> list[tuple[Any, Any]]:
    """Return every place in a document: what it stands in, and its key or position."""
    steps = value.items() if isinstance(value, dict) else enumerate(value)
    found = []
    for step, entry in steps:
        found.append((value, step))
        if isinstance(entry, dict | list):
            found += places(entry)
    return found


def damage(document: Any, chance: random.Random) -> None:
    """Take something out, double it, rename it, or put something else in its place."""
    parent, step = chance.choice(places(document))
    match chance.randrange(6):
        case 0:
            parent.pop(step, None) if isinstance(parent, dict) else parent.pop(step)
        case 1 if isinstance(parent, list):
            parent.insert(step, copy.deepcopy(parent[chance.randrange(len(parent))]))
        case 1:
            parent[f"{step}2"] = parent.get(step)
        case 2 if isinstance(parent, dict):
            parent[chance.choice(["", "x" * 99, "é", "\n", "pop"])] = parent.pop(step, None)
        case 3:
            other, at = chance.choice(places(document))
            parent[step] = copy.deepcopy(other[at])
        case _:
            parent[step] = copy.deepcopy(chance.choice(VALUES))


def damaged_body(seed: str) -> bytes:
    chance = random.Random(seed)
    # A round through JSON makes lists of all tuples, and everything its own.
    document = json.loads(json.dumps({"input": chance.choice(DOCUMENTS)}))
    for _ in range(chance.choice((1, 1, 1, 2, 4, 8))):
        if places(document):
            damage(document, chance)
    text = json.dumps(document)
    if chance.random() < 0.2:
        at = chance.randrange(len(text))
        text = text[:at] + chance.choice(TEXTS) + text[at + chance.randrange(3) :]
    body = text.encode()
    if chance.random() < 0.05:
        at = chance.randrange(len(body))
        body = body[:at] + bytes([chance.randrange(256)]) + body[at + 1 :]
    return body


def refusal_of(body: bytes) -> str | None:
    """Return why a document is refused, or None for one that gives a whole input file."""
    begin = time.process_time()
    try:
        text = fill(read_document(body))
    except RefusalError as refusal:
        return f"{refusal.status} {refusal}"
    finally:
        assert time.process_time() - begin < 10
    lines = text.split("\n")
    assert lines[-3:] == ["[END OF INPUT DATA]", "[END OF INPUT FILE]", ""]
    assert lines.count("[END OF INPUT DATA]") == 1
    assert len(text) < 100_000 + 20 * len(body)
    return None


def check(body: bytes) -> bool:
    """Return whether the document gave an input file, and not a refusal in plain words."""
    reason = refusal_of(body)
    if reason is None:
        return True
    assert re.match("4(00|22) .", reason)
    assert len(reason) < 1500
    assert reason.isprintable(), reason
    assert not INSIDE.search(reason), reason
    return False


@pytest.mark.parametrize("block", range(10))
def test_an_input_file_or_a_reason(block: int) -> None:
    seed = new_seed()
    print(f"SEMBRA_SEED={seed}")
    filled = sum(check(damaged_body(f"{seed} {block} {number}")) for number in range(100))
    assert 0 < filled < 100


def test_nothing_is_kept_of_damaged_documents() -> None:
    bodies = [damaged_body(f"kept {number}") for number in range(100)]
    assert growth(lambda: [refusal_of(body) for body in bodies]) < GROWTH


def test_other_texts_altogether() -> None:
    for text in ("", "null", "[]", "{}", '"input"', '{"input": null}', "1" * 5000, "[" * 10**6):
        assert not check(text.encode())
    chance = random.Random(1)
    for _ in range(200):
        assert not check(chance.randbytes(chance.randrange(1, 200)))
