"""The router whose interface names are read."""
from __future__ import annotations

import os
import tempfile
from collections.abc import Mapping
from typing import Any

from . import _core

__all__ = ["use_profile"]


def use_profile(profile: str | os.PathLike[str] | Mapping[str, Any]) -> None:
    """Describes the router: the path of a profile, or its keys and tables as a dict.

    What a profile does not give is as in the built-in one. It holds for the whole process, with all
    its threads, and not for its other processes. The library keeps some of what it asks, so the
    router must be described before the first interface name or alias is read.

    Raises ValueError with the place of a fault, OSError for a file that cannot be read, and
    RuntimeError when a name has been read.
    """
    if not isinstance(profile, Mapping):
        path = os.fspath(profile)
        with open(path, "rb"):
            _install(path, path)
        return
    with tempfile.NamedTemporaryFile("w", encoding="utf-8", suffix=".toml") as file:
        file.write(_toml(profile))
        file.flush()
        _install(file.name, "profile")


def _install(path: str, shown: str) -> None:
    if _core.router_is_known():
        raise RuntimeError(
            "the router must be described before the first interface name or alias is read"
        )
    try:
        _core.install_router(path)
    except RuntimeError as error:
        raise ValueError(str(error).replace(path, shown)) from None


def _toml(value: Any) -> str:
    """The keys of a table, one a line; tables in it in one line, as TOML writes them in line."""
    return "".join(f"{_string(key)} = {_value(member)}\n" for key, member in value.items())


def _value(value: Any) -> str:
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, int):
        return str(value)
    if isinstance(value, str):
        return _string(value)
    if isinstance(value, Mapping):
        members = (f"{_string(key)} = {_value(member)}" for key, member in value.items())
        return "{" + ", ".join(members) + "}"
    if isinstance(value, (list, tuple)):
        return "[" + ", ".join(map(_value, value)) + "]"
    raise TypeError(f"a profile has no values of the type {type(value).__name__}")


def _string(text: Any) -> str:
    if not isinstance(text, str):
        raise TypeError(f"a key of a profile is a str, not {type(text).__name__}")
    escaped = (f"\\U{ord(c):08x}" if c in '\\"' or ord(c) < 32 or ord(c) == 127 else c for c in text)
    return '"' + "".join(escaped) + '"'
