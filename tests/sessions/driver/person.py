# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""Does what an action says, with the mouse and the keyboard."""

import re
import time

# What a program does for a person a moment after the input: a button that is let go by itself, a menu that fades in.
AFTERMATH = 0.4
_POINT = re.compile(r"-?\d+,-?\d+$")
LEFT, RIGHT, WHEEL_UP, WHEEL_DOWN = 1, 3, 4, 5


class Person:
    def __init__(self, desktop, accessibles):
        self._desktop = desktop
        self._accessibles = accessibles
        self._verbs = {
            "click": lambda words: self._click(words, LEFT),
            "right-click": lambda words: self._click(words, RIGHT),
            "double-click": lambda words: self._click(words, LEFT, 2),
            "wheel-up": lambda words: self._click(words, WHEEL_UP),
            "wheel-down": lambda words: self._click(words, WHEEL_DOWN),
            "drag": self._drag,
            "menu": self._menu,
            "type": lambda words: desktop.type(words[0]),
            "key": desktop.press,
        }

    def act(self, words):
        """Raises NotFound where there is nothing of that name; ValueError for a verb that there is not."""
        verb, *rest = words
        if verb not in self._verbs:
            raise ValueError(f"there is no action '{verb}', only {', '.join(sorted(self._verbs))}")
        self._verbs[verb](rest)
        time.sleep(AFTERMATH)
        self._accessibles.settle()

    def _point(self, words):
        """From "NAME ROLE... [#ORDINAL] [at X,Y]": the middle of that thing, or so far from its top left corner."""
        name, *words = words
        offset = None
        if len(words) > 2 and words[-2] == "at":
            offset = _pair(words[-1])
            words = words[:-2]
        ordinal = 1
        if words[-1].startswith("#"):
            ordinal = int(words.pop()[1:])
        x, y, width, height = self._accessibles.place(name, " ".join(words), ordinal)
        dx, dy = offset or (width // 2, height // 2)
        return x + dx, y + dy

    def _click(self, words, button, times=1):
        self._desktop.click(*self._point(words), button=button, times=times)

    def _drag(self, words):
        """drag NAME ROLE... by DX,DY"""
        *what, by, distance = words
        if by != "by":
            raise ValueError("drag NAME ROLE by DX,DY")
        self._desktop.drag(*self._point(what), *_pair(distance))

    def _menu(self, words):
        """menu NAME...: one after the other, each from the menu that the one before brought up."""
        for name in words:
            self._desktop.click(*self._point([name, "menu", "item"]))
            time.sleep(AFTERMATH)


def _pair(text):
    if not _POINT.match(text):
        raise ValueError(f"'{text}' is no X,Y")
    first, second = text.split(",")
    return int(first), int(second)
