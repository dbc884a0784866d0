"""Consolidation: how water leaves the ground, and what holds strain back meanwhile."""
