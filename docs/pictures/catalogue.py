#!/usr/bin/python3
"""catalogue.py - makes catalogue.png from a catalogue of the samples, in headless Chromium; few colours."""
import pathlib
import sys
import tempfile

from PIL import Image

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parents[1]
sys.path[:0] = [str(ROOT / "tests/catalogue"), str(ROOT / "tests/browser")]
import made_content as made  # noqa: E402
from compose import save  # noqa: E402
from page import Page  # noqa: E402

CHOSEN = "Hugging the knees"

with tempfile.TemporaryDirectory() as folder, Page(size=(1200, 760)) as page:
    made.run(pathlib.Path(folder, "out"), [ROOT / "samples/content"])
    page.open(pathlib.Path(folder, "out/index.htm"))
    page.click("#search")
    page.press(CHOSEN, "Enter", "Enter")
    page.click("#details .first")
    page.broken_pictures()
    page.wait("return [...document.images].every(i => i.style.visibility !== 'hidden')")
    shot = pathlib.Path(folder, "shot.png")
    page.screenshot(shot)
    save(Image.open(shot), HERE / "catalogue.png", 64)
