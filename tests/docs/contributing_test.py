"""The steps of CONTRIBUTING.md, done to a copy of the dictionary."""

import re
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

# "In `src/x.toml`, after the line of `Name`:" or "Make `src/x.toml`:", and the block below it.
STEP = re.compile(r"(?:In|Make) `(?P<path>[^`]+)`(?:, after the line of `(?P<after>[^`]+)`)?:\n\n"
                  r"(?P<indent> *)```\w+\n(?P<block>.*?)\n *```", re.DOTALL)


def copy_of_the_sources(folder):
    for path in (ROOT / "src").rglob("*"):
        if path.suffix in {".toml", ".tsv", ".h"}:
            copy = folder / path.relative_to(ROOT)
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(path, copy)


def take(step, folder):
    path = folder / step["path"]
    block = re.sub(f"^{step['indent']}", "", step["block"], flags=re.MULTILINE) + "\n"
    if step["after"] is None:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(block, encoding="utf-8")
        return
    text = path.read_text(encoding="utf-8")
    line = re.search(rf"^{re.escape(step['after'])}\s*=.*\n?", text, flags=re.MULTILINE)
    path.write_text(text[:line.end()].rstrip("\n") + "\n" + block + text[line.end():],
                    encoding="utf-8")


class ContributingTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = Path(folder.name)
        copy_of_the_sources(cls.folder)
        cls.steps = list(STEP.finditer((ROOT / "CONTRIBUTING.md").read_text(encoding="utf-8")))
        for step in cls.steps:
            take(step, cls.folder)
        cls.generation = subprocess.run(
            [sys.executable, ROOT / "generator/generate.py", "--source", cls.folder / "src",
             "--output", cls.folder / "generated"], capture_output=True, text=True, check=False)

    def compile(self, source):
        includes = [ROOT / "include", ROOT / "tests", self.folder / "src",
                    self.folder / "generated/include", self.folder / "generated/src"]
        result = subprocess.run(
            ["g++", "-std=c++20", "-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Werror",
             "-fsyntax-only", *[f"-I{path}" for path in includes], source],
            capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, 0, result.stderr)

    def test_there_is_a_step_for_every_file(self):
        self.assertEqual([step["path"] for step in self.steps], [
            "src/engine/records/address.toml", "src/tables/address.toml",
            "src/engine/records/address.toml", "src/tables/address.toml",
            "src/engine/file_names.toml", "src/engine/records/reminder.toml",
            "src/further/reminder.toml", "src/further/reminder.cpp",
            "tests/further/reminder_test.cpp"])

    def test_the_generator_takes_all_steps_and_gives_the_new_members_numbers(self):
        self.assertEqual(self.generation.returncode, 0, self.generation.stderr)
        self.assertIn("new members (Address.GetFirstForZipcode", self.generation.stderr)

    def test_the_address_has_the_new_field_and_key(self):
        self.compile(self.folder / "generated/src/tables/address.gen.cpp")
        header = (self.folder / "generated/include/larkmoor/tables/address.h").read_text("utf-8")
        self.assertIn("std::string Telephone();", header)
        self.assertIn("Status GetFirstForZipcode(std::string_view Country, "
                      "std::string_view Zipcode);", header)

    def test_the_new_class_compiles_with_its_logic_and_its_test(self):
        self.compile(self.folder / "generated/src/further/reminder.gen.cpp")
        self.compile(self.folder / "generated/src/engine/records/reminder.gen.cpp")
        self.compile(self.folder / "src/further/reminder.cpp")
        self.compile(self.folder / "tests/further/reminder_test.cpp")


if __name__ == "__main__":
    unittest.main()
