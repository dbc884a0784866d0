"""The ground below a vertical: layers, the nodes in them, and the stresses before any load."""
