"""Reading a dictionary file, and saying where in it a mistake is."""

import re
import tomllib
from pathlib import Path


# What the value of an attribute has to be.
KINDS = {str: "a text", bool: "true or false", int: "a whole number", float: "a number", list: "a list"}


def is_of_kind(value, kind):
    if kind in (int, float) and isinstance(value, bool):
        return False
    return isinstance(value, (int, float) if kind is float else kind)


def with_article(name):
    """"a Long", "an Integer"."""
    return f"{'an' if name[:1] in tuple('AEIOU') else 'a'} {name}"


class Problems:
    """Collects the mistakes of a run, each as "file:line: what is wrong"."""

    def __init__(self):
        self.syntax = []
        self.others = []

    def add(self, source, line, text):
        self.others.append(f"{source.path}:{line}: {text}")

    def add_syntax(self, source, line, text):
        self.syntax.append(f"{source.path}:{line}: {text}")

    @property
    def lines(self):
        """What to tell: as long as a file cannot be read at all, all else would only follow from that."""
        return self.syntax or self.others

    def __bool__(self):
        return bool(self.lines)


class Source:
    """One dictionary file: its tables, and the line on which each entry stands.

    The parser of the standard library gives no lines. As every entry is one line of the form
    `name = ...` under its `[table]`, the text tells them.
    """

    def __init__(self, path, problems):
        self.path = Path(path)
        self.problems = problems
        self.text = self.path.read_text(encoding="utf-8")
        try:
            self.tables = tomllib.loads(self.text)
        except tomllib.TOMLDecodeError as error:
            place = re.search(r"at line (\d+)", str(error))
            line = int(place[1]) if place else 1
            what = str(error)
            if what.startswith("Cannot overwrite"):
                what = f"an entry of this name is there already: {self.text.splitlines()[line - 1]}"
            problems.add_syntax(self, line, what)
            self.tables = {}

    @property
    def stem(self):
        return self.path.stem

    def line_of(self, table, entry=None):
        """The line of an entry; that of the table's heading where there is no such line, or 1."""
        inside, told = False, 1
        for number, line in enumerate(self.text.splitlines(), 1):
            heading = re.match(r"\s*\[([^\[\]]+)\]", line)
            if heading:
                inside = heading[1].strip() == table
                if inside:
                    told = number
            elif inside and entry is not None and re.match(
                    rf'\s*"?{re.escape(str(entry))}"?\s*=', line):
                return number
        return told

    def complain(self, table, entry, text):
        self.problems.add(self, self.line_of(table, entry), text)

    def check_tables(self, known):
        for table, entries in list(self.tables.items()):
            if table not in known:
                self.complain(table, None, f"unknown table [{table}]")
            elif not isinstance(entries, dict):
                self.complain(table, None, f"{table} is a table: [{table}]")
                del self.tables[table]

    def check_entries(self, table, known):
        """The entries of a table that are known and of their kind; complains of all others."""
        checked = {}
        for entry, value in self.tables.get(table, {}).items():
            if entry not in known:
                self.complain(table, entry, f"unknown entry \"{entry}\" in [{table}]")
            elif not is_of_kind(value, known[entry]):
                self.complain(table, entry, f"{entry} is {KINDS[known[entry]]}")
            else:
                checked[entry] = value
        return checked

    def check_attributes(self, table, entry, value, known):
        """The attributes of an entry that are known and of their kind; complains of all others."""
        checked = {}
        for attribute, told in value.items():
            if attribute not in known:
                self.complain(table, entry, f"{entry}: unknown attribute \"{attribute}\"")
            elif not is_of_kind(told, known[attribute]):
                self.complain(table, entry, f"{entry}: {attribute} is {KINDS[known[attribute]]}")
            else:
                checked[attribute] = told
        return checked

    def check_text(self, table, entry, value, attribute):
        """The text of an attribute that has to be there, or ""."""
        text = value.get(attribute)
        if not isinstance(text, str) or not text:
            self.complain(table, entry, f"{entry}: {attribute} is missing")
            return ""
        return text

    def check_names_differ(self, *tables):
        """Names are looked up in any case, so that two may not differ in case alone."""
        seen = {}
        for table in tables:
            for name in self.tables.get(table, {}):
                earlier = seen.setdefault(name.lower(), (table, name))
                if earlier != (table, name):
                    self.complain(table, name, f"{name}: there is a member {earlier[1]} already")


class NameLists:
    """Lists of names that records and classes share, such as the rights of users: one file each, with a
    doc text for every name, in the order of the record."""

    def __init__(self, paths, problems):
        self.lists = {}
        for path in sorted(paths):
            source = Source(path, problems)
            source.check_tables(("list", "names"))
            source.check_entries("list", {"doc": str})
            source.check_names_differ("names")
            self.lists[source.stem] = source.tables.get("names", {})

    def expand(self, source, table):
        """The entries of a table. One that names a list stands for an entry a name; a name that has an entry
        of its own as well is left to that."""
        entries = source.tables.get(table, {})
        expanded = {}
        for name, value in entries.items():
            if not (isinstance(value, dict) and "list" in value):
                expanded[name] = value
                continue
            common = {key: text for key, text in value.items() if key != "list"}
            told = str(value["list"])
            if told not in self.lists:
                source.complain(table, name, f"unknown list \"{told}\"")
            for each, doc in self.lists.get(told, {}).items():
                if each not in entries:
                    expanded[each] = common | {"doc": doc}
        return expanded
