"""Writing generated files, only where they differ, so that a build redoes no more than it must."""

import textwrap


def write_if_different(path, text):
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return False
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")
    return True


def comment(text, indent="", mark="///"):
    """A comment of whole sentences, filled to the line."""
    return textwrap.fill(" ".join(text.split()), width=100, initial_indent=f"{indent}{mark} ",
                         subsequent_indent=f"{indent}{mark} ", break_long_words=False,
                         break_on_hyphens=False)


def literal(text):
    """A C++ string literal."""
    escaped = text.replace("\\", "\\\\").replace('"', '\\"')
    return f'"{escaped}"'


def number(value):
    """A release as C++ says it."""
    return "std::numeric_limits<double>::infinity()" if value == float("inf") else repr(float(value))


def boolean(value):
    return "true" if value else "false"


def banner(*paths):
    """The first line of every generated file: what it was made from."""
    return f"// Generated from {', '.join(paths)}; edit there.\n"
