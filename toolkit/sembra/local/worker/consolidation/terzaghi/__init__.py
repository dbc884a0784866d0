"""Consolidation by the theory of Terzaghi and Fröhlich (1936), in closed form."""
