"""Reads input files (.sli), for all that work with them."""
