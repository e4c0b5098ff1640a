#!/usr/bin/env python3
"""test_catalogue.py - what the catalogue's program finds, writes, keeps and refuses."""
import json
import os
import pathlib
import pty
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import made_content as made  # noqa: E402

PAGE_FILES = {"index.htm", "catalogue.css", "catalogue-data.js", "catalogue.json", "likeness.js", "catalogue_model.js",
              "virtual_list.js", "page_cells.js", "catalogue_page.js", "pictures"}


def snapshot(folder):
    """Every file below with its bytes, times and mode."""
    return {str(path): (path.stat().st_mtime_ns, path.stat().st_mode, path.is_file() and path.read_bytes())
            for path in sorted(pathlib.Path(folder).rglob("*"))}


def pictures(output):
    return {str(path.relative_to(output)): path.stat().st_mtime_ns
            for path in pathlib.Path(output, "pictures").rglob("*") if path.is_file()}


class TestCatalogue(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.work = tempfile.TemporaryDirectory(prefix="quillon-catalogue-")
        cls.top = pathlib.Path(cls.work.name)
        cls.content = made.make_content(cls.top / "content")
        cls.before = snapshot(cls.top / "content")
        cls.home = cls.top / "home"
        cls.out = cls.top / "out"
        cls.done = made.run(cls.out, cls.content)
        cls.told = made.catalogue(cls.out)
        cls.poses = {pose["name"]: pose for pose in cls.told["poses"]}
        cls.left = {each["name"]: each for each in cls.told["leftOut"]}

    @classmethod
    def tearDownClass(cls):
        cls.work.cleanup()

    def path(self, below):
        return str(self.top / "content" / below)

    # ---- what it tells

    def test_every_indexed_pose_is_told(self):
        self.assertEqual(sorted(self.poses), sorted(
            ["Stand 1", "Stand 2", "Stand 5", "Stand 36", "On a chair", "Guard \u00e9lite", made.EVIL_NAME, "BT02 012"]))
        chair = self.poses["On a chair"]
        self.assertEqual((chair["file"], chair["folder"], chair["contentDirectory"], chair["figure"], chair["rank"]),
                         (self.path("first/People/Female/Sit/On a chair.duf"), "People/Female/Sit", 0, "female", "unranked"))
        self.assertEqual(chair["categories"], ["sitting"])
        self.assertEqual(self.poses["Guard \u00e9lite"]["figure"], "male")
        self.assertEqual(self.poses["BT02 012"]["folder"], "People/Genesis 8 Female/Poses/Brannoc/Bench for Two")
        self.assertEqual([len(self.poses["Stand 1"]["signature"]), len(self.poses["Stand 1"]["signature"][0])], [10, 4])

    def test_every_other_file_is_told_with_the_reason(self):
        reasons = {name: (each["reason"], each["partner"]) for name, each in self.left.items()}
        self.assertEqual(reasons, {
            "copy of 1": ("same-content", self.path("first/People/Female/Stand/Stand 1.duf")),
            "mirror of 36": ("mirror-of", self.path("first/People/Female/Stand/Stand 36.duf")),
            "close to 36": ("similar-to", self.path("first/People/Female/Stand/Stand 36.duf")),
            "BT02 012": ("makers-variant", None), "hand": ("not-whole-body", None), "older": ("other-figure", None),
            "shape": ("not-a-pose", None)})

    def test_the_data_say_what_they_are(self):
        self.assertEqual({key: self.told[key] for key in ("format", "version", "complete", "missedFolders")},
                         {"format": "quillon-catalogue", "version": 1, "complete": True, "missedFolders": []})
        self.assertEqual(self.told["contentDirectories"], [str(each) for each in self.content])
        self.assertEqual({path.name for path in self.out.iterdir()}, PAGE_FILES)

    def color(self, pose):
        """The middle of the picture, as the decoder of the page's library has it: a JPEG of one colour keeps it."""
        data = (self.out / pose["picture"]).read_bytes()
        self.assertTrue(data.startswith(b"\xff\xd8") and data.endswith(b"\xff\xd9"), pose["picture"])
        return data

    def test_pictures_are_there_where_there_can_be_one(self):
        for pose in self.told["poses"]:
            self.assertGreater(len(self.color(pose)), 500, pose["name"])
        for name in ("copy of 1", "mirror of 36", "close to 36", "BT02 012", "shape"):
            self.assertGreater(len(self.color(self.left[name])), 500, name)
        for name in ("hand", "older"):
            self.assertIsNone(self.left[name]["picture"])
        self.assertEqual(len(pictures(self.out)), len(self.told["poses"]) + 5)

    def test_an_own_picture_is_shown_as_it_is(self):
        small = 2500  # bytes of a picture of one colour; a drawn one has more
        sizes = {name: len(self.color(self.poses[name])) for name in self.poses}
        self.assertLess(sizes["Stand 1"], small)
        self.assertLess(sizes["Stand 2"], small)
        self.assertGreater(sizes["Stand 5"], small)  # its picture is none, so it is drawn
        self.assertGreater(sizes["Stand 36"], small)

    # ---- what it leaves alone

    def test_nothing_of_the_content_changes(self):
        self.assertEqual(snapshot(self.top / "content"), self.before)

    def test_ranks_are_those_of_the_home_which_stays_as_it_is(self):
        made.write_ranks(self.home, [(self.poses["Stand 1"]["contentHash"], 1), (self.poses["Stand 36"]["contentHash"], 2)])
        before = snapshot(self.home)
        made.run(self.top / "ranked", self.content, "--home", self.home)
        ranks = {pose["name"]: pose["rank"] for pose in made.catalogue(self.top / "ranked")["poses"]}
        self.assertEqual((ranks.pop("Stand 1"), ranks.pop("Stand 36")), ("favourite", "hidden"))
        self.assertEqual(set(ranks.values()), {"unranked"})
        self.assertEqual(snapshot(self.home), before)

    def test_a_rank_kept_for_a_pose_that_was_away_is_shown(self):
        home = self.top / "kept home"
        made.write_ranks(home, [(self.poses["Stand 1"]["contentHash"], 1)])
        made.write_ranks(home, [(self.poses["Stand 1"]["contentHash"], 2), (self.poses["Stand 36"]["contentHash"], 2),
                                (0xdead, 1)], "ranksKept")
        before = snapshot(home)
        made.run(self.top / "kept ranks", self.content, "--home", home)
        ranks = {pose["name"]: pose["rank"] for pose in made.catalogue(self.top / "kept ranks")["poses"]}
        self.assertEqual((ranks.pop("Stand 1"), ranks.pop("Stand 36")), ("favourite", "hidden"))
        self.assertEqual(set(ranks.values()), {"unranked"})
        self.assertEqual(snapshot(home), before)

    def test_without_a_temporary_folder_nothing_is_made(self):
        before = os.listdir("/")
        done = made.run(self.top / "no temp", self.content, check=False, TMPDIR=self.path("second/shape.duf"))  # no folder
        self.assertEqual(done.returncode, 1)
        self.assertIn("quillon-catalogue: no temporary folder: ", done.stderr)
        self.assertFalse((self.top / "no temp").exists())
        self.assertEqual(os.listdir("/"), before)  # not in a folder without a name

    def test_only_the_named_directories_are_scanned(self):
        made.run(self.top / "second only", self.content[1:])
        told = made.catalogue(self.top / "second only")
        self.assertTrue(all(each["file"].startswith(self.path("second/")) for each in told["poses"] + told["leftOut"]))
        self.assertEqual(len(told["poses"] + told["leftOut"]), 7)
        self.assertIn("copy of 1", [pose["name"] for pose in told["poses"]])  # of nothing that is seen now

    def test_a_folder_of_something_else_is_refused_untouched(self):
        other = self.top / "other"
        made.write(other / "letters/letter.txt", "Dear")
        before = snapshot(other)
        done = made.run(other, self.content, check=False)
        self.assertEqual(done.returncode, 2)
        self.assertEqual(done.stderr, "quillon-catalogue: '%s' is neither empty nor a catalogue; nothing was written\n" % other)
        self.assertEqual(snapshot(other), before)

    def test_what_makes_no_sense_is_refused(self):
        done = made.run(self.top / "never", [self.top / "no such"], check=False)
        self.assertEqual(done.returncode, 2)
        self.assertIn("there is no folder", done.stderr)
        self.assertFalse((self.top / "never").exists())

    def test_help_is_told(self):
        done = subprocess.run([made.PROGRAM, "--help"], stdout=subprocess.PIPE, stderr=subprocess.PIPE, encoding="utf-8")
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        for option in ("--content", "--home", "--figure", "--jobs"):
            self.assertIn(option, done.stdout)

    # ---- where files and folders are others than usual

    def one_pose(self, name, number=1):
        made.write(self.top / name / "a.duf", made.pose_text(made.pose(number)))
        return [self.top / name]

    def test_what_cannot_be_written_is_told(self):
        for blocked in ("catalogue.json", "catalogue-data.js", "index.htm"):
            out = self.top / ("blocked " + blocked)
            made.run(out, self.one_pose("blocked content"))
            os.remove(out / blocked)
            (out / blocked / "full").mkdir(parents=True)
            if blocked == "catalogue.json":  # it is what tells a catalogue from other folders
                out = out / blocked / "full"
                out.rmdir()
                out.write_text("a file")
            done = made.run(out, self.one_pose("blocked content"), check=False)
            self.assertEqual(done.returncode, 2 if blocked == "catalogue.json" else 1, blocked)
            self.assertIn("catalogue.json" if blocked == "catalogue.json" else str(out / blocked), done.stderr)
            self.assertEqual(done.stdout, "")

    def test_a_place_below_a_file_is_told(self):
        (self.top / "a file").write_text("no folder")
        done = made.run(self.top / "a file/out", self.one_pose("blocked content"), check=False)
        self.assertEqual((done.returncode, done.stdout), (1, ""))
        self.assertIn("catalogue.json", done.stderr)
        self.assertEqual((self.top / "a file").read_text(), "no folder")

    def test_pictures_that_cannot_be_written_are_counted(self):
        out = self.top / "no pictures"
        made.run(out, self.one_pose("pictured"))
        for name in pictures(out):
            os.remove(out / name)
        for folder in sorted((out / "pictures").rglob("*"), reverse=True):
            folder.rmdir()
        (out / "pictures").rmdir()
        (out / "pictures").write_text("in the way")
        done = made.run(out, self.one_pose("pictured"))
        self.assertIn("1 files have no picture", done.stderr)
        self.assertEqual([pose["picture"] for pose in made.catalogue(out)["poses"]], [None])

    def test_poses_of_one_name_and_folders_in_each_other(self):
        top = self.top / "nested"
        for number, below in enumerate(("z/Same.duf", "a/Same.duf", "a/deep/Same.duf")):
            made.write(top / below, made.pose_text(made.pose(3 * number + 1)))
        made.write(self.top / "nesting/a/Same.duf", made.pose_text(made.pose(10)))
        made.run(self.top / "nested out", [top, top / "a/deep", self.top / "nesting"])
        poses = made.catalogue(self.top / "nested out")["poses"]
        self.assertEqual({pose["name"] for pose in poses}, {"Same"})
        self.assertEqual([(pose["folder"], pose["contentDirectory"]) for pose in poses],
                         [("", 1), ("a", 0), ("a", 2), ("z", 0)])

    def test_a_twin_of_a_man_is_drawn_as_a_man(self):
        top = self.top / "men"
        for name in ("People/Male/a.duf", "People/Male/b.duf"):
            made.write(top / name, made.pose_text(made.pose(9)))
        made.run(self.top / "men out", [top])
        told = made.catalogue(self.top / "men out")
        self.assertEqual([pose["figure"] for pose in told["poses"]], ["male"])
        shown = [(self.top / "men out" / each["picture"]).read_bytes() for each in told["poses"] + told["leftOut"]]
        self.assertEqual(len(shown), 2)
        self.assertEqual(shown[0], shown[1])

    # ---- a worker

    def answers(self, *jobs):
        lines = "".join((job if isinstance(job, str) else json.dumps(job)) + "\n" for job in jobs)
        done = subprocess.run([made.PROGRAM, "--worker"], input=lines, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              encoding="utf-8")
        self.assertEqual(done.returncode, 0, done.stderr)
        return done.stdout.split()

    def test_a_worker_goes_on_after_what_is_no_picture(self):
        folder = self.top / "worker"
        pose, out = folder / "a.duf", str(folder / "%s.jpg")
        made.write(pose, made.pose_text(made.pose(2)))
        made.write_png(folder / "own.png", (1, 2, 3))
        made.write_png(folder / "wide.png", (1, 2, 3), side=8200, height=8)
        made.write_png(folder / "tall.png", (1, 2, 3), height=8200)
        whole = (folder / "own.png").read_bytes()
        (folder / "cut.png").write_bytes(whole[:45])  # behind what tells its size
        (folder / "file").write_text("no folder")

        def job(name, **more):
            return {"pose": str(pose), "out": out % name, "drawn": False, "male": False, "own": "", **more}

        rows = [("no job", "{}", "failed"),
                ("nothing to show", job("none"), "failed"),
                ("a picture of its own", job("own", own=str(folder / "own.png")), "made"),
                ("one that is too wide", job("wide", own=str(folder / "wide.png")), "failed"),
                ("one that is too tall", job("tall", own=str(folder / "tall.png")), "failed"),
                ("one that is cut short", job("cut", own=str(folder / "cut.png")), "failed"),
                ("one that is not there", job("gone", own=str(folder / "gone.png")), "failed"),
                ("a pose that is not there", job("lost", pose=str(folder / "lost.duf"), drawn=True), "failed"),
                ("a place that is none", job("file/x", drawn=True), "failed"),
                ("a pose", job("drawn", drawn=True), "made"),
                ("the next on another figure", job("male", drawn=True, male=True), "made")]
        answers = self.answers(*(row[1] for row in rows))
        self.assertEqual(list(zip((row[0] for row in rows), answers)), [(row[0], row[2]) for row in rows])
        self.assertEqual(sorted(path.name for path in folder.glob("*.jpg")), ["drawn.jpg", "male.jpg", "own.jpg"])

    # ---- how it tells of its work

    def test_a_terminal_has_one_line_that_changes(self):
        master, slave = pty.openpty()
        process = subprocess.Popen([made.PROGRAM, str(self.top / "terminal"), "--content",
                                    str(self.many("terminal content", 12)[0])], stdout=subprocess.DEVNULL, stderr=slave)
        os.close(slave)
        told = b""
        while True:
            try:
                piece = os.read(master, 4096)
            except OSError:  # the other end is closed
                break
            if not piece:
                break
            told += piece
        os.close(master)
        self.assertEqual(process.wait(), 0)
        text = told.decode()
        self.assertGreater(text.count("\r\x1b[Kquillon-catalogue: "), 5)
        self.assertLess(text.count("\n"), 6)
        self.assertIn("12 of 12 pictures", text)
        self.assertTrue(text.endswith("\n"), text[-40:])

    def test_progress_is_told_on_stderr_and_the_page_on_stdout(self):
        self.assertEqual(self.done.stdout, "%s/index.htm\n" % self.out)
        lines = self.done.stderr.splitlines()
        self.assertTrue(all(line.startswith("quillon-catalogue: ") for line in lines), lines)
        for text in ("Scanning pose files", "Skipping similar poses", "8 poses of 15 files found", "of 13 pictures"):
            self.assertTrue(any(text in line for line in lines), text)
        self.assertLess(len(lines), 30)

    # ---- going on

    def test_a_second_run_makes_only_what_changed(self):
        out, content = self.top / "again", made.make_content(self.top / "again content")
        made.run(out, content)
        first = pictures(out)
        changed = content[0] / "People/Female/Stand/Stand 36.duf"
        made.write(changed, made.pose_text(made.pose(41)))
        os.remove(content[1] / "shape.png")
        done = made.run(out, content)
        second = pictures(out)
        kept = {name for name in first if second.get(name) == first[name]}
        self.assertEqual(len(kept), len(first) - 2)
        self.assertEqual(len(second), len(first) - 1)
        self.assertIn("11 of 12 pictures are there already", done.stderr)

    def many(self, name, count=40):
        for number in range(count):
            made.write(self.top / name / ("%d.duf" % number), made.pose_text(made.pose(number)))
        return [self.top / name]

    def start(self, out, content, jobs=2):
        return subprocess.Popen([made.PROGRAM, str(out), "--content", str(content[0]), "--jobs", str(jobs)],
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, encoding="utf-8")

    def wait_for_pictures(self, process):
        """Until the first picture is told of."""
        for line in process.stderr:
            if " pictures" in line:
                return
        self.fail("no picture was told of")

    def test_a_run_that_is_killed_is_gone_on_with(self):
        content, out = self.many("killed content"), self.top / "killed"
        process = self.start(out, content)
        self.wait_for_pictures(process)
        process.send_signal(signal.SIGKILL)
        process.wait()
        process.stderr.close()
        self.assertFalse(made.catalogue(out)["complete"])
        left = {name: time for name, time in pictures(out).items() if name.endswith(".jpg")}
        self.assertTrue(0 < len(left) < 40, len(left))
        done = made.run(out, content)
        told = made.catalogue(out)
        self.assertTrue(told["complete"])
        self.assertEqual(sum(pose["picture"] is not None for pose in told["poses"]), len(told["poses"]))
        after = pictures(out)
        self.assertTrue(all(after[name] == time for name, time in left.items()))
        self.assertEqual({name for name in after if not name.endswith(".jpg")}, set())
        self.assertIn("pictures are there already", done.stderr)

    def test_a_worker_that_dies_costs_one_picture(self):
        content, out = self.many("dying content"), self.top / "dying"
        process = self.start(out, content, jobs=1)
        self.wait_for_pictures(process)
        workers = pathlib.Path("/proc/%d/task/%d/children" % (process.pid, process.pid)).read_text().split()
        self.assertEqual(len(workers), 1)
        os.kill(int(workers[0]), signal.SIGKILL)
        errors = process.stderr.read()
        process.stderr.close()
        self.assertEqual(process.wait(), 0, errors)
        told = made.catalogue(out)
        self.assertTrue(told["complete"])
        self.assertLessEqual(sum(pose["picture"] is None for pose in told["poses"]), 1)


if __name__ == "__main__":
    unittest.main()
