"""Mistakes in the dictionary stop the generator with the file, the line and what is wrong."""

import unittest

from support import DictionaryTest

RECORD = "engine/records/thing.toml"
ROW = "engine/records/kind_four.toml"
CLASS = "things/thing.toml"

# What a mistake replaces, by what, and what is said of it. The line is that of the replaced text, unless the
# mistake tells how many lines further down it is seen.
MISTAKES = {
    "a field of an unknown type": (
        RECORD, 'type = "Single"', 'type = "Float"', 'Part: unknown type "Float"'),
    "a text without a width": (
        RECORD, 'type = "Text(20)"', 'type = "Text"', "Code: Text needs a width from 1 to 65535"),
    "a width where none belongs": (
        RECORD, 'type = "Single"', 'type = "Single(4)"', "Part: Single takes no width"),
    "a repeating field without elements": (
        RECORD, 'type = "Double[4]"', 'type = "Double[0]"',
        "Amount: a repeating field has 1 to 65535 elements"),
    "a type that is none": (
        RECORD, 'type = "Single"', 'type = "Single!"', 'Part: "Single!" is no type'),
    "a field without documentation": (
        RECORD, ', doc = "A float."', "", "Part: doc is missing"),
    "an unknown attribute": (
        RECORD, 'doc = "A float."', 'doc = "A float.", size = 4', 'Part: unknown attribute "size"'),
    "an unknown table": (RECORD, "[keys]", "[key]", "unknown table [key]"),
    "an unknown entry": (RECORD, "[fields]", 'colour = "red"\n[fields]',
                         'unknown entry "colour" in [record]'),
    "two fields of one name": (
        RECORD, "Part        =", "Mark        =",
        'an entry of this name is there already: Mark '),
    "two fields that differ in case alone": (
        RECORD, "Part        =", "MARK        =", "MARK: there is a member Mark already"),
    "a file that the table of names has not": (
        RECORD, '"ThingFile"', '"ThinFile"', 'unknown file "ThinFile"; file_names.toml has their names'),
    "a width that does not fit the record's length": (
        RECORD, 'type = "Byte[2][3]"', 'type = "Byte[20][30]"',
        "Table: ends at byte 704, beyond the record's length of 200"),
    "a key over a field that is not there": (
        RECORD, '0 = "Number, unique', '0 = "Nummer, unique', "key 0: there is no field Nummer"),
    "a key over a gap": (RECORD, '5 = "Amount[1]"', '5 = "Gap"', "key 5: there is no field Gap"),
    "a key over a repeating field": (
        RECORD, '5 = "Amount[1]"', '5 = "Amount"', "key 5: Amount is a repeating field"),
    "a key over an element that is not there": (
        RECORD, '5 = "Amount[1]"', '5 = "Amount[4]"', "key 5: Amount has elements 0 to 3"),
    "a key over an element of a field that does not repeat": (
        RECORD, '5 = "Amount[1]"', '5 = "Number[0]"', "key 5: Number is no repeating field"),
    "a key over a type that does not sort": (
        RECORD, '5 = "Amount[1]"', '5 = "Price"', "key 5: a Currency field cannot be a key"),
    "a segment read as a wider type": (
        RECORD, '5 = "Amount[1]"', '5 = "Small:Long"', "key 5: Small cannot be read as Long"),
    "an unknown flag": (
        RECORD, '5 = "Amount[1]"', '5 = "Amount[1], sorted"', 'key 5: unknown flag "sorted"'),
    "a key number that is none": (
        RECORD, "5 = ", "119 = ", '"119" is no key number (0 to 118)'),
    "two keys of one number for one release": (
        RECORD, "below 13", "below 14", "key 2: two of this number hold for the same release"),
    "auto-increment over a text": (
        RECORD, '5 = "Amount[1]"', '5 = "Code, auto-increment"',
        "key 5: auto-increment takes one Integer or Long"),
    "a key beyond the record of an old release": (
        RECORD, '"8.0" = 180', '"8.0" = 40', "key 5: lies beyond the record's 40 bytes in release 8",
        21),
    "a row mark over a field that is not there": (
        ROW, "{ Kind = 4 }", "{ King = 4 }", "King is no Integer field of the base record"),
    "keys of a row": (ROW, "[fields]", "[keys]\n0 = \"Text[0]\"\n[fields]",
                      "the keys are those of SharedRow"),
    "a row over a record that is not there": (
        ROW, '"SharedRow"', '"SharedCow"', 'unknown record "SharedCow"'),
    "a class over a record that is not there": (
        CLASS, 'record = "Thing"', 'record = "Thin"', 'unknown record "Thin"'),
    "a property of an unknown type": (
        CLASS, 'Code    = { type = "String"', 'Code    = { type = "Text"',
        'Code: unknown type "Text"'),
    "a property over a field that is not there": (
        CLASS, 'field = "Open"', 'field = "Opened"', "Thing: there is no field Opened"),
    "a property of another type than its field": (
        CLASS, 'Code    = { type = "String"', 'Code    = { type = "Long"',
        "Code: is a Long, and the field Code a Text"),
    "a property without the index of its field": (
        CLASS, 'Amount  = { type = "Double", args = "Integer Index"', 'Amount  = { type = "Double"',
        "Amount: the field Amount has 1 index, the property 0"),
    "a clamp beyond the field": (
        CLASS, "clamp = [1, 3]", "clamp = [1, 4]", "bLimit: the field has elements 0 to 3"),
    "properties out of order": (
        CLASS, "bLimit  =", "Zebra   =",
        "Code: stands behind Zebra: properties are in alphabetical order", 1),
    "an operation and a property of one name": (
        CLASS, "Ends      =", "Dead      =", "Dead: there is a member Dead already", 8),
    "an operation that the frame has not": (
        CLASS, 'RecordCount = "frame"', 'Recount = "frame"', "Recount: is no operation of the frame"),
    "an operation without a body": (
        CLASS, "gives = 9, ", "", "Ends: takes one of read, gives and by_hand"),
    "a read on a key that the record has not": (
        CLASS, 'args = "Long Number", key = 0', 'args = "Long Number", key = 1',
        "GetEqual: the record has no key 1"),
    "key writers of a read that names no key": (
        CLASS, 'read = "btGetNext"', 'write = "KeyByte(0, 0)", read = "btGetNext"',
        "GetNext: the record has no key None"),
    "a read that the engine has not": (
        CLASS, 'read = "btGetEqual"', 'read = "btGetSame"',
        'GetEqual: unknown engine operation "btGetSame"'),
    "a writer of another type": (
        CLASS, "KeyLong(Number, 0)", "KeyWord(Number, 0)",
        'GetEqual: "KeyWord(Number, 0)" writes an Integer, and Number is a Long'),
    "a writer beyond the key": (
        CLASS, "KeyLong(Number, 0)", "KeyLong(Number, 1)",
        'GetEqual: "KeyLong(Number, 1)" goes beyond the key\'s 4 bytes'),
    "a writer into the middle of a segment": (
        CLASS, "KeyByte(0, 20)", "KeyByte(0, 19)",
        'GetCode: "KeyByte(0, 19)" starts inside a segment; they start at 0, 20'),
    "a reason that is none": (
        CLASS, 'by_hand = "the test", doc = "By hand."', 'by_hand = true, doc = "By hand."',
        "Other: by_hand tells why"),
    "a writer of an argument that is not there": (
        CLASS, "KeyLong(Number, 0)", "KeyLong(Nummer, 0)",
        'GetEqual: "KeyLong(Nummer, 0)": there is no argument Nummer'),
    "a writer that is none": (
        CLASS, "KeyLong(Number, 0)", "KeyNumber(Number, 0)",
        'GetEqual: "KeyNumber(Number, 0)" is no key writer'),
    "an argument that is none": (
        CLASS, 'args = "Long Number", key', 'args = "long Number", key',
        'GetEqual: "long Number" is no argument'),
    "an unknown access": (
        CLASS, 'access = "w"', 'access = "x"', "Number: access is rw, r or w and not \"x\""),
    "a list that is not there": (
        CLASS, 'list = "colours"', 'list = "colors"', 'unknown list "colors"'),
    "a truth where a number is returned": (
        CLASS, "gives = 9", "gives = true", "Ends: gives True, and returns an Integer"),
    "a class without documentation": (
        CLASS, 'doc    = "Things."', 'doc    = ""', "doc: doc is missing"),
}


