"""What the stamps of a witness say, told from made-up stamps, and the tables that show it."""

import sys
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "tools" / "timing"))

from page import Findings, Goal, goals, markers, renewed, section, table  # noqa: E402
from spread import Spread, percentile  # noqa: E402
from stamps import (DARK, Mismatch, Shown, Stamp, crosses, cues, exposures, presentations,  # noqa: E402
                    reaction_errors, read_line, steps, true_reaction_times)

MS = 1_000_000


def change(ms: float, picture: str = "a", what: str = "place", brightness: float = 1.0,
           pixels: int = 1) -> Stamp:
    return Stamp("change", int(ms * MS), what, DARK if picture == "" else picture, brightness,
                 pixels)


def press(ms: float, what: str = "key=space") -> Stamp:
    return Stamp("press", int(ms * MS), what)


class Lines(unittest.TestCase):
    def test_a_change_a_press_and_a_heading_are_told_apart(self) -> None:
        self.assertEqual(read_line("change,12,centre,00000000000000aa,127.500,160,\n"),
                         Stamp("change", 12, "centre", "00000000000000aa", 127.5, 160))
        self.assertEqual(read_line("press,15,key=space,,,,14\n"),
                         Stamp("press", 15, "key=space", due=14))
        self.assertIsNone(read_line("kind,at_ns,what,hash,brightness,pixels,due_ns\n"))
        self.assertIsNone(read_line("# real-time priority granted\n"))

    def test_a_black_place_is_dark(self) -> None:
        self.assertTrue(read_line("place,1,a,0000000000000000,0.000,0,").is_dark)  # type: ignore[union-attr]
        self.assertFalse(change(1).is_dark)


class Intervals(unittest.TestCase):
    def test_a_presentation_goes_from_dark_to_dark(self) -> None:
        seen = [change(0, ""), change(10, "a"), change(20, "b"), change(30, ""), change(40, "c"),
                change(50, ""), change(60, "d")]
        self.assertEqual([[stamp.hash for stamp in trial] for trial in presentations(seen)],
                         [["a", "b", DARK], ["c", DARK]])

    def test_an_exposure_ends_with_its_mask(self) -> None:
        seen = [change(0, ""), change(100, "pair"), change(117.25, "mask"), change(317.5, ""),
                change(900, "button"), change(950, ""),
                change(1100, "pair"), change(1133, ""), change(1134, "mask"), change(1334, "")]
        masks = [change(117.5, "mask"), change(1133.5, "mask")]
        found = exposures(seen, masks, [17, 33])
        self.assertEqual(found.shown, [Shown(17, 17.25), Shown(33, 33)])
        self.assertEqual(found.shown[0].error, 0.25)
        self.assertEqual((found.masks, found.parts, found.gaps), ([200.25], [0.25], 1))

    def test_masks_that_do_not_fit_are_told(self) -> None:
        seen = [change(0, ""), change(100, "pair"), change(117, "mask"), change(317, "")]
        with self.assertRaises(Mismatch):
            exposures(seen, [change(117)], [17, 33])
        with self.assertRaises(Mismatch):
            exposures(seen, [change(90)], [17])

    def test_steps_are_counted_without_coming_and_going(self) -> None:
        seen = [change(0, ""), change(5, "rest"), change(100, "1"), change(115, "2"),
                change(131, "3"), change(140, "")]
        self.assertEqual(steps(seen), [15, 16])

    def test_only_an_alerted_trial_has_a_cue_to_see(self) -> None:
        centre = [change(0, brightness=12), change(500, brightness=99), change(600.5, brightness=12),
                  change(1900, brightness=44), change(2400, brightness=12)]
        targets = [change(0, "", "target-E"), change(1000.25, what="target-E"),
                   change(1300, "", "target-E"), change(2300, what="target-N")]
        self.assertEqual(cues(centre, targets, [2, 3], 2), ([100.5], [399.75]))
        self.assertEqual(cues(centre, targets, [1, 3], 2), ([], []))
        with self.assertRaises(Mismatch):
            cues(centre, targets, [1, 2], 2)
        with self.assertRaises(Mismatch):
            cues(centre, targets, [1, 1, 1], 2)

    def test_a_run_has_crosses_and_gaps_and_its_answers_are_none(self) -> None:
        def ring(ms: float, brightness: float, pixels: int = 156) -> Stamp:
            return change(ms, brightness=brightness, pixels=pixels)
        seen = [ring(0, 0), ring(100, 2), ring(600.5, 0), ring(1600, 2), ring(2100, 0),
                ring(3100, 9, 1087), ring(3200, 11), ring(3300, 9),  # the question and its answer
                ring(4000, 0, 1087), ring(5000, 2), ring(5501, 0), ring(6501, 9, 1087)]
        stood, gaps = crosses(seen, [(0, 3100 * MS), (4000 * MS, 6501 * MS)], 156)
        self.assertEqual(stood, [500.5, 500, 501])
        self.assertEqual(gaps, [999.5])


