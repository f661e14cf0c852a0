#!/usr/bin/env python3
"""Writes the C++ of every data class from its description.

A class is described once, in a TOML file beside its sources (for instance
src/measurements/measurementdata.toml): its name, id and fields, each field
with kind, element, tag, flags, range, default and name table. From that one
description this program writes the class's public header (every member a
real, documented declaration) and its source file (the name tables, the
field table and one line per accessor family, which the frame's macros expand
and check at compile time). Files holding only [[table]] entries describe name
tables shared by several classes.

    python3 tools/gen/halvane_gen.py            # write every generated file
    python3 tools/gen/halvane_gen.py --check    # exit 1 if any file is stale

Only the standard library is used (tomllib, Python 3.11).
"""

import argparse
import math
import pathlib
import sys
import tomllib

ROOT = pathlib.Path(__file__).resolve().parents[2]
SEARCH = ["src", "tests"]
GENERATOR = "tools/gen/halvane_gen.py"

KINDS = {"bool", "int", "int64", "double", "float", "string", "datetime", "enum", "nested", "list"}
FIELD_KEYS = {"name", "kind", "tag", "required", "element", "class", "item", "attribute", "element_too",
              "default", "initial", "range", "names", "table", "shared_table", "note", "empty_element_default"}
CLASS_KEYS = {"class", "id", "brief", "field", "tagged_order", "hooks", "translate", "table", "version"}
VERSION_KEYS = {"attribute", "tag", "current"}
TABLE_KEYS = {"name", "struct", "columns", "rows", "brief"}


class DescriptionError(Exception):
    pass


def fail(where, text):
    raise DescriptionError(f"{where}: {text}")


def cstr(text):
    """A C++ narrow string literal holding the UTF-8 of text."""
    out = []
    for ch in text:
        if ch in '"\\':
            out.append("\\" + ch)
        elif ch == "\n":
            out.append("\\n")
        elif ord(ch) < 0x20:
            out.append(f"\\x{ord(ch):02x}")
        else:
            out.append(ch)
    return '"' + "".join(out) + '"'


def plain(value):
    """A number in plain form without trailing zeros: -1, 0.1, 100."""
    if isinstance(value, bool):
        return "true" if value else "false"
    if isinstance(value, int):
        return str(value)
    if math.isnan(value):
        return "NaN"
    if value == int(value) and abs(value) < 1e15:
        return str(int(value))
    return repr(value)


def cnum(value):
    """A double literal for a C++ constant expression."""
    if isinstance(value, bool):
        return "1" if value else "0"
    if isinstance(value, int):
        return str(value)
    text = repr(float(value))
    return text if ("." in text or "e" in text) else text + ".0"


def empty_element_default(where, f, data):
    """The key empty_element_default: an empty child element gives the default."""
    value = data.get("empty_element_default", False)
    if value and (f.kind in ("nested", "list", "bool") or not f.has_default):
        fail(where, "empty_element_default needs a scalar field (not a bool) with a default")
    return value


def lower_first(name):
    return name[:1].lower() + name[1:]


# ---- Reading the descriptions

class Table:
    def __init__(self, where, data, field_name=None):
        unknown = set(data) - TABLE_KEYS
        if unknown:
            fail(where, f"unknown table keys {sorted(unknown)}")
        self.name = data.get("name", field_name)
        self.struct = data.get("struct")
        self.columns = data.get("columns", ["Name"])
        self.rows = data["rows"]
        self.brief = data.get("brief", "")
        self.shared = False
        if self.columns[0] != "Name":
            fail(where, "a table's first column is Name")
        if "Helpid" in self.columns and self.columns[-1] != "Helpid":
            fail(where, "Helpid is the last column")
        if len(self.rows) > 128:
            fail(where, "a name table has at most 128 rows (a signed 8-bit index)")
        width = len(self.columns)
        for r, row in enumerate(self.rows):
            if not isinstance(row, list):
                row = [row]
                self.rows[r] = row
            if len(row) != width:
                fail(where, f"row {r} has {len(row)} cells, the table has {width} columns")
        if width > 1 and not self.struct:
            fail(where, "a table of several columns names its row structure (struct)")

    @property
    def text_columns(self):
        return [c for c in self.columns if c != "Helpid"]

    @property
    def has_helpid(self):
        return "Helpid" in self.columns

    def cell(self, row, column):
        return row[self.columns.index(column)]

    def index_of(self, name):
        for i, row in enumerate(self.rows):
            if row[0] == name:
                return i
        return None


