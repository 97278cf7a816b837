#!/usr/bin/env python3
# SPDX-FileCopyrightText: the uicov authors
# SPDX-License-Identifier: MIT

"""Interrupts what writes data files at random moments and looks at what is left.

Each round starts one command (or two at once) that changes a data file, ends it by KILL, INT, TERM or
a file size limit, and then checks: the file alone, copied elsewhere, is sound; a verb reads it at once;
it holds the runs of before or those of after, no mixture; and nothing lies beside it.
"""

import argparse
import collections
import json
import os
import random
import resource
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time
import uuid
import zlib

HEADER_SIZE = 12  # of a recording of version 1
PATIENCE = 60  # seconds after which a command counts as hanging
READERS = [
    ["report"], ["json"], ["junit"], ["badge"], ["dump"], ["html", "-q", "-o", "OUT"],
    ["diff", "BASE"], ["combine", "-q", "-o", "OUT"],
]


def with_new_uuid(recording):
    """The recording as another run: its first frame names the run."""
    length = int.from_bytes(recording[HEADER_SIZE:HEADER_SIZE + 4], "big")
    start = HEADER_SIZE + 8
    payload = bytearray(recording[start:start + length])
    key = payload.index(b"\0\0\0\3run\0\0\0\x24") + 11
    name = str(uuid.uuid4())
    payload[key:key + 36] = name.encode()
    checksum = zlib.crc32(payload).to_bytes(4, "big")
    return name, recording[:HEADER_SIZE + 4] + checksum + bytes(payload) + recording[start + length:]


def content(path):
    """Of each run in the file how many elements it has; raises where the file is not sound."""
    database = sqlite3.connect(path)
    try:
        check = database.execute("PRAGMA integrity_check").fetchone()[0]
        if check != "ok":
            raise sqlite3.DatabaseError(check)
        return dict(database.execute(
            "SELECT uuid, (SELECT count(*) FROM element WHERE run = run.id) FROM run"))
    finally:
        database.close()


