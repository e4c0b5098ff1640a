"""Which tests reach which lines: one run of every test with libraries that count."""

import json
import re
import shutil

import build_tree
from build_tree import Failed
from cpp_text import tokens_of
from mutations import ROOMS


def build_counting(tree, jobs, run_parallel):
    """The libraries once more, of objects that count lines, in mutation/coverage."""
    folder, stamp = tree.work / "coverage", tree.fingerprint()
    if (folder / "stamp").exists() and (folder / "stamp").read_text() == stamp:
        return
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir()
    objects, commands = {}, []
    for file, arguments in tree.compile_commands().items():
        made = folder / (file.replace("/", "_") + ".o")
        objects[build_tree.output_of(arguments)] = made
        commands.append(build_tree.coverage_command(arguments, made))
    run_parallel(commands, tree.build, jobs)
    for library, arguments in tree.link_commands().items():
        made = folder / library.rsplit("/", 1)[1]
        build_tree.call(build_tree.relinked(arguments, objects, made, ["--coverage"]), tree.build)
    (folder / "stamp").write_text(stamp)


def collect(tree, workers, say):
    """Runs every test once, and returns what coverage.json holds."""
    gcov = shutil.which("gcov")
    if not gcov:
        raise Failed("gcov is missing; it comes with the compiler")
    tests = tree.tests()
    orders = [{"do": "cover", "test": test, "gcov": gcov} for test in tests]
    orders.sort(key=lambda o: o["test"]["alone"])
    lines, kept = {}, []

    def take(order, answer):
        test = order["test"]
        say(f"  {test['name']}: {answer['outcome']}, {answer['seconds']:.1f} s")
        if answer["outcome"] != "passed":
            say(f"WARNING: {test['name']} is red without any mutant and left out:\n"
                f"{answer['output']}")
            return
        test["seconds"] = round(answer["seconds"], 2)
        kept.append(test)
        for file, counts in answer["lines"].items():
            here = lines.setdefault(file, {})
            for line, reached in counts.items():
                at = here.setdefault(line, [])
                if reached:
                    at.append(test["name"])

    waiting = iter(orders)
    workers.serve(lambda: next(waiting, None), take)
    if not kept or not lines:
        raise Failed("no test reached any line of the product")
    left_out = sorted({test["name"] for test in tests} - {test["name"] for test in kept})
    return {"fingerprint": tree.fingerprint(), "tests": kept, "left_out": left_out, "lines": lines}


class Coverage:
    def __init__(self, tree):
        data = json.loads((tree.work / "coverage.json").read_text())
        self.root = tree.root
        self.fingerprint = data["fingerprint"]
        self.tests = {test["name"]: test for test in data["tests"]}
        for test in self.tests.values():
            test["limit"] = 10 + 4 * test["seconds"]
        self.lines = {file: {int(k): set(v) for k, v in found.items()}
                      for file, found in data["lines"].items()}
        self.statements, self.users = {}, {}

    def covering(self, mutant):
        """The tests that may notice the mutant, the fastest first."""
        names = self.of_table(mutant) if mutant.kind == "table" else self.of_code(mutant)
        found = [self.tests[name] for name in names if name in self.tests]
        return sorted(found, key=lambda t: (t["alone"], t["seconds"], t["name"]))

    def of_lines(self, file, first, last):
        """None where no line there is code."""
        here = self.lines.get(file, {})
        known = [here[k] for k in range(first, last + 1) if k in here]
        return set().union(*known) if known else None

    def of_code(self, mutant):
        found = self.of_lines(mutant.file, mutant.line, mutant.last_line)
        if found is None:  # the middle of a long statement: its lines are counted at its start
            begin = self.statement_start(mutant)
            found = self.of_lines(mutant.file, begin, mutant.last_line)
        return found if found is not None else self.of_file(mutant.file)

    def statement_start(self, mutant):
        if mutant.file not in self.statements:
            tokens = tokens_of((self.root / mutant.file).read_text())
            self.statements[mutant.file] = [
                (tokens[i].start, tokens[i].line)
                for i in range(1, len(tokens)) if tokens[i - 1].text in (";", "{", "}")]
        starts = [line for start, line in self.statements[mutant.file] if start <= mutant.start]
        return starts[-1] if starts else 1

    def of_file(self, file):
        """The tests that reach a line there that not every test reaches while it starts."""
        here = self.lines.get(file, {})
        found = set().union(*(v for v in here.values() if len(v) < len(self.tests)), set())
        return found or set(self.tests)

    def of_table(self, mutant):
        """The tests that reach a line which names the table."""
        key = mutant.file, mutant.function
        if key not in self.users:
            word = re.compile(rf"\b{re.escape(mutant.function)}\b")
            found = set()
            for room in ROOMS:
                for path in (self.root / room).glob("*.cpp"):
                    file = f"{room}/{path.name}"
                    for number, line in enumerate(path.read_text().split("\n"), 1):
                        if word.search(line):
                            found |= self.of_lines(file, number, number) or set()
            for path in (self.root / "tests/unit").glob("*/test_*.cpp"):
                text = path.read_text()
                if word.search(text):
                    found |= {f"unit.{path.parent.name}.{name}" for name in
                              re.findall(r"^QUILLON_TEST\w*\(Test(\w+)\)", text, re.M)}
            self.users[key] = found or self.of_file(mutant.file)
        return self.users[key]