class Field:
    def __init__(self, where, data, shared_tables):
        unknown = set(data) - FIELD_KEYS
        if unknown:
            fail(where, f"unknown field keys {sorted(unknown)}")
        self.name = data["name"]
        where = f"{where} field {self.name}"
        self.kind = data["kind"]
        if self.kind not in KINDS:
            fail(where, f"unknown kind {self.kind!r}")
        self.tag = data["tag"]
        if not isinstance(self.tag, int) or not 0 <= self.tag <= 0xFFFFFFFF:
            fail(where, "a tag is a 32-bit number")
        self.required = data.get("required", False)
        self.attribute = data.get("attribute", False)
        self.element_too = data.get("element_too", False)
        self.note = data.get("note", "")
        self.item_class = data.get("class")
        self.item = data.get("item")
        if self.kind == "nested" and not self.item_class:
            fail(where, "a nested field names its class")
        if self.kind == "list":
            if self.item_class and self.item:
                fail(where, "a list holds either a class or items of a kind")
            if not self.item_class and self.item not in ("string", "enum"):
                fail(where, "a list holds a class, strings or enumerated items")
        self.element = data.get("element", self.item_class if self.kind == "nested" or
                                (self.kind == "list" and self.item_class) else self.name)
        self.range = data.get("range")
        if self.range is not None and (self.kind not in ("int", "int64", "double", "float") or len(self.range) != 2):
            fail(where, "a range is [lo, hi] of a numeric field")
        self.has_default = "default" in data
        self.initial = data.get("default", data.get("initial"))
        if self.has_default and "initial" in data:
            fail(where, "a default is also the initial value: give one of them")
        self.empty_element_default = empty_element_default(where, self, data)
        # The name table.
        self.table = None
        if self.is_enum:
            if "names" in data:
                self.table = Table(where, {"rows": [[n] for n in data["names"]]}, self.name)
            elif "table" in data:
                self.table = Table(where, data["table"], self.name)
            elif "shared_table" in data:
                self.table = shared_tables.get(data["shared_table"])
                if self.table is None:
                    fail(where, f"no shared table {data['shared_table']!r}")
            else:
                fail(where, "an enumerated field has a name table (names, table or shared_table)")
        elif any(k in data for k in ("names", "table", "shared_table")):
            fail(where, "only enumerated fields have name tables")
        if self.kind == "enum" and isinstance(self.initial, str):
            index = self.table.index_of(self.initial)
            if index is None:
                fail(where, f"{self.initial!r} is not a row of the table")
            self.initial = index

    @property
    def is_enum(self):
        return self.kind == "enum" or (self.kind == "list" and self.item == "enum")

    @property
    def list_kind(self):
        if self.kind != "list":
            return None
        return "object" if self.item_class else self.item


class Class:
    def __init__(self, path, data, shared_tables):
        where = str(path.relative_to(ROOT))
        unknown = set(data) - CLASS_KEYS
        if unknown:
            fail(where, f"unknown keys {sorted(unknown)}")
        self.path = path
        self.name = data["class"]
        self.id = data["id"]
        self.brief = data.get("brief", "")
        self.hooks = data.get("hooks")
        self.translate = data.get("translate", False)
        self.version = read_version(where, data.get("version"))
        self.fields = [Field(where, f, shared_tables) for f in data.get("field", [])]
        names = [f.name for f in self.fields]
        self.tagged_order = None
        if "tagged_order" in data:
            order = data["tagged_order"]
            if sorted(order) != sorted(names):
                fail(where, "tagged_order names every field once")
            self.tagged_order = [names.index(n) for n in order]
        for kind, seen in (("name", names), ("tag", [f.tag for f in self.fields]),
                           ("element", [f.element for f in self.fields])):
            dupes = {x for x in seen if seen.count(x) > 1}
            if dupes:
                fail(where, f"{kind}s are unique in a class: {sorted(map(str, dupes))}")
        if self.version and self.version.tag in [f.tag for f in self.fields]:
            fail(where, "the version's tag is the tag of a field")

    @property
    def stem(self):
        return self.path.stem


# ---- The version of a versioned document class

class Version:
    def __init__(self, attribute, tag, current):
        self.attribute = attribute
        self.tag = tag
        self.current = current


def read_version(where, data):
    """The [version] table of a class: attribute name, tag and current version."""
    if data is None:
        return None
    unknown = set(data) - VERSION_KEYS
    missing = VERSION_KEYS - set(data)
    if unknown or missing:
        fail(where, f"a version has exactly the keys {sorted(VERSION_KEYS)}")
    tag = data["tag"]
    if not isinstance(tag, int) or not 0 <= tag <= 0xFFFFFFFF:
        fail(where, "a version's tag is a 32-bit number")
    current = data["current"]
    try:
        float(current)
    except (TypeError, ValueError):
        fail(where, "a version is the text of a number, such as \"1\"")
    return Version(data["attribute"], tag, current)


def version_header_lines(c):
    """The members that a version adds to the class's header."""
    v = c.version
    if not v:
        return []
    return [
        "",
        "    /// \\name Version",
        f'    /// Attribute "{v.attribute}", tag 0x{v.tag:08X}, this version "{v.current}". A document',
        "    /// read in an older version (or none) empties the object first, and its unknown elements are",
        "    /// skipped; in this version or a newer one they are refused while validating.",
        "    //@{",
        f'    /// "{v.current}", the version this class writes.',
        "    const QString &GetVersion() const override;",
        "    /// The version of the document last read: null until one was read, empty when it had none.",
        "    const QString &GetInitialVersionLoaded() const;",
        "    //@}",
    ]


def version_source_lines(c):
    """The version's constant row, before the class definition."""
    v = c.version
    if not v:
        return []
    return [f"constexpr VersionDef kVersion = {{{cstr(v.attribute)}, 0x{v.tag:08X}, {cstr(v.current)}}};"]


