"""What frames and classes tell of a member: its types, its arguments, its attributes."""

import re
from dataclasses import dataclass

TYPES = ("Integer", "Long", "Byte", "Boolean", "Single", "Double", "Currency", "String", "Variant",
         "Date")
# The field types that a public type shows.
SHOWN_BY = {
    "Integer": ("Integer",), "Long": ("Long",), "Byte": ("Byte",), "Boolean": ("Boolean",),
    "Single": ("Single",), "Double": ("Double",), "Currency": ("Currency",),
    "String": ("Text", "GUID"), "Variant": (), "Date": ("Date", "Day"),
    "Variant date": ("Date", "Day"),
}

OPERATION_ATTRIBUTES = {
    "args": str, "returns": str, "doc": str, "key": int, "write": str, "read": str, "gives": object,
    "by_hand": object,
}
PROPERTY_ATTRIBUTES = {
    "type": str, "args": str, "doc": str, "access": str, "field": str, "converted": bool, "clamp": list,
    "account": str, "part": str, "moved": str, "first_row": int, "below": float, "row": str,
    "positions": bool, "of_row": bool, "rows": str, "address": str, "from": float, "of_file": str,
    "dead": object, "by_hand": object, "by_hand_get": object, "by_hand_let": object,
}

# What a property shows: one of these, or the field of its own name.
SHOWS = ("field", "row", "account", "address", "of_file", "dead", "by_hand")
OF_A_FIELD = ("converted", "clamp", "part", "moved", "below")
# What says nothing beside another attribute, and what says nothing without one.
EXCLUDED = {
    "row": ("clamp", "part", "moved", "below"), "account": ("converted",),
    "moved": ("converted", "clamp", "part", "below"),
    "address": OF_A_FIELD, "of_file": OF_A_FIELD, "dead": OF_A_FIELD, "by_hand": OF_A_FIELD,
}
GOES_WITH = {
    "from": ("address",), "first_row": ("moved",), "positions": ("row",), "of_row": ("by_hand",),
    "rows": ("row", "of_row"),
}


@dataclass
class Argument:
    type: str
    name: str
    byref: bool = False


def read_arguments(source, table, name, text):
    arguments = []
    for part in filter(None, (part.strip() for part in text.split(","))):
        match = re.fullmatch(r"(byref )?(\w+) (\w+)", part)
        if not match or match[2] not in TYPES:
            source.complain(table, name, f"{name}: \"{part}\" is no argument")
            continue
        arguments.append(Argument(match[2], match[3], bool(match[1])))
    return arguments


def ill_matched(value):
    """What is wrong with the attributes of a property taken together, or nothing."""
    shows = [attribute for attribute in SHOWS if attribute in value]
    if len(shows) > 1:
        return f"{shows[0]} and {shows[1]} exclude each other"
    for attribute, others in EXCLUDED.items():
        for other in others:
            if attribute in value and other in value:
                return f"{attribute} and {other} exclude each other"
    for attribute, others in GOES_WITH.items():
        if attribute in value and not any(other in value for other in others):
            return f"{attribute} goes with {' or '.join(others)}"
    return None
