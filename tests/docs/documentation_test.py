"""What the documentation shows is what the project has."""

import re
import tomllib
import unittest
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGES = sorted(page for page in ROOT.rglob("*.md")
               if not {"build", ".git"} & set(page.relative_to(ROOT).parts))


# Tests of what several classes own a part of.
SHARED_PARTS = {"check_address_test", "journal_close_test", "journal_counters_test", "key_finder_test",
                "loading_message_test", "order_quantity_test", "party_finders_test",
                "period_walk_test", "physical_walk_test", "reference_finder_test", "sales_rep_test"}


def text_of(path):
    return (ROOT / path).read_text(encoding="utf-8")


def headings(page):
    """The names under which the headings of a page are linked to."""
    lines = re.sub(r"```.*?```", "", page.read_text(encoding="utf-8"), flags=re.DOTALL)
    for heading in re.findall(r"^#+ (.+)$", lines, flags=re.MULTILINE):
        yield re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


class ReadmeTest(unittest.TestCase):
    def test_the_program_of_the_readme_is_the_one_that_is_run(self):
        program = re.search(r"```cpp\n(.*?)```", text_of("README.md"), re.DOTALL).group(1)
        self.assertEqual(program, text_of("examples/quick_start.cpp"))

    def test_the_readme_tells_what_its_program_prints(self):
        printed = text_of("examples/expected/quick_start.txt").strip()
        self.assertIn(f"It prints `{printed}`", text_of("README.md"))

    def test_every_public_header_by_hand_is_in_the_table_of_headers(self):
        # member_access.h is the library's own way into the classes.
        for header in sorted((ROOT / "include/larkmoor").glob("*.h")):
            if header.name != "member_access.h":
                self.assertIn(f"`<larkmoor/{header.name}>`", text_of("README.md"))


class PagesTest(unittest.TestCase):
    def test_every_link_within_the_project_leads_somewhere(self):
        for page in PAGES:
            for target in re.findall(r"\]\(([^)\s]+)\)", page.read_text(encoding="utf-8")):
                if "://" in target:
                    continue
                with self.subTest(page=str(page.relative_to(ROOT)), target=target):
                    path, _, anchor = target.partition("#")
                    linked = page.parent / path if path else page
                    self.assertTrue(linked.exists())
                    if anchor:
                        self.assertIn(anchor, list(headings(linked)))

    def test_every_folder_of_the_sources_has_its_paragraph(self):
        titles = re.findall(r"^## (.*)$", text_of("src/README.md"), re.MULTILINE)
        told = {name.rstrip("/") for title in titles for name in title.split(", ")}
        sources = ROOT / "src"
        for folder in sorted(sources.rglob("*")):
            if folder.is_dir() and folder.name not in ("records", "lists"):
                self.assertIn(str(folder.relative_to(sources)), told)

    def test_every_package_of_the_set_up_has_its_reason_or_is_a_tool(self):
        tools = {"g++", "cmake", "ninja-build", "python3", "clang", "libclang-rt-14-dev", "llvm",
                 "clang-format", "clang-tidy"}
        lists = re.findall(r"_packages=\(([^)]*)\)", text_of("cmake/setup.sh"))
        self.assertEqual(len(lists), 3)
        for package in set(" ".join(lists).split()) - tools:
            self.assertIn(f"`{package}`", text_of("docs/dependencies.md"))


class CoverageTest(unittest.TestCase):
    """docs/coverage.md: what each class rests on."""

    ROWS = dict(re.findall(r"^\| `(\w+)` \| `src/\w+/` \| (.*) \|$", text_of("docs/coverage.md"),
                           re.MULTILINE))
    CLASSES = {tomllib.loads(path.read_text(encoding="utf-8"))["class"]["name"]: path
               for path in (ROOT / "src").glob("*/*.toml") if path.parent.name != "engine"}

    def test_every_class_has_its_line_and_nothing_else_has(self):
        self.assertEqual(list(self.ROWS), sorted(self.CLASSES, key=str.lower))

    def test_a_class_with_work_by_hand_has_tests_of_its_own(self):
        for name, path in self.CLASSES.items():
            if "by_hand" in path.read_text(encoding="utf-8") or path.with_suffix(".cpp").exists():
                self.assertNotEqual(self.ROWS[name], "plain", name)

    def test_every_test_of_a_class_is_named(self):
        for folder in {path.parent.name for path in self.CLASSES.values()} - {"connection"}:
            for test in (ROOT / "tests" / folder).glob("*_test.cpp"):
                if not SHARED_PARTS & {test.stem}:
                    self.assertIn(test.name, text_of("docs/coverage.md"))


if __name__ == "__main__":
    unittest.main()
