"""Reading a dictionary file, and saying where in it a mistake is."""

import re
import tomllib
from pathlib import Path


class Problems:
    """Collects the mistakes of a run, each as "file:line: what is wrong"."""

    def __init__(self):
        self.lines = []

    def add(self, source, line, text):
        self.lines.append(f"{source.path}:{line}: {text}")

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
            problems.add(self, int(place[1]) if place else 1, str(error))
            self.tables = {}

    @property
    def stem(self):
        return self.path.stem

    def line_of(self, table, entry=None):
        """The line of an entry, or of the table's heading; 1 where it cannot be found."""
        inside = False
        for number, line in enumerate(self.text.splitlines(), 1):
            heading = re.match(r"\s*\[([^\[\]]+)\]", line)
            if heading:
                inside = heading[1].strip() == table
                if inside and entry is None:
                    return number
            elif inside and entry is not None and re.match(
                    rf'\s*"?{re.escape(str(entry))}"?\s*=', line):
                return number
        return 1

    def complain(self, table, entry, text):
        self.problems.add(self, self.line_of(table, entry), text)

    def check_tables(self, known):
        for table in self.tables:
            if table not in known:
                self.complain(table, None, f"unknown table [{table}]")

    def check_entries(self, table, known):
        for entry in self.tables.get(table, {}):
            if entry not in known:
                self.complain(table, entry, f"unknown entry \"{entry}\" in [{table}]")

    def check_attributes(self, table, entry, value, known):
        for attribute in value:
            if attribute not in known:
                self.complain(table, entry, f"{entry}: unknown attribute \"{attribute}\"")

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
