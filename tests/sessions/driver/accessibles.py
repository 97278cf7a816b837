# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""Where things are on the screen, as the program tells assistive technology: nothing of it comes from a recording."""

import itertools
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402  (the version has to be chosen first)

# A loaded machine brings up a dialog in seconds.
PATIENCE = 25.0
ANSWER_MS = 2000
# Tables of characters have thousands of cells; nobody names one behind these.
CHILDREN_LOOKED_AT = 200
DEPTH = 40


class NotFound(Exception):
    """Nothing on the screen is called like that."""


class Accessibles:
    """The applications that are on the bus of this session."""

    def __init__(self):
        Atspi.init()
        Atspi.set_timeout(ANSWER_MS, ANSWER_MS)
        self._desktop = Atspi.get_desktop(0)
        # Applications do not tell every change, so what is remembered may be wrong.
        self._desktop.set_cache_mask(Atspi.Cache.NONE)
        # Brings up the registry, where a program that starts afterwards enters itself.
        self._desktop.get_child_count()

    def place(self, name, role, ordinal=1):
        """The rectangle (x, y, width, height) in pixels of the screen of the so-manieth thing of that name and
        role which can be seen. Waits for it; NotFound when it does not come."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            matching = (accessible for _, accessible, what, called in self._seen() if what == role and called == name)
            found = next(itertools.islice(matching, ordinal - 1, None), None)
            if found is not None and (place := self._resting_place(found)):
                return place
            time.sleep(0.1)
        raise NotFound(f'there is no {role} "{name}"' + (f" #{ordinal}" if ordinal > 1 else "") + " on the screen")

    def wait_for_window(self):
        """Returns when an application shows anything; NotFound when none does."""
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            if any(depth == 1 for depth, *_ in self._seen(deepest=1)):
                return
            time.sleep(0.1)
        raise NotFound("the program shows no window")

    def settle(self):
        """Returns when every application has answered, which it does after what it was told before."""
        for _ in self._seen(deepest=1):
            pass

    def tree(self):
        """Everything that can be seen, a line each, for whoever writes a session."""
        return "\n".join(f'{"  " * depth}"{name}" {role} {self._place(accessible)}'
                         for depth, accessible, role, name in self._seen())

    def _resting_place(self, accessible):
        """Nothing while the window manager still moves its window, or it has no size."""
        before = self._place(accessible)
        time.sleep(0.05)
        return before if before == self._place(accessible) and before[2] > 0 else None

    @staticmethod
    def _place(accessible):
        try:
            extents = accessible.get_extents(Atspi.CoordType.SCREEN)
        except GLib.Error:
            return (0, 0, 0, 0)  # gone in the meantime
        return (extents.x, extents.y, extents.width, extents.height)

    def _seen(self, deepest=DEPTH):
        for application in self._children(self._desktop):
            yield from self._walk(application, 0, deepest, "")

    def _walk(self, accessible, depth, deepest, role_above):
        try:
            role = accessible.get_role_name()
            if depth > 0:
                # The entries of a combo box are not on the screen, whatever it says.
                if role == "list" and role_above == "combo box":
                    return
                if not accessible.get_state_set().contains(Atspi.StateType.SHOWING):
                    return
                yield depth, accessible, role, accessible.get_name() or ""
        except GLib.Error:
            return  # gone in the meantime
        if depth < deepest:
            for child in self._children(accessible):
                yield from self._walk(child, depth + 1, deepest, role)

    @staticmethod
    def _children(accessible):
        try:
            count = min(accessible.get_child_count(), CHILDREN_LOOKED_AT)
            children = [accessible.get_child_at_index(index) for index in range(count)]
        except GLib.Error:
            return []
        return [child for child in children if child is not None]
