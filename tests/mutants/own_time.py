"""The time of a test without the time it had to wait for a processor: a loaded machine does not make
a test late, and one that hangs, busy or asleep, still is."""

import os
import time

PROC = "/proc"


def waited(session, proc=PROC):
    """{process: seconds its main thread has stood ready without a processor}, of a session."""
    found = {}
    for name in os.listdir(proc):
        if not name.isdigit():
            continue
        try:
            with open(f"{proc}/{name}/stat") as file:
                # "pid (name) state parent group session ..."; the name may hold anything
                if int(file.read().rpartition(")")[2].split()[3]) != session:
                    continue
            with open(f"{proc}/{name}/schedstat") as file:
                found[int(name)] = int(file.read().split()[1]) / 1e9
        except (OSError, IndexError, ValueError):
            continue  # it has ended meanwhile, or the kernel does not tell
    return found


class OwnTime:
    """A clock for a session of processes. Of what passes between two looks it takes off the longest
    wait of any of them. A wait is told when it has ended, so the clock may go back a little. It never
    runs slower than a tenth of the real one."""

    def __init__(self, session, clock=time.monotonic, waits=waited):
        self.session, self.clock, self.waits = session, clock, waits
        self.began = self.looked = clock()
        self.before, self.own = waits(session), 0.0

    def look(self):
        """The seconds so far; look about five times a second."""
        now = self.clock()
        if now - self.looked >= 0.1:
            waits = self.waits(self.session)
            longest = max((wait - self.before.get(pid, 0) for pid, wait in waits.items()), default=0)
            self.own = max(0, self.own + now - self.looked - longest)
            self.looked, self.before = now, waits
        return max(self.own, (now - self.began) / 10)
