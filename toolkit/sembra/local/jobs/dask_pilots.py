"""Jobs that go straight to the workers of a Dask cluster, where pilots wait for them.

A task for each job costs more than a small job does: its way leads from the application to the
scheduler, to a Dask worker and back, and its result is fetched on another. A pilot is a task, too
(`dask_worker.run_jobs`): the cluster gives it a thread of a Dask worker once there is one free. It
runs one job after the other there, which the application sends to that Dask worker itself. So the
cluster sees what it would see of jobs: it shares its threads out between them and all else, runs a
pilot whose Dask worker dies again on another, as often as it allows, and ends it with the
application.
"""

import asyncio
import itertools
import pickle
import threading
from collections.abc import Callable
from concurrent.futures import CancelledError, Future
from contextlib import suppress
from functools import partial
from typing import Any, NoReturn

from sembra.local.jobs import dask_worker

TURN = 1.0
"""How long a pilot takes jobs, in seconds. Then it leaves its thread to whatever waits for one, and
another pilot joins the line."""

LINGER = 0.1
"""How long a pilot without a job keeps its thread, in seconds."""

REACH_LIMIT = 10.0
"""Time to connect to a Dask worker, in seconds."""

AGAIN = 0.5
"""When it is tried again to connect to a Dask worker, in seconds."""


class UnreachableError(Exception):
    """This process can't connect to the Dask workers. The job hasn't been run."""


class PilotJob(Future[Callable[[], Any]]):
    """A job for a pilot. Its result is what returns the job's own, or raises its error.

    Args:
        number: Of the job, among those of its `Pilots`.
        call: See `dask_worker.run_in_pool`.
        limit: See there.
    """

    def __init__(self, number: int, call: bytes, limit: float) -> None:
        super().__init__()
        self.number = number
        self.call = call
        self.limit = limit
        self.pilot: _Pilot | None = None

    def cancel(self) -> bool:
        """End the job, with the pilot that runs it. Return whether it had no result yet."""
        cancelled = super().cancel()
        if cancelled and self.pilot is not None:
            self.pilot.task.cancel()
        return cancelled

    def settle(self, outcome: Callable[[], Any]) -> None:
        """Set the result, unless the job was cancelled."""
        if self.set_running_or_notify_cancel():
            self.set_result(outcome)


class _Pilot:
    """A pilot as the application sees it, in the thread of the client's event loop.

    Args:
        task: The future of its task.
    """

    def __init__(self, task: Any) -> None:
        self.task = task
        self.address = ""
        self.starts = 0
        self.call: asyncio.Timeout | None = None
        self._changed = asyncio.Event()

    @property
    def is_over(self) -> bool:
        """Whether the task has ended; then its future says why."""
        return bool(self.task.done())

    def change(self, address: str = "") -> None:
        """Note that the task was started on the Dask worker of an address, or has ended."""
        if address:
            self.address = address
            self.starts += 1
        self._changed.set()
        call, self.call = self.call, None
        if call is not None:
            call.reschedule(0)

    async def change_within(self, limit: float) -> bool:
        """Wait for a change since the last one, for so many seconds; return whether there was."""
        with suppress(TimeoutError):
            async with asyncio.timeout(limit):
                await self._changed.wait()
        has_changed = self._changed.is_set()
        self._changed.clear()
        return has_changed