def load(paths):
    shared = {}
    table_files = []
    class_files = []
    for path in paths:
        with open(path, "rb") as f:
            data = tomllib.load(f)
        if "class" in data:
            class_files.append((path, data))
        else:
            table_files.append((path, data))
            for t in data.get("table", []):
                table = Table(str(path.relative_to(ROOT)), t)
                table.shared = True
                table.file = path
                shared[table.name] = table
    classes = [Class(p, d, shared) for p, d in class_files]
    refuse_repeated_tables(classes, shared)
    return classes, table_files, shared


def refuse_repeated_tables(classes, shared):
    """Rows that two tables hold alike are stored once: as a shared table."""
    first = {}
    tables = [(f"shared table {t.name}", t) for t in shared.values()]
    tables += [(f"{c.name}.{f.name}", f.table) for c in classes for f in c.fields if f.table and not f.table.shared]
    for where, t in tables:
        key = (tuple(t.columns), tuple(tuple(r) for r in t.rows))
        if key in first:
            fail(where, f"the same rows as {first[key]}: describe them once with [[table]] in a file of shared "
                        "tables and name it with shared_table")
        first[key] = where


# ---- Facts of a field, for the comments

def kind_text(f):
    return {
        "bool": "bool",
        "int": "int",
        "int64": "64-bit int",
        "double": "double",
        "float": "float",
        "string": "string",
        "datetime": "date-time",
        "enum": "enumerated",
        "nested": f"nested {f.item_class}",
    }.get(f.kind) or {"object": f"list of {f.item_class}", "string": "list of strings",
                      "enum": "list of enumerated items"}[f.list_kind]


def initial_text(f):
    v = f.initial
    if f.kind == "bool":
        return "true" if v else "false"
    if f.kind in ("int", "int64", "double", "float"):
        return plain(v if v is not None else 0)
    if f.kind == "string":
        return "null" if v is None else f'"{v}"'
    if f.kind == "enum":
        if v is None or v < 0:
            return "255"
        return f'{v} ("{f.table.rows[v][0]}")'
    return None


def facts(f):
    parts = [kind_text(f)]
    if f.attribute:
        parts.append(f'attribute "{f.element}"' + (" (also read as an element)" if f.element_too else ""))
    else:
        parts.append(f'element "{f.element}"')
    if f.empty_element_default:
        parts.append("an empty element gives the default")
    parts.append(f"tag 0x{f.tag:08X}")
    parts.append("required" if f.required else "optional")
    if f.range:
        parts.append(f"range {plain(f.range[0])} to {plain(f.range[1])}")
    init = initial_text(f)
    if init is not None:
        parts.append(("default " if f.has_default else "initial ") + init + ("" if f.has_default else ", no default"))
    if f.table:
        cols = ", ".join(f.table.columns)
        shared = ", shared" if f.table.shared else ""
        parts.append(f"table {f.table.name} ({len(f.table.rows)} rows: {cols}{shared})")
    text = ", ".join(parts)
    if f.note:
        text += ". " + f.note
    return text


# ---- The header

HEADER_TOP = """// Generated by {gen} from {src}: edit the description, not this file.
"""


def group_of(path):
    """The group of the reference that a file under src/ belongs to: its folder."""
    return path.relative_to(ROOT / "src").parts[0]


def in_library(c):
    """The class is one of the library's own (under src/), not one of the tests'."""
    return (ROOT / "src") in c.path.parents


def guard(c):
    rel = c.path.relative_to(ROOT).with_suffix("")
    return "HALVANE_" + "_".join(p.upper() for p in rel.parts[1:] if p) + "_H"


def include_of(from_path, cls_name, by_name):
    target = by_name[cls_name].path.with_suffix(".h")
    return relpath(target, from_path.parent)


def relpath(target, start):
    import os
    return os.path.relpath(target, start).replace(os.sep, "/")


def frame_include(path, name):
    return relpath(ROOT / "src" / "frame" / name, path.parent)


def row_struct_lines(t, indent, group=None):
    comment = sentence(t.brief) if t.brief else f"A row of the {t.name} table."
    lines = [f"{indent}/// {comment}"]
    if group:
        lines.append(f"{indent}/// \\ingroup {group}")
    lines.append(f"{indent}struct {t.struct} {{")
    for col in t.columns:
        lines.append(f"{indent}    {'int' if col == 'Helpid' else 'QString'} {col}; ///< {column_text(col)}")
    lines.append(f"{indent}}};")
    return lines


def column_text(col):
    """The comment of a column of a row structure."""
    if col == "Name":
        return "The Name, the text of the value in XML and in the tagged form."
    if col == "Helpid":
        return "The Helpid, a number of the host application's help."
    return f"The {col} column."


