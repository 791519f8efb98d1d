"""The table of record file names."""

from .source import Source


def load_file_names(path, problems):
    """File name by operation: those of the table of names, and those that it does not have."""
    source = Source(path, problems)
    source.check_tables(("names", "literals"))
    names = {}
    for table in ("names", "literals"):
        for operation, name in source.tables.get(table, {}).items():
            if not isinstance(name, str) or not name.endswith(".dat"):
                source.complain(table, operation, f"{operation}: \"{name}\" is no name of a record file")
            names[operation] = name
    return names
