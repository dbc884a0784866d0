"""The words of generated result texts: tags, numbers, white space, and what only resembles them."""

import re

from benchmarks.plain.output_parser import OutputFileParser

LINE_ENDS = ("\r\n", "\n", "\r")
BLANKS = (" ", "  ", "\t", "\x1f", "\xa0", "\u3000", "\u2003")
BOUNDARIES = ("\x0b", "\x0c", "\x1c", "\x1d", "\x1e", "\x85", "\u2028", "\u2029")
LONG_DIGITS = "1234567890" * 40
TOO_MANY_DIGITS = "7" * 4301

PLAIN_NUMERALS = ("0.0000000", "-0.0000000", "1.5000000", "12.25", "-3", "7", "100.0001000", ".5")
OTHER_NUMERALS = (
    "1.",
    "+2.5",
    "1_0",
    "1__0",
    "nan",
    "-inf",
    "Infinity",
    "1e5",
    "-1.25E-07",
    "1e400",
    "4.9e-324",
    "1e-400",
    "\u0663.\u0665",
    "\U0001d7d9.5",
    "0x10",
    "0.1234567890123456789",
    "9007199254740993",
    "123456789012345678901234567890",
    LONG_DIGITS,
    LONG_DIGITS + "." + LONG_DIGITS,
)
NO_NUMERALS = (
    "x",
    "",
    "-",
    ".",
    "--1",
    "1-",
    "1.2.3",
    "1,5",
    "1e",
    "é",
    "\ud800",
    "1\x00",
    "'",
    '"',
    "e5",
)
INTEGERS = ("0", "1", "2", "12", "049", "-1", "+3", "1_0", "\u0663", "1.0", TOO_MANY_DIGITS)
STEP_COUNTS = ("3", "33", "\u0663")
TIMES = ("0.0", "1.50", "1.5", "10.000000000000", "\u0663.\u0665", "1", "-1.0")
MANY_TIMES = (("1.0",), ("1.0", "1.00", "2.5"), ("0.0", "1.50", "3.0", "4.0", "5.0"))
HEADERS = (
    "Settlement",
    "Loading",
    "Initial total stress",
    "Initial total stress ",
    "settlement",
    "Überhöhung",
    "沈下",
    "",
    "𝄞",
)
TAGS = (
    *dict.fromkeys(
        tag.replace("\\", "")
        for pattern in vars(OutputFileParser).values()
        if isinstance(pattern, re.Pattern)
        for tag in re.findall(r"\\\[[^\\]+\\\]", pattern.pattern)
    ),
    "[End of Time-dependent Data]",
    "[depths]",
    "[End of",
    "[",
    "]",
)
NOISE = (
    *LINE_ENDS,
    *BLANKS,
    *BOUNDARIES,
    *TAGS,
    *NO_NUMERALS,
    *OTHER_NUMERALS[:-2],
    "=",
    " =  X co-ordinate",
    "FILENAME  : ",
    "1 = Depth step count",
    "1.5 = Time in days",
    "co-ordinate",
    "text",
)
