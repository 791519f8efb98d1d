"""Tables of figures, as Markdown and for a terminal."""

from dataclasses import dataclass, field

from bars import RATIO_BARS, ratio_of
from figures import (BULK_WRITES, MEMORY_WRITES, OPERATION_NAMES, PERCENTAGES, READS, SINGLE_WRITES,
                     STORE_NAMES, WHOLE_FILE, time_text)

# Titles, kinds of records and operations of the tables.
GROUPS = (
    ("Reads of headers", "header", READS),
    ("Reads of rows", "row", READS),
    ("Percentage, count, open and close of headers", "header", PERCENTAGES + WHOLE_FILE),
    ("Percentage, count, open and close of rows", "row", PERCENTAGES + WHOLE_FILE),
    ("Writes of headers, durable", "header", SINGLE_WRITES),
    ("Writes of rows, durable", "row", SINGLE_WRITES),
    ("Commits of headers, in memory", "header", MEMORY_WRITES),
    ("Commits of rows, in memory", "row", MEMORY_WRITES),
    ("Bulk inserts of headers, a thousand in a commit", "header", BULK_WRITES),
    ("Bulk inserts of rows, a thousand in a commit", "row", BULK_WRITES),
)


@dataclass
class Table:
    title: str
    heads: list
    rows: list = field(default_factory=list)
    left: int = 1  # so many columns hold words

    def markdown(self):
        marks = ["---"] * self.left + ["--:"] * (len(self.heads) - self.left)
        lines = [self.heads, marks, *self.rows]
        return f"### {self.title}\n\n" + "".join(f"| {' | '.join(line)} |\n" for line in lines)

    def text(self):
        lines = [[cell.replace("**", "") for cell in line] for line in [self.heads, *self.rows]]
        widths = [max(map(len, column)) for column in zip(*lines)]
        shown = ["  ".join(cell.ljust(width) if place < self.left else cell.rjust(width)
                           for place, (cell, width) in enumerate(zip(line, widths))).rstrip()
                 for line in lines]
        return "\n".join([self.title, "-" * len(self.title), *shown]) + "\n"


def ratio_cell(figures, kind, operation, peer, records):
    ratio = ratio_of(figures, kind, operation, peer, records)
    if ratio is None:
        return ""
    bar = RATIO_BARS.get((kind, operation, peer))
    missed = bar is not None and round(ratio, 2) > bar
    return f"**{ratio:.2f} missed**" if missed else f"{ratio:.2f}"


def time_cell(figures, kind, operation, store, records):
    nanoseconds = figures.get(kind, operation, store, records)
    return "" if nanoseconds is None else time_text(nanoseconds)


def bar_cell(kind, operation, peer):
    bar = RATIO_BARS.get((kind, operation, peer))
    return "" if bar is None else f"{bar:.1f}"


def comparison(title, figures, kind, operations):
    """A row for each operation and number of records: times, and ratios beside their bars."""
    stores = [store for store in STORE_NAMES
              if any(store in figures.stores(kind, operation) for operation in operations)]
    peers = [peer for peer in ("lmdb", "sqlite") if peer in stores]
    heads = ["", "records", *(STORE_NAMES[store] for store in stores)]
    for peer in peers:
        heads += [f"of {STORE_NAMES[peer]}", "bar"]
    table = Table(title, heads)
    for operation in operations:
        for records in figures.sizes(kind, operation):
            row = [OPERATION_NAMES[operation], f"{records:,}"]
            row += [time_cell(figures, kind, operation, store, records) for store in stores]
            for peer in peers:
                row += [ratio_cell(figures, kind, operation, peer, records),
                        bar_cell(kind, operation, peer)]
            table.rows.append(row)
    return table


def load_table(load):
    """What eight processes did on one company in a second."""
    table = Table("Eight processes on one company", ["", "in a second"])
    if "failure" in load:
        table.rows.append(["**the load found a fault**", load["failure"].split("\n")[0]])
        return table
    for name, value in load.items():
        if name.endswith("_per_second"):
            table.rows.append([name.removesuffix("_per_second").replace("_", " "), f"{value:,.0f}"])
    table.rows.append(["slowest wait", f"{load['longest_wait_ms']:,} ms"])
    return table


def all_tables(figures, load):
    tables = [comparison(title, figures, kind, operations) for title, kind, operations in GROUPS]
    tables.append(comparison("Whole jobs", figures, "job", figures.operations("job")))
    if load is not None:
        tables.append(load_table(load))
    return [table for table in tables if table.rows]
