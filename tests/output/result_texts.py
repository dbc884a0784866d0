"""Result texts for the comparison of the two readers: well-formed ones, and damaged in every way.

A text is made as a list of tokens (tags, line ends, blanks, words, numerals), so that damage can be
done where it matters: a tag missing, doubled, nested or in the wrong place, a line end of another
kind, a number that only Python knows. The same seed gives the same texts.
"""

import random
from collections.abc import Callable, Sequence

from tests.output.result_words import (
    BLANKS,
    BOUNDARIES,
    HEADERS,
    INTEGERS,
    LINE_ENDS,
    MANY_TIMES,
    NO_NUMERALS,
    NOISE,
    OTHER_NUMERALS,
    PLAIN_NUMERALS,
    STEP_COUNTS,
    TAGS,
    TIMES,
)

Tokens = list[str]


class ResultTexts:
    """An endless supply of texts."""

    def __init__(self, seed: int | str) -> None:
        self._random = random.Random(seed)
        self._line_ends: Sequence[str] = LINE_ENDS
        self._oddity = 0.0

    def next(self) -> str:
        """Return a new text."""
        self._line_ends = self._pick((LINE_ENDS, ("\r\n",), ("\n",), ("\r",), ("\r\n", "\n")))
        self._oddity = self._pick((0.0, 0.0, 0.01, 0.1))
        if self._chance(0.4):
            tokens = self._pick(self._blocks())()
            for _ in range(self._pick((0, 0, 1, 2))):
                tokens += self._pick(self._blocks())()
            if self._chance(0.5):
                tokens = ["[Vertical]", self._end(), *tokens, self._end(), "[End of Vertical]"]
        else:
            tokens = self._file()
        for _ in range(self._pick((0, 0, 1, 1, 2, 4))):
            self._damage(tokens)
        if self._chance(0.05):
            tokens.insert(self._place(tokens), self._pick(("\u0101", "\U0001f4a7", "\udc80")))
        return "".join(tokens)

    # The parts of a file.

    def _file(self) -> Tokens:
        tokens: Tokens = ["D-Settlement", self._end()]
        if self._chance(0.5):
            path = self._pick(("C:\\work\\story.sld", "story.sld", "a/b.sld", "C:\\", "\\\r"))
            tokens += ["FILENAME", self._space(), ": ", path, self._end()]
        tokens += ["[Results]", self._end()]
        for _ in range(self._pick((0, 1, 1, 1, 2, 3))):
            tokens += [*self._vertical(), self._end()]
            if self._chance(0.2):
                tokens += [*self._residuals(), self._end()]
        if self._chance(0.6):
            tokens += [*self._residuals(), self._end()]
        return [*tokens, "[End of Results]", self._end()]

    def _vertical(self) -> Tokens:
        tokens: Tokens = ["[Vertical]", self._end()]
        blocks = self._blocks()[1:]
        self._random.shuffle(blocks)
        for block in blocks[: self._random.randint(0, len(blocks))]:
            tokens += [*block(), self._end()]
        return [*tokens, "[End of Vertical]"]

    def _blocks(self) -> list[Callable[[], Tokens]]:
        return [
            self._residuals,
            self._coordinates,
            self._time_settlement,
            lambda: self._lines("Depths"),
            lambda: self._lines("Leakages"),
            lambda: self._lines("Drained Layers"),
            self._stresses,
            self._time_dependent,
        ]

    def _coordinates(self) -> Tokens:
        tokens: Tokens = []
        for _ in range(self._pick((1, 2, 2, 3))):
            tokens += [self._spaces(), self._numeral(), self._space(), "=", self._space(), " "]
            tokens += [self._pick("XXZZ|x"), self._pick((" ", self._space())), "co-ordinate"]
            tokens += [self._end()]
        return tokens

    def _time_settlement(self) -> Tokens:
        tokens: Tokens = ["[Time-Settlement per Load]", self._end()]
        for word in ("Time", "Load"):
            tokens += [self._many_spaces(), self._integer(), self._space(), "=", self._space()]
            tokens += [word, self._gap(), "step", self._gap(), "count", self._many_spaces()]
            tokens += [self._end()]
        tokens += self._rows(self._random.randint(0, 4), self._random.randint(0, 4))
        return [*tokens, self._end(), "[End of Time-Settlement per Load]"]

    def _lines(self, name: str) -> Tokens:
        tokens: Tokens = [f"[{name}]", self._end(), "  3  =  count"]
        for _ in range(self._random.randint(0, 4)):
            tokens += [self._end(), self._spaces(), self._numeral(), self._spaces()]
        if self._chance(0.1):
            tokens = tokens[:2]
        return [*tokens, self._end(), f"[End of {name}]", self._end()]

    def _stresses(self) -> Tokens:
        headers = self._random.randint(0, 4)
        tokens: Tokens = ["[Stresses]", self._end(), *self._headers(headers), self._end()]
        tokens += [
            "[Stress Data]",
            self._end(),
            self._many_spaces(),
            self._pick(STEP_COUNTS),
        ]
        tokens += [self._space(), "=", self._space(), "Depth step count", self._odd_spaces()]
        tokens += [self._end(), *self._rows(self._random.randint(0, 4), headers), self._end()]
        return [*tokens, "[End of Stress Data]", self._end(), "[End of Stresses]"]

    def _time_dependent(self) -> Tokens:
        headers, blocks = self._random.randint(0, 3), self._random.randint(0, 3)
        times: Sequence[str] = TIMES
        if self._chance(0.1):  # many columns and many times that take each other's place
            headers, blocks = self._random.randint(4, 12), 8
            times = self._pick(MANY_TIMES)
        tokens: Tokens = ["[Time-dependent Data]", self._end(), *self._headers(headers)]
        for _ in range(blocks):
            tokens += [self._end(), "[Vertical Data at Time]", self._end(), self._many_spaces()]
            tokens += [
                self._pick(times),
                self._space(),
                "=",
                self._space(),
                "Time",
                self._gap(),
                "in",
                self._gap(),
            ]
            tokens += ["days", self._odd_spaces(), self._end()]
            tokens += self._rows(self._random.randint(0, 3), headers)
            tokens += [self._end(), "[End of Vertical Data at Time]"]
        return [*tokens, self._end(), "[End of Time dependent Data]"]

    def _residuals(self) -> Tokens:
        headers = self._random.randint(0, 4)
        tokens: Tokens = ["[RESIDUAL SETTLEMENTS]", self._end(), *self._headers(headers)]
        tokens += [self._end(), "[DATA COUNT]", self._end(), self._pick(("", "  3 Data count"))]
        tokens += [self._end(), "[END OF DATA COUNT]", self._end(), "[RESIDUAL SETTLEMENT DATA]"]
        for _ in range(self._random.randint(0, 4)):
            tokens += [self._end(), self._spaces(), self._integer()]
            for _ in range(headers - 1 if not self._is_odd() else self._random.randint(0, 5)):
                tokens += [self._space(), self._numeral()]
        if self._chance(0.1):
            tokens += [self._end()]
        return [*tokens, self._end(), "[END OF RESIDUAL SETTLEMENT DATA]"]

    def _headers(self, count: int) -> Tokens:
        tokens: Tokens = ["[Column Indication]"]
        for _ in range(count):
            tokens += [self._end(), self._pick(HEADERS)]
        return [*tokens, self._end(), "[End of Column Indication]"]

    def _rows(self, count: int, columns: int) -> Tokens:
        tokens: Tokens = []
        for row in range(count):
            if row > 0:
                tokens += [self._end()]
            fields = columns + self._pick((0, 0, 0, 1, 2))
            if self._is_odd():
                fields = self._random.randint(0, 5)
            for _ in range(fields):
                tokens += [self._space(), self._numeral()]
            tokens += [self._spaces()]
        return tokens

    # The elements of a line.

    def _end(self) -> str:
        if self._is_odd():
            return self._pick((*BOUNDARIES, "\n\r", "\r\r\n", "\r\n\r\n", "\n\n", " \n", ""))
        return self._pick(self._line_ends)

    def _gap(self) -> str:
        return self._pick((*BLANKS, *LINE_ENDS, "", "  ")) if self._is_odd() else " "

    def _space(self) -> str:
        if self._is_odd():
            return "".join(self._pick((*BLANKS, *LINE_ENDS, *BOUNDARIES)) for _ in range(2))
        return " " * self._random.randint(1, 3)

    def _spaces(self) -> str:
        return self._space() if self._chance(0.5) else ""

    def _many_spaces(self) -> str:
        spaces = (" ", "\t", *self._line_ends, *self._pick((BLANKS, ("\n",), BOUNDARIES)))
        return "".join(self._pick(spaces) for _ in range(self._pick((0, 0, 0, 1, 2, 3))))

    def _odd_spaces(self) -> str:
        return self._many_spaces() if self._is_odd() else ""

    def _numeral(self) -> str:
        if not self._is_odd():
            return self._pick(PLAIN_NUMERALS)
        return self._pick(OTHER_NUMERALS) if self._chance(0.7) else self._pick(NO_NUMERALS)

    def _integer(self) -> str:
        return self._pick(INTEGERS) if self._is_odd() else self._pick(INTEGERS[:5])

    # Damage.

    def _damage(self, tokens: Tokens) -> None:
        if not tokens:
            return
        place = self._place(tokens)
        match self._random.randrange(8):
            case 0:
                del tokens[place]
            case 1:
                tokens.insert(place, tokens[place])
            case 2:
                tokens.insert(self._place(tokens), tokens[place])
            case 3:
                tokens.insert(place, self._pick(NOISE))
            case 4:
                tokens[place] = self._pick(NOISE)
            case 5:
                self._damage_tags(tokens)
            case 6:
                del tokens[place : place + self._random.randint(1, 5)]
            case 7:
                tokens[place : place + 1] = [tokens[place][: self._random.randint(0, 4)]]

    def _damage_tags(self, tokens: Tokens) -> None:
        """Take away, double or move a tag, or change the line end beside one."""
        tags = [i for i, token in enumerate(tokens) if token.startswith("[")]
        if not tags:
            return
        place = self._pick(tags)
        match self._random.randrange(5):
            case 0:
                del tokens[place]
            case 1:
                tokens[place:place] = [tokens[place], self._end()]
            case 2:
                tokens.insert(self._place(tokens), tokens.pop(place))
            case 3:
                tokens[place] = self._pick(TAGS)
            case 4:
                beside = max(0, min(len(tokens) - 1, place + self._pick((-1, 1))))
                tokens[beside] = self._pick(("", "\r", "\n", "\r\n", "\n\r", "\r\r\n", "\x85", " "))

    # Chance.

    def _pick[T](self, choices: Sequence[T]) -> T:
        return choices[int(self._random.random() * len(choices))]

    def _place(self, tokens: Tokens) -> int:
        return int(self._random.random() * len(tokens)) if tokens else 0

    def _chance(self, probability: float) -> bool:
        return self._random.random() < probability

    def _is_odd(self) -> bool:
        return self._oddity > 0 and self._random.random() < self._oddity
