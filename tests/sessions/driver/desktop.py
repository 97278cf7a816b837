# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""A desktop for one program: a display, a window manager, accessibility, a mouse and a keyboard."""

import os
import subprocess
import time

# Big enough for every window of the programs, so that none is cut off.
SCREEN = "1280x1024x24"
# What a person leaves between two clicks at least, so that two actions are no double click.
BETWEEN_CLICKS = 0.45
STEPS_OF_A_DRAG = 5
ACCESSIBILITY_BUS = "/usr/libexec/at-spi-bus-launcher"
PATIENCE = 15.0


class Desktop:
    """Xvfb with openbox; ends with the "with" that it is used in. Exports DISPLAY to this process."""

    def __init__(self):
        self._processes = []
        self._last_click = 0.0

    def __enter__(self):
        reader, writer = os.pipe()
        self._processes.append(subprocess.Popen(
            ["Xvfb", "-displayfd", str(writer), "-screen", "0", SCREEN, "-nolisten", "tcp"],
            pass_fds=[writer], stderr=subprocess.DEVNULL))
        os.close(writer)
        with os.fdopen(reader) as numbers:
            number = numbers.readline().strip()
        if not number:
            raise RuntimeError("Xvfb did not start; scripts/bootstrap installs it")
        os.environ["DISPLAY"] = ":" + number
        self._start("openbox", "--sm-disable")
        # Not by activation: a program that finds the bus on the display connects to it at once, while one that
        # asks the session often enters itself before it is connected, and then nobody sees it.
        self._start(ACCESSIBILITY_BUS, "--launch-immediately")
        self._wait_for_bus()
        return self

    def _start(self, *command):
        self._processes.append(subprocess.Popen(command, stderr=subprocess.DEVNULL))

    @staticmethod
    def _wait_for_bus():
        end = time.monotonic() + PATIENCE
        while time.monotonic() < end:
            properties = subprocess.run(["xprop", "-root", "AT_SPI_BUS"], capture_output=True, text=True, check=False)
            if "unix:" in properties.stdout:
                return
            time.sleep(0.1)
        raise RuntimeError("the accessibility bus did not start; scripts/bootstrap installs it")

    def __exit__(self, *_):
        for process in reversed(self._processes):
            process.terminate()
            process.wait()

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], check=True, stdout=subprocess.DEVNULL)

    def click(self, x, y, button=1, times=1):
        time.sleep(max(0.0, self._last_click + BETWEEN_CLICKS - time.monotonic()))
        self.xdotool("mousemove", "--sync", x, y)
        self.xdotool("click", "--repeat", times, "--delay", 40, button)
        self._last_click = time.monotonic()

    def move(self, x, y):
        self.xdotool("mousemove", x, y)

    def drag(self, x, y, dx, dy):
        """Presses there, moves by so many pixels in several steps, and lets go."""
        self.xdotool("mousemove", "--sync", x, y, "mousedown", 1)
        for step in range(1, STEPS_OF_A_DRAG + 1):
            self.xdotool("mousemove", x + dx * step // STEPS_OF_A_DRAG, y + dy * step // STEPS_OF_A_DRAG)
            time.sleep(0.03)
        self.xdotool("mouseup", 1)

    def type(self, text):
        self.xdotool("type", "--delay", 40, text)

    def press(self, keys):
        self.xdotool("key", "--delay", 60, *keys)
