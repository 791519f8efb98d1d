"""The report on a made-up run: what is told of it, and which bars are held and missed."""

import json
import sys
import tempfile
import unittest
from pathlib import Path

BENCH = Path(__file__).resolve().parents[1]
sys.path.insert(0, str(BENCH / "report"))

# pylint: disable=wrong-import-position
import measure
import report
from bars import growth_outcomes, outcomes
from figures import Figures, time_text
from tables import all_tables, comparison

try:
    import matplotlib
except ImportError:
    matplotlib = None

RESULTS = json.loads((Path(__file__).parent / "results.json").read_text(encoding="utf-8"))


def figures_with(**changed):
    """The made-up figures of keyed reads of headers, with those of a store replaced."""
    figures = {"larkmoor": [100, 120], "lmdb": [100, 120], "sqlite": [1000, 1200]} | changed
    return Figures([measure.figure("header", "find", store, records, time)
                    for store, times in figures.items()
                    for records, time in zip((1000, 10_000), times)])


def missed(figures):
    return [outcome.what for outcome in outcomes(figures) if not outcome.held]


class BarsTest(unittest.TestCase):
    def test_a_figure_at_its_bar_holds(self):
        self.assertEqual(missed(figures_with(larkmoor=[130, 156])), [])

    def test_a_figure_above_its_bar_is_missed(self):
        self.assertEqual(missed(figures_with(larkmoor=[131, 156])),
                         ["keyed read, header, 1,000 records"])

    def test_each_peer_has_a_bar_of_its_own(self):
        self.assertEqual(missed(figures_with(sqlite=[99, 1200])), ["keyed read, header, 1,000 records"])

    def test_a_cost_that_grows_faster_than_the_peers_is_missed(self):
        figures = figures_with(larkmoor=[50, 150], lmdb=[100, 120])
        self.assertIn("growth of keyed read, header", missed(figures))
        self.assertNotIn("growth of keyed read, header",
                         missed(figures_with(larkmoor=[50, 60], lmdb=[100, 120])))

    def test_without_a_peer_there_is_nothing_to_judge(self):
        figures = Figures([measure.figure("header", "find", "larkmoor", 1000, 100)])
        self.assertEqual(outcomes(figures), [])

    def test_one_number_of_records_shows_no_growth(self):
        figures = Figures([measure.figure("row", "count", "larkmoor", 1000, 100)])
        self.assertEqual(list(growth_outcomes(figures)), [])

    def test_what_is_to_be_flat_may_vary_a_little(self):
        def grown(time):
            return missed(Figures([measure.figure("row", "count", "larkmoor", 1000, 100),
                                   measure.figure("row", "count", "larkmoor", 10_000, time)]))
        self.assertEqual(grown(149), [])
        self.assertEqual(grown(152), ["growth of count, row"])


class TablesTest(unittest.TestCase):
    def test_a_row_has_times_ratios_and_bars(self):
        table = comparison("Reads", figures_with(), "header", ("find", "next"))
        self.assertEqual(table.heads, ["", "records", "Larkmoor", "LMDB", "SQLite",
                                       "of LMDB", "bar", "of SQLite", "bar"])
        self.assertEqual(table.rows[0], ["keyed read", "1,000", "100 ns", "100 ns", "1.00 µs",
                                         "1.00", "1.3", "0.10", "1.0"])

    def test_a_missed_bar_stands_out_in_both_forms(self):
        table = comparison("Reads", figures_with(larkmoor=[200, 120]), "header", ("find",))
        self.assertIn("| **2.00 missed** |", table.markdown())
        self.assertIn("2.00 missed", table.text())
        self.assertNotIn("*", table.text())

    def test_the_columns_of_a_terminal_stand_below_each_other(self):
        lines = comparison("Reads", figures_with(), "header", ("find",)).text().splitlines()
        place = lines[2].index("LMDB") + len("LMDB")
        self.assertEqual([lines[3][place - 6:place], lines[4][place - 6:place]], ["100 ns", "120 ns"])

    def test_there_is_a_table_for_what_was_measured_and_no_other(self):
        titles = [table.title for table in all_tables(figures_with(), None)]
        self.assertEqual(titles, ["Reads of headers"])

    def test_the_load_on_a_company_is_told_with_its_faults(self):
        figures = figures_with()
        table = all_tables(figures, {"reads_per_second": 1234.5, "longest_wait_ms": 12})[-1]
        self.assertEqual(table.rows, [["reads", "1,234"], ["slowest wait", "12 ms"]])
        table = all_tables(figures, {"failure": "a torn transaction\nmore"})[-1]
        self.assertEqual(table.rows, [["**the load found a fault**", "a torn transaction"]])

    def test_times_have_three_digits_and_a_unit(self):
        self.assertEqual([time_text(time) for time in (24.7, 999.4, 999.7, 12_345, 4.7e7, 1.5e9)],
                         ["24.7 ns", "999 ns", "1.00 µs", "12.3 µs", "47.0 ms", "1.50 s"])


