"""The section of the drains in input files made for the tests of the worker."""

SECTION = """[VERTICAL DRAIN]
0 : Flow type = Radial
      -3.000 = Bottom position
      -2.000 = Position of the drain pipe
     -10.000 = Position of the leftmost drain
      10.000 = Position of the rightmost drain
       1.000 = Center to center distance
       0.200 = Diameter
       0.100 = Width
       0.005 = Thickness
0 = Grid
      10.000 = Begin time
      90.000 = End time
      35.000 = Under pressure for strips and columns
       0.000 = Under pressure for sand wall
       1.000 = Start of drainage
      -0.500 = Phreatic level in drain
      -1.500 = Water head during dewatering
     5.00 = Tube pressure during dewatering
0 : Flow type = Off
2 = number of items
     0.000       10.000      0.500      1.00 = Time, Under pressure, Water level, Tube pressure
     7.000        0.000     -0.500      2.00 = Time, Under pressure, Water level, Tube pressure
[END OF VERTICAL DRAIN]
"""

COLUMN = ("0 : Flow type = Radial", "1 : Flow type = Plane")
SAND_WALL = ("0 : Flow type = Radial", "2 : Flow type = Sand wall")
SIMPLE = ("0 : Flow type = Off", "1 : Flow type = Simple input")
DETAILED = ("0 : Flow type = Off", "2 : Flow type = Detailed input")


def with_drains(text: str, *changes: tuple[str, str]) -> str:
    """Switch drains on in an input file, after changes to the lines of their section.

    Args:
        text: an input file without drains.
        changes: pairs of what a line holds and what it is to hold.
    """
    section = SECTION
    for old, new in changes:
        assert section.count(old) == 1
        section = section.replace(old, new)
    assert text.count("0 : Vertical drains = FALSE") == 1
    on = text.replace("0 : Vertical drains = FALSE", "1 : Vertical drains = TRUE")
    return on.replace("[END OF INPUT DATA]", f"{section}[END OF INPUT DATA]")
