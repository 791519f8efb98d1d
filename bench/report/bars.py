"""The bars that are set, and which of them hold."""

from dataclasses import dataclass

from figures import (KINDS, OPERATION_NAMES, PERCENTAGES, READS, STORE_NAMES, WHOLE_FILE)

JOURNALS = ("sales", "purchases", "paychecks")

# The most that a figure of the library may be of its peer's: by kind of record, operation and peer.
RATIO_BARS = {
    **{(kind, operation, "lmdb"): 1.3 for kind in KINDS for operation in READS},
    **{(kind, operation, "lmdb"): 1.5 for kind in KINDS
       for operation in ("update", "update_key", "delete", "update_in_memory",
                         "update_key_in_memory", "delete_in_memory")},
    **{(kind, operation, "sqlite"): 1.0 for kind in KINDS
       for operation in (*READS, *PERCENTAGES, "count")},
    **{("job", f"walk_{journal}", "lmdb"): 1.5 for journal in JOURNALS},
    **{("job", f"walk_{journal}", "sqlite"): 0.5 for journal in JOURNALS},
    **{("job", f"find_{journal}", "lmdb"): 1.5 for journal in JOURNALS},
    **{("job", f"find_{journal}", "sqlite"): 1.0 for journal in JOURNALS},
    **{("job", f"post_{journal}", "lmdb"): 1.3 for journal in JOURNALS},
    **{("job", f"load_{journal}", "lmdb"): 1.6 for journal in JOURNALS},
    ("job", "payroll", "lmdb"): 1.5,
    ("job", "resolve_accounts", "sqlite"): 1.0,
}

# From the fewest records to the most, what is to cost the same may vary by so much.
FLAT = 1.5


@dataclass(frozen=True)
class Outcome:
    """What came out for one bar. `ratio` is held where it is at most `bar`."""

    what: str
    ratio: float
    bar: float
    against: str

    @property
    def held(self):
        # What is shown with two digits is judged with two.
        return round(self.ratio, 2) <= round(self.bar, 2)

    def text(self):
        return f"{self.what}: {self.ratio:.2f}, {self.against} at most {self.bar:.2f}"


def ratio_of(figures, kind, operation, peer, records):
    """The library's figure by the peer's, None where either is missing."""
    ours = figures.get(kind, operation, "larkmoor", records)
    theirs = figures.get(kind, operation, peer, records)
    return ours / theirs if ours and theirs else None


def name_of(kind, operation):
    name = OPERATION_NAMES[operation]
    return name if kind == "job" else f"{name}, {kind}"


def ratio_outcomes(figures):
    for (kind, operation, peer), bar in RATIO_BARS.items():
        for records in figures.sizes(kind, operation):
            ratio = ratio_of(figures, kind, operation, peer, records)
            if ratio is not None:
                yield Outcome(f"{name_of(kind, operation)}, {records:,} records", ratio, bar,
                              f"of {STORE_NAMES[peer]}")


def growth(figures, kind, operation, store):
    """The figure of the most records by that of the fewest, None where there is but one."""
    sizes = figures.sizes(kind, operation, store)
    if len(sizes) < 2:
        return None
    return (figures.get(kind, operation, store, sizes[-1]) /
            figures.get(kind, operation, store, sizes[0]))


def growth_outcomes(figures):
    for kind in KINDS:
        ours = growth(figures, kind, "find", "larkmoor")
        theirs = growth(figures, kind, "find", "lmdb")
        if ours is not None and theirs is not None:
            yield Outcome(f"growth of {name_of(kind, 'find')}", ours, theirs, "as LMDB's")
        for operation in WHOLE_FILE:
            grown = growth(figures, kind, operation, "larkmoor")
            if grown is not None:
                yield Outcome(f"growth of {name_of(kind, operation)}", grown, FLAT, "flat")


def outcomes(figures):
    """Of every bar that there are figures for."""
    return [*ratio_outcomes(figures), *growth_outcomes(figures)]