def member_lines(c, f):
    F = f.name
    X = c.name
    L = []

    def m(comment, decl):
        L.append(f"    /// {comment}")
        L.append(f"    {decl};")

    # The facts of the field head a member group of the reference.
    L.append(f"    /// \\name {F}")
    L.append(f"    /// {sentence(facts(f))}.")
    L.append("    //@{")
    if f.is_enum:
        L.append(f"    /// Row index into the {f.table.name} table; 255 (-1) is invalid.")
        L.append(f"    typedef qint8 {F};")
    m("True when the field is set; creates no payload.", f"bool Is{F}Set() const")
    m("Turns the bit off and puts back the initial value; creates no payload.", f"void Reset{F}()")
    scalar = {"bool": "bool", "int": "int", "int64": "qint64", "double": "double", "float": "float"}
    if f.kind in scalar:
        T = scalar[f.kind]
        m("The value (the initial value while unset).", f"{T} Get{F}() const")
        test = "stores it and turns the bit on"
        if f.range:
            test = (f"with validation on, a value outside {plain(f.range[0])} to {plain(f.range[1])} "
                    "throws OutOfRangeException; " + test)
        m(test[0].upper() + test[1:] + ".", f"void Set{F}({T} value)")
        m("The default, or the initial value where the field has none.", f"{T} GetDefault{F}() const")
        if f.kind != "bool":
            m("True when the setter accepts the value" + (" (inside the range)." if f.range else "; always true."),
              f"bool IsValid{F}(const {T} &value) const")
    elif f.kind == "string":
        m("The value (the initial value while unset).", f"QString Get{F}()")
        m("With validation on, a null string throws OutOfRangeException; stores it and turns the bit on.",
          f"void Set{F}(QString value)")
        m("The default, or the initial value where the field has none.", f"QString GetDefault{F}() const")
        m("True unless the string is null.", f"bool IsValid{F}(const QString &value) const")
    elif f.kind == "datetime":
        m("The value (a null date-time while unset).", f"const QDateTime &Get{F}() const")
        m("A reference into the payload; turns the bit on.", f"QDateTime &Get{F}()")
        m("Stores the value and turns the bit on.", f"void Set{F}(const QDateTime &value)")
        m("A null date-time.", f"QDateTime GetDefault{F}() const")
        m("Always true.", f"bool IsValid{F}(const QDateTime &value) const")
    elif f.kind == "enum":
        n = len(f.table.rows)
        m("The stored index (255 while unset unless the initial value says otherwise).", f"const {F} &Get{F}() const")
        m(f"With validation on, an index outside 0 to {n - 1} throws OutOfRangeException; stores it and "
          "turns the bit on.", f"void Set{F}({F} value)")
        m("The default index, or 255 where the field has none.", f"{F} GetDefault{F}() const")
        m(f"True for an index from 0 to {n - 1}.", f"bool IsValid{F}(const {F} &value) const")
        m("255, the invalid index.", f"{F} GetInvalid{F}() const")
        m("The Name of the stored index; a null string outside the table.", f"QString Get{F}AsString() const")
        L.extend(converter_lines(f))
    elif f.kind == "nested":
        T = f.item_class
        m("The nested object (without a payload while untouched).", f"const {T} &Get{F}() const")
        m("A reference into the payload; turns the bit on.", f"{T} &Get{F}()")
        m("Stores a copy and turns the bit on.", f"void Set{F}(const {T} &value)")
        m("Always true.", f"bool IsValid{F}(const {T} &value) const")
    else:
        T = {"object": f.item_class, "string": "QString", "enum": F}[f.list_kind]
        m("The items, in the order of appending.", f"const QVector<{T}> &Get{F}() const")
        m("A reference into the payload; turns the bit on.", f"QVector<{T}> &Get{F}()")
        m("Replaces all items and turns the bit on; tests nothing.", f"void Set{F}(const QVector<{T}> &value)")
        good = {"object": "HasData() false", "string": "a string the base's IsValid refuses",
                "enum": "an invalid index"}[f.list_kind]
        m(f"Appends a copy and turns the bit on; with validation on, an item with {good} throws "
          "IncompleteDefinitionException.", f"void Append{F}(const {T} &item)")
        if f.list_kind == "object":
            m("As above, moving the item in.", f"void Append{F}({T} &&item)")
        item_rule = {"object": "Always true.", "string": "True unless the string is null.",
                     "enum": f"True for an index from 0 to {len(f.table.rows) - 1 if f.table else 0}."}[f.list_kind]
        m(item_rule, f"bool IsValid{F}(const {T} &item) const")
        m("True when every item is valid.", f"bool IsValid{F}(const QVector<{T}> &items) const")
        if f.list_kind == "string":
            m("A null string: list items have no default.", f"QString GetDefault{F}() const")
        if f.list_kind == "enum":
            m("255: list items have no default.", f"{F} GetDefault{F}() const")
            m("255, the invalid index.", f"{F} GetInvalid{F}() const")
            L.extend(converter_lines(f))
    L.append("    //@}")
    return L


def sentence(text):
    """The text with its first letter in upper case."""
    return text[:1].upper() + text[1:]


