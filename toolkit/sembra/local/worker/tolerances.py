"""Differences that rounding makes, and no file means."""

LENGTH = 1e-9
"""Lengths and levels in metres that differ by less are the same."""

TIME = 1e-6
"""Times in days that differ by less are the same."""
