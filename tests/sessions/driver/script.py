# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""A session as it is written down: README.md beside the sessions says how."""

import re
import shlex

ARROW = " -> "
NOTHING = "nothing"
_USE = re.compile(r"""(?P<name>.+?)            # Dialog "Find" > Button "Next", or the end of it
                      (?:\ \((?P<events>[A-Za-z, ]+)\))?
                      (?:\ by\ (?P<ways>[A-Za-z, ]+))?$""", re.VERBOSE)


class Use:
    """A control as the report is to list it: the end of its name, perhaps its events and ways."""

    def __init__(self, text):
        parts = _USE.match(text)
        self.text = text
        self.name = parts["name"]
        self.events = _names(parts["events"])
        self.ways = _names(parts["ways"])

    def is_for(self, name):
        return name == self.name or name.endswith(" > " + self.name)


class Action:
    """One line: what a person does, and which controls that uses."""

    def __init__(self, number, line, text):
        does, arrow, uses = text.rpartition(ARROW)
        if not arrow:
            raise ValueError(f"line {line}: no '{ARROW.strip()}' says what the action uses")
        self.number = number
        self.text = does.strip()
        self.words = shlex.split(does)
        uses = uses.strip()
        self.uses = [] if uses == NOTHING else [Use(use.strip()) for use in uses.split(" + ")]

    @property
    def context(self):
        return f"{self.number:02}"


class Script:
    """The program with its arguments, and the actions in their order."""

    def __init__(self, path):
        self.program = None
        self.actions = []
        with open(path, encoding="utf-8") as lines:
            for number, line in enumerate(lines, 1):
                line = line.strip()
                if not line or line.startswith("#"):
                    continue
                if self.program is None:
                    word, *self.program = shlex.split(line)
                    if word != "program" or not self.program:
                        raise ValueError(f"{path}: the first line says 'program' and what to start")
                else:
                    self.actions.append(Action(len(self.actions) + 1, number, line))


def _names(text):
    return None if text is None else sorted(re.split(r"[, ]+", text.strip()))