def converter_lines(f):
    F = f.name
    t = f.table
    L = []

    def m(comment, decl):
        L.append(f"    /// {comment}")
        L.append(f"    {decl};")

    m("The Name of a row; a null string outside the table.", f"static QString {F}ToName(const {F} &value)")
    m("The first row whose Name is the text (case matters); 255 when none is.",
      f"static {F} NameTo{F}(const QString &name)")
    if len(t.columns) == 1:
        m("A copy of the table's names.", f"static QStringList Get{F}s()")
        m("The names, each translated by QObject::tr, made afresh on each call.", f"static QStringList GetGUI{F}s()")
    else:
        m("A copy of the table's rows.", f"static QList<{t.struct}> Get{F}s()")
    for col in t.text_columns[1:]:
        m(f"The {col} of a row; a null string outside the table.", f"static QString {F}To{col}(const {F} &value)")
        m(f"The first row whose {col} is the text; 255 when none is.", f"static {F} {col}To{F}(const QString &text)")
    if t.has_helpid:
        m("The Helpid of a row; 0 outside the table.", f"int {F}ToHelpid(const {F} &value) const")
        m("The first row with that Helpid; 255 when none has it.", f"static {F} HelpidTo{F}(const int &helpid)")
    return L


def header(c, by_name):
    src = c.path.relative_to(ROOT)
    out = [HEADER_TOP.format(gen=GENERATOR, src=src.name).rstrip("\n")]
    if c.brief:
        out.append(f"// {c.name}: {c.brief}")
    g = guard(c)
    out += [f"#ifndef {g}", f"#define {g}", ""]
    incs = []
    for f in c.fields:
        if f.item_class and f.item_class != c.name:
            inc = include_of(c.path, f.item_class, by_name)
            if inc not in incs:
                incs.append(inc)
        if f.table and f.table.shared and f.table.struct:
            inc = relpath(f.table.file.with_suffix(".h"), c.path.parent)
            if inc not in incs:
                incs.append(inc)
    if not incs:
        incs.append(frame_include(c.path, "dataclass.h"))
    out += [f'#include "{i}"' for i in incs]
    out += ["", "namespace HALVANE {", ""]
    n = len(c.fields)
    brief = (c.brief[:1].upper() + c.brief[1:]) if c.brief else c.name
    out.append(f"/*! {brief}")
    out.append(f"    Class id 0x{c.id:08X}; XML element \"{c.name}\"; {n} field{'s' if n != 1 else ''}, "
               f"presence bits 0 to {n - 1} in field order." + ("" if in_library(c) else " */"))
    if in_library(c):
        # The reference lists the class on the page of its subsystem.
        out.append(f"    \\ingroup {group_of(c.path)} */")
    X = c.name
    # The library's classes are exported from it; classes described elsewhere
    # (the test suite's) are compiled into their own program.
    export = "HALVANE_EXPORT " if in_library(c) else ""
    out += [f"class {export}{X} : public QUILLET::IQuilletObject", "{", "public:"]
    common = [
        ("The class id, zero-extended.", "static const qint64 id"),
        ("An untouched object: no payload until first needed.", f"{X}()"),
        ("Shares the payload until either side touches it; takes the validation flag, not the logger.",
         f"{X}(const {X} &other)"),
        ("Takes the payload; the flag as a copy does.", f"{X}({X} &&other) noexcept"),
        ("Shares the payload of other; keeps this object's flag, logger and name.",
         f"{X} &operator=(const {X} &other)"),
        ("Takes the payload of other.", f"{X} &operator=({X} &&other) noexcept"),
        ("Drops one reference to the payload.", f"~{X}() override"),
        ("Field by field in field order: set fields by value, unset ones not at all.",
         f"bool operator==(const {X} &other) const"),
        ("The negation of ==.", f"bool operator!=(const {X} &other) const {{ return !(*this == other); }}"),
        ("All required fields are set.", "bool HasData() const override"),
        ("At least one field has data.", "bool AnyData() const"),
        ("All fields back to their initial values, all bits off; the payload stays.", "void Reset() override"),
        ("Reset, then the fields with a usable default count as set.", "void ResetToDefault()"),
        ("Check(false).", "void Check() const override"),
        ("Throws OutOfRangeException at the first field missing or invalid.",
         "void Check(bool recursive) const override"),
        ("The payload exists.", "bool IsInitialized() const { return d != nullptr; }"),
        (f"0x{c.id:08X}.", "static qint64 GetId()"),
        (f'"{X}".', "static QString GetStaticObjectName()"),
    ]
    if c.translate:
        common += [
            (f'QCoreApplication::translate with the context "HALVANE::{X}".',
             "static QString tr(const char *text, const char *disambiguation = nullptr, int n = -1)"),
            ("The same as tr.", "static QString trUtf8(const char *text, const char *disambiguation = nullptr, int n = -1)"),
        ]
    common += [
        ("Does nothing: the object type stays the class id.", "void SetObjectType(QUILLET::ObjectTypes type) override"),
        ("Stores the flag and hands it to nested objects and list items.", "void SetValidate(bool validate) const override"),
        ("Stores the logger and hands it to nested objects and list items.",
         "void SetLogger(std::shared_ptr<QUILLET::Logger> logger) const override"),
        ("Writes the object as one element.", "void GetXml(QXmlStreamWriter &writer) const override"),
        ("Reads the object from the element the reader stands on.", "void ProcessXml(QXmlStreamReader &reader) override"),
        ("Writes the tagged form; false when it wrote nothing (validation on, no data).",
         "bool GetBinary(QDataStream &stream, int tag, bool writeTag) const override"),
        ("Reads length bytes of field records; BinaryParsingException when the lengths do not add up.",
         "void SetBinary(QDataStream &stream, int length) override"),
        ("Writes the raw form: presence bytes, then the values.",
         "void GetVersionSpecificBinaryWithoutValidation(QDataStream &stream) const"),
        ("Reads the raw form; no validation, no exception of its own.",
         "void SetVersionSpecificBinaryWithoutValidation(QDataStream &stream)"),
    ]
    for comment, decl in common:
        out.append(f"    /// {comment}")
        out.append(f"    {decl};" if not decl.endswith("}") else f"    {decl}")
    # Row structures of the tables.
    for f in c.fields:
        if not f.table:
            continue
        if f.table.shared:
            if f.table.struct:
                out += ["", f"    /// A row of the {f.table.name} table, which several classes share.",
                        f"    typedef ::HALVANE::{f.table.struct} {f.table.struct};"]
        elif f.table.struct:
            out.append("")
            out += row_struct_lines(f.table, "    ")
    for f in c.fields:
        out.append("")
        out += member_lines(c, f)
    out += version_header_lines(c)
    out += [
        "",
        "protected:",
        "    /// Reads one child element; called by the base's ProcessXml.",
        "    void ProcessXmlStartElement(QXmlStreamReader &reader) override;",
        f'    /// "{X}", the object name until SetObjectName gives another.',
        "    const QString &DefaultObjectName() const override;",
        "",
        "private:",
        f"    HALVANE_DATA_CLASS_PRIVATE({X})",
        "};",
        "",
        "} // namespace HALVANE",
        "",
        f"HALVANE_DECLARE_TYPE({X})",
        "",
        "#endif",
    ]
    return "\n".join(out) + "\n"


