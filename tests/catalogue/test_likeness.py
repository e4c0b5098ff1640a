#!/usr/bin/python3
"""test_likeness.py LIKENESS_PAIRS - the likeness that the page computes is that of the Pose Finder's functions."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(ROOT / "tests" / "browser"))
from page import Page  # noqa: E402

PAIRS = 1000
TOLERANCE = 1e-6
HELPER = None

COMPUTE = """
const told = arguments[0], pairs = told.areas.length;
const images = imagesOf(new Float32Array(told.signatures));
return told.areas.map((bits, pair) => {
  const both = images.subarray(pair * 2 * kPoseImages, (pair + 1) * 2 * kPoseImages);
  const flags = kAreas.map((_, area) => bits >> area & 1);
  return [likenessTo(both, 1, flags)[0], likenessTo(both, 0, flags)[1], likenessTo(both, 0, flags)[0]];
});
"""


class TestLikeness(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.told = json.loads(subprocess.run([HELPER, str(PAIRS)], check=True, stdout=subprocess.PIPE).stdout)
        with tempfile.TemporaryDirectory() as folder, Page() as page:
            file = pathlib.Path(folder, "likeness.htm")
            file.write_text('<!doctype html><script src="%s"></script>'
                            % (ROOT / "catalogue/page/likeness.js").as_uri(), encoding="utf-8")
            page.open(file)
            cls.computed = page.run(COMPUTE, cls.told)
            cls.none = page.run("return [...likenessTo(imagesOf(new Float32Array(80)), 0, [1])];")

    def test_a_thousand_pairs_agree(self):
        self.assertEqual(len(self.computed), PAIRS)
        apart = [abs(mine[0] - theirs) for mine, theirs in zip(self.computed, self.told["likeness"])]
        print("largest difference of %d pairs: %.2g" % (PAIRS, max(apart)))
        self.assertLess(max(apart), TOLERANCE)

    def test_the_pairs_are_of_many_kinds(self):
        values = self.told["likeness"]
        self.assertGreater(sum(value > 0.999999 for value in values), 200)
        self.assertGreater(sum(0.9 < value < 0.999 for value in values), 200)
        self.assertGreater(sum(value < 0.8 for value in values), 150)
        self.assertLess(min(values), 0.6)

    def test_either_may_be_the_chosen_one(self):
        for one, other, _ in self.computed:
            self.assertAlmostEqual(one, other, delta=1e-9)

    def test_a_pose_is_most_like_itself(self):
        for _, _, own in self.computed:
            self.assertAlmostEqual(own, 1, delta=1e-7)

    def test_without_a_signature_there_is_no_likeness(self):
        self.assertEqual(self.none, [-1, -1])


if __name__ == "__main__":
    HELPER = sys.argv.pop(1)
    unittest.main()
