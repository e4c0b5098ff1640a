#!/usr/bin/env python3
"""Times a catalogue by the clock: makes presets, a catalogue of them, and the same again with nothing changed.
    bench/catalogue.py [files]      1200 unless told, of which half are poses of the catalogue
BUILD is the build tree (build/release). The goal is 600 poses in 60 s on two cores."""
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True
ROOT = pathlib.Path(__file__).resolve().parents[1]
GOAL_POSES, GOAL_S = 600, 60


def processor_s():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def timed(command):
    """Seconds by the clock, and of the processor with all processes that it started."""
    start, used = time.monotonic(), processor_s()
    subprocess.run(command, check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    return time.monotonic() - start, processor_s() - used


def main():
    files = int(sys.argv[1]) if len(sys.argv) > 1 else 1200
    program = pathlib.Path(os.environ.get("BUILD", ROOT / "build/release"), "bin/quillon-catalogue")
    with tempfile.TemporaryDirectory() as folder:
        content, out = folder + "/content", pathlib.Path(folder, "out")
        subprocess.run([sys.executable, ROOT / "bench/make_presets.py", content, str(files)], check=True)
        command = [program, out, "--content", content]
        (first, first_used), (again, again_used) = timed(command), timed(command)
        told = json.loads((out / "catalogue.json").read_text())
        pictures = [path for path in (out / "pictures").rglob("*.jpg")]
        poses = len(told["poses"])
        size = sum(path.stat().st_size for path in pictures)
        print("files\tposes\tpictures\ts\tprocessor s\tpictures a second\ts again\tprocessor s again\tMB of pictures")
        print("%d\t%d\t%d\t%.1f\t%.1f\t%.1f\t%.1f\t%.1f\t%.1f"
              % (files, poses, len(pictures), first, first_used, len(pictures) / first, again, again_used, size / 1e6))
        assert len(pictures) == sum(each["picture"] is not None for each in told["poses"] + told["leftOut"])
        met = poses < GOAL_POSES or first <= GOAL_S * poses / GOAL_POSES
        return 0 if met else 1


if __name__ == "__main__":
    sys.exit(main())
