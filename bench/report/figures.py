"""The figures of a run, by what was measured, and the words that they are shown with."""

READS = ("find", "next", "previous", "step")
PERCENTAGES = ("percentage", "find_by_percentage")
WHOLE_FILE = ("count", "open")
SINGLE_WRITES = ("insert", "update", "update_key", "delete")
MEMORY_WRITES = tuple(f"{operation}_in_memory" for operation in SINGLE_WRITES)
BULK_WRITES = ("bulk_insert",)
KINDS = ("header", "row")

OPERATION_NAMES = {
    "find": "keyed read", "next": "next", "previous": "previous", "step": "step",
    "percentage": "percentage of a record", "find_by_percentage": "record at a percentage",
    "count": "count", "open": "open and close",
    "insert": "insert", "update": "update", "update_key": "update of a key", "delete": "delete",
    "insert_in_memory": "insert in memory", "update_in_memory": "update in memory",
    "update_key_in_memory": "update of a key in memory", "delete_in_memory": "delete in memory",
    "bulk_insert": "insert in bulk",
    "walk_sales": "walk a year's sales", "walk_purchases": "walk a year's purchases",
    "walk_paychecks": "walk a year's paychecks",
    "find_sales": "find an invoice", "find_purchases": "find a bill",
    "find_paychecks": "find a paycheck",
    "post_sales": "post an invoice", "post_purchases": "post a bill",
    "post_paychecks": "post a paycheck",
    "load_sales": "load an invoice in bulk", "load_purchases": "load a bill in bulk",
    "load_paychecks": "load a paycheck in bulk",
    "payroll": "payroll of an employee", "resolve_accounts": "resolve 100,000 account IDs",
    "export_sales": "export a year's sales as CSV",
}

STORE_NAMES = {
    "larkmoor": "Larkmoor", "lmdb": "LMDB", "packed_lmdb": "LMDB, packed",
    "lmdb_one_transaction": "LMDB, one transaction", "sqlite": "SQLite",
    "sqlite_one_query": "SQLite, one query", "sqlite_full": "SQLite, FULL",
}


class Figures:
    """Nanoseconds by kind, operation, store and number of records."""

    def __init__(self, figures):
        self._figures = {(figure["kind"], figure["operation"], figure["store"], figure["records"]):
                         figure["nanoseconds"] for figure in figures}

    def get(self, kind, operation, store, records):
        """None where it was not measured."""
        return self._figures.get((kind, operation, store, records))

    def sizes(self, kind, operation, store="larkmoor"):
        """Numbers of records that there are figures of, from the least."""
        return sorted(key[3] for key in self._figures if key[:3] == (kind, operation, store))

    def stores(self, kind, operation):
        """Those that there are figures of, in the order in which they are shown."""
        measured = {key[2] for key in self._figures if key[:2] == (kind, operation)}
        return [store for store in STORE_NAMES if store in measured]

    def operations(self, kind):
        """Those that there are figures of, in the order in which they are shown."""
        measured = {key[1] for key in self._figures if key[0] == kind}
        return [operation for operation in OPERATION_NAMES if operation in measured]


def time_text(nanoseconds):
    """Three digits and a unit."""
    for unit, size in (("s", 1e9), ("ms", 1e6), ("µs", 1e3)):
        if nanoseconds >= 0.9995 * size:
            return f"{digits(nanoseconds / size)} {unit}"
    return f"{digits(nanoseconds)} ns"


def digits(value):
    if value >= 99.95:
        return f"{value:,.0f}"
    return f"{value:.1f}" if value >= 9.995 else f"{value:.2f}"
