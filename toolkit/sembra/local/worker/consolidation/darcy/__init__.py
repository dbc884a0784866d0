"""Consolidation by Darcy's law, with storage, creep and drains in one equation."""
