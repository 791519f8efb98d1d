"""The permanent numbers of members, for automation clients."""

HEADING = "# Class\tMember\tNumber: given once, never changed, never used again.\n"


class MemberNumbers:
    """The table of numbers. Members that have none get the next one of their class, at the end of the
    file; nothing else in it is ever touched."""

    def __init__(self, path):
        self.path = path
        self.numbers = {}
        self.text = path.read_text(encoding="utf-8") if path.exists() else HEADING
        for line in self.text.splitlines():
            if line and not line.startswith("#"):
                cls, member, number = line.split("\t")
                self.numbers[cls, member] = int(number)

    def give(self, classes):
        """Numbers every member and returns the names of the new ones."""
        added = []
        for cls in classes:
            highest = max([n for (name, _), n in self.numbers.items() if name == cls.name], default=0)
            for member in cls.members:
                if (cls.name, member.name) not in self.numbers:
                    highest += 1
                    self.numbers[cls.name, member.name] = highest
                    added.append(f"{cls.name}\t{member.name}\t{highest}\n")
        if added:
            self.text += "".join(added)
            self.path.write_text(self.text, encoding="utf-8")
        return [".".join(line.split("\t")[:2]) for line in added]