# ---- The source file

def table_lines(t, storage):
    """The constant rows of a table and the NameTable made from them."""
    L = []
    key = t.name
    if len(t.columns) == 1:
        L.append(f"{storage}constexpr const char *k{key}Names[] = {{")
        L += [f"    {cstr(r[0])}," for r in t.rows]
        L.append("};")
        L.append(f"{storage}const frame::NameTable k{key}Table(k{key}Names);")
        return L
    cols = t.text_columns
    L.append(f"{storage}constexpr const char *k{key}Rows[][{len(cols)}] = {{")
    for r in t.rows:
        L.append("    {" + ", ".join(cstr(t.cell(r, col)) for col in cols) + "},")
    L.append("};")
    L.append(f"{storage}constexpr const char *k{key}Columns[] = {{" + ", ".join(cstr(col) for col in cols) + "};")
    if t.has_helpid:
        L.append(f"{storage}constexpr int k{key}Helpids[] = {{" + ", ".join(str(t.cell(r, 'Helpid')) for r in t.rows) + "};")
        L.append(f"{storage}const frame::NameTable k{key}Table(k{key}Rows, k{key}Columns, k{key}Helpids);")
    else:
        L.append(f"{storage}const frame::NameTable k{key}Table(k{key}Rows, k{key}Columns);")
    return L


def field_row(c, f):
    flags = []
    if f.required:
        flags.append("Required")
    if f.attribute:
        flags.append("Attribute")
    if f.element_too:
        flags.append("ElementToo")
    if f.empty_element_default:
        flags.append("EmptyElementDefault")
    fl = " | ".join(flags) or "0"
    name = cstr(f.name)
    tag = f"0x{f.tag:08X}"
    v = f.initial
    if f.kind == "bool":
        row = f"boolField({name}, {tag}, {fl}" + (", true" if v else "") + ")"
    elif f.kind in ("int", "int64"):
        fn = "intField" if f.kind == "int" else "int64Field"
        row = f"{fn}({name}, {tag}, {fl}" + (f", {v}" if v else "") + ")"
    elif f.kind in ("double", "float"):
        row = f"{f.kind}Field({name}, {tag}, {fl}" + (f", {cnum(v)}" if v else "") + ")"
    elif f.kind == "string":
        row = f"stringField({name}, {tag}, {fl}" + (f", {cstr(v)}" if v is not None else "") + ")"
    elif f.kind == "datetime":
        row = f"dateTimeField({name}, {tag}, {fl})"
    elif f.kind == "enum":
        row = f"enumField({name}, {tag}, {fl}, &k{f.table.name}Table" + (f", {v}" if v is not None else "") + ")"
    elif f.kind == "nested":
        row = f"nestedField<{f.item_class}>({name}, {tag}, {fl})"
    elif f.list_kind == "object":
        row = f"objectListField<{f.item_class}>({name}, {tag}, {fl})"
    elif f.list_kind == "string":
        row = f"stringListField({name}, {tag}, {fl})"
    else:
        row = f"enumListField({name}, {tag}, {fl}, &k{f.table.name}Table)"
    if f.element != f.name:
        row += f".withElement({cstr(f.element)})"
    if f.range:
        row += f".withRange({cnum(f.range[0])}, {cnum(f.range[1])})"
    if f.has_default:
        row += ".withDefault()"
    return row


