"""Tells what a run of the benchmarks came to.

    report.py --results build/bench/results.json --plots build/bench/plots [--write-docs]

Prints tables and the bars that were missed, and writes plots. With --write-docs both go into the
documentation, too.
"""

import argparse
import json
import shutil
from pathlib import Path

from bars import outcomes
from figures import Figures
from tables import all_tables

ROOT = Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs/performance.md"
PICTURES = ROOT / "docs/performance"

# The plots that the page shows.
SHOWN = ("overview.png", "reads_of_headers.png", "reads_of_rows.png", "commits_of_rows_in_memory.png")

START = "<!-- Figures: written by ./bench/run --write-docs -->\n"
END = "<!-- End of the figures -->\n"


def run_text(results):
    """When and where it was measured, in a sentence or two."""
    machine, settings = results["machine"], results["settings"]
    quick = " A quick run, which tells little." if settings["quick"] else ""
    return (f"Measured on {results['date']} at commit {results['commit']}: {machine['processor']}, "
            f"{machine['cores']} cores, {machine['memory_gb']} GB of memory, {machine['system']}, "
            f"{machine['compiler']}; load {machine['load_before']:.1f} before the run. Each figure is "
            f"a median, of {settings['repetitions']} repetitions where it is not by turns.{quick}")


def bars_text(results):
    found = outcomes(Figures(results["figures"]))
    missed = [outcome for outcome in found if not outcome.held]
    lines = [f"{len(found) - len(missed)} of {len(found)} bars hold."]
    if missed:
        lines += ["Missed:", *(f"- {outcome.text()}" for outcome in missed)]
    return "\n".join(lines)


def growth_lines(results):
    return [outcome.text() + ("" if outcome.held else ": MISSED")
            for outcome in outcomes(Figures(results["figures"]))
            if outcome.what.startswith("growth")]


def tables_of(results):
    return all_tables(Figures(results["figures"]), results.get("company_load"))


def terminal_text(results):
    parts = [run_text(results), *(table.text() for table in tables_of(results)),
             "\n".join(["From the fewest records to the most:", *growth_lines(results)]),
             bars_text(results)]
    return "\n\n".join(part.rstrip() for part in parts)


def page_text(results):
    """What stands between the page's two markers."""
    bars = bars_text(results).replace("Missed:\n", "Missed:\n\n")
    growth = "\n".join(f"- {line}" for line in growth_lines(results))
    pictures = "\n\n".join(f"![{name.removesuffix('.png').replace('_', ' ').capitalize()}]"
                           f"(performance/{name})" for name in SHOWN)
    tables = "\n".join(table.markdown() for table in tables_of(results))
    return (f"{run_text(results)}\n\n{bars}\n\nFrom the fewest records to the most:\n\n{growth}\n\n"
            f"{pictures}\n\n{tables}")


def write_page(results, page):
    text = page.read_text(encoding="utf-8")
    before, rest = text.split(START)
    after = rest.split(END)[1]
    page.write_text(f"{before}{START}\n{page_text(results)}\n{END}{after}", encoding="utf-8")


def write_docs(results, plots):
    write_page(results, PAGE)
    PICTURES.mkdir(exist_ok=True)
    for name in SHOWN:
        shutil.copyfile(plots / name, PICTURES / name)


def main():
    parser = argparse.ArgumentParser(description="Tells what a run of the benchmarks came to.")
    parser.add_argument("--results", type=Path, required=True)
    parser.add_argument("--plots", type=Path, required=True)
    parser.add_argument("--write-docs", action="store_true")
    options = parser.parse_args()

    results = json.loads(options.results.read_text(encoding="utf-8"))
    print(terminal_text(results))
    from plots import write_plots  # only here, so that tables need no matplotlib
    write_plots(Figures(results["figures"]), options.plots)
    print(f"\nPlots: {options.plots}")
    if options.write_docs:
        write_docs(results, options.plots)


if __name__ == "__main__":
    main()
