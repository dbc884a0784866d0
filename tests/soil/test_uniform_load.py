"""`_UniformLoad`."""

from typing import Any

from sembra.external.dsettlement import _UniformLoad

FIELDS = ["time", "unit_weight", "height", "y_application"]


def test_fields_are_public_and_stored_in_order_as_given() -> None:
    values: list[Any] = [object() for _ in FIELDS]
    load = _UniformLoad(*values)
    assert list(vars(load)) == FIELDS
    assert all(getattr(load, name) is value for name, value in zip(FIELDS, values, strict=True))


def test_fields_may_be_given_by_keyword() -> None:
    load = _UniformLoad(y_application=4.0, height=3.0, unit_weight=2.0, time=1)
    assert vars(load) == {"time": 1, "unit_weight": 2.0, "height": 3.0, "y_application": 4.0}


def test_a_load_writes_six_keys_in_order() -> None:
    document = _UniformLoad(1, 18.0, 2.0, 0.5)._serialize("sand")
    assert type(document) is dict
    assert list(document.items()) == [
        ("name", "sand"),
        ("type", 3),
        ("time", 1),
        ("unit_weight", 18.0),
        ("height", 2.0),
        ("y_application", 0.5),
    ]
    assert type(document["type"]) is int


def test_values_are_not_converted() -> None:
    values: list[Any] = [1.0, 18, "2.0", None]
    document = _UniformLoad(*values)._serialize("sand")
    assert [document[name] for name in FIELDS] == values
    assert [type(document[name]) for name in FIELDS] == [float, int, str, type(None)]


def test_each_call_gives_a_new_mapping() -> None:
    load = _UniformLoad(1, 18.0, 2.0, 0.5)
    assert load._serialize("a") == load._serialize("a")
    assert load._serialize("a") is not load._serialize("a")


def test_the_document_follows_the_fields_of_that_moment() -> None:
    load = _UniformLoad(1, 18.0, 2.0, 0.5)
    load.height = 3.0
    assert load._serialize("a")["height"] == 3.0
