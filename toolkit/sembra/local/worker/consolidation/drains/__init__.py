"""Vertical drains: where they stand, how water flows to them, and the water in them."""
