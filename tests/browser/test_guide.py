#!/usr/bin/python3
"""test_guide.py GUIDE - the user's guide as readers have it: narrow and wide, light and dark."""
import json
import pathlib
import subprocess
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from page import SCHEMES, SIZES, Page  # noqa: E402

GUIDE = pathlib.Path(sys.argv.pop()).resolve()
# Words of the tables' first column that stand on two lines.
CUT_WORDS = r"""
const cut = [];
for (const cell of document.querySelectorAll("td:first-child")) {
  const walker = document.createTreeWalker(cell, NodeFilter.SHOW_TEXT);
  while (walker.nextNode())
    for (const word of walker.currentNode.data.matchAll(/[\w]+/g)) {
      const range = document.createRange();
      range.setStart(walker.currentNode, word.index);
      range.setEnd(walker.currentNode, word.index + word[0].length);
      if (range.getClientRects().length > 1)
        cut.push(word[0]);
    }
}
return cut;
"""
NUMBERED = ("page_main", "page_picker", "page_browsing")


class TestGuide(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = Page()

    @classmethod
    def tearDownClass(cls):
        cls.page.__exit__()

    def each_way(self):
        for size in SIZES:
            for scheme in SCHEMES:
                self.page.resize(size)
                self.page.scheme(scheme)
                self.page.open(GUIDE)
                yield self.page, f"at {size[0]} px, {scheme}"

    def test_nothing_scrolls_sideways(self):
        for page, way in self.each_way():
            self.assertEqual(page.sideways(), 0, way)

    def test_no_word_is_cut_in_two(self):
        for file in (GUIDE, GUIDE.with_name("catalogue.htm")):
            for size in SIZES:
                self.page.resize(size)
                self.page.open(file)
                self.assertEqual(self.page.run(CUT_WORDS), [], f"{file.name} at {size[0]} px")

    def test_texts_stand_out_from_their_ground(self):
        for page, way in self.each_way():
            self.assertEqual(page.faint_texts(), [], way)
            self.assertGreater(len(page.contrasts()), 200)

    def test_light_and_dark_differ(self):
        grounds = set()
        for page, _ in self.each_way():
            grounds.add(page.run("return getComputedStyle(document.body).backgroundColor"))
        self.assertEqual(len(grounds), 2)

    def test_pictures_load_in_their_own_shape_with_a_text_for_those_who_do_not_see_them(self):
        for page, way in self.each_way():
            self.assertEqual(page.broken_pictures(), [], way)
            self.assertEqual(page.run(
                "return [...document.images].filter(i => i.alt.trim().length < 8).map(i => i.src)"), [], way)
            self.assertEqual(page.run(
                "return [...document.images].filter(i => getComputedStyle(i).objectFit === 'fill'"
                " && Math.abs(i.width / i.height - i.naturalWidth / i.naturalHeight) > 0.05"
                " * i.naturalWidth / i.naturalHeight).map(i => [i.src, i.width, i.height])"), [], way)

    def test_links_lead_somewhere(self):
        self.page.open(GUIDE)
        links = self.page.run("return [...document.querySelectorAll('a[href]')].map(a => a.getAttribute('href'))")
        self.assertGreater(len(links), 30)
        ids = self.page.run("return [...document.querySelectorAll('[id]')].map(e => e.id)")
        self.assertEqual(len(ids), len(set(ids)), "an id twice")
        for link in links:
            file, _, fragment = link.partition("#")
            self.assertTrue(not file or (GUIDE.parent / file).is_file(), link)
            self.assertTrue(file or fragment in ids, link)

    def test_the_contents_lead_to_every_section_in_order(self):
        self.page.resize((1400, 900))
        self.page.open(GUIDE)
        entries = self.page.run("return [...document.querySelectorAll('nav a')].map(a => a.hash.slice(1))")
        self.assertEqual(entries, self.page.run("return [...document.querySelectorAll('main > section')].map(e => e.id)"))
        self.page.click('nav a[href="#safe"]')
        self.page.wait("const y = document.getElementById('safe').getBoundingClientRect().y;"
                       "return y >= 0 && y < innerHeight;")

    def test_it_asks_for_nothing_beyond_the_disk_and_has_no_errors(self):
        with Page() as page:
            page.open(GUIDE)
            page.broken_pictures()
            self.assertEqual(page.remote_requests(), [])
            self.assertEqual(page.errors(), [])

    def test_every_number_on_a_picture_has_its_name_beside_it(self):
        buttons = json.loads((GUIDE.parent / "pictures/pages.json").read_text(encoding="utf-8"))
        self.page.open(GUIDE)
        for name in NUMBERED:
            entries = self.page.run(
                "return [...document.querySelectorAll(arguments[0])].map(e => e.textContent.toLowerCase())",
                f'.numbered img[src="pictures/{name}.png"] + ol > li')
            self.assertEqual(len(entries), len(buttons[name]), name)
            for entry, button in zip(entries, buttons[name]):
                words = [w for w in entry.replace(",", "").split() if len(w) > 3]
                self.assertTrue(any(w in button.lower() for w in words), (name, entry, button))

    def test_tidy_has_nothing_to_say(self):
        said = subprocess.run(["tidy", "-quiet", "-errors", "-utf8", str(GUIDE)], capture_output=True, text=True)
        self.assertEqual((said.stdout, said.stderr, said.returncode), ("", "", 0))


if __name__ == "__main__":
    unittest.main()
