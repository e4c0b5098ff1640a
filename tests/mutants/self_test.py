#!/usr/bin/env python3
"""self_test.py - what the mutation run promises of its mutants. Needs python3 only."""

import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))

import mutations  # noqa: E402
import own_time  # noqa: E402

SAMPLE = """#include "a.h" // 1 < 2
namespace quillon {
static const int kRows[] = {
    10, // 11
    20,
};
static const double kReach = 0.5;

/* if (a == b) stop(1, 2); */
bool Thing::isNear(const QVector<int>& list, int at)
{
    Q_ASSERT_X(at >= 0 && at < 7, "isNear", "inside");
    if (at < 3 && !m_done)
        return false;
    const QString name = QString("if (x) %1").arg(at, 2);
    std::vector<int> copy(3);
    auto more = [&](int x) { report(x, name); };
    for (int i = 0; i <= at; ++i) {
        more(i);
        m_sum += list.at(i);
    }
    switch (at) {
    case 1:
        stop();
        break;
    }
    qWarning("never %d", 9);
    m_max = std::max(at, 0);
    return m_done == true;
}
}
"""


def mutants():
    return mutations.mutants_of("finder/sample.cpp", SAMPLE)


def changes(kind=None):
    return {(SAMPLE[m.start : m.end], m.new.strip()) for m in mutants() if kind in (None, m.kind)}


class Mutants(unittest.TestCase):
    def test_conditions_are_negated_and_moved_by_one(self):
        self.assertEqual(changes("condition"), {
            ("<", "<="), ("&&", "||"), ("!", ""), ("<=", "<"), ("==", "!="),
            ("at < 3 && !m_done", "!(at < 3 && !m_done)")})

    def test_statements_are_left_out(self):
        self.assertEqual(changes("statement"), {
            ("report(x, name);", ";"), ("more(i);", ";"), ("m_sum += list.at(i);", ";"),
            ("stop();", ";"), ("break;", ";"), ("m_max = std::max(at, 0);", ";")})

    def test_constants_are_changed(self):
        found = changes("constant")
        for change in [("3", "4"), ("false", "true"), ("true", "false"), ("0", "1"),
                       ('"if (x) %1"', '"if (x) %"')]:
            self.assertIn(change, found)

    def test_arguments_are_exchanged(self):
        self.assertEqual(changes("arguments"), {("at, 2", "2, at"), ("x, name", "name, x")})

    def test_tables_are_a_kind_of_their_own(self):
        rows = [m for m in mutants() if m.kind == "table"]
        self.assertEqual({m.function for m in rows}, {"kRows", "kReach"})
        self.assertIn(("0.5", "0.75"), changes("table"))
        self.assertIn(("10", "11"), changes("table"))

    def test_comments_includes_and_assertions_stay(self):
        kept = ["// 1 < 2", "// 11", "/* if (a == b) stop(1, 2); */", '#include "a.h"',
                'Q_ASSERT_X(at >= 0 && at < 7, "isNear", "inside");', 'qWarning("never %d", 9);']
        for mutant in mutants():
            changed = mutant.apply(SAMPLE)
            for text in kept:
                self.assertIn(text, changed, mutant.after)

    def test_lines_keep_their_numbers(self):
        for mutant in mutants():
            self.assertEqual(mutant.apply(SAMPLE).count("\n"), SAMPLE.count("\n"))
            self.assertEqual(len(mutant.apply(SAMPLE).split("\n")[mutant.line - 2]),
                             len(SAMPLE.split("\n")[mutant.line - 2]))

    def test_functions_have_their_names(self):
        named = {m.function for m in mutants() if m.kind != "table"}
        self.assertEqual(named, {"Thing::isNear"})


class Order(unittest.TestCase):
    def test_a_seed_gives_the_same_mutants_again(self):
        first = [m.id for m in mutations.seeded_order(mutants(), 7)]
        self.assertEqual(first, [m.id for m in mutations.seeded_order(mutants(), 7)])
        self.assertNotEqual(first, [m.id for m in mutations.seeded_order(mutants(), 8)])

    def test_names_survive_moved_lines(self):
        moved = mutations.mutants_of("finder/sample.cpp", "\n\n" + SAMPLE)
        self.assertEqual([m.id for m in moved], [m.id for m in mutants()])
        self.assertEqual(len({m.id for m in moved}), len(moved))

    def test_every_room_of_the_product_has_mutants(self):
        root = mutations.root_folder()
        rooms = {r: mutations.room_mutants(root, r) for r in mutations.ROOMS if (root / r).is_dir()}
        shares = mutations.quotas(rooms, 150)
        self.assertEqual(sum(shares.values()), 150)
        for room in ("plugin", "pane", "services", "finder", "posefile", "figure"):
            self.assertGreater(shares[room], 2, room)

    def test_tables_do_not_crowd_out_the_rest(self):
        found = mutations.room_mutants(mutations.root_folder(), "figure")
        first = mutations.seeded_order(found, 1)[:100]
        self.assertLess(sum(m.kind == "table" for m in first), 25)
        self.assertGreater(sum(m.kind == "condition" for m in first), 15)


class Equivalents(unittest.TestCase):
    def read(self, text):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "list.txt"
            path.write_text(text)
            return mutations.read_equivalents(path)

    def test_an_entry_is_found_again_after_lines_have_moved(self):
        mutant = mutants()[0]
        known = self.read("# a list\n\n" + mutations.stanza(mutant, "the same\n  for all"))
        moved = mutations.mutants_of("finder/sample.cpp", "\n" + SAMPLE)[0]
        self.assertEqual(known[mutations.key_of(moved)], "the same for all")

    def test_an_entry_without_a_reason_is_refused(self):
        with self.assertRaises(mutations.BadList):
            self.read(mutations.stanza(mutants()[0], ""))

    def test_the_committed_list_can_be_read(self):
        mutations.read_equivalents(pathlib.Path(__file__).resolve().parent / "equivalent.txt")


class Time(unittest.TestCase):
    """A clock that is told what the machine's shows and how long each process has waited."""

    def clock(self, *looks):
        looks = [(0, {})] + list(looks)
        at = [0]
        clock = own_time.OwnTime(1, lambda: looks[at[0]][0], lambda session: looks[at[0]][1])
        shown = []
        for at[0] in range(1, len(looks)):
            shown.append(round(clock.look(), 3))
        return shown

    def test_waits_for_a_processor_are_left_out(self):
        self.assertEqual(self.clock((1, {7: 0.75}), (2, {7: 1.25})), [0.25, 0.75])

    def test_a_wait_that_is_told_late_is_left_out_later(self):
        self.assertEqual(self.clock((4, {7: 0}), (5, {7: 4})), [4, 1])

    def test_of_two_that_waited_the_longer_wait_counts(self):
        self.assertEqual(self.clock((2, {7: 1, 8: 1.5})), [0.5])

    def test_sleeping_is_the_own_time_of_a_test(self):
        self.assertEqual(self.clock((20, {7: 0.0})), [20])

    def test_a_test_that_only_waits_ends_nevertheless(self):
        self.assertEqual(self.clock((50, {7: 50}), (100, {7: 100})), [5, 10])

    def test_the_processes_of_a_session_are_found(self):
        child = subprocess.Popen(["sleep", "60"], start_new_session=True)
        try:
            self.assertEqual(list(own_time.waited(child.pid)), [child.pid])
        finally:
            child.kill()
            child.wait()
        self.assertEqual(own_time.waited(child.pid), {})
        self.assertIn(os.getpid(), own_time.waited(os.getsid(0)))


if __name__ == "__main__":
    unittest.main()
