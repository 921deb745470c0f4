"""Calls that take long: on a thread of their own, so that Ctrl-C is seen, and their pieces on all cores."""
from __future__ import annotations

import ctypes
import functools
import os
import queue
import threading
from collections.abc import Callable
from typing import Any

from ._structures import CANCEL, PARALLEL, PROGRESS

Progress = Callable[[float, int], object]


@functools.cache
def stop_when_told() -> Any:
    """C's atoi: as a cancel callback it answers with the number in the text that it is given. Python would answer
    slower than the library works."""
    return ctypes.cast(ctypes.CDLL(None).atoi, CANCEL)


class Aside:
    """One call of the library that may be stopped: ``stop_when_told()`` is its cancel callback, ``told`` its progress
    callback and ``user`` what both are given."""

    def __init__(self) -> None:
        self._stop = ctypes.create_string_buffer(b"0")
        self.user = ctypes.addressof(self._stop)
        self._events: queue.SimpleQueue[tuple[float, int] | BaseException | None] = queue.SimpleQueue()
        self.told = PROGRESS(lambda share, records, _: self._events.put((share, records)))

    def _work(self, call: Callable[[], object]) -> None:
        try:
            call()
            self._events.put(None)
        except BaseException as error:  # raised again in the caller's thread
            self._events.put(error)

    def run(self, call: Callable[[], object], progress: Progress | None = None) -> None:
        """Makes the call on another thread. What comes up here meanwhile, Ctrl-C for one, stops it."""
        thread = threading.Thread(target=self._work, args=(call,), name="vexroc")
        try:
            thread.start()
            while isinstance(event := self._events.get(), tuple):
                if progress is not None:
                    progress(*event)
        except BaseException:
            self._stop[0] = b"1"
            raise
        finally:
            if thread.ident is not None:
                thread.join()
        if event is not None:
            raise event


def _cores() -> int:
    return len(os.sched_getaffinity(0)) if hasattr(os, "sched_getaffinity") else os.cpu_count() or 1


def _share_out(pieces: int, piece: Callable[[Any, int], None], work: Any, _: Any) -> None:
    """Runs each piece once, on as many threads as there are cores, or as can be started."""
    indices = iter(range(pieces))

    def take() -> None:
        for index in indices:
            piece(work, index)

    helpers = []
    for _ in range(min(pieces, _cores()) - 1):
        helper = threading.Thread(target=take, name="vexroc piece")
        try:
            helper.start()
        except RuntimeError:  # no more threads for this process
            break
        helpers.append(helper)
    take()
    for helper in helpers:
        helper.join()


@functools.cache
def on_all_cores() -> Any:
    """As a parallel callback it shares pieces out. The library releases the interpreter lock in each."""
    return PARALLEL(_share_out)
