"""The template-filling service: turns the document of a model into a D-Settlement input file."""
