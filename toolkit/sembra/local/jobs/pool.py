"""A pool of worker processes that start once and can be ended one by one.

The pools that others keep were tried first; `docs/architecture.md` tells which promise each breaks.
"""

import math
import os
import pickle
import sys
import threading
import time
import weakref
from collections import deque
from collections.abc import Callable, Sequence
from concurrent.futures import Executor, Future
from typing import Any, NamedTuple

from sembra.local.jobs.callers import ended_with_caller
from sembra.local.jobs.reporting import Report, ignore
from sembra.local.jobs.worker_process import CallError, NotTakenError, WorkerProcess


class PoolFuture(Future[Any]):
    """A call that waits for a worker or runs in one. `cancel` ends it, running or not."""

    def __init__(self, call: bytes, on_progress: Report) -> None:
        super().__init__()
        self.call = call
        self.on_progress = on_progress
        self.taken = threading.Event()
        """Set when a worker takes the call up, or when it is clear that none will."""
        self._taken_at = math.inf
        self._worker: WorkerProcess | None = None
        self._worker_lock = threading.RLock()

    def cancel(self) -> bool:
        """End the call, and the worker that runs it. Return whether it had no result yet."""
        with self._worker_lock:
            cancelled = super().cancel()
            if cancelled and self._worker is not None:
                self._worker.kill()
        self.taken.set()
        return cancelled

    def running(self) -> bool:
        """Return whether a worker has the call and no result yet."""
        return self._worker is not None and not self.done()

    def result_within(self, limit: float) -> Any:
        """Wait for the result.

        Args:
            limit: Time that the call may take from when a worker takes it up, in seconds; infinity
                for as long as it takes. The call isn't ended at its end.

        Raises:
            TimeoutError: The time is over.
            CancelledError: The call was cancelled.
        """
        left = limit
        while left > 0:
            try:
                # Not the event first: each wait that ends has a price while others calculate.
                self.exception(min(left, threading.TIMEOUT_MAX))
            except TimeoutError:
                self.taken.wait()
                left = self._taken_at + limit - time.monotonic()
            else:
                return self.result()
        raise TimeoutError

    def take_up(self) -> None:
        """Note that a worker has taken the call up."""
        self._taken_at = time.monotonic()
        self.taken.set()

    def give_to(self, worker: WorkerProcess) -> bool:
        """Note the worker that runs the call. Return whether the call is still wanted."""
        with self._worker_lock:
            if self.cancelled():
                return False
            self._worker = worker
            return True

    def take_back(self) -> bool:
        """Forget the worker. Return whether it has been left alone."""
        with self._worker_lock:
            self._worker = None
            return not self.cancelled()

    def settle(self, outcome: "Outcome") -> None:
        """Set the result, unless the call was cancelled."""
        self.taken.set()
        if not self.set_running_or_notify_cancel():
            return
        if outcome.error is not None:
            self.set_exception(outcome.error)
        else:
            self.set_result(outcome.value)


class Outcome(NamedTuple):
    """What a call came to."""

    value: Any = None
    error: BaseException | None = None


