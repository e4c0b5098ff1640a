"""worker.py ROOT BUILD NUMBER - compiles mutants and runs tests, as `run` tells it to.

Runs in a mount namespace of its own (unshare -m), in which the sources can only be read and the
folders of the build tree that mutants and tests write to are this worker's. Reads one JSON object a
line from stdin and answers each with one on stdout.
"""

import hashlib
import json
import os
import pathlib
import resource
import select
import shutil
import signal
import subprocess
import sys
import time

import build_tree
from own_time import OwnTime

GIB = 1 << 30


def mount(*arguments):
    subprocess.run(["mount", *map(str, arguments)], check=True)


class Worker:
    def __init__(self, root, build, number):
        self.tree = build_tree.Tree(root, build)
        self.own = self.tree.work / f"worker{number}"
        shutil.rmtree(self.own, ignore_errors=True)
        for folder in ("home", "tmp", "runtime", "src", "obj", "e2e_home", "cwd"):
            (self.own / folder).mkdir(parents=True)
        (self.own / "runtime").chmod(0o700)
        for folder in ("lib", "plugins"):
            shutil.copytree(build / folder, self.own / folder, symlinks=True)
        shutil.copytree(build / "tests/e2e/content", self.own / "e2e_content")
        shutil.copytree(self.tree.work / "coverage", self.own / "coverage")
        self.compile = self.tree.compile_commands()
        self.link = self.tree.link_commands()
        self.counting = False
        self.mutated = set(build_tree.LIBRARIES)  # not as they were built: linked anew next time
        self.enter()

    def enter(self):
        build, root = self.tree.build, self.tree.root
        (build / "tests/e2e/home").mkdir(exist_ok=True)
        mount("--bind", root, root)
        mount("-o", "remount,bind,ro", root)
        mount("--bind", build, build)
        mount("-o", "remount,bind,rw", build)
        os.chdir(build)  # the folder as it is mounted now
        for ours, theirs in (("lib", "lib"), ("plugins", "plugins"), ("e2e_home", "tests/e2e/home"),
                             ("e2e_content", "tests/e2e/content"), ("coverage", "mutation/coverage")):
            mount("--bind", self.own / ours, build / theirs)

    # ---- tests

    def environment(self, test):
        values = {k: v for k, v in os.environ.items() if not k.startswith(("DISPLAY", "WAYLAND"))}
        values.update(pair.split("=", 1) for pair in test["environment"])
        values.update(HOME=str(self.own / "home"), TMPDIR=str(self.own / "tmp"),
                      XDG_RUNTIME_DIR=str(self.own / "runtime"))
        return values

    def clean(self):
        for folder in ("home", "tmp", "cwd"):
            for path in (self.own / folder).iterdir():
                if path.is_dir() and not path.is_symlink():
                    shutil.rmtree(path, ignore_errors=True)
                else:
                    path.unlink()

    def run_test(self, test, limit):
        """("passed", "failed" or "timeout", seconds, the end of the output). QtTest goes on after a
        failure; here the first one ends it. The seconds and the limit are the test's own."""
        self.clean()
        process = subprocess.Popen(test["command"], cwd=self.own / "cwd", env=self.environment(test),
                                   stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT, start_new_session=True, preexec_fn=limits)
        clock, outcome, output, closed = OwnTime(process.pid), None, b"", False
        while outcome is None:
            late = clock.look() >= limit
            if not closed and select.select([process.stdout], [], [], 0 if late else 0.2)[0]:
                chunk = os.read(process.stdout.fileno(), 65536)
                output, closed = output[-100000:] + chunk, not chunk
                if b"\nFAIL!  : " in output:
                    outcome = "failed"
            elif process.poll() is not None:
                break
            elif closed:
                time.sleep(0.02)
            if late and outcome is None:
                outcome = "timeout"
        try:
            os.killpg(process.pid, signal.SIGKILL)  # its own session: what it started and left behind
        except ProcessLookupError:
            pass
        process.wait()
        process.stdout.close()
        if outcome is None:
            outcome = "passed" if process.returncode in (0, 77) else "failed"
        return outcome, clock.look(), output[-1500:].decode(errors="replace")

    # ---- orders

    def cover(self, order):
        """Runs a test with the counting libraries: which lines of which files it reaches."""
        folder = self.tree.work / "coverage"
        if not self.counting:
            self.counting = True
            for library in build_tree.LIBRARIES:
                os.replace(shutil.copy(folder / os.path.basename(library), f"{library}.new"), library)
        for path in folder.glob("*.gcda"):
            path.unlink()
        outcome, seconds, output = self.run_test(order["test"], 900)
        counted = sorted(path.name for path in folder.glob("*.gcda"))
        lines = {}
        if counted:
            text = build_tree.call([order["gcov"], "-j", "-t", *counted], folder)
            for row in text.split("\n"):
                for file in json.loads(row)["files"] if row.strip() else ():
                    name = os.path.relpath(os.path.join(self.tree.build, file["file"]), self.tree.root)
                    if name in self.compile:
                        here = lines.setdefault(name, {})
                        for line in file["lines"]:
                            at = line["line_number"]
                            here[at] = here.get(at, False) or line["count"] > 0
        return {"outcome": outcome, "seconds": seconds, "output": output, "lines": lines}

    def object_of(self, file, text):
        """Compiles it; the digest of the object, None where it does not compile."""
        source, output = self.own / "src" / file, self.own / "obj/mutant.o"
        source.parent.mkdir(parents=True, exist_ok=True)
        source.write_text(text)
        command = build_tree.mutant_command(self.compile[file], file, self.tree.root, self.own / "src",
                                            output)
        done = subprocess.run(command, cwd=self.tree.build, capture_output=True, timeout=3600)
        return hashlib.sha1(output.read_bytes()).hexdigest() if done.returncode == 0 else None

    def link_mutant(self, file):
        object_file = build_tree.output_of(self.compile[file])
        replaced = {object_file: self.own / "obj/mutant.o"}
        for library in build_tree.LIBRARIES:
            if object_file not in self.link[library] and library not in self.mutated:
                continue
            command = build_tree.relinked(self.link[library], replaced, library + ".new")
            if subprocess.run(command, cwd=self.tree.build, capture_output=True).returncode:
                return False
            os.replace(self.tree.build / (library + ".new"), self.tree.build / library)
            self.mutated.discard(library)
            if object_file in self.link[library]:
                self.mutated.add(library)
        return True

    def mutant(self, order):
        """Builds the mutant and runs its tests until one is red."""
        began = time.monotonic()
        text = (self.tree.root / order["file"]).read_text()
        plain = self.own / "obj" / (order["file"].replace("/", "_") + ".sha1")
        if not plain.exists():
            plain.write_text(self.object_of(order["file"], text) or "")
        made = self.object_of(order["file"], text[: order["start"]] + order["new"] + text[order["end"] :])
        answer = {"status": "survived", "by": "", "tests": 0, "flaky": []}
        if made is None or made == plain.read_text():
            answer["status"] = "invalid" if made is None else "same"
        elif not self.link_mutant(order["file"]):
            answer["status"] = "invalid"
        answer["build_seconds"] = time.monotonic() - began
        for test in order["tests"] if answer["status"] == "survived" else ():
            answer["tests"] += 1
            outcome, _, output = self.run_test(test, test["limit"])
            if outcome != "passed" and self.run_test(test, 2 * test["limit"])[0] == "passed":
                answer["flaky"].append(test["name"])  # red once only: it may be the load
            elif outcome != "passed":
                answer.update(status="killed", by=test["name"], how=outcome, output=output[-600:])
                break
        answer["seconds"] = time.monotonic() - began
        return answer


def limits():
    """A mutant that fills the memory or the disk fails instead."""
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
    resource.setrlimit(resource.RLIMIT_AS, (6 * GIB, 6 * GIB))
    resource.setrlimit(resource.RLIMIT_FSIZE, (GIB, GIB))


def main():
    root, build, number = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]), sys.argv[3]
    worker = Worker(root, build, number)
    print(json.dumps({"ready": True}), flush=True)
    for line in sys.stdin:
        order = json.loads(line)
        print(json.dumps(getattr(worker, order["do"])(order)), flush=True)


if __name__ == "__main__":
    main()
