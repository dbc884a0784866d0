"""Reads the text of input files (.sli): sections, lines, and what stands in them."""
