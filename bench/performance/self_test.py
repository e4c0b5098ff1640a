#!/usr/bin/env python3
"""self_test.py - how rows are read, held against goals, and shown. Needs python3 only."""

import pathlib
import sys
import unittest
import xml.etree.ElementTree as xml

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import page  # noqa: E402
import plot  # noqa: E402
import rows as row_form  # noqa: E402

HEAD = "\t".join(row_form.COLUMNS)
GOALS = row_form.read_goals("""# comment
goal	row	n	at_most	unit	ratio	curve	bound
Fast	fast one	8192	10	ms	2	fast one	the disk
Many	many *	8192	10	ms	5	-	-
Each	each	*	20	us/n	-	-	-
Absent	absent	8192	1	us	-	-	-
""")


def rows(*lines):
    return row_form.parse("\n".join((HEAD,) + lines))


def goal(name):
    return next(each for each in GOALS if each.name == name)


class Rows(unittest.TestCase):
    def test_words_around_the_rows_are_passed_by(self):
        text = f"a\tb\t1\t2\t3\t4\t5\t6\nstarting\n{HEAD}\nx\t8\t1.5\t~30\t20.0\t-\tabcd\t-\nall well\n"
        (row,) = row_form.parse(text)
        self.assertEqual((row.name, row.n, row.ms, row.reference, row.sampled), ("x", 8, 1.5, 30, True))
        self.assertEqual((row.ratio, row.exponent, row.note), (20, None, ""))

    def test_a_dash_is_nothing(self):
        (row,) = rows("x\t-\t1\t-\t-\t-\t-\t-")
        self.assertEqual((row.n, row.reference, row.ratio, row.sampled), (0, None, None, False))

    def test_a_row_may_have_no_time(self):
        (row,) = rows("fast one\t8192\t-\t-\t9\t-\tabcd\tof all files")
        self.assertFalse(goal("Fast").meets(row))
        self.assertEqual(page.time(row.ms), "")


class Goals(unittest.TestCase):
    def meets(self, name, line):
        return goal(name).meets(rows(line)[0])

    def test_time_and_ratio_count_both(self):
        self.assertTrue(self.meets("Fast", "fast one\t8192\t10\t20\t2\t-\t-\t-"))
        self.assertFalse(self.meets("Fast", "fast one\t8192\t10.1\t30\t3\t-\t-\t-"))
        self.assertFalse(self.meets("Fast", "fast one\t8192\t-1\t20\t20\t-\t-\t-"))
        self.assertFalse(self.meets("Fast", "fast one\t8192\t9\t17\t1.9\t-\t-\t-"))
        self.assertFalse(self.meets("Fast", "fast one\t8192\t9\t-\t-\t-\t-\t-"))

    def test_a_wrong_result_meets_nothing(self):
        self.assertFalse(self.meets("Fast", "fast one\t8192\t1\t20\t20\t-\t-\tverdicts DIFFER"))

    def test_a_limit_for_each_divides_by_n(self):
        self.assertTrue(self.meets("Each", "each\t100\t2\t-\t-\t-\t-\t-"))
        self.assertFalse(self.meets("Each", "each\t100\t2.1\t-\t-\t-\t-\t-"))

    def test_other_sizes_do_not_count(self):
        own = row_form.rows_of(goal("Fast"), GOALS, rows("fast one\t1024\t1\t-\t-\t-\t-\t-"))
        self.assertEqual(own, [])

    def test_slowest_and_least_ratio_are_both_shown(self):
        lines = page.goal_lines(GOALS, rows("many a\t8192\t9\t90\t10\t-\t-\t-",
                                            "many b\t8192\t4\t16\t4\t-\t-\t-",
                                            "many c\t8192\t5\t50\t10\t-\t-\t-"))
        shown = [line for line in lines if "Many (3 rows)" in line]
        self.assertEqual(["many a" in shown[0], "yes" in shown[0]], [True, True])
        self.assertEqual(["many b" in shown[1], "**no**" in shown[1]], [True, True])

    def test_the_project_s_goals_can_be_read(self):
        text = (pathlib.Path(__file__).parent / "goals.tsv").read_text()
        self.assertTrue(all(each.unit.split("/")[0] in row_form.UNITS for each in row_form.read_goals(text)))


class Page(unittest.TestCase):
    def test_only_what_is_between_the_marks_changes(self):
        before = f"a\n{page.BEGIN}\nold\n{page.END}\nz\n"
        self.assertEqual(page.put(before, "new"), f"a\n{page.BEGIN}\nnew\n{page.END}\nz\n")
        self.assertRaises(ValueError, page.put, "no marks", "new")

    def test_what_was_not_measured_says_so(self):
        self.assertIn("| Absent |", "".join(page.goal_lines(GOALS, [])))
        self.assertNotIn("yes", "".join(page.goal_lines(GOALS, [])))

    def test_a_missed_goal_tells_its_bound(self):
        slow = rows("fast one\t8192\t11\t90\t9\t-\t-\t-")
        self.assertIn("- Fast: the disk.", page.measured(GOALS, slow, [], False))
        fast = rows("fast one\t8192\t9\t90\t10\t-\t-\t-")
        self.assertNotIn("the disk", page.measured(GOALS, fast, [], False))

    def test_a_row_by_the_wall_shows_both_clocks(self):
        line = "fast one\t8192\t9\t90\t10\t-\t-\town thread 8.00, processor 12.34 ms"
        shown = page.goal_lines(GOALS, rows(line))[2]
        self.assertIn("| 9.00 ms, processor 12.3 ms |", shown)
        self.assertIn("| yes |", shown)

    def test_further_rows_stand_at_their_greatest_size(self):
        lines = page.other_lines(GOALS, rows("more\t1024\t1\t-\t-\t-\t-\t-", "more\t8192\t9\t-\t-\t-\t-\t-"))
        self.assertEqual([line for line in lines if "more" in line], ["| more | 8,192 | 9.00 ms |  |  |  |  |"])

    def test_numbers_have_three_digits(self):
        self.assertEqual([page.time(ms) for ms in (0.0195, 1.234, 45.67, 1234.5, 31824)],
                         ["19.5 \u00b5s", "1.23 ms", "45.7 ms", "1,234 ms", "31.8 s"])


class Picture(unittest.TestCase):
    def test_a_time_lies_on_its_decade(self):
        axes = plot.Axes({10, 1000}, [0.1, 10])
        self.assertEqual((axes.y(0.1), axes.y(10)), (plot.BOTTOM, plot.TOP))
        self.assertAlmostEqual(axes.y(1), (plot.BOTTOM + plot.TOP) / 2)
        self.assertAlmostEqual(axes.x(100), (axes.x(10) + axes.x(1000)) / 2)

    def test_own_line_is_solid_and_the_reference_dashed(self):
        drawn = xml.fromstring(plot.picture(GOALS, rows("fast one\t1024\t1\t5\t5\t-\t-\t-",
                                                        "fast one\t8192\t9\t~90\t10\t-\t-\t-")))
        paths = [each.get("class") for each in drawn.iter("{http://www.w3.org/2000/svg}path")]
        self.assertEqual(paths, ["line", "line reference"])

    def test_what_took_no_time_is_not_drawn(self):
        self.assertEqual(plot.picture(GOALS, rows("fast one\t1024\t-1\t5\t5\t-\t-\t-",
                                                  "fast one\t8192\t9\t90\t10\t-\t-\t-")), "")

    def test_one_size_gives_no_picture(self):
        self.assertEqual(plot.picture(GOALS, rows("fast one\t1024\t1\t5\t5\t-\t-\t-")), "")


if __name__ == "__main__":
    unittest.main()