class Mistakes(DictionaryTest):
    def test_each_is_told_with_its_file_and_line_and_nothing_is_written(self):
        for name, (path, old, new, said, *further) in MISTAKES.items():
            with self.subTest(name):
                self.setUp()
                line = self.change(path, old, new) + sum(further)
                code, _, err = self.run_generator()
                self.assertEqual(code, 1)
                self.assertIn(f"{self.source / path}:{line}: ", err)
                self.assertTrue(any(f"{path}:{line}: " in told and said in told
                                    for told in err.splitlines()), f"{line}: {said}\n{err}")
                self.assertFalse(self.output.exists())

    def test_a_file_that_cannot_be_read_is_told_alone(self):
        line = self.change(RECORD, 'doc = "A float."', 'doc "A float."')
        _, _, err = self.run_generator()
        self.assertEqual(len(err.splitlines()), 1)
        self.assertIn(f"{RECORD}:{line}: ", err)

    def test_all_mistakes_of_a_run_are_told(self):
        self.change(RECORD, 'type = "Single"', 'type = "Float"')
        self.change(CLASS, 'access = "w"', 'access = "x"')
        _, _, err = self.run_generator()
        self.assertIn('unknown type "Float"', err)
        self.assertIn("access is rw, r or w", err)


if __name__ == "__main__":
    unittest.main()
