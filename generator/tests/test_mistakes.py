"""Mistakes in the dictionary stop the generator with the file, the line and what is wrong."""

import unittest

from support import DictionaryTest

RECORD = "engine/records/thing.toml"
ROW = "engine/records/kind_four.toml"
CLASS = "things/thing.toml"
ALIKE = "engine/records/pattern_row.toml"
FRAME = "things/frames/entry.toml"
LISTS_FRAME = "things/frames/paying.toml"
ENTRY = "things/entry.toml"
PAYING = "things/paying.toml"
SETTING = "things/setting.toml"
LEVEL = "things/level.toml"

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
    "a number where a text is told": (
        CLASS, 'args = "Integer Index", doc = "Four', 'args = 4, doc = "Four', "Amount: args is a text"),
    "a text where a number is told": (
        SETTING, "below = 13.0", 'below = "13.0"', "Old: below is a number"),
    "a text where a truth is told": (
        ENTRY, 'row = "Account", positions = false', 'row = "Account", positions = "no"',
        "LastAccount: positions is true or false"),
    "a property that is no table": (
        CLASS, 'Code    = { type = "String", doc = "The code." }', 'Code    = 5',
        'Code: a property is "frame" or a table of attributes'),
    "an entry where a table belongs": (
        "things/empty.toml", "[class]", "operations = 5\n[class]", "operations is a table: [operations]"),
    "a table of another file than the class's": (
        CLASS, 'file   = "ThingFile"', 'file   = "SharedFile"', "Thing is a record of ThingFile", 1),
    "a number where a Variant reads a text": (
        SETTING, 'dead = "Null"', "dead = 5", "Unknown: dead is true or a text"),
    "a text where a number is dead": (
        CLASS, 'type = "Integer", dead = true', 'type = "Integer", dead = "Null"',
        "Green: dead is true or a number"),
    "a dead truth": (
        CLASS, 'type = "Integer", dead = true', 'type = "Boolean", dead = false', "Green: dead is true"),
    "a text where a number is returned": (
        CLASS, "gives = 9", 'gives = "9"', "Ends: gives 9, and returns an Integer"),

    "likeness to a record that is not there": (
        ALIKE, '"EntryRow"', '"EntryCow"', 'unknown record "EntryCow"'),
    "likeness in a file that the table of names has not": (
        ALIKE, '"PatternRowFile"', '"Patterns"', 'unknown file "Patterns"; file_names.toml has their names'),
    "fields of a record that is like another": (
        ALIKE, 'doc  = "One row of a pattern."', 'doc  = "One row of a pattern."\n[fields]',
        "the fields are those of EntryRow", 1),
    "keys of a record that is like another": (
        ALIKE, 'doc  = "One row of a pattern."', 'doc  = "One row of a pattern."\n[keys]',
        "the keys are those of EntryRow", 1),
    "a length of a record that is like another": (
        ALIKE, 'like = "EntryRow"', 'like = "EntryRow"\nlength = 26', "length is that of EntryRow", 1),
    "a record over one and like another": (
        ROW, 'over = "SharedRow"', 'over = "SharedRow"\nlike = "Thing"',
        "like and over exclude each other", 1),
    "a row mark of a record over none": (
        RECORD, 'doc    = "A record', 'row = { Number = 4 }\ndoc    = "A record', "row goes with over"),

    "two kinds of row under one mark": (
        ROW, "{ Kind = 4 }", "{ Kind = 5 }", "Kind = 5 marks the rows of KindFive"),
    "a row mark that is no number": (
        ROW, "{ Kind = 4 }", "{ Kind = true }",
        "row names one field and the value that marks the rows, as in { RowType = 4 }"),

    "a frame over a record that is not there": (
        FRAME, 'record    = "Entry"', 'record    = "Entrance"', 'unknown record "Entrance"'),
    "a frame over rows that are not there": (
        FRAME, 'rows      = "EntryRow"', 'rows      = "Rows"', 'unknown record "Rows"'),
    "a frame over a file that the table of names has not": (
        FRAME, '"EntryFile"', '"Entries"', 'unknown file "Entries"; file_names.toml has their names'),
    "a frame like one that is not there": (
        LISTS_FRAME, 'like      = "entry"', 'like      = "entrance"', 'unknown frame "entrance"'),
    "two frames of one name": (
        LISTS_FRAME, 'name      = "paying"', 'name      = "entry"', "there is a frame entry already"),
    "lists of rows that are no names": (
        LISTS_FRAME, '["pay", "job"]', "[1, 2]", "lists is the names of the lists of rows"),
    "a frame without a C++ class": (
        FRAME, 'type      = "EntryFrame"', 'type      = ""', "type: type is missing"),
    "a constructor of what a class has not": (
        FRAME, "{journal}", "{code}",
        "construct: a class has no {code}; it has {name}, {journal}, {file}, {record}"),
    "a constructor whose braces do not match": (
        FRAME, "{journal}", "{journal", "construct: expected '}' before end of string"),
    "a frame's operation without documentation": (
        FRAME, '{ doc = "Closes the files." }', "{}", "CloseFile: doc is missing"),
    "a frame's operation of an argument that is none": (
        FRAME, 'args = "String Name"', 'args = "Name"', 'ReadForName: "Name" is no argument'),
    "a frame's operation that returns an unknown type": (
        FRAME, '{ doc = "Closes the files." }', '{ returns = "Status", doc = "Closes." }',
        'CloseFile: unknown type "Status"'),
    "a frame's member that is no table": (
        FRAME, '{ doc = "Closes the files." }', '"frame"',
        "CloseFile: a member of a frame is a table of attributes"),
    "an attribute that a frame's property has not": (
        FRAME, 'field = "Total"', 'part = "Total"', 'Total: unknown attribute "part"'),
    "a frame's property of an unknown type": (
        FRAME, 'Total       = { type = "Double"', 'Total       = { type = "Real"',
        'Total: unknown type "Real"'),
    "a frame's property over a field that is not there": (
        FRAME, 'field = "Total"', 'field = "Sum"', "Total: there is no field Sum"),
    "a frame's property over a row's field that is not there": (
        FRAME, 'row = "Made"', 'row = "Date"', "DetailMade: there is no field Date"),

    "a class of an unknown frame": (
        ENTRY, 'frame   = "entry"', 'frame   = "entrance"', 'unknown frame "entrance"'),
    "a property that the frame has not": (
        ENTRY, 'Key          = "frame"', 'Keys         = "frame"', "Keys: is no property of the frame"),
    "another name of an operation that the frame has not": (
        ENTRY, 'frame = "ReadForName"', 'frame = "ReadName"',
        "ReadByLabel: ReadName is no operation of the frame"),
    "another name of an operation with other arguments": (
        ENTRY, 'args = "String Label"', 'args = "Long Label"',
        "ReadByLabel: ReadForName of the frame has other arguments: String"),
    "neither true nor a name of the frame": (
        ENTRY, "frame = true", "frame = false", "OpenFile: frame is true, or the frame's name for it"),
    "an operation of the frame without a frame": (
        "things/empty.toml", 'doc  = "A class without a member."',
        'doc  = "A class."\n[operations]\nOpenFile = "frame"',
        "OpenFile: an operation of the frame needs a file and a record", 2),
    "a file of a class whose frame has one": (
        ENTRY, "journal = 3", 'journal = 3\nfile = "EntryFile"', "file is that of the frame entry", 1),
    "a class without the record that its frame needs": (
        LEVEL, 'record = "KindFive"\n', "", "record is missing", -3),
    "a row of another file than the frame's": (
        LEVEL, 'record = "KindFive"', 'record = "Entry"', "the frame setting is over rows of SharedFile"),
    "a journal without a code": (
        ENTRY, "journal = 3\n", "",
        "journal is missing: the frame entry takes its code", -3),
    "a code that is no number": (ENTRY, "journal = 3", 'journal = "3"', "journal is a whole number"),
    "a code of what is no journal": (
        LEVEL, 'doc    =', 'journal = 3\ndoc    =',
        "journal: the frame setting takes no code"),
    "a departure that is neither true nor false": (
        CLASS, "close_keeps_open_mark = true", "close_keeps_open_mark = 1",
        "close_keeps_open_mark is true or false"),
    "a departure of a class whose parts are by hand": (
        SETTING, "[records]", "[frame]\nmissing_account_reads_empty = true\n[records]",
        "departures are of a class with a frame whose parts are not by hand"),

    "further records of parts that are not by hand": (
        SETTING, 'parts  = "by hand"\n', "",
        "further records are of a class with a frame whose parts are by hand", 2),
    "a further record that is not there": (
        SETTING, '"KindFour"', '"KindFor"', 'four: unknown record "KindFor"'),
    "a part that the class has not": (
        SETTING, 'part = "four"', 'part = "for"', "Text: there is no part for in [records]"),
    "a field that the part's record has not": (
        SETTING, 'part = "four"', 'part = "newer"', "Text: there is no field Text"),
    "a field moved to a part that the class has not": (
        SETTING, '"newer.Amount"', '"new.Amount"',
        "Share: moved to new.Amount, and there is no such part and field"),
    "a field moved to one that is not there": (
        SETTING, '"newer.Amount"', '"newer.Total"',
        "Share: moved to newer.Total, and there is no such part and field"),
    "a field moved to one of another type": (
        SETTING, '"newer.Amount"', '"newer.Made"',
        "Share: moved to newer.Made, which is another type than before"),
    "a field moved to one with another number of indexes": (
        SETTING, '"newer.Marks"', '"newer.Account"',
        "Marks: moved to newer.Account, which is another type than before"),
    "a moved field without an index to tell the row": (
        SETTING, 'account = "Account"', 'account = "Account", moved = "newer.Account"',
        "AccountID: moved takes a field that repeats, whose index tells the row"),
    "a first row of a field that is not moved": (
        SETTING, 'part = "four"', 'part = "four", first_row = 1', "Text: first_row goes with moved"),
    "a first row that is no number": (
        SETTING, "first_row = 40", 'first_row = "40"', "Marks: first_row is a whole number"),
    "an account that is no Long": (
        SETTING, 'account = "Account"', 'account = "Old"',
        "AccountID: an account is a Long shown as a String"),
    "an account without a part that looks it up": (
        CLASS, 'Number  = { type = "Long", access = "w"', 'Number  = { type = "String", account = "Number"',
        "Number: accounts are looked up by a part accounts, which parts by hand have"),
    "an address of parts that are not by hand": (
        CLASS, 'Code    = { type = "String"', 'Code    = { type = "String", address = "City"',
        "Code: addresses are a part of a class whose parts are by hand"),
    "an address by more than its number": (
        SETTING, 'args = "Integer Index", address', 'args = "Long Index", address',
        "Cities: an address is the first one or has an Integer number"),
    "a release of what is no address": (
        SETTING, "below = 13.0", "from = 13.0", "Old: from goes with address"),
    "what the file does not tell": (
        SETTING, '"ActualLength"', '"Length"', "Length: of_file is one of ActualLength (Long), "
        "RecordByte (Byte), FileVersion (Double), read-only"),
    "what the file tells, to be written": (
        SETTING, 'type = "Long", access = "r"', 'type = "Long"', "Length: of_file is one of"),
    "a byte of the file without its number": (
        SETTING, 'args = "Integer Index", access = "r"', 'access = "r"',
        "Octet: RecordByte takes one index, and the others none"),
    "what the file tells where there is none": (
        "things/empty.toml", 'doc  = "A class without a member."',
        'doc  = "A class."\n[properties]\nA = { type = "Long", access = "r", of_file = "ActualLength", '
        'doc = "A." }', "A: there is no file to tell of", 2),
    "a field where there is no record": (
        "things/empty.toml", 'doc  = "A class without a member."',
        'doc  = "A class."\n[properties]\nA = { type = "Long", doc = "A." }',
        "A: there is no record to show a field of", 2),

    "a conversion of no whole number": (
        ENTRY, 'Made         = { type = "Variant date"', 'Made         = { type = "Long", converted = true',
        "Made: converted is for whole numbers of two types, or for a Boolean over one"),
    "a conversion to the field's own type": (
        ENTRY, 'Kind         = { type = "Boolean"', 'Kind         = { type = "Integer"',
        "Kind: converted is for whole numbers of two types, or for a Boolean over one"),
    "a row's property without its number": (
        ENTRY, 'DetailAmount = { type = "Double", args = "Integer Index"', 'DetailAmount = { type = "Double"',
        "DetailAmount: a row's property takes the Integer number of the row"),
    "a row's property by hand without its number": (
        ENTRY, 'DetailByHand = { type = "Long", args = "Integer Index"', 'DetailByHand = { type = "Long"',
        "DetailByHand: a row's property takes the Integer number of the row"),
    "a row's property by another type of number": (
        ENTRY, 'DetailAmount = { type = "Double", args = "Integer',
        'DetailAmount = { type = "Double", args = "Long',
        "DetailAmount: a row's property takes the Integer number of the row"),
    "a row's field that is not there": (
        ENTRY, 'row = "Amount", doc', 'row = "Sum", doc', "DetailAmount: there is no field Sum"),
    "a row's field that repeats": (
        ENTRY, 'type = "Double", args = "Integer Index", row = "Amount", doc',
        'type = "Byte", args = "Integer Index", row = "Marks", doc',
        "DetailAmount: the field Marks of a row repeats"),
    "a row's property of another type than its field": (
        ENTRY, 'row = "Amount", doc', 'row = "Number", doc',
        "DetailAmount: is a Double, and the field Number a Long"),
    "a row where there are none": (
        SETTING, 'part = "four"', 'row = "Text"', "Text: rows are those of a class over transactions"),
    "the row in hand of a header's field": (
        ENTRY, 'Made         = { type = "Variant date"',
        'Made         = { type = "Variant date", positions = false', "Made: positions goes with row"),
    "a header's field of a row": (
        ENTRY, 'Made         = { type = "Variant date"',
        'Made         = { type = "Variant date", of_row = true', "Made: of_row goes with by_hand"),
    "a list of a frame that has one": (
        ENTRY, 'row = "Amount", doc', 'row = "Amount", rows = "pay", doc',
        "DetailAmount: the frame entry has one list of rows"),
    "a list that the frame has not": (
        PAYING, 'row = "Amount", rows = "job"', 'row = "Amount", rows = "jobs"',
        "JobAmount: rows is pay or job"),
    "a row of no list where there are two": (
        PAYING, 'row = "Amount", rows = "job"', 'row = "Amount"', "JobAmount: rows is pay or job"),
    "a row by hand of no list where there are two": (
        PAYING, 'of_row = true, rows = "job"', "of_row = true", "JobByHand: rows is pay or job"),
    "a list of what belongs to no row": (
        PAYING, 'of_row = true, rows = "job"', 'rows = "job"', "JobByHand: rows goes with row or of_row"),
    "two fields at once": (
        ENTRY, 'row = "Amount", doc', 'field = "Total", row = "Amount", doc',
        "DetailAmount: field and row exclude each other"),
    "a clamp of a row's number": (
        ENTRY, 'row = "Amount", doc', 'row = "Amount", clamp = [1, 2], doc',
        "DetailAmount: row and clamp exclude each other"),
    "a clamp that is no range": (
        CLASS, "clamp = [1, 3]", "clamp = [1, 2, 3]", "bLimit: clamp is a range such as [1, 20]"),
    "a clamp that is no list": (CLASS, "clamp = [1, 3]", "clamp = 3", "bLimit: clamp is a list"),
    "a clamp without an index": (
        CLASS, 'args = "Integer Index", field = "Amount"', 'args = "Long Index", field = "Amount"',
        "bLimit: clamp wants one Integer index"),
    "an older field that is by hand": (
        SETTING, "below = 13.0", 'below = 13.0, by_hand = "the test"',
        "Old: by_hand and below exclude each other"),
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

    def test_an_unknown_frame_is_told_alone_and_not_of_every_member(self):
        line = self.change(ENTRY, 'frame   = "entry"', 'frame   = "entrance"')
        _, _, err = self.run_generator()
        self.assertEqual(err, f'{self.source / ENTRY}:{line}: unknown frame "entrance"\n')

    def test_a_mistake_of_a_frame_is_told_there_and_not_in_its_classes(self):
        line = self.change(FRAME, 'field = "Total"', 'field = "Sum"')
        _, _, err = self.run_generator()
        self.assertEqual(err, f"{self.source / FRAME}:{line}: Total: there is no field Sum\n")

    def test_all_mistakes_of_a_run_are_told(self):
        self.change(RECORD, 'type = "Single"', 'type = "Float"')
        self.change(CLASS, 'access = "w"', 'access = "x"')
        _, _, err = self.run_generator()
        self.assertIn('unknown type "Float"', err)
        self.assertIn("access is rw, r or w", err)


if __name__ == "__main__":
    unittest.main()
