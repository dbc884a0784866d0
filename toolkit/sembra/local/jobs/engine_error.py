"""What can go wrong with an engine."""


class EngineError(Exception):
    """The engine that the settings name can't be used, or was lost; the message says why."""


class DeadWorkersError(EngineError):
    """The engine works, but the workers that ran the job died, each time that it was run."""


def loss_of_engine(error: BaseException) -> EngineError | None:
    """Return what happened to the engine, if that is behind an error, and not the job itself."""
    cause: BaseException | None = error
    while cause is not None:
        if isinstance(cause, EngineError) and not isinstance(cause, DeadWorkersError):
            return cause
        cause = cause.__cause__
    return None
