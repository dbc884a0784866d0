"""What can go wrong with an engine."""


class EngineError(Exception):
    """The engine that the settings name can't be used, or was lost; the message says why."""
