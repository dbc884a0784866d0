"""The process that runs one call for `sembra.local.jobs.process_executor`, which tells how."""

import json
import os
import pickle
import signal
import sys
import threading
import traceback
from base64 import b64decode, b64encode
from typing import Any

from sembra.local.jobs.reporting import reporter

SMALLEST_STEP = 0.005
"""Progress in smaller steps isn't told."""


class Channel:
    """The way back to the parent. Whatever the call prints goes to standard error instead."""

    def __init__(self) -> None:
        self._stream = os.fdopen(os.dup(1), "wb")
        os.dup2(2, 1)
        self._lock = threading.Lock()
        self._told = 0.0

    def send(self, key: str, value: Any) -> None:
        """Send one message."""
        with self._lock:
            self._stream.write(json.dumps({key: value}).encode() + b"\n")
            self._stream.flush()

    def report(self, fraction: float) -> None:
        """Send the fraction done, if it has grown enough."""
        fraction = min(float(fraction), 1.0)
        if fraction >= self._told + SMALLEST_STEP:
            self._told = fraction
            self.send("progress", fraction)


def main() -> None:
    """Run the call that the parent sends."""
    channel = Channel()
    call = sys.stdin.buffer.readline()
    threading.Thread(target=_end_with_parent, daemon=True).start()
    reporter.set(channel.report)
    try:
        function, args, kwargs = pickle.loads(b64decode(call))
        result = b64encode(pickle.dumps(function(*args, **kwargs))).decode()
    except Exception as error:
        # The last line says what went wrong; the frames above are there for who mends it.
        summary = "".join(traceback.format_exception_only(error)).strip()
        channel.send("failure", f"{summary}\n\n{traceback.format_exc().strip()}")
    else:
        channel.send("result", result)


def _end_with_parent() -> None:
    """End this process group when the parent closes the stream, be it by its own end."""
    while os.read(0, 1):
        pass
    if hasattr(os, "killpg") and os.getpgrp() == os.getpid():
        os.killpg(os.getpgrp(), signal.SIGKILL)
    os._exit(1)
