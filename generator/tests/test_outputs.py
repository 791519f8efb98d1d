"""What the generator makes of a dictionary with every kind of entry."""

import os
import unittest

from support import HERE, DictionaryTest

GOLDEN = HERE / "golden"


class Outputs(DictionaryTest):
    maxDiff = None

    def test_every_file_is_as_expected(self):
        """The golden files; REGENERATE=1 writes them anew, to be read before they are committed."""
        self.generate()
        made = {path.relative_to(self.output): path.read_text()
                for path in self.output.rglob("*") if path.is_file()}
        if os.environ.get("REGENERATE"):
            for path, text in made.items():
                golden = GOLDEN / f"{path}.golden"
                golden.parent.mkdir(parents=True, exist_ok=True)
                golden.write_text(text)
        expected = {path.relative_to(GOLDEN).as_posix().removesuffix(".golden"): path.read_text()
                    for path in GOLDEN.rglob("*.golden")}
        self.assertEqual(sorted(expected), sorted(path.as_posix() for path in made))
        for path, text in made.items():
            self.assertEqual(text, expected[path.as_posix()], path)

    def test_a_second_run_writes_nothing(self):
        self.generate()
        before = {path: path.stat().st_mtime_ns for path in self.output.rglob("*")}
        self.generate()
        self.assertEqual(before, {path: path.stat().st_mtime_ns for path in self.output.rglob("*")})

    def test_prints_every_file_it_makes(self):
        printed = self.generate().split()
        self.assertEqual(sorted(printed),
                         sorted(str(p) for p in self.output.rglob("*") if p.is_file()))

    def test_files_of_a_class_that_is_gone_are_taken_away(self):
        self.generate()
        (self.source / "things/empty.toml").unlink()
        self.generate()
        self.assertFalse((self.output / "include/larkmoor/things/empty.h").exists())

    def test_the_first_line_names_the_source(self):
        self.generate()
        self.assertTrue(self.generated("src/things/thing.gen.cpp").startswith(
            "// Generated from src/things/thing.toml; edit there.\n"))

    def test_a_class_with_parts_by_hand_gets_no_parts(self):
        self.change("things/empty.toml", 'name = "Empty"', 'name = "Empty"\nparts = "by hand"')
        self.generate()
        self.assertFalse((self.output / "src/things/empty_parts.h").exists())

    def test_members_by_hand_are_declared_and_not_defined(self):
        self.generate()
        header = self.generated("include/larkmoor/things/thing.h")
        source = self.generated("src/things/thing.gen.cpp")
        self.assertIn("double Work(std::int32_t& Count, const Variant& Date);", header)
        self.assertNotIn("Thing::Work", source)
        self.assertNotIn("Thing::Other", source)
        self.assertIn("std::int32_t Thing::Odd()", source)
        self.assertNotIn("void Thing::Odd", source)

    def test_a_list_gives_its_names_in_alphabetical_places_less_those_with_an_entry(self):
        self.generate()
        header = self.generated("include/larkmoor/things/thing.h")
        record = self.generated("src/engine/records/thing.h")
        self.assertLess(header.index("/// Clamped."), header.index("/// How blue."))
        self.assertLess(header.index("/// How blue."), header.index("/// The code."))
        self.assertIn("/// Not kept here.", header)
        self.assertNotIn("/// How green.", header)
        self.assertLess(record.index("How red."), record.index("How green."))


class Numbers(DictionaryTest):
    TABLE = "automation/member_numbers.tsv"

    def numbers(self):
        lines = (self.source / self.TABLE).read_text().splitlines()
        return [line.split("\t") for line in lines if not line.startswith("#")]

    def test_every_member_gets_one_in_order(self):
        self.generate()
        thing = [int(number) for name, _, number in self.numbers() if name == "Thing"]
        self.assertEqual(thing, list(range(1, 27)))

    def test_new_members_are_appended_and_old_numbers_stay(self):
        self.generate()
        before = self.numbers()
        self.change("things/thing.toml", "[properties]\n", "[properties]\n"
                    "Actual = { type = \"Long\", field = \"Number\", doc = \"New.\" }\n")
        code, _, err = self.run_generator()
        self.assertEqual(code, 0)
        self.assertIn("numbers for 1 new members (Thing.Actual)", err)
        self.assertEqual(self.numbers(), before + [["Thing", "Actual", "27"]])

    def test_the_number_of_a_member_that_went_is_not_used_again(self):
        self.generate()
        self.change("things/thing.toml", 'When    = { type = "Date", field = "Made", doc = "As a '
                    'plain date." }\n', "")
        self.change("things/thing.toml", "[properties]\n", "[properties]\n"
                    "Actual = { type = \"Long\", field = \"Number\", doc = \"New.\" }\n")
        self.generate()
        self.assertEqual(self.numbers()[-1], ["Thing", "Actual", "27"])


if __name__ == "__main__":
    unittest.main()
