#!/usr/bin/python3
"""compose.py SHOTS OUT - makes the guide's pictures of what shots.js took: numbers on the buttons of the pages,
before and after side by side, few colours. pages.json tells which number is which button."""
import json
import pathlib
import sys

from PIL import Image, ImageDraw, ImageFont

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf"
AMBER, INK, PAPER, SOFT = (255, 179, 71), (18, 20, 24), (232, 235, 241), (152, 162, 179)
ROW_PX = 12  # buttons whose upper edges are no further apart stand in one row
DISC_PX = 17
HALF = (400, 480)  # of a picture before or after
DIALS_PX = 34  # height of a dial's line
PAIRS = ("swap", "symmetrize", "optimize", "bake")
CLOSER = ("optimize",)  # only the lower half, where the ring is
WINDOW_WIDTH = 1200


def font(size):
    return ImageFont.truetype(FONT, size)


def save(image, file, colours=256):
    few = image.convert("RGB").quantize(colours, kmeans=3, dither=Image.Dither.NONE)
    few.save(file, optimize=True)


def levelled(image):
    """An image with every colour as often as the root of its share: a wide ground then takes few of a palette."""
    colours = [c for n, c in image.getcolors(1 << 24) for _ in range(round(n ** 0.5))]
    out = Image.new("RGB", (1000, -(-len(colours) // 1000)), colours[0])
    out.putdata(colours)
    return out


def save_shaded(image, file, colours):
    """save() for a picture of a figure on a wide plain ground."""
    palette = levelled(image).quantize(colours, kmeans=3, dither=Image.Dither.NONE)
    image.quantize(palette=palette, dither=Image.Dither.NONE).save(file, optimize=True)


def in_reading_order(buttons):
    left = sorted(buttons, key=lambda b: b["y"])
    while left:
        row = [b for b in left if b["y"] - left[0]["y"] <= ROW_PX]
        yield from sorted(row, key=lambda b: b["x"])
        left = left[len(row):]


def disc(draw, x, y, number):
    draw.ellipse((x - DISC_PX, y - DISC_PX, x + DISC_PX, y + DISC_PX), fill=AMBER, outline=INK, width=2)
    draw.text((x, y), str(number), fill=INK, font=font(20), anchor="mm")


def numbered(shot, buttons):
    """The page with its discs, and the buttons' names in the order of the numbers."""
    image = Image.open(shot).convert("RGB")
    draw = ImageDraw.Draw(image)
    names = []
    for number, button in enumerate(in_reading_order(buttons), 1):
        disc(draw, button["x"] + DISC_PX - 4, button["y"] + DISC_PX - 6, number)
        names.append(button["name"])
    return image, names


def middle(image, size):
    """All of its height, and of its width the middle or a margin of its edge's colour, in that size."""
    large = image.resize((round(image.width * size[1] / image.height), size[1]), Image.Resampling.LANCZOS)
    shown = Image.new("RGB", size, large.getpixel((0, 0)))
    shown.paste(large, ((size[0] - large.width) // 2, 0))
    return shown


def write_dials(image, x, dials):
    draw = ImageDraw.Draw(image)
    for line, (name, value) in enumerate(dials):
        y = HALF[1] + line * DIALS_PX + DIALS_PX // 2 + 4
        draw.text((x + 12, y), name, fill=SOFT, font=font(18), anchor="lm")
        draw.text((x + HALF[0] - 16, y), value, fill=PAPER, font=font(18), anchor="rm")


def half_of(shot, name):
    image = Image.open(shot).convert("RGB")
    if name in CLOSER:
        image = image.crop((image.width * 3 // 8, image.height // 2, image.width * 7 // 8, image.height))
    return middle(image, HALF)


def side_by_side(shots, name, dials):
    lines = len(dials.get(name + "_before", ()))
    image = Image.new("RGB", (2 * HALF[0] + 4, HALF[1] + lines * DIALS_PX + (8 if lines else 0)), INK)
    for x, when in ((0, "before"), (HALF[0] + 4, "after")):
        image.paste(half_of(shots / f"{name}_{when}.png", name), (x, 0))
        ImageDraw.Draw(image).text((x + 12, HALF[1] - 14), when, fill=PAPER, font=font(20), anchor="ls")
        write_dials(image, x, dials.get(f"{name}_{when}", ()))
    return image


def main(shots, out):
    facts = json.loads((shots / "shots.json").read_text(encoding="utf-8"))
    pages = {}
    for name in ("page_main", "page_picker", "page_browsing"):
        image, pages[name] = numbered(shots / f"{name}.png", facts["pages"][name])
        save(image, out / f"{name}.png")
    areas = Image.open(shots / "page_areas.png")
    save(areas.crop((0, areas.height * 33 // 100, areas.width, areas.height * 59 // 100)), out / "areas.png")
    for dialog in sorted(shots.glob("dialog_*.png")):
        save(Image.open(dialog), out / dialog.name, 32)
    for name in PAIRS:
        save(side_by_side(shots, name, facts["dials"]), out / f"{name}.png")
    window = Image.open(shots / "posebench.png").convert("RGB")
    height = round(window.height * WINDOW_WIDTH / window.width)
    save_shaded(window.resize((WINDOW_WIDTH, height), Image.Resampling.LANCZOS), out / "posebench.png", 128)
    (out / "pages.json").write_text(json.dumps(pages, indent=1) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
