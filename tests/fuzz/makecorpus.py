#!/usr/bin/env python3
# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""Cuts recordings of real programs down to seeds for the fuzz targets.

usage: makecorpus.py FOLDER RECORDS RECORDING...

Writes FOLDER/recordings/NAME: the Process frame with neutral values, the first RECORDS records of each
kind and the End frame; and FOLDER/records/NAME-KIND: the kind as one byte, then the payload. A seed that is
there already is replaced.
"""
import pathlib
import struct
import sys
import zlib

HEADER_SIZES = {1: 12, 2: 40}  # by the version
PROCESS, MESSAGE, LOG, MARK, END = range(1, 6)
ADDED, CHILD_ADDED = 1, 2
LARGEST_PAYLOAD = 2000
NEUTRAL = {
    "application": "panel", "executable": "/usr/bin/panel", "pid": "1", "session": "",
    "run": "00000000-0000-4000-8000-000000000001", "started": "2026-01-01T00:00:00Z", "clock": "1",
}


def text(value):
    data = value.encode()
    return struct.pack(">I", len(data)) + data


def frame(kind, time, body):
    payload = struct.pack(">BQ", kind, time) + body
    return struct.pack(">II", len(payload), zlib.crc32(payload)) + payload


def header_size(data):
    version, = struct.unpack_from(">I", data, 8)
    return HEADER_SIZES[version]


def header(data, content):
    """The header of what the recording is cut down to."""
    kept = data[:header_size(data)]
    if len(kept) > HEADER_SIZES[1]:
        kept = kept[:16] + struct.pack(">QQQ", len(kept) + len(content), 0, 0)
    return kept


def frames(data):
    position = header_size(data)
    while position < len(data):
        length, checksum = struct.unpack_from(">II", data, position)
        payload = data[position + 8:position + 8 + length]
        assert len(payload) == length and zlib.crc32(payload) == checksum
        yield payload[0], payload[9:]
        position += 8 + length


def process(body):
    """The pairs of the Process frame, what tells of a machine replaced."""
    count, = struct.unpack_from(">I", body)
    position, pairs = 4, []
    for _ in range(count):
        pair = []
        for _ in range(2):
            length, = struct.unpack_from(">I", body, position)
            pair.append(body[position + 4:position + 4 + length].decode())
            position += 4 + length
        pairs.append((pair[0], NEUTRAL.get(pair[0], pair[1])))
    return struct.pack(">I", len(pairs)) + b"".join(text(k) + text(v) for k, v in pairs)


def record(body):
    """Kind and payload of the record in a message, or nothing where it has the form of no record."""
    length, = struct.unpack_from(">I", body, 4)
    position = 8 + length
    if body[8:position] != b"uiCoverageData" or body[position] != 4:
        return None
    kind, = struct.unpack_from(">i", body, position + 1 + 5 + 5 + 1)
    return kind, body[position + 1 + 3 * 5 + 5:]


def ids(change, payload):
    """The elements that a record is about, each as it stands in the stream."""
    length, = struct.unpack_from(">I", payload)
    first, rest = payload[4:4 + length], payload[4 + length:]
    return [first, rest[4:]] if change == CHILD_ADDED else [first]


def main():
    folder = pathlib.Path(sys.argv[1])
    for name in ("recordings", "records"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    records_of_a_kind = int(sys.argv[2])
    for path in map(pathlib.Path, sys.argv[3:]):
        data = path.read_bytes()
        out, kept, messages, announced = b"", {}, 0, b""
        for number, (kind, body) in enumerate(frames(data)):
            if kind == PROCESS:
                out += frame(kind, number, process(body))
            elif kind == MESSAGE and (found := record(body)):
                change, payload = found
                # Elements are kept in greater number, so that what comes later has something to be about.
                most = records_of_a_kind * (4 if change == ADDED else 1)
                if kept.get(change, 0) >= most or len(payload) > LARGEST_PAYLOAD:
                    continue
                if change == ADDED:
                    announced += payload
                elif not all(i in announced for i in ids(change, payload)):
                    continue
                kept[change] = kept.get(change, 0) + 1
                if kept[change] == 1:
                    seed = folder / "records" / f"{path.stem}-{change:02}"
                    seed.write_bytes(bytes([change]) + payload)
                out += frame(kind, number, body)
                messages += 1
            elif kind in (LOG, MARK) and kept.get(-kind, 0) < 3:
                kept[-kind] = kept.get(-kind, 0) + 1
                out += frame(kind, number, body)
        out += frame(END, 1000, struct.pack(">Q", messages))
        (folder / "recordings" / path.stem).write_bytes(header(data, out) + out)


if __name__ == "__main__":
    main()