class MeasureTest(unittest.TestCase):
    def test_medians_are_taken_from_a_report_of_repetitions(self):
        run = {"run_name": "row/find/1000/lmdb", "run_type": "aggregate", "cpu_time": 2.0,
               "real_time": 3.0, "time_unit": "us"}
        found = list(measure.figures_of({"benchmarks": [
            {**run, "run_type": "iteration", "cpu_time": 9.0},
            {**run, "aggregate_name": "mean", "cpu_time": 5.0},
            {**run, "aggregate_name": "median"}]}))
        self.assertEqual(found, [measure.figure("row", "find", "lmdb", 1000, 2000.0)])

    def test_what_is_measured_on_the_clock_is_told_by_the_clock(self):
        found = list(measure.figures_of({"benchmarks": [
            {"run_name": "job/export_sales/2000/sqlite/real_time", "run_type": "iteration",
             "cpu_time": 1.0, "real_time": 50.0, "time_unit": "ms"}]}))
        self.assertEqual(found, [measure.figure("job", "export_sales", "sqlite", 2000, 50e6)])

    def test_turns_are_told_by_their_counters(self):
        found = list(measure.figures_of({"benchmarks": [
            {"run_name": "row/durable/1000/iterations:101", "run_type": "iteration", "cpu_time": 1.0,
             "real_time": 1.0, "time_unit": "ns", "delete/sqlite": 54.5}]}))
        self.assertEqual(found, [measure.figure("row", "delete", "sqlite", 1000, 54_500.0)])

    def test_sizes_are_powers_of_ten_up_to_the_most(self):
        self.assertEqual(measure.settings_for(True, None).records, [1000, 10_000])
        self.assertEqual(measure.settings_for(False, 150_000).records, [1000, 10_000, 100_000])


class ReportTest(unittest.TestCase):
    def test_the_terminal_is_told_the_machine_the_tables_and_what_was_missed(self):
        text = report.terminal_text(RESULTS)
        for part in ("AMD Testing, 2 cores", "Reads of headers", "Whole jobs",
                     "Eight processes on one company", "A quick run",
                     "10 of 12 bars hold.\nMissed:\n",
                     "- keyed read, row, 1,000 records: 1.50, of LMDB at most 1.30",
                     "- growth of count, header: 3.00, flat at most 1.50"):
            self.assertIn(part, text)

    def test_the_page_keeps_its_own_words_around_the_figures(self):
        with tempfile.TemporaryDirectory() as folder:
            page = Path(folder) / "performance.md"
            page.write_text(f"# Mine\n\n{report.START}former{report.END}\nBehind.\n", encoding="utf-8")
            for _ in range(2):
                report.write_page(RESULTS, page)
            text = page.read_text(encoding="utf-8")
        self.assertTrue(text.startswith(f"# Mine\n\n{report.START}"))
        self.assertTrue(text.endswith(f"{report.END}\nBehind.\n"))
        self.assertNotIn("former", text)
        self.assertEqual(text.count("### Reads of headers"), 1)

    def test_the_documentation_has_a_place_for_the_figures(self):
        text = report.PAGE.read_text(encoding="utf-8")
        self.assertEqual((text.count(report.START), text.count(report.END)), (1, 1))

    @unittest.skipIf(matplotlib is None, "there is no matplotlib")
    def test_a_plot_is_written_for_each_group_and_one_of_all_ratios(self):
        from plots import write_plots
        with tempfile.TemporaryDirectory() as folder:
            paths = write_plots(Figures(RESULTS["figures"]), Path(folder))
            self.assertEqual([path.name for path in paths],
                             ["reads_of_headers.png", "reads_of_rows.png",
                              "percentage_count_open_and_close_of_headers.png", "overview.png"])
            for path in paths:
                self.assertEqual(path.read_bytes()[:8], b"\x89PNG\r\n\x1a\n")
                self.assertGreater(path.stat().st_size, 10_000)


if __name__ == "__main__":
    unittest.main()
