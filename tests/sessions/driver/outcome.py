# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""Holds what a report says against what a session did."""

import re

_ORDINAL = re.compile(r" #\d+$")
_NAMED = re.compile(r'"[^"]')


class Outcome:
    """Of one session. Faults are lines of text; gaps are the controls and views that the report lists as not used."""

    def __init__(self, script, report):
        self.faults = []
        elements = [element for window in report["windows"] for element in window["elements"]]
        views = [view for window in report["windows"] for view in window["views"]]
        self.used = [element for element in elements if element["state"] == "used"]
        for action in script.actions:
            self._compare(action)
        contexts = {action.context for action in script.actions}
        for element in self.used:
            happened = {context for event in element["events"] for context in event["contexts"]}
            if not happened & contexts:
                self.faults.append(f"00 before the first action: {element['name']} is used, and nobody used it")
        self.gaps = [element["name"] for element in elements if element["state"] in ("missed", "seen", "shown")]
        self.gaps += [view["name"] for view in views if not view["seen"]]
        self.unnamed = [name for name in self.gaps if not _NAMED.search(name.rpartition(" > ")[2])]
        self.duplicates = [name for name in self.gaps if _ORDINAL.search(name) and name not in self.unnamed]

    def _compare(self, action):
        """The uses of one action: every expected one is there once, and nothing else."""
        happened = {}
        for element in self.used:
            events = sorted(event["name"] for event in element["events"]
                            if event["contexts"].get(action.context, 0) > 0)
            if events:
                happened[element["name"]] = (events, element)
        for use in action.uses:
            names = [name for name in happened if use.is_for(name)]
            if len(names) != 1:
                self._fault(action, f"{use.text}: " + ("no use of it" if not names else f"used are {', '.join(names)}"))
                continue
            events, element = happened.pop(names[0])
            if use.events is not None and events != use.events:
                self._fault(action, f"{use.text}: the events are {', '.join(events)}")
            if use.ways is not None and not set(use.ways) <= set(element["used_ways"]):
                self._fault(action, f"{use.text}: the ways are {', '.join(element['used_ways']) or 'none'}")
        for name, (events, _) in happened.items():
            self._fault(action, f"{name} ({', '.join(events)}) is used, and nobody used it")

    def _fault(self, action, text):
        self.faults.append(f"{action.context} {action.text}: {text}")
