"""The process of one product with one scene: does what it is told, and tells how long it took."""

import ctypes
import gc
import importlib
import os
import time
from ctypes import wintypes

import scenes

PLACES = [(x, y) for x in (400, 330, 470, 250, 550) for y in (360, 300, 420, 240)]  # pixels that are picked


class _Counters(ctypes.Structure):
    """PROCESS_MEMORY_COUNTERS of Windows."""

    _fields_ = [("size", wintypes.DWORD), ("faults", wintypes.DWORD)]
    _fields_ += [(name, ctypes.c_size_t) for name in ("peak", "resident", "a", "b", "c", "d", "e", "f")]


def _resident():
    kernel32 = ctypes.WinDLL("kernel32")
    kernel32.GetCurrentProcess.restype = wintypes.HANDLE
    kernel32.K32GetProcessMemoryInfo.argtypes = [wintypes.HANDLE, ctypes.POINTER(_Counters), wintypes.DWORD]
    told = _Counters(size=ctypes.sizeof(_Counters))
    kernel32.K32GetProcessMemoryInfo(kernel32.GetCurrentProcess(), ctypes.byref(told), told.size)
    return told.resident


class _Steps:
    """Each is timed by the milliseconds it takes, drawing included up to the last pixel."""

    def __init__(self, scene, data, picture):
        self.scene, self.data, self.picture = scene, data, picture
        self.hit = []

    def build(self):
        self.scene.build(self.data)

    def first(self):
        self.scene.look()
        self.scene.draw()

    def frame(self):
        self.scene.turn()
        self.scene.draw()

    def first_pick(self):
        """Until one hits."""
        any(self.scene.pick(*place) for place in PLACES)

    def find(self):
        """Some places where there is something, which are picked from then on."""
        end = time.monotonic() + 5
        for place in PLACES:
            if len(self.hit) < 5 and time.monotonic() < end and self.scene.pick(*place):
                self.hit.append(place)
        if not self.hit:
            raise LookupError("no pick hit anything")

    def pick(self):
        self.hit.append(self.hit.pop(0))
        self.scene.pick(*self.hit[-1])

    def change(self):
        self.scene.change()
        self.scene.draw()

    def png(self):
        self.scene.save(self.picture)


def serve(pipe, module, scene, product, scale, picture):
    """Answers (milliseconds, None) or (None, why not) to the name of a step, bytes gained to "memory"."""
    try:
        chosen = importlib.import_module(module)
        view = getattr(chosen, product)()
        data = scenes.ALL[scene](scale)
        gc.collect()
        before = _resident()
        pipe.send((chosen.VERSION, None))
    except BaseException as error:  # noqa: BLE001
        pipe.send((None, repr(error)))
        return
    steps = _Steps(view, data, picture)
    while (name := pipe.recv()) is not None:
        try:
            if name == "memory":
                pipe.send((_resident() - before, None))
            else:
                start = time.perf_counter()
                getattr(steps, name)()
                pipe.send((1000 * (time.perf_counter() - start), None))
        except Exception as error:  # noqa: BLE001
            pipe.send((None, repr(error)))
    os._exit(0)  # what a product does when it ends is not measured
