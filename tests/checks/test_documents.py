#!/usr/bin/env python3
"""test_documents.py - what documents.py and documented_commands.py refuse, each in a small tree made for it."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent


class InATree(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.tree = Path(self.folder.name, "tree")
        self.write("README.md", "# Title\n\n[docs](docs/a.md#a-heading) ![p](p.png)\n")
        self.write("docs/a.md", "# A heading\n\n```\n# no heading\n```\n")
        self.write("docs/b.htm", '<p id="here"><a href="#here">x</a><a href="../README.md">y</a></p>')
        self.write("p.png", "")

    def tearDown(self):
        self.folder.cleanup()

    def write(self, name, text):
        file = self.tree / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")
        return file

    def answer(self, script, *arguments):
        ran = subprocess.run([sys.executable, "-B", HERE / script, self.tree, *arguments], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True)
        return ran.returncode, ran.stdout


class TestLinks(InATree):
    def refused(self, name, text, link):
        self.write(name, text)
        self.assertEqual(self.answer("documents.py"), (1, f"{name}: {link}\n"))

    def test_good_links_pass(self):
        self.assertEqual(self.answer("documents.py"), (0, "all links of 3 documents lead somewhere\n"))

    def test_links_to_the_network_are_not_followed(self):
        self.write("c.md", "[x](https://example.invalid/none)")
        self.assertEqual(self.answer("documents.py")[0], 0)

    def test_examples_of_links_in_code_are_none(self):
        self.write("c.md", "`[x](none.md)`\n\n```\n[y](none.md)\n```\n")
        self.assertEqual(self.answer("documents.py")[0], 0)

    def test_a_missing_file(self):
        self.refused("c.md", "[x](none.md)", "none.md")

    def test_a_missing_picture_of_a_page(self):
        self.refused("c.htm", '<img src="none.png" alt="x">', "none.png")

    def test_a_missing_heading(self):
        self.refused("c.md", "[x](docs/a.md#another)", "docs/a.md#another")

    def test_what_stands_in_a_code_block_is_no_heading(self):
        self.refused("c.md", "[x](docs/a.md#no-heading)", "docs/a.md#no-heading")

    def test_a_missing_id(self):
        self.refused("c.htm", '<a href="docs/b.htm#there">x</a>', "docs/b.htm#there")

    def test_a_file_outside(self):
        Path(self.folder.name, "outside.md").write_text("# Outside\n", encoding="utf-8")
        self.refused("c.md", "[x](../outside.md)", "../outside.md")

    def test_only_the_files_given_are_read(self):
        self.write("c.md", "[x](none.md)")
        self.assertEqual(self.answer("documents.py", self.tree / "README.md")[0], 0)


class TestCommands(InATree):
    def setUp(self):
        super().setUp()
        self.write("tool.sh", "#!/bin/bash\n[ \"$1\" = well ]\n").chmod(0o755)
        self.write("tests/checks/documented_commands.txt", "# rows\n./tool.sh well | run\n")
        self.write("a.md", "Run `./tool.sh well`, a word `tool` and the file `tool.sh`.\n")
        build = Path(self.folder.name, "build")
        build.mkdir()
        (build / "CTestTestfile.cmake").write_text('add_test(a.test "true")\n', encoding="utf-8")

    def check(self):
        work = Path(self.folder.name)
        return self.answer("documented_commands.py", work / "build", work / "work")

    def refused(self, what):
        code, said = self.check()
        self.assertEqual((code, what in said), (1, True), said)

    def rows(self, more):
        with open(self.tree / "tests/checks/documented_commands.txt", "a", encoding="utf-8") as file:
            file.write(more + "\n")

    def test_a_command_that_works_passes(self):
        self.assertEqual(self.check(), (0, "1 commands, 1 of them run\n"))

    def test_a_command_that_fails(self):
        self.write("b.md", "```\n./tool.sh badly      # a remark\n```\n")
        self.rows("./tool.sh badly | run")
        self.refused("b.md: ./tool.sh badly: ends with 1")

    def test_a_command_without_a_row(self):
        for name, text in (("b.md", "```\n./tool.sh other    in words\n```\n"), ("b.md", "`./tool.sh\nother`"),
                           ("b.htm", "<p><code>./tool.sh other</code></p>"), ("b.md", "    ./tool.sh other\n")):
            with self.subTest(text=text):
                file = self.write(name, text)
                self.refused(f"{name}: no row for: ./tool.sh other\n")
                file.unlink()

    def test_a_program_by_its_name_alone_is_a_command_in_a_block_only(self):
        self.write("sub/tool.sh", "#!/bin/bash\n").chmod(0o755)
        self.write("b.md", "The file `sub/tool.sh`.")
        self.assertEqual(self.check()[0], 0)
        self.write("b.md", "```\nsub/tool.sh\n```\n")
        self.refused("b.md: no row for: sub/tool.sh\n")

    def test_each_of_a_chain(self):
        self.write("b.md", "`./tool.sh well && ./tool.sh other`")
        self.refused("b.md: no row for: ./tool.sh other\n")

    def test_a_row_that_no_document_has(self):
        self.rows("./tool.sh old | run")
        self.refused("no document has: ./tool.sh old")

    def test_a_test_that_does_not_exist(self):
        self.write("b.md", "`./tool.sh other`")
        self.rows("./tool.sh other | test | no.test")
        self.refused("./tool.sh other: there is no test no.test")

    def test_a_test_that_exists_and_a_reason_pass(self):
        self.write("b.md", "`./tool.sh other` `./tool.sh third`")
        self.rows("./tool.sh other | test | a.test\n./tool.sh third | reason | takes an hour")
        self.assertEqual(self.check(), (0, "3 commands, 1 of them run\n"))

    def test_a_row_without_its_reason(self):
        self.write("b.md", "`./tool.sh other`")
        self.rows("./tool.sh other | reason")
        self.refused("not a row: ./tool.sh other | reason")

    def test_placeholders_are_filled_by_the_row(self):
        self.write("b.md", "`./tool.sh WORD`")
        self.rows("./tool.sh WORD | run | ./tool.sh well")
        self.assertEqual(self.check()[0], 0)


if __name__ == "__main__":
    unittest.main()