class WorkerPool(Executor):
    """Runs calls in worker processes, which start when they are first needed and are kept.

    Args:
        size: Tells how many there may be; asked at each call.
        preload: Names of modules that a worker loads in advance.
    """

    def __init__(self, size: Callable[[], int], preload: Sequence[str] = ()) -> None:
        self._size = size
        self._preload = preload
        self._changed = threading.Condition()
        self._waiting: deque[PoolFuture] = deque()
        self._running: set[PoolFuture] = set()
        self._workers: dict[threading.Thread, WorkerProcess | None] = {}
        self._leaving: set[threading.Thread] = set()
        self._idle = 0
        self._most = 0
        self._is_shut_down = False
        _pools.add(self)

    def submit(self, fn: Callable[..., Any], /, *args: Any, **kwargs: Any) -> PoolFuture:
        """Hand a call to the pool.

        Args:
            fn: A function that can be imported by its module's name.
            args: Its arguments; they and its result must be picklable.
            kwargs: Its keyword arguments.

        Raises:
            RuntimeError: The pool was shut down.
            OSError: No process can be started from this one.
        """
        return self.submit_reporting(ignore, fn, *args, **kwargs)

    def submit_reporting(
        self, on_progress: Report, fn: Callable[..., Any], /, *args: Any, **kwargs: Any
    ) -> PoolFuture:
        """Hand a call to the pool; see `submit`.

        Args:
            on_progress: Takes the fraction done that the call reports; runs in another thread.
            fn: The function.
            args: Its arguments.
            kwargs: Its keyword arguments.
        """
        if not sys.executable:
            raise OSError(
                "this process doesn't know its Python interpreter (sys.executable is empty)"
            )
        future = PoolFuture(pickle.dumps((fn, args, kwargs)), on_progress)
        size = self._size()
        with self._changed:
            if self._is_shut_down:
                raise RuntimeError("cannot schedule new calls after shutdown")
            self._most = size
            self._waiting.append(future)
            if len(self._waiting) > self._idle and self._staying() < size:
                attendant = threading.Thread(target=self._attend, daemon=True, name="sembra-worker")
                self._workers[attendant] = None
                try:
                    attendant.start()
                except BaseException:
                    del self._workers[attendant]
                    self._waiting.remove(future)
                    raise
            self._changed.notify_all()
        return future

    def run(
        self,
        entry: Callable[[dict[str, Any]], Any],
        content: dict[str, Any],
        limit: float,
        on_progress: Report,
    ) -> Any:
        """Run a job; see `sembra.local.jobs.engine.Engine`."""
        future = self.submit_reporting(on_progress, entry, content)
        with ended_with_caller(future):
            return future.result_within(limit)

    def capacity(self) -> int:
        """Return how many jobs run side by side; see `sembra.local.jobs.engine.Engine`."""
        return self._size()

    def shutdown(self, wait: bool = True, *, cancel_futures: bool = False) -> None:
        """Take no more calls, and end the workers when the calls have ended.

        Args:
            wait: Wait until that has happened.
            cancel_futures: End the calls.
        """
        with self._changed:
            self._is_shut_down = True
            self._changed.notify_all()
            calls = [*self._waiting, *self._running]
            attendants = list(self._workers)
        if cancel_futures:
            for future in calls:
                future.cancel()
        if wait:
            for attendant in attendants:
                attendant.join()

    def leave_to_parent(self) -> None:
        """Become of no use in a forked child: the workers are the parent's."""
        self._changed = threading.Condition()
        self._is_shut_down = True
        for worker in self._workers.values():
            if worker is not None:
                worker.leave_to_parent()
        self._workers.clear()
        self._leaving.clear()

    def _attend(self) -> None:
        """Give one worker its calls, and replace it when it is lost."""
        me = threading.current_thread()
        worker: WorkerProcess | None = None
        try:
            while (future := self._next_call()) is not None:
                try:
                    worker = self._give(future, worker)
                finally:
                    with self._changed:
                        self._running.discard(future)
        finally:
            self._note(None)
            if worker is not None:
                worker.clear()
            with self._changed:
                self._workers.pop(me, None)
                self._leaving.discard(me)

    def _staying(self) -> int:
        """Return how many workers there are, without those that are being cleared away."""
        return len(self._workers) - len(self._leaving)

    def _next_call(self) -> PoolFuture | None:
        """Wait for a call; None if no more is to come for this worker."""
        with self._changed:
            self._idle += 1
            try:
                while not self._waiting:
                    if self._is_shut_down or self._staying() > self._most:
                        self._leaving.add(threading.current_thread())
                        return None
                    self._changed.wait()
            finally:
                self._idle -= 1
            future = self._waiting.popleft()
            self._running.add(future)
            return future

    def _give(self, future: PoolFuture, worker: WorkerProcess | None) -> WorkerProcess | None:
        """Run a call, settle its future, and return the worker if it can go on."""
        while not future.cancelled():
            if worker is not None and worker.has_ended():
                worker.clear()
                worker = None
            try:
                if worker is None:
                    worker = WorkerProcess(self._preload)
                    self._note(worker)
            except Exception as error:
                future.settle(Outcome(error=error))
                return None
            if not future.give_to(worker):
                break
            is_sound = True
            try:
                outcome = Outcome(worker.run(future.call, future.take_up, future.on_progress))
            except NotTakenError:
                # It was lost while it waited, so the call can go to another.
                if future.take_back():
                    continue
                is_sound, outcome = False, Outcome()
            except Exception as error:
                is_sound, outcome = isinstance(error, CallError), Outcome(error=error)
            if not future.take_back() or not is_sound:
                self._note(None)
                worker.clear()
                worker = None
            future.settle(outcome)
            return worker
        future.settle(Outcome())
        return worker

    def _note(self, worker: WorkerProcess | None) -> None:
        """Note the worker of this thread, for a forked child to let go of."""
        with self._changed:
            self._workers[threading.current_thread()] = worker


_pools: "weakref.WeakSet[WorkerPool]" = weakref.WeakSet()


def _forget_after_fork() -> None:
    for pool in list(_pools):
        pool.leave_to_parent()


if hasattr(os, "register_at_fork"):
    os.register_at_fork(after_in_child=_forget_after_fork)
