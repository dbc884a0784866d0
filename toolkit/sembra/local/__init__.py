"""The local edition: what lets the toolkit's modules run on one machine."""