class Pilots:
    """The pilots of this process on a cluster: as many as there are jobs that aren't done.

    Args:
        client: The connection to the cluster. All but `submit` and `close` happens in the thread of
            its event loop.
    """

    def __init__(self, client: Any) -> None:
        self.are_reachable = True
        """Whether this process can connect to the Dask workers, as far as it knows."""
        self._client = client
        self._topic = f"sembra-pilots-{client.id}"
        self._numbers = itertools.count(1)
        self._is_closed = False
        self._lock = threading.Lock()
        self._waiting: asyncio.Queue[PilotJob] = asyncio.Queue()
        self._pilots: dict[Any, _Pilot] = {}
        self._free: set[_Pilot] = set()
        self._reached: set[str] = set()
        self._flights: set[asyncio.Task[None]] = set()
        client.subscribe_topic(self._topic, self._note_start)

    def submit(self, call: bytes, limit: float) -> PilotJob:
        """Hand in a job; see `PilotJob`. It raises `UnreachableError` if no pilot can be reached.

        Raises:
            CancelledError: The pilots were closed.
        """
        job = PilotJob(next(self._numbers), call, limit)
        with self._lock:
            if self._is_closed:
                raise CancelledError
            self._client.loop.add_callback(self._enqueue, job)
        return job

    def close(self) -> None:
        """Let all pilots go. Their jobs, and those that wait, raise `CancelledError`."""
        with self._lock:
            self._is_closed = True
        self._client.sync(self._close)

    async def _close(self) -> None:
        flights = list(self._flights)
        for flight in flights:
            flight.cancel()
        await asyncio.gather(*flights, return_exceptions=True)
        self._refuse_waiting(CancelledError())

    def _note_start(self, event: tuple[float, dict[str, Any]]) -> None:
        _, start = event
        pilot = self._pilots.get(start["pilot"])
        if pilot is not None:
            pilot.change(start["address"])

    def _enqueue(self, job: PilotJob) -> None:
        self._waiting.put_nowait(job)
        self._add_pilots()

    def _add_pilots(self) -> None:
        """See to it that there is a pilot for each job that waits."""
        if self._is_closed or not self.are_reachable:
            self._refuse_waiting(CancelledError() if self._is_closed else UnreachableError())
        while self._waiting.qsize() > len(self._free):
            try:
                task = self._client.submit(dask_worker.run_jobs, self._topic, pure=False)
            except Exception as error:
                self._waiting.get_nowait().settle(partial(_fail, error))
                continue
            pilot = _Pilot(task)
            self._pilots[task.key] = pilot
            self._free.add(pilot)
            task.add_done_callback(partial(self._note_end, pilot))
            flight = asyncio.create_task(self._fly(pilot))
            self._flights.add(flight)
            flight.add_done_callback(self._flights.discard)

    def _note_end(self, pilot: _Pilot, _task: Any) -> None:
        self._client.loop.add_callback(pilot.change)

    def _refuse_waiting(self, error: Exception) -> None:
        while not self._waiting.empty():
            self._waiting.get_nowait().settle(partial(_fail, error))

    async def _fly(self, pilot: _Pilot) -> None:
        """Give a pilot jobs, as long as it has its turn and there are any."""
        try:
            while not pilot.address and not pilot.is_over:
                if not await pilot.change_within(TURN) and not self._is_any_wanted():
                    return
            end = asyncio.get_running_loop().time() + TURN
            while self._may_go_on(pilot) and asyncio.get_running_loop().time() < end:
                async with asyncio.timeout(LINGER):
                    job = await self._waiting.get()
                if job.cancelled():
                    continue
                self._free.discard(pilot)
                job.pilot = pilot
                job.settle(await self._outcome(job, pilot))
                # Whoever cancels a job ends its pilot, though maybe later.
                if job.cancelled():
                    return
                self._free.add(pilot)
            if pilot.is_over and not pilot.address and not self._waiting.empty():
                self._waiting.get_nowait().settle(partial(_end_of, pilot.task))
        except TimeoutError:
            return
        finally:
            self._free.discard(pilot)
            del self._pilots[pilot.task.key]
            # The future of a task that has ended says why as long as it isn't released.
            if not pilot.is_over:
                pilot.task.release()
            self._add_pilots()

    def _is_any_wanted(self) -> bool:
        """Return whether a job waits, and forget those that were cancelled meanwhile."""
        for _ in range(self._waiting.qsize()):
            job = self._waiting.get_nowait()
            if not job.cancelled():
                self._waiting.put_nowait(job)
        return not self._waiting.empty()

    def _may_go_on(self, pilot: _Pilot) -> bool:
        """Return whether a pilot takes another job.

        One that was started again doesn't: so each job is started as often as the cluster allows.
        """
        return (
            not self._is_closed and self.are_reachable and pilot.starts == 1 and not pilot.is_over
        )

    async def _outcome(self, job: PilotJob, pilot: _Pilot) -> Callable[[], Any]:
        """Have a job run by a pilot, wherever the cluster starts that; return what to settle."""
        order = {"number": job.number, "job": job.call, "limit": job.limit}
        try:
            while not pilot.is_over and not job.cancelled():
                if await self._reaches(pilot):
                    if answer := await self._call(pilot, order):
                        return partial(_open, answer)
                    await pilot.change_within(AGAIN)
                elif not pilot.is_over:
                    self.are_reachable = False
                    return partial(_fail, UnreachableError())
        except asyncio.CancelledError:
            return partial(_fail, CancelledError())
        except Exception as error:
            return partial(_fail, error)
        return partial(_end_of, pilot.task)

    async def _reaches(self, pilot: _Pilot) -> bool:
        """Return whether a pilot is where it was started, waiting for a start if it isn't."""
        end = asyncio.get_running_loop().time() + REACH_LIMIT
        greeting = {"number": dask_worker.GREETING, "job": b"", "limit": 0.0}
        while pilot.address not in self._reached and not pilot.is_over:
            try:
                async with asyncio.timeout_at(end):
                    if await self._call(pilot, greeting):
                        self._reached.add(pilot.address)
                    elif await pilot.change_within(AGAIN):
                        end = asyncio.get_running_loop().time() + REACH_LIMIT
            except TimeoutError:
                return False
        return not pilot.is_over

    async def _call(self, pilot: _Pilot, order: dict[str, Any]) -> bytes:
        """Return what a pilot answers; nothing if it can't be reached or has changed."""
        worker = self._client.rpc(pilot.address)
        try:
            async with asyncio.timeout(None) as pilot.call:
                hand_over = getattr(worker, dask_worker.OPERATION)
                answer: bytes = await hand_over(pilot=pilot.task.key, **order)
                return answer
        except OSError:  # a time-out is one, too
            return b""
        finally:
            pilot.call = None


def _open(answer: bytes) -> Any:
    succeeded, outcome = pickle.loads(answer)
    if succeeded:
        return outcome
    raise outcome


def _fail(error: Exception) -> NoReturn:
    raise error


def _end_of(task: Any) -> NoReturn:
    """Raise what ended a task that ends by no result."""
    task.result()
    raise CancelledError
