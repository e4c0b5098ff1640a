"""The build tree of a mutation run: how its files are compiled and linked, and its tests."""

import fnmatch
import hashlib
import json
import os
import re
import shlex
import shutil
import subprocess

from mutations import ROOMS

# The libraries made of the product's objects: what unit tests link, and what posebench loads.
LIBRARIES = (*(f"lib/libquillon_{room}.so" for room in ROOMS), "plugins/Quillon.so")
OPTIONS = ["-DCMAKE_BUILD_TYPE=Release", "-DQUILLON_ASSERTS=ON", "-DQUILLON_ROOMS_SHARED=ON",
           "-DQUILLON_BENCH=OFF"]
TESTS = ("unit.*", "e2e.*")


class Failed(Exception):
    pass


def call(command, cwd, log=None):
    """Runs it; with log, a file, all output goes there. Returns stdout otherwise."""
    if log:
        with open(log, "w") as out:
            code = subprocess.call(command, cwd=cwd, stdout=out, stderr=subprocess.STDOUT)
        if code:
            raise Failed(f"{' '.join(command[:3])} failed, see {log}")
        return ""
    done = subprocess.run(command, cwd=cwd, capture_output=True, text=True)
    if done.returncode:
        raise Failed(f"{shlex.join(command)[:300]} failed:\n{done.stderr[-2000:]}")
    return done.stdout


class Tree:
    def __init__(self, root, build):
        self.root, self.build = root, build
        self.work = build / "mutation"  # everything that is not CMake's

    def make(self, jobs):
        self.work.mkdir(parents=True, exist_ok=True)
        call(["cmake", "-S", str(self.root), "-B", str(self.build), "-G", "Ninja", *OPTIONS],
             self.root, self.work / "configure.log")
        call(["ninja", "-j", str(jobs), "-C", str(self.build)], self.root, self.work / "build.log")

    def compile_commands(self):
        """{file below the root: [argument...]} for the sources of the rooms in the libraries."""
        found = {}
        for row in json.loads((self.build / "compile_commands.json").read_text()):
            file = os.path.relpath(row["file"], self.root)
            arguments = row.get("arguments") or shlex.split(row["command"])
            while "ccache" in arguments[0]:
                arguments = arguments[1:]  # each mutant is compiled once
            if file.split("/")[0] in ROOMS and "quillon_" in output_of(arguments):
                found[file] = arguments
        return found

    def link_commands(self):
        """{library below the tree: [argument...]}, run in the tree."""
        found = {}
        linker = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        for library in LIBRARIES:
            last = call(["ninja", "-t", "commands", library], self.build).strip().split("\n")[-1]
            command = last.split("&&")[1].strip()
            if f" {library} " not in command:
                raise Failed(f"cannot read the link command of {library}: {command[:200]}")
            found[library] = shlex.split(command) + linker
        return found

    def tests(self):
        """The tests that run the product: name, command, environment, alone."""
        listed = json.loads(call(["ctest", "--show-only=json-v1"], self.build))
        found = []
        for test in listed["tests"]:
            if not any(fnmatch.fnmatch(test["name"], pattern) for pattern in TESTS):
                continue
            if not test.get("command"):
                raise Failed(f"{test['name']} has not been built")
            values = {p["name"]: p["value"] for p in test.get("properties", [])}
            found.append({"name": test["name"], "command": test["command"],
                          "environment": values.get("ENVIRONMENT", []),
                          "alone": "clock" in values.get("RESOURCE_LOCK", ())})
        return found

    def fingerprint(self):
        """Changes with every source of the product, the stand-in and the tests."""
        digest = hashlib.sha256()
        for folder in (*ROOMS, "art", "host", "cmake", "samples", "tests/unit", "tests/e2e",
                       "tests/reference"):
            for path in sorted((self.root / folder).rglob("*")):
                if path.is_file() and "__pycache__" not in path.parts:
                    digest.update(f"{path.relative_to(self.root)}\0".encode())
                    digest.update(path.read_bytes())
        return digest.hexdigest()[:16]


def output_of(arguments):
    return arguments[arguments.index("-o") + 1]


def with_output(arguments, output):
    changed = list(arguments)
    changed[changed.index("-o") + 1] = str(output)
    return changed


def mutant_command(arguments, file, root, source_root, output):
    """Compiles the copy source_root/file as if it were the file of the sources. -O1 finds more of
    the mutants that are the same program than -O0 does, in little more time."""
    kept = [a for a in arguments if not re.match(r"-W(?!l,)|-O", a)]
    kept[kept.index("-c") + 1] = str(source_root / file)
    return with_output(kept, output) + [
        "-w", "-O1", "-frandom-seed=quillon", "-iquote", str((root / file).parent),
        f"-ffile-prefix-map={source_root}={root}"]


def coverage_command(arguments, output):
    kept = [a for a in arguments if not re.match(r"-W(?!l,)|-O", a)]
    return with_output(kept, output) + ["-w", "-O0", "--coverage"]


def relinked(arguments, objects, library, more=()):
    """The link command with other objects in the place of some. objects: {old: new}"""
    return with_output([str(objects.get(a, a)) for a in arguments], library) + list(more)
