"""A made-up dictionary in a folder of its own, for tests to change and run."""

import contextlib
import io
import shutil
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).parent
sys.path.insert(0, str(HERE.parent))

import generate  # noqa: E402


class DictionaryTest(unittest.TestCase):
    """Each test has a copy of the made-up dictionary."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.source = Path(folder.name) / "src"
        self.output = Path(folder.name) / "out"
        shutil.copytree(HERE / "dictionary", self.source)
        (self.source / "automation").mkdir(exist_ok=True)

    def change(self, path, old, new):
        """Replaces a text that stands once in a dictionary file; returns the line where it stood."""
        file = self.source / path
        text = file.read_text()
        self.assertEqual(text.count(old), 1, f"{old!r} in {path}")
        file.write_text(text.replace(old, new))
        return text[:text.index(old)].count("\n") + 1

    def run_generator(self):
        """Exit code, standard output and standard error of a run."""
        out, err = io.StringIO(), io.StringIO()
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(err):
            code = generate.main(["--source", str(self.source), "--output", str(self.output)])
        return code, out.getvalue(), err.getvalue()

    def generate(self):
        code, out, err = self.run_generator()
        self.assertEqual(code, 0, err)
        return out

    def generated(self, path):
        return (self.output / path).read_text()
