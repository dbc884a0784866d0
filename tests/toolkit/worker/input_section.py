"""Text of two-dimensional input files."""

from tests.toolkit.worker.input_file import input_text

GEOMETRY_2D = """[GEOMETRY DATA]
[POINTS]
      4  - Number of geometry points -
       1          0.000          0.000          0.000
       2        100.000          0.000          0.000
       3          0.000         -4.000          0.000
       4        100.000         -4.000          0.000
[END OF POINTS]

[CURVES]
   2 - Number of curves -
     1 - Curve number
       2 - number of points on curve,  next line(s) are pointnumbers
         3     4
     2 - Curve number
       2 - number of points on curve,  next line(s) are pointnumbers
         1     2
[END OF CURVES]

[BOUNDARIES]
   2 - Number of boundaries -
     0 - Boundary number
       1 - number of curves on boundary, next line(s) are curvenumbers
         1
     1 - Boundary number
       1 - number of curves on boundary, next line(s) are curvenumbers
         2
[END OF BOUNDARIES]

[PIEZO LINES]
   1 - Number of piezometric level lines -
     1 - PlLine number
       1 - number of curves on PlLine,  next line(s) are curvenumbers
         2
[END OF PIEZO LINES]

[PHREATIC LINE]
   1 - Number of the piezometric level line acting as phreatic line -
[END OF PHREATIC LINE]

[LAYERS]
   1 - Number of layers -
     1 - Layer number, next line is material of layer
       Clay
       1 - Piezometric level line at top of layer
       1 - Piezometric level line at bottom of layer
       1 - Boundarynumber at top of layer
       0 - Boundarynumber at bottom of layer
[END OF LAYERS]

[END OF GEOMETRY DATA]
"""


def two_dimensional(times: tuple[float, ...] = ()) -> str:
    """The text of a file with level ground and three verticals, and results at some times."""
    text = input_text(model={"Dimension": 1}, phreatic_level=0.0, times=times)
    before, _, rest = text.partition("[GEOMETRY 1D DATA]\n")
    after = rest.partition("[END OF GEOMETRY 1D DATA]\n")[2]
    one = "    1 = number of items\n       0.000        0.000 = X, Z\n"
    three = "3 = number of items\n 10 0 = X, Z\n 20.5 0 = X, Z\n 90 1 = X, Z\n"
    return (before + GEOMETRY_2D + after).replace(one, three)