def accessor_lines(c, f):
    X, F = c.name, f.name
    L = []
    if f.kind in ("bool", "int", "int64", "double", "float", "string", "datetime", "enum"):
        L.append(f"HALVANE_{f.kind.upper()}_ACCESSORS({X}, {F})")
    elif f.kind == "nested":
        L.append(f"HALVANE_NESTED_ACCESSORS({X}, {f.item_class}, {F})")
    elif f.list_kind == "object":
        L.append(f"HALVANE_OBJECT_LIST_ACCESSORS({X}, {f.item_class}, {F})")
    elif f.list_kind == "string":
        L.append(f"HALVANE_STRING_LIST_ACCESSORS({X}, {F})")
    else:
        L.append(f"HALVANE_ENUM_LIST_ACCESSORS({X}, {F})")
    if f.table:
        t = f.table
        if len(t.columns) == 1:
            L.append(f"HALVANE_ENUM_NAMES_ACCESSORS({X}, {F})")
        else:
            members = ", ".join(f"&{X}::{t.struct}::{col}" for col in t.columns)
            L.append(f"HALVANE_ENUM_ROWS_ACCESSORS({X}, {F}, {t.struct}, {members})")
        for i, col in enumerate(t.text_columns[1:], start=1):
            L.append(f"HALVANE_ENUM_COLUMN_ACCESSORS({X}, {F}, {col}, {i})")
        if t.has_helpid:
            L.append(f"HALVANE_ENUM_HELPID_ACCESSORS({X}, {F})")
    return L


def source(c):
    src = c.path.relative_to(ROOT)
    X = c.name
    out = [HEADER_TOP.format(gen=GENERATOR, src=src.name).rstrip("\n"),
           f"// {X}'s name tables, field table and accessors.",
           f'#include "{c.stem}.h"', "", f'#include "{frame_include(c.path, "classimpl.h")}"', "",
           "namespace HALVANE {", ""]
    shared = []
    for f in c.fields:
        if f.table and f.table.shared and f.table.name not in shared:
            shared.append(f.table.name)
    for name in shared:
        out.append(f"extern const frame::NameTable k{name}Table;")
    if c.hooks:
        out.append(f"extern const frame::Hooks {c.hooks};")
    if shared or c.hooks:
        out.append("")
    out += ["namespace {", "", "using namespace frame;", ""]
    for f in c.fields:
        if f.table and not f.table.shared:
            out += table_lines(f.table, "")
            out.append("")
    out.append("constexpr FieldDef kFields[] = {")
    out += [f"    {field_row(c, f)}," for f in c.fields]
    out.append("};")
    if c.tagged_order is not None:
        out.append("constexpr quint16 kTaggedOrder[] = {" + ", ".join(map(str, c.tagged_order)) + "};")
    out += version_source_lines(c)
    out += ["", "} // namespace", ""]
    hooks = f"&{c.hooks}" if c.hooks else "nullptr"
    order = "kTaggedOrder" if c.tagged_order is not None else "nullptr"
    if c.version:
        out.append(f"HALVANE_VERSIONED_CLASS_DEFINITION({X}, 0x{c.id:08X}, kFields, {hooks}, {order}, kVersion)")
        out.append(f"HALVANE_VERSION_ACCESSORS({X})")
    else:
        out.append(f"HALVANE_CLASS_DEFINITION({X}, 0x{c.id:08X}, kFields, {hooks}, {order})")
    if c.translate:
        out.append(f"HALVANE_TRANSLATE_DEFINITION({X})")
    for f in c.fields:
        out += accessor_lines(c, f)
    out += ["", "} // namespace HALVANE"]
    return "\n".join(out) + "\n"


def shared_files(path, data):
    """A header with the row structures of shared tables (none where no table
    has a row structure), and the tables."""
    rel = path.relative_to(ROOT)
    tables = [Table(str(rel), t) for t in data.get("table", [])]
    g = "HALVANE_" + "_".join(p.upper() for p in rel.with_suffix("").parts[1:]) + "_H"
    h = [HEADER_TOP.format(gen=GENERATOR, src=rel.name).rstrip("\n"),
         "// Row structures of name tables that several classes share.",
         f"#ifndef {g}", f"#define {g}", "", f'#include "{frame_include(path, "dataclass.h")}"', "",
         "namespace HALVANE {", ""]
    structs = any(t.struct for t in tables)
    cpp = [HEADER_TOP.format(gen=GENERATOR, src=rel.name).rstrip("\n"),
           "// Name tables that several classes share."]
    cpp += ([f'#include "{path.stem}.h"', ""] if structs else [])
    cpp += [f'#include "{frame_include(path, "text/nametable.h")}"', "", "namespace HALVANE {", ""]
    for t in tables:
        if t.struct:
            h += row_struct_lines(t, "", group_of(path))
            h.append("")
        # Declared extern first, so that the constant table is visible to the classes.
        cpp.append(f"extern const frame::NameTable k{t.name}Table;")
        cpp += table_lines(t, "")
        cpp.append("")
    h += ["} // namespace HALVANE", "", "#endif"]
    cpp += ["} // namespace HALVANE"]
    return ("\n".join(h) + "\n") if structs else None, "\n".join(cpp) + "\n"


