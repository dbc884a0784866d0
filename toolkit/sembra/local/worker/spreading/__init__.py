"""How stress spreads in the ground, which counts as an elastic half-space."""