class Interruptions:
    def __init__(self, arguments, folder):
        self.uicov = arguments.uicov
        self.application = arguments.application
        self.folder = folder
        self.place = os.path.join(folder, "place")  # of the data file, and of nothing else
        self.temporary = os.path.join(folder, "temporary")
        self.file = os.path.join(self.place, "x.uicov")
        self.base = os.path.join(folder, "base.uicov")
        self.failures = []
        self.tally = collections.Counter()
        self.outcomes = collections.Counter()
        for made in (self.place, self.temporary):
            os.mkdir(made)
        self.environment = dict(os.environ, TMPDIR=self.temporary, UICOV_CLASSIC="1")
        for name in ("UICOV_FILE", "UICOV_CONFIG"):
            self.environment.pop(name, None)
        self.prepare(arguments.recordings)

    def prepare(self, recordings):
        originals = []
        for name in sorted(os.listdir(recordings)):
            if name.endswith(".uirec"):
                with open(os.path.join(recordings, name), "rb") as file:
                    data = file.read()
                if data[8:12] == b"\0\0\0\1":
                    originals.append(data)
        self.new = []  # a recording each, with the name of its run
        for i in range(24):
            name, data = with_new_uuid(originals[i % len(originals)])
            path = os.path.join(self.folder, "%d.uirec" % i)
            with open(path, "wb") as file:
                file.write(data)
            self.new.append((path, name))
        self.plain(["combine", "-q", "-o", self.base] + [path for path, _ in self.new[:16]])
        self.shard = os.path.join(self.folder, "shard.uicov")
        self.plain(["combine", "-q", "-o", self.shard] + [path for path, _ in self.new[16:20]])
        self.shard_runs = {name for _, name in self.new[16:20]}
        self.before = content(self.base)
        self.durations = {}

    def plain(self, arguments):
        subprocess.run([self.uicov] + arguments, check=True, env=self.environment, timeout=PATIENCE,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    # What is interrupted: the arguments, and whether runs are what they may be after it.

    def operations(self):
        before = set(self.before)
        extra = {self.new[20][1]}
        erased = random.choice(sorted(before))
        one_new = lambda kept: lambda runs: kept <= runs and len(runs - kept) == 1
        return {
            "append recording": (["combine", "-q", "-a", "-o", self.file, self.new[20][0]],
                                 lambda runs: runs == before | extra),
            "append data file": (["combine", "-q", "-a", "-o", self.file, self.shard],
                                 lambda runs: runs == before | self.shard_runs),
            "combine": (["combine", "-q", "-o", self.file, self.shard, self.new[20][0]],
                        lambda runs: runs == self.shard_runs | extra),
            "run -a": (["run", "-q", "-a", "-o", self.file, "--", self.application], one_new(before)),
            "run": (["run", "-q", "-o", self.file, "--", self.application],
                    lambda runs: len(runs) == 1 and not runs & before),
            "erase": (["erase", "-q", "--run", erased, self.file],
                      lambda runs: runs == before - {erased}),
        }

    def reset(self):
        for folder in (self.place, self.temporary):
            shutil.rmtree(folder)
            os.mkdir(folder)
        shutil.copyfile(self.base, self.file)

    def duration(self, operation):
        """Of the operation when nothing interrupts it; seconds."""
        if operation not in self.durations:
            times = []
            for _ in range(3):
                self.reset()
                start = time.monotonic()
                self.plain(self.operations()[operation][0])
                times.append(time.monotonic() - start)
            self.durations[operation] = sorted(times)[1]
        return self.durations[operation]

    def start(self, arguments, limit=None):
        def prepare_child():
            signal.signal(signal.SIGXFSZ, signal.SIG_DFL)  # which Python ignores
            if limit is not None:
                resource.setrlimit(resource.RLIMIT_FSIZE, (limit, limit))
        return subprocess.Popen([self.uicov] + arguments, env=self.environment, preexec_fn=prepare_child,
                                stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE, text=True)

    def round(self, number):
        operation = random.choice(sorted(self.operations()))
        kind = random.choice(["KILL", "INT", "TERM", "XFSZ"])
        has_company = random.random() < 0.25
        duration = self.duration(operation)
        self.reset()
        arguments, is_done = self.operations()[operation]
        limit = random.randrange(0, int(os.path.getsize(self.file) * 1.3)) if kind == "XFSZ" else None
        label = "round %d, %s, %s%s" % (number, operation, kind, ", two processes" if has_company else "")
        process = self.start(arguments, limit)
        other = None
        if has_company:
            other = self.start(["combine", "-q", "-a", "-o", self.file, self.new[21][0]])
        if kind != "XFSZ":
            time.sleep(random.uniform(0, duration * (2 if has_company else 1.1)))
            process.send_signal(getattr(signal, "SIG" + kind))
        said = ""
        try:
            said = process.communicate(timeout=PATIENCE)[1]
            if other:
                other_said = other.communicate(timeout=PATIENCE)[1]
                if other.returncode != 0:
                    self.fail(label, "the other process ended with %d: %s" % (other.returncode, other_said))
        except subprocess.TimeoutExpired:
            self.fail(label, "hangs")
            for each in filter(None, (process, other)):
                each.kill()
                each.wait()
        self.tally[kind] += 1
        self.check(label, kind, process.returncode, said, is_done, {self.new[21][1]} if other else set())

    def check(self, label, kind, status, said, is_done, company):
        if kind == "XFSZ" and status != 0 and not said:
            self.fail(label, "ended with %d and said nothing" % status)
        copy = os.path.join(self.folder, "copy.uicov")
        shutil.copyfile(self.file, copy)
        try:
            runs = content(copy)
        except sqlite3.Error as error:
            self.fail(label, "the file alone is not sound: %s" % error)
            runs = {}
        changed = [name for name in runs if runs[name] != self.before.get(name, runs[name])]
        if changed:
            self.fail(label, "runs were changed: %s" % changed)
        # The other process may have come before what replaces the file, so it need not be left.
        was_done = is_done(set(runs) - company)
        was_not = set(runs) - company == set(self.before)
        self.outcomes["done" if was_done else "not done"] += 1
        if not was_done and not was_not:
            self.fail(label, "holds neither what it held before nor what it is to hold")
        if status == 0 and not was_done:
            self.fail(label, "ended with 0, but the change is not there: %s" % said)
        self.look(label, kind)

    def look(self, label, kind):
        words = random.choice(READERS)
        out = os.path.join(self.folder, "out")
        arguments = [{"OUT": out, "BASE": self.base}.get(word, word) for word in words] + [self.file]
        read = subprocess.run([self.uicov] + arguments, env=self.environment, timeout=PATIENCE,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        if read.returncode != 0:
            self.fail(label, "%s ended with %d: %s" % (words[0], read.returncode, read.stderr))
        if os.path.exists(out):
            os.remove(out)
        left = set(os.listdir(self.place)) - {"x.uicov"}
        kept = {name for name in left if name.startswith("x.uicov.run-")}
        if kept and kind in ("KILL", "XFSZ"):
            self.resume(label, kept)
            left -= kept
        if left:
            self.fail(label, "left beside the file: %s" % sorted(left))
        if kind != "KILL" and os.listdir(self.temporary):
            self.fail(label, "left in the temporary folder: %s" % os.listdir(self.temporary))

    def resume(self, label, folders):
        """What a run that was killed, or could not be kept, has left is taken in as it says."""
        for name in folders:
            folder = os.path.join(self.place, name)
            if not any(entry.endswith(".uirec") for entry in os.listdir(folder)):
                continue
            added = subprocess.run([self.uicov, "combine", "-q", "-a", "-o", self.file, folder],
                                   env=self.environment, timeout=PATIENCE, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.PIPE, text=True)
            # A recording that a limit cut off within its first bytes cannot be used, and that is said.
            if added.returncode != 0 and "[input-" not in added.stderr:
                self.fail(label, "what the run left cannot be taken in: %s" % added.stderr)

    def fail(self, label, what):
        self.failures.append("%s: %s" % (label, what.strip()))
        print(self.failures[-1], flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("uicov", help="path of the command")
    parser.add_argument("application", help="path of a program that records itself at once")
    parser.add_argument("recordings", help="folder with recordings of version 1")
    parser.add_argument("--rounds", type=int, default=1000)
    parser.add_argument("--seconds", type=float, help="stop after so long")
    parser.add_argument("--seed", type=int, default=None)
    arguments = parser.parse_args()
    seed = random.randrange(1 << 32) if arguments.seed is None else arguments.seed
    random.seed(seed)
    with tempfile.TemporaryDirectory() as folder:
        interruptions = Interruptions(arguments, folder)
        start = time.monotonic()
        rounds = 0
        while rounds < arguments.rounds:
            if arguments.seconds and time.monotonic() - start > arguments.seconds:
                break
            interruptions.round(rounds)
            rounds += 1
    print("%d interruptions (%s), seed %d: %s; %d failures" % (
        rounds, json.dumps(interruptions.tally, sort_keys=True), seed,
        ", ".join("%d %s" % (count, what) for what, count in sorted(interruptions.outcomes.items())),
        len(interruptions.failures)))
    return 1 if interruptions.failures or rounds == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
