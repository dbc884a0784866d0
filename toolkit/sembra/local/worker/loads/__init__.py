"""Loads, and the stress that they cause in the ground."""