def outputs():
    paths = sorted(p for d in SEARCH for p in (ROOT / d).rglob("*.toml"))
    classes, table_files, _ = load(paths)
    by_name = {c.name: c for c in classes}
    for c in classes:
        for f in c.fields:
            if f.item_class and f.item_class not in by_name:
                fail(str(c.path.relative_to(ROOT)), f"{f.name}: no description of class {f.item_class}")
    files = {}
    for c in classes:
        files[c.path.with_suffix(".h")] = header(c, by_name)
        files[c.path.with_suffix(".cpp")] = source(c)
    for path, data in table_files:
        h, cpp = shared_files(path, data)
        if h is not None:
            files[path.with_suffix(".h")] = h
        files[path.with_suffix(".cpp")] = cpp
    files[ROOT / "src" / "halvane.h"] = umbrella(classes)
    files[ROOT / "docs" / "api" / "holdings.dox"] = holdings(classes)
    return files


# ---- The holdings in the reference

SUBSYSTEMS = ["frame", "administration", "measurements", "settings", "capabilities", "antenna"]


def holdings(classes):
    """docs/api/holdings.dox: a graph per subsystem of which class holds which,
    drawn by Doxygen with Graphviz, and one of all classes."""
    library = sorted((c for c in classes if in_library(c)), key=lambda c: c.name)
    held = {f.item_class for c in library for f in c.fields if f.item_class}
    out = [HEADER_TOP.format(gen=GENERATOR, src="the descriptions under src/").rstrip("\n"),
           "// The graphs of the reference: which class holds which, from the fields of the descriptions.", ""]

    def graph(name, members):
        names = {c.name for c in members}
        lines = [f"    digraph {name} {{", "        rankdir=LR;",
                 '        node [shape=box, fontname="Helvetica", fontsize=10];',
                 '        edge [fontname="Helvetica", fontsize=9];']
        outside = []
        for c in members:
            style = ", peripheries=2" if c.name not in held else ""
            lines.append(f'        {c.name} [URL="\\ref HALVANE::{c.name}"{style}];')
        for c in members:
            for f in c.fields:
                if not f.item_class:
                    continue
                if f.item_class not in names and f.item_class not in outside:
                    outside.append(f.item_class)
                label = f.name if f.kind == "nested" else f"{f.name} (list)"
                style = "" if f.kind == "nested" else ", style=dashed"
                lines.append(f'        {c.name} -> {f.item_class} [label="{label}"{style}];')
        for name_ in outside:
            lines.append(f'        {name_} [URL="\\ref HALVANE::{name_}", style=dotted];')
        lines.append("    }")
        return lines

    legend = ("    A box with a double border is a document, held by no other class; a solid arrow is a "
              "nested object, a dashed one a list, and a dotted box a class of another subsystem.")
    for group in SUBSYSTEMS:
        members = [c for c in library if group_of(c.path) == group]
        out += [f"/*! \\addtogroup {group}", "", "    \\par Which class holds which", legend,
                "    \\dot"] + graph(group, members) + ["    \\enddot", "*/", ""]
    out += ["/*! \\page holdings Which class holds which", "",
            f"    All {len(library)} classes of the library; each subsystem's page has its part.", legend, "",
            "    \\dot"] + graph("all", library) + ["    \\enddot", "*/"]
    return "\n".join(out) + "\n"


def umbrella(classes):
    """src/halvane.h: the base, the frame's public headers and every class of the library."""
    lines = [HEADER_TOP.format(gen=GENERATOR, src="the descriptions under src/").rstrip("\n"),
             "// Every class of the Halvane data model.",
             "#ifndef HALVANE_HALVANE_H", "#define HALVANE_HALVANE_H", "",
             "#include <halvane/version.h>", "",
             '#include "base/converters.h"', '#include "base/exceptions.h"', '#include "base/quilletobject.h"', "",
             '#include "frame/dataclass.h"', '#include "frame/schema/schema.h"']
    src = ROOT / "src"
    folders = {}
    for c in classes:
        if src in c.path.parents:
            rel = c.path.with_suffix(".h").relative_to(src)
            folders.setdefault(rel.parts[0], []).append(rel.as_posix())
    for folder in ["frame"] + sorted(k for k in folders if k != "frame"):
        if folder != "frame":
            lines.append("")
        lines += [f'#include "{h}"' for h in sorted(folders.get(folder, []))]
    lines += ["", "#endif"]
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--check", action="store_true", help="report stale files and exit 1, write nothing")
    args = parser.parse_args()
    try:
        files = outputs()
    except DescriptionError as e:
        print(f"halvane_gen: {e}", file=sys.stderr)
        return 1
    stale = []
    for path, text in files.items():
        old = path.read_text(encoding="utf-8") if path.exists() else None
        if old != text:
            stale.append(path)
            if not args.check:
                path.write_text(text, encoding="utf-8")
    for path in stale:
        print(f"{'stale' if args.check else 'wrote'}: {path.relative_to(ROOT)}", file=sys.stderr)
    return 1 if (args.check and stale) else 0


if __name__ == "__main__":
    sys.exit(main())
