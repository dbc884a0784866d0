"""Small faults in C++ code, and the switches that they stand behind."""

import shutil
import subprocess
from pathlib import Path

import pytest

from mutants.source import mutants_of
from mutants.switches import SWITCH, VARIABLE, numbered, switched

CODE = """// A comment: a < b.
#include <cstdio>
#include <vector>
namespace {
constexpr const char* documentation = R"(from 1 to 1000; see
  a < b;
)";
int count(const std::vector<int>& numbers, int limit) {
  int found = 0;
  for (int number : numbers) {
    if (number < limit) {
      ++found;
    }
  }
  const int twice = found * 2;
  return twice / 2 +
         0;
}
}  // namespace
int main() {
  std::printf(
      "%d", count({1, 2, 3}, 2));
}
"""


@pytest.fixture
def file(tmp_path: Path) -> Path:
    (tmp_path / "code.cpp").write_text(CODE)
    return tmp_path / "code.cpp"


def changes(file: Path) -> list[tuple[int, str]]:
    return [(m.line, m.after.strip()) for m in mutants_of(file.parent, Path(file.name))]


def test_texts_and_comments_are_left_alone(file: Path) -> None:
    assert {line for line, _ in changes(file)}.isdisjoint({1, 2, 5, 6, 7})


def test_operators_numbers_conditions_and_statements_are_changed(file: Path) -> None:
    found = changes(file)
    assert (11, "if (number <= limit) {") in found
    assert (11, "if (true) {") in found
    assert (12, "--found;") in found
    assert (15, "const int twice = found / 2;") in found
    assert (15, "const int twice = found * 3;") in found


def test_what_is_in_the_middle_of_a_statement_is_not_put_in(file: Path) -> None:
    mutants = numbered(mutants_of(file.parent, Path(file.name)))
    _, placed = switched(CODE, mutants, Path("switch.hpp"))
    assert {mutants[number].line for number in placed} == {9, 11, 12, 15}


def test_each_switch_turns_on_its_own_fault(file: Path) -> None:
    compiler = shutil.which("c++")
    if compiler is None:
        pytest.skip("there is no C++ compiler")
    mutants = numbered(mutants_of(file.parent, Path(file.name)))
    header = file.with_name("switch.hpp")
    header.write_text(SWITCH)
    text, placed = switched(CODE, mutants, header)
    file.write_text(text)
    program = file.with_suffix("")
    subprocess.run([compiler, "-std=c++20", str(file), "-o", str(program)], check=True)

    def outcome(number: int | None) -> int:
        environment = {} if number is None else {VARIABLE: str(number)}
        return int(subprocess.check_output([str(program)], env=environment))

    assert outcome(None) == outcome(0) == 1
    assert {mutants[number].after.strip(): outcome(number) for number in placed} == {
        "int found = 1;": 2,
        "if (number <= limit) {": 2,
        "if (number > limit) {": 1,
        "if (true) {": 3,
        "if (false) {": 0,
        "--found;": -1,
        "const int twice = found / 2;": 0,
        "const int twice = found * 3;": 1,
    }