class Reactions(unittest.TestCase):
    stamps = [change(0, "", "target-E"), change(1000, what="target-E"), press(1250.5),
              change(1251, "", "target-E"), change(3000, what="target-N"),
              change(3001, what="centre"), press(3600, "button=1"), change(3601, "", "target-N")]

    def test_a_press_belongs_to_the_onset_before_it(self) -> None:
        self.assertEqual(true_reaction_times(self.stamps, "target-"),
                         [("key=space", 250.5), ("button=1", 600)])

    def test_a_press_without_an_onset_is_told(self) -> None:
        with self.assertRaises(Mismatch):
            true_reaction_times([press(1)], "target-")
        with self.assertRaises(Mismatch):
            true_reaction_times(self.stamps[:3] + [press(1300)], "target-")

    def test_reported_times_stand_beside_the_true_ones(self) -> None:
        true = [("key=space", 250.5), ("button=1", 600.0), ("key=space", 300.0)]
        self.assertEqual(reaction_errors(true, [250, 601, 300]),
                         {"key=space": [Shown(250.5, 250), Shown(300, 300)],
                          "button=1": [Shown(600, 601)]})
        with self.assertRaises(Mismatch):
            reaction_errors(true, [250, 601])


class Figures(unittest.TestCase):
    def test_percentiles_are_values_of_the_set(self) -> None:
        values = list(range(200, 0, -1))
        self.assertEqual([percentile(values, percent) for percent in (50, 95, 99, 100)],
                         [100, 190, 198, 200])
        self.assertEqual(percentile([7], 1), 7)

    def test_the_tail_is_of_the_size_of_errors_and_the_middle_keeps_their_sign(self) -> None:
        spread = Spread.of([-4.0, -1.0, 1.0, 0.0])
        self.assertEqual((spread.count, spread.median, spread.mean), (4, -0.5, -1.0))
        self.assertEqual((spread.p95, spread.p99, spread.worst), (4, 4, 4))
        self.assertAlmostEqual(spread.deviation, 2.1602, 4)
        self.assertEqual(Spread.of([2.0]).deviation, 0)
        with self.assertRaises(ValueError):
            Spread.of([])

    def findings(self, condition: str = "idle") -> Findings:
        return Findings(condition, "a machine", ["# real-time", "self-test,n,median_us,p95_us,p99_us,"
                                                 "worst_us", "drawn to stamped,9,1.0,2.0,3.0,4.0"],
                        exposures=[Shown(17, 17.25), Shown(17, 17.5), Shown(850, 849)],
                        others={"cue, 100 ms": [Shown(100, 100.125)]},
                        reactions={"key=space": [Shown(300.25, 300), Shown(400, 400.5)]},
                        bare_timer=[0.1, 0.5])

    def test_a_goal_is_judged_at_the_length_that_misses_it_most(self) -> None:
        found = {goal.name: goal for goal in goals(self.findings())}
        self.assertEqual(found["exposure, median of every length"],
                         Goal("exposure, median of every length", 0.3, 1, "at 850 ms"))
        self.assertFalse(found["exposure, median of every length"].is_met)
        self.assertTrue(found["exposure, 99 % of every length"].is_met)
        self.assertEqual(found["exposure, worst"].limit, 2.5)
        self.assertEqual(found["reaction time by the key, median"].found, 0.125)
        self.assertFalse(found["reaction time by the key, SD"].is_met)
        self.assertNotIn("reaction time by the mouse, SD", found)

    def test_a_condition_has_its_own_goals_or_none(self) -> None:
        self.assertEqual({goal.limit for goal in goals(self.findings("one-core"))
                          if "99" in goal.name}, {2.0})
        self.assertEqual(goals(self.findings("disk")), [])

    def test_a_table_has_a_row_for_each_that_was_measured(self) -> None:
        self.assertEqual(table("x", [("a", [0.5, -0.25]), ("b", [])])[2:],
                         ["| a | 2 | 0.125 | 0.125 | 0.530 | 0.500 | 0.500 | 0.500 |"])

    def test_a_section_has_every_length_and_all_of_them(self) -> None:
        text = section(self.findings())
        for begin in ("| 17 | 2 |", "| 850 | 1 |", "| up to 650 | 2 |", "| longer | 1 |",
                      "| all | 3 |", "| cue, 100 ms | 1 |", "| reaction time by the key | 2 |",
                      "| the bare timer, 100 ms | 2 |", "| drawn to stamped | 9 | 1.0 |"):
            self.assertIn("\n" + begin, text)
        self.assertEqual(text.count("**no**"), 2)

    def test_only_the_figures_of_one_condition_are_renewed(self) -> None:
        begin, end = markers("idle")
        other = "".join(markers("disk"))
        page = f"head\n{begin}old\n{end}words\n{other}tail\n"
        self.assertEqual(renewed(page, "idle", "new\n"),
                         f"head\n{begin}new\n{end}words\n{other}tail\n")
        for broken in ("head\n", begin + begin + end, end + begin):
            with self.assertRaises(Mismatch):
                renewed(broken, "idle", "new\n")

    def test_the_page_has_a_place_for_every_condition(self) -> None:
        page = (Path(__file__).resolve().parents[2] / "docs" / "timing.md").read_text("utf-8")
        for condition in ("idle", "one-core", "both-cores", "disk"):
            self.assertIn("new figures\n", renewed(page, condition, "new figures\n"))


if __name__ == "__main__":
    unittest.main()
