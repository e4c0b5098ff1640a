"""Rewrites an RGBA PNG with a palette of 256 colours: a third of the size, no visible change.

Flat artwork has few colours; nearly all others are the edges between two of them. The frequent ones are
kept exactly, the edges share what is left of the palette.
"""
import struct
import zlib
from array import array
from collections import Counter

EXACT = 64       # the most frequent colours, kept as they are
COLOURS = 256
SIGNATURE = b"\x89PNG\r\n\x1a\n"


def chunks(data):
    at = len(SIGNATURE)
    while at < len(data):
        size, kind = struct.unpack(">I4s", data[at:at + 8])
        yield kind, data[at + 8:at + 8 + size]
        at += 12 + size


def read_rgba(data):
    """Width, height and the pixels (R, G, B, A bytes) of an 8 bit RGBA PNG without interlacing."""
    packed = b""
    for kind, body in chunks(data):
        if kind == b"IHDR":
            w, h, depth, colour, _, _, interlace = struct.unpack(">IIBBBBB", body)
            if (depth, colour, interlace) != (8, 6, 0):
                raise ValueError("not a plain RGBA PNG")
        elif kind == b"IDAT":
            packed += body
    raw, step, rows = zlib.decompress(packed), 4 * w, []
    above = bytes(step)
    for y in range(h):
        start = y * (step + 1)
        above = unfiltered(raw[start], bytearray(raw[start + 1:start + 1 + step]), above)
        rows.append(above)
    return w, h, b"".join(rows)


def unfiltered(kind, row, above):
    if kind == 1:
        for i in range(4, len(row)):
            row[i] = (row[i] + row[i - 4]) & 255
    elif kind == 2:
        row = bytearray((a + b) & 255 for a, b in zip(row, above))
    elif kind == 3:
        for i in range(len(row)):
            row[i] = (row[i] + (((row[i - 4] if i >= 4 else 0) + above[i]) >> 1)) & 255
    elif kind == 4:
        for i in range(4):
            row[i] = (row[i] + above[i]) & 255
        for i in range(4, len(row)):
            a, b, c = row[i - 4], above[i], above[i - 4]
            pa, pb, pc = abs(b - c), abs(a - c), abs(a + b - 2 * c)
            row[i] = (row[i] + (a if pa <= pb and pa <= pc else b if pb <= pc else c)) & 255
    return row


def palette(counts):
    """The colours that stand for all of counts, and which one stands for which."""
    ordered = sorted(counts, key=lambda c: (-counts[c], c))
    exact, rest = ordered[:EXACT], ordered[EXACT:]
    chosen = exact + [mean(box, counts) for box in boxes(rest, counts, COLOURS - len(exact))]
    chosen = sorted(set(chosen), key=lambda c: (c[3], c))
    index = {c: i for i, c in enumerate(chosen)}
    return chosen, {c: index[c] if c in index else nearest(c, chosen) for c in counts}


def boxes(colours, counts, limit):
    """Median cut: the box with the widest spread is halved until there are enough."""
    found = [colours] if colours else []
    while found and len(found) < limit:
        spread, k, axis = max((max(c[a] for c in box) - min(c[a] for c in box), -i, a)
                              for i, box in enumerate(found) for a in range(4))
        if spread == 0:
            break
        box = sorted(found.pop(-k), key=lambda c: (c[axis], c))
        half, seen = sum(counts[c] for c in box) / 2, 0
        for cut in range(1, len(box)):
            seen += counts[box[cut - 1]]
            if seen >= half:
                break
        found += [box[:cut], box[cut:]]
    return found


def mean(box, counts):
    total = sum(counts[c] for c in box)
    return tuple(round(sum(c[a] * counts[c] for c in box) / total) for a in range(4))


def nearest(colour, chosen):
    r, g, b, a = colour
    return min(range(len(chosen)), key=lambda i: (chosen[i][0] - r) ** 2 + (chosen[i][1] - g) ** 2
               + (chosen[i][2] - b) ** 2 + 2 * (chosen[i][3] - a) ** 2)


def chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def with_palette(data):
    """The same picture as an indexed PNG."""
    w, h, pixels = read_rgba(data)
    words = array("I", pixels)
    split = {word: tuple(struct.pack("=I", word)) for word in set(words)}
    counts = Counter()
    for word, count in Counter(words).items():
        counts[split[word]] += count
    chosen, stands_for = palette(counts)
    lookup = {word: stands_for[colour] for word, colour in split.items()}
    indices = bytes(map(lookup.__getitem__, words))
    rows = b"".join(b"\0" + indices[y * w:(y + 1) * w] for y in range(h))
    solid = [c[3] for c in chosen]
    while solid and solid[-1] == 255:
        solid.pop()
    return (SIGNATURE + chunk(b"IHDR", struct.pack(">IIBBBBB", w, h, 8, 3, 0, 0, 0))
            + chunk(b"PLTE", b"".join(bytes(c[:3]) for c in chosen)) + chunk(b"tRNS", bytes(solid))
            + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
