#!/usr/bin/env python3
# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""Makes recordings that still grow, or whose application was killed, out of a whole one of version 2.

usage: makegrowing.py RECORDING FOLDER

Writes FOLDER/growing: room behind its end; growing-held: a place that a process took and did not fill,
with Marks behind it; growing-marked: the same, closed by the next process with a frame of type 0;
growing-unfinished: a frame that the application took the place for and did not write.
"""
import pathlib
import struct
import sys

from makecorpus import END, MARK, MESSAGE, PROCESS, frame, frames, header_size, text

ROOM = 64
HELD = 40
MOST = 1500


def shared(data, content, held=(0, 0), room=ROOM):
    end = header_size(data) + len(content)
    return data[:16] + struct.pack(">QQQ", end, *held) + content + b"\0" * room


def main():
    data = pathlib.Path(sys.argv[1]).read_bytes()
    folder = pathlib.Path(sys.argv[2])
    content, mark, messages = b"", b"", 0
    for number, (kind, body) in enumerate(frames(data)):
        if kind == PROCESS or kind != END and len(content) < MOST:
            content += frame(kind, number, body)
            messages += kind == MESSAGE
    for number, name in enumerate(("first", "second", "")):
        mark += frame(MARK, 500 + number, text(name))
    place = header_size(data) + len(content)
    filler = frame(0, 0, b"\0" * (HELD - 8 - 9))
    unfinished = content + b"\0" * 8 + mark[8:]
    end = frame(END, 900, struct.pack(">Q", messages))
    made = {
        "growing": shared(data, content + mark),
        "growing-held": shared(data, content + b"\0" * HELD + mark, (place, HELD)),
        "growing-marked": shared(data, content + filler + mark + end + mark),
        "growing-unfinished": shared(data, unfinished),
    }
    for name, recording in made.items():
        (folder / name).write_bytes(recording)


if __name__ == "__main__":
    main()
