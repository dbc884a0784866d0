"""Exceptions that the toolkit's modules share. Each takes one message."""


class ModelError(Exception):
    """A model, or a call that was to change it, is wrong."""


class ParsingError(Exception):
    """A file doesn't have the content that was expected of it."""


class InternalError(Exception):
    """A service that the toolkit relies on failed, or refused what it was given."""
