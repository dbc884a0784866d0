"""Soil models: how strain follows from effective stress and time."""
