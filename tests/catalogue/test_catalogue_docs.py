#!/usr/bin/python3
"""test_catalogue_docs.py - the page about the catalogue: legible as the guide, and it tells every field and reason."""
import pathlib
import re
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path[:0] = [str(HERE.parent / "browser")]
from page import Page, SCHEMES, SIZES  # noqa: E402

PAGE = ROOT / "docs/catalogue.htm"


class TestCatalogueDocs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = Page()
        cls.page.open(PAGE)
        cls.codes = set(cls.page.run("return [...document.querySelectorAll('td code')].map(e => e.textContent)"))

    @classmethod
    def tearDownClass(cls):
        cls.page.__exit__()

    def test_it_is_legible_at_every_size_in_either_scheme(self):
        for size in SIZES:
            for scheme in SCHEMES:
                with self.subTest(size=size, scheme=scheme):
                    self.page.resize(size)
                    self.page.scheme(scheme)
                    self.page.open(PAGE)
                    self.assertEqual(self.page.sideways(), 0)
                    self.assertEqual(self.page.faint_texts(), [])
                    self.assertEqual(self.page.broken_pictures(), [])

    def test_every_field_of_the_data_is_told(self):
        source = (ROOT / "catalogue/catalogue_json.cpp").read_text()
        fields = set(re.findall(r'\{"(\w+)", ', source) + re.findall(r'object\["(\w+)"\]', source)
                     + re.findall(r'\\"(\w+)\\":\[', source))
        self.assertGreater(len(fields), 18)
        self.assertEqual(fields - self.codes, {"all"})  # the first of a table of words, which no pose has

    def test_every_word_of_the_data_is_told(self):
        words = set(re.findall(r'Verdict::\w+, +"([\w-]+)"', (ROOT / "catalogue/catalogue_contents.cpp").read_text()))
        source = (ROOT / "catalogue/catalogue_json.cpp").read_text()
        for table in ("kRanks", "kCategories"):
            words |= set(re.findall(r'"([\w-]+)"', re.search(table + r"\[\] = \{(.*?)\};", source, re.S).group(1)))
        self.assertGreater(len(words), 18)
        self.assertEqual(words - self.codes - {"indexed", "all"}, set())

    def test_links_lead_somewhere(self):
        for link in self.page.run("return [...document.querySelectorAll('a[href]')].map(a => a.getAttribute('href'))"):
            self.assertTrue((PAGE.parent / link).is_file(), link)

    def test_tidy_has_nothing_to_say(self):
        said = subprocess.run(["tidy", "-quiet", "-errors", "-utf8", str(PAGE)], capture_output=True, text=True)
        self.assertEqual((said.stdout, said.stderr, said.returncode), ("", "", 0))


if __name__ == "__main__":
    unittest.main()
