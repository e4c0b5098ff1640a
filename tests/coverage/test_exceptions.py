#!/usr/bin/env python3
"""test_exceptions.py - what exceptions.py takes and refuses, and how report.py counts."""
import tempfile
import unittest
from pathlib import Path

from exceptions import Refused, read_exceptions
from report import counted

SOURCE = "int f()\n{\n    if (a)\n        return 1;\n    return 2;\n}\nint g()\n{\n    if (b)\n        return 1;\n}\n"


def line(number, count, *branches):
    return {"line_number": number, "count": count, "branches": [{"count": each} for each in branches]}


class Exceptions(unittest.TestCase):
    def read(self, text):
        with tempfile.TemporaryDirectory() as folder:
            for name, content in (("ground/a.cpp", SOURCE), ("tests/coverage/exceptions.txt", text)):
                path = Path(folder, name)
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text(content, encoding="utf-8")
            return read_exceptions(folder)

    def refuses(self, text, words):
        with self.assertRaises(Refused) as caught:
            self.read(text)
        self.assertIn(words, str(caught.exception))

    def test_lines_are_found(self):
        text = "# a remark\nfile: ground/a.cpp\n1 branch:  if  (a)\nunreached: return 2;\nreason: so\n  it is\n"
        self.assertEqual(self.read(text), {"ground/a.cpp": {3: 1, 5: None}})

    def test_a_line_that_stands_twice_is_found_behind_another(self):
        text = "file: ground/a.cpp\nin: int g()\nunreached: return 1;\nreason: so\n"
        self.assertEqual(self.read(text), {"ground/a.cpp": {10: None}})

    def test_refusals(self):
        for text, words in (
                ("file: ground/a.cpp\nunreached: return 3;\nreason: so\n", "no such line any more"),
                ("file: ground/a.cpp\nunreached: return 2;\nunreached: if (a)\nreason: so\n", "no such line any more"),
                ("file: ground/a.cpp\nin: int h()\nunreached: return 1;\nreason: so\n", "no such line any more"),
                ("file: ground/a.cpp\nunreached: return 1;\nreason: so\n", "more than once"),
                ("file: ground/b.cpp\nunreached: return 1;\nreason: so\n", "there is no ground/b.cpp"),
                ("file: ground/a.cpp\nunreached: return 2;\n", "without reason"),
                ("file: ground/a.cpp\nreason: so\n", "without rows"),
                ("file: ground/a.cpp\nunreached return 2;\nreason: so\n", "no row of an entry"),
                ("file: ground/a.cpp\nunreached: return 2;\nreason: so\n\n" * 2, "has an entry already")):
            self.refuses(text, words)

    def test_what_is_excepted_does_not_count(self):
        file = {"lines": [line(1, 1, 1, 0), line(2, 0, 0, 0), line(3, 1)]}
        bare, some = counted(file, {}), counted(file, {1: 1, 2: None})
        self.assertEqual((bare.lines.done, bare.lines.total), (2, 3))
        self.assertEqual((bare.branches.done, bare.branches.total), (1, 4))
        self.assertEqual(bare.missed, ["1 (1 of 2 branches)", "2"])
        self.assertEqual((some.lines.done, some.lines.total, some.lines.excepted), (2, 2, 1))
        self.assertEqual((some.branches.done, some.branches.total, some.branches.excepted), (1, 1, 3))
        self.assertEqual(some.missed, [])

    def test_no_more_is_excepted_than_was_listed(self):
        reached = counted({"lines": [line(1, 1, 0, 0, 1)]}, {1: 1})
        self.assertEqual((reached.branches.done, reached.branches.total), (1, 2))
        self.assertEqual(reached.missed, ["1 (1 of 3 branches)"])

    def test_an_excepted_branch_does_not_hide_its_line(self):
        reached = counted({"lines": [line(1, 0, 0, 0)]}, {1: 1})
        self.assertEqual((reached.lines.done, reached.lines.total), (0, 1))

    def test_what_is_reached_all_the_same_is_told(self):
        self.assertEqual(counted({"lines": [line(1, 1, 1, 1)]}, {1: 1}).needless, ["1"])
        self.assertEqual(counted({"lines": [line(1, 1)]}, {1: None}).needless, ["1"])


if __name__ == "__main__":
    unittest.main()
