#!/usr/bin/python3
"""test_page.py - the page helper notices what it is for: each fault of a made page is found, and only it."""
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from page import Page  # noqa: E402

GOOD = """<!doctype html><html lang="en"><meta charset="utf-8"><title>t</title>
<meta name="color-scheme" content="light dark">
<style>body { margin: 0; background: #fff; color: #222 }
@media (prefers-color-scheme: dark) { body { background: #111; color: #eee } }</style>
<button id="b" onclick="this.textContent = 'pressed'">press</button><p id="p">Text</p>%s"""
PIXEL = "data:image/gif;base64,R0lGODlhAQABAAAAACwAAAAAAQABAAACAkQBADs="


class TestPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.page = Page(size=(320, 480))

    @classmethod
    def tearDownClass(cls):
        cls.page.__exit__()
        cls.folder.cleanup()

    def open(self, more=""):
        file = pathlib.Path(self.folder.name, "page.htm")
        file.write_text(GOOD % more, encoding="utf-8")
        self.page.open(file)
        return self.page

    def test_a_good_page_has_no_fault_in_either_scheme(self):
        for scheme in ("light", "dark"):
            self.page.scheme(scheme)
            page = self.open('<img src="%s" alt="">' % PIXEL)
            self.assertEqual(page.faint_texts(), [])
            self.assertEqual(page.sideways(), 0)
            self.assertEqual(page.broken_pictures(), [])
            self.assertEqual(page.errors(), [])
            self.assertEqual(page.remote_requests(), [])

    def test_the_scheme_is_what_was_asked_for(self):
        colors = []
        for scheme in ("light", "dark"):
            self.page.scheme(scheme)
            colors.append(self.open().run("return getComputedStyle(document.body).backgroundColor"))
        self.assertEqual(colors, ["rgb(255, 255, 255)", "rgb(17, 17, 17)"])

    def test_the_size_is_what_was_asked_for(self):
        self.assertEqual(self.open().run("return [innerWidth, innerHeight]"), [320, 480])

    def test_wide_content_is_told(self):
        self.assertEqual(self.open('<div style="width: 400px">x</div>').sideways(), 80)

    def test_contrast_is_that_of_wcag(self):
        self.page.scheme("light")
        ratios = {each["text"]: each["ratio"] for each in self.open(
            '<p style="color: #777">grey</p><p style="color: #000">black</p>'
            '<p style="opacity: 0.5; color: #000">half</p>'
            '<div style="background: #000"><p style="color: #777">on black</p></div>').contrasts()}
        self.assertEqual((ratios["grey"], ratios["black"], ratios["on black"]), (4.48, 21, 4.69))
        self.assertAlmostEqual(ratios["half"], 3.98, delta=0.1)
        self.assertEqual([each["text"] for each in self.page.faint_texts()], ["grey", "half"])

    def test_a_press_is_a_real_one(self):
        page = self.open()
        page.click("#b")
        self.assertEqual(page.text("#b"), "pressed")

    def test_what_is_covered_cannot_be_pressed(self):
        page = self.open('<div style="position: fixed; inset: 0"></div>')
        with self.assertRaises(AssertionError):
            page.click("#b")
        self.assertEqual(page.text("#b"), "press")

    def test_keys_reach_what_has_the_focus(self):
        page = self.open('<input id="i" autofocus>')
        page.click("#i")
        page.press("ab", "Left", "c")
        self.assertEqual(page.run("return document.querySelector('#i').value"), "acb")

    def test_a_script_that_throws_is_no_answer(self):
        with self.assertRaisesRegex(AssertionError, "undefinedThing"):
            self.open().run("return undefinedThing")

    def test_pictures_and_errors_are_told(self):
        page = self.open('<img src="none.png" alt=""><script>undefinedThing()</script>')
        self.assertEqual([pathlib.Path(each).name for each in page.broken_pictures()], ["none.png"])
        self.assertTrue(any("undefinedThing" in each for each in page.errors()))
        self.assertEqual(page.errors(), [])

    def test_nothing_is_fetched_and_the_asking_is_told(self):
        with Page() as page:
            self.page, kept = page, self.page
            try:
                self.open('<img src="http://example.invalid/a.png" alt="">')
                self.assertEqual(page.broken_pictures(), ["http://example.invalid/a.png"])
                self.assertEqual(page.remote_requests(), ["http://example.invalid/a.png"])
            finally:
                self.page = kept


if __name__ == "__main__":
    unittest.main()
