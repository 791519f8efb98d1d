"""docs/reliability.md: each promise names tests, and these exist."""

import re
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGE = (ROOT / "docs/reliability.md").read_text(encoding="utf-8")

# A link to a file of tests, and the names behind it up to the next link or paragraph.
NAMED = re.compile(r"^- \[([\w.]+)\]\(\.\./(tests/[\w/.]+)\):((?:\s+`\w+`,?)+)", re.MULTILINE)
# A promise that can be tested begins with what it says in bold.
PROMISES = PAGE.partition("## What is not promised")[0]


class ReliabilityTest(unittest.TestCase):
    def test_every_named_test_exists(self):
        self.assertGreater(len(NAMED.findall(PAGE)), 0)
        for shown, path, names in NAMED.findall(PAGE):
            tests = set(re.findall(r"^TEST(?:_F|_P)?\(\s*\w+,\s*(\w+)\)",
                                   (ROOT / path).read_text(encoding="utf-8"), re.MULTILINE))
            self.assertEqual(shown, Path(path).name)
            for name in re.findall(r"`(\w+)`", names):
                with self.subTest(path=path, test=name):
                    self.assertIn(name, tests)

    def test_every_link_to_a_test_names_what_it_shows(self):
        self.assertEqual(len(NAMED.findall(PAGE)), PAGE.count("](../tests/"))

    def test_every_promise_is_followed_by_a_test(self):
        for promise in re.split(r"^\*\*", PROMISES, flags=re.MULTILINE)[1:]:
            with self.subTest(promise=promise.partition("**")[0]):
                self.assertRegex(promise, NAMED)


if __name__ == "__main__":
    unittest.main()
