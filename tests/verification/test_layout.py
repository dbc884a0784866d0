"""Differences between the layouts of result files."""

from tests.toolkit.worker.input_file import calculated, input_text
from verification.layout import layout_difference

TEXT = calculated(input_text(options={"Dissipation": 1}, times=[10]))


def test_equal_layouts_of_unequal_numbers() -> None:
    assert layout_difference(TEXT, TEXT.replace("\n", "\r\n")) is None
    assert layout_difference(TEXT, TEXT.replace("0.1000000", "7.0")) is None
    assert layout_difference(TEXT.replace("Depth step count", "Depth step count "), TEXT) is None


def test_a_block_that_one_file_lacks() -> None:
    begin, _, rest = TEXT.partition("[Koppejan settlement]\n")
    _, _, end = rest.partition("[End of Koppejan Settlement]\n")
    assert layout_difference(TEXT, begin + end) == (
        "behind [End of Stresses], [Time-dependent Data] instead of [Koppejan settlement]"
    )


def test_a_header_and_a_row() -> None:
    assert layout_difference(TEXT, TEXT.replace("Final total stress\n", "")) == (
        "behind [Column Indication], Final water stress instead of Final total stress"
    )
    row = TEXT[: TEXT.index("[End of Depths]")].splitlines()[-1]
    assert layout_difference(TEXT, TEXT.replace(f"{row}\n[End of D", "[End of D")) == (
        "behind [Depths], [End of Depths] instead of #"
    )


def test_what_the_worker_adds_or_leaves_away() -> None:
    warned = TEXT.replace(
        "[End of Results]", "[Warnings]\n 1\nw\n[End of Warnings]\n[End of Results]"
    )
    reliable = TEXT.replace(
        "[End of Results]", "[RELIABILITY CALCULATION RESULTS]\n1\n[Data]\n2\n[End of Results]"
    )
    assert layout_difference(reliable, warned) is None


def test_residual_settlements_without_rows_need_not_stand_twice() -> None:
    text = calculated(input_text(options={"Dissipation": 1}, times=[]))
    block = text[text.index("[RESIDUAL SETTLEMENTS]") : text.index("[Dissipation in")]
    twice = text.replace("[End of Results]", f"{block}[End of Results]")
    assert layout_difference(twice, text) is None
    assert layout_difference(TEXT, text) is not None
