"""The components that lie beside this package: their classes, found without registration, and their errors."""

from __future__ import annotations

import ctypes
import os
from contextlib import contextmanager
from ctypes import wintypes
from typing import Any, Iterator, NoReturn, SupportsIndex

import comtypes
import comtypes.client
from comtypes import errorinfo
from comtypes.server import IClassFactory

CO_E_NOTINITIALIZED = 0x800401F0
FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "bin")


class Error(Exception):
    """What a component says of a failure.

    >>> import zynvue
    >>> zynvue.Polyline([0, 1, 2], [0, 1])
    Traceback (most recent call last):
    zynvue.Error: Coordinates are arrays of numbers, one as long as the other (0x80070057)
    """

    __module__ = "zynvue"

    def __init__(self, text: str, code: int = 0) -> None:
        self.text = text
        """Without the code."""
        self.code = code & 0xFFFFFFFF
        """The HRESULT; 0 where there is none."""
        super().__init__(*([text, self.code] if self.code else [text]))

    def __str__(self) -> str:
        return f"{self.text} (0x{self.code:08x})" if self.code else self.text


class SaveError(Error, OSError):
    """A picture that was not written, and why."""

    __module__ = "zynvue"


class LoadError(Error, ValueError):
    """What is wrong with a file, and where."""

    __module__ = "zynvue"


class Uncopied:
    """What holds objects of the components: a copy would let go of what it does not own, and end the process."""

    def __reduce_ex__(self, protocol: SupportsIndex) -> NoReturn:
        raise TypeError(f"zynvue.{type(self).__name__} is neither copied nor pickled")


@contextmanager
def told() -> Iterator[None]:
    """Failures of components within are raised as ``Error``, with their text."""
    try:
        yield
    except comtypes.COMError as error:
        text = (error.details and error.details[0]) or error.text or "Failed"
        raise Error(text.strip(), error.hresult) from None
    except OSError as error:  # of the function that finds classes
        code = (error.winerror or 0) & 0xFFFFFFFF
        text = (
            "This thread has not called comtypes.CoInitialize()"
            if code == CO_E_NOTINITIALIZED
            else error.strerror
        )
        raise Error((text or "Failed").strip(), code) from None


def told_by_success() -> str | None:
    """Why the last call, which answered success, has not done what it was asked for; None where it has."""
    told_of = errorinfo.GetErrorInfo()
    return told_of.GetDescription() if told_of else None


class _ActivationContext(ctypes.Structure):
    """ACTCTXW of Windows."""

    _fields_ = [
        ("size", wintypes.ULONG),
        ("flags", wintypes.DWORD),
        ("source", wintypes.LPCWSTR),
        ("architecture", wintypes.USHORT),
        ("language", wintypes.WORD),
        ("folder", wintypes.LPCWSTR),
        ("resource", wintypes.LPCWSTR),
        ("application", wintypes.LPCWSTR),
        ("module", wintypes.HMODULE),
    ]


_kernel32 = ctypes.WinDLL("kernel32", use_last_error=True)
_kernel32.CreateActCtxW.argtypes = [ctypes.POINTER(_ActivationContext)]
_kernel32.CreateActCtxW.restype = wintypes.HANDLE
_kernel32.ActivateActCtx.argtypes = [wintypes.HANDLE, ctypes.POINTER(ctypes.c_size_t)]
_kernel32.DeactivateActCtx.argtypes = [wintypes.DWORD, ctypes.c_size_t]


def _load_description() -> int:
    """The manifest of the components as an activation context, which lives as long as the process."""
    description = _ActivationContext()
    description.size = ctypes.sizeof(description)
    description.source = os.path.join(FOLDER, "ZYNVue.Components.manifest")
    context = _kernel32.CreateActCtxW(ctypes.byref(description))
    if context is None or context == ctypes.c_void_p(-1).value:
        raise ImportError(f"{description.source}: {ctypes.WinError(ctypes.get_last_error())}")
    return int(context)


def _load_types(name: str) -> Any:
    """The interfaces of a library; comtypes makes a module of them when they are asked for the first time."""
    path = os.path.join(FOLDER, name)
    try:
        return comtypes.client.GetModule(path)
    except (UnicodeError, SyntaxError):
        # Modules in files hold the path, in the ANSI code page; in memory any path will do.
        kept_in, comtypes.client.gen_dir = comtypes.client.gen_dir, None
        try:
            return comtypes.client.GetModule(path)
        finally:
            comtypes.client.gen_dir = kept_in


os.environ.setdefault("ZYNVUE_SILENCIEUX", "1")  # what message boxes would say is raised here
_context = _load_description()
_libraries = {
    "ZYNVue": (_load_types("ZYNVue.dll"), ""),
    "ZYNModeleGeom": (_load_types("ZYNModeleGeom.dll"), "Geom"),
}
"""Those of each library, and what its names of classes end with."""


@contextmanager
def classes_known() -> Iterator[None]:
    """Within, whatever creates objects on this thread finds the classes of the components by their names.

    So live views come without registration as well, into windows of Qt or wxPython for one.

    >>> import comtypes.client
    >>> with classes_known():
    ...     view = comtypes.client.CreateObject("ZYNVue.ZYNVue3D")
    >>> view.Count()
    0
    """
    cookie = ctypes.c_size_t()
    if not _kernel32.ActivateActCtx(_context, ctypes.byref(cookie)):
        raise ctypes.WinError(ctypes.get_last_error())
    try:
        yield
    finally:
        _kernel32.DeactivateActCtx(0, cookie)


def _newest(coclass: Any) -> Any:
    """The interface of a class that has all of its members: that which derives from its default one, if there is one."""
    default = coclass._com_interfaces_[0]
    return max((kind for kind in coclass._com_interfaces_ if issubclass(kind, default)), key=lambda kind: len(kind.__mro__))


def create(prog_id: str) -> Any:
    """A new object of a published class, as comtypes has it.

    >>> box = create("ZYNModeleGeom.Box3D")
    >>> box.XMax = 2.5
    >>> box.DX
    2.5
    """
    return create_many(prog_id, 1)[0]


def create_many(prog_id: str, count: int) -> list[Any]:
    """As many new objects of a published class."""
    library, name = prog_id.split(".")
    types, suffix = _libraries[library]
    coclass = getattr(types, name + suffix)
    with told():
        with classes_known():
            factory = comtypes.CoGetClassObject(
                coclass._reg_clsid_, comtypes.CLSCTX_INPROC_SERVER, interface=IClassFactory
            )
        return [factory.CreateInstance(None, _newest(coclass)) for _ in range(count)]
