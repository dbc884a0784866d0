"""The toolkit's exceptions."""

import pytest
from sembra.errors import InternalError, ModelError, ParsingError


@pytest.mark.parametrize("kind", [ModelError, ParsingError, InternalError])
def test_each_takes_one_message(kind: type[Exception]) -> None:
    assert str(kind("what went wrong")) == "what went wrong"


def test_none_is_caught_as_another() -> None:
    kinds = [ModelError, ParsingError, InternalError]
    assert not [(a, b) for a in kinds for b in kinds if a is not b and issubclass(a, b)]
