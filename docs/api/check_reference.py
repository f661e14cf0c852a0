#!/usr/bin/env python3
"""Checks the API reference against the headers it was made from.

Reads Doxygen's XML output and fails unless every public member declared in
every class header (as the generator wrote it) stands in the reference with a
description, every class is on the page of its subsystem, and the base, the
exceptions and the registry are there with every public member described.

    python3 docs/api/check_reference.py BUILD/docs/api/xml
"""

import collections
import pathlib
import re
import sys
import tomllib
import xml.etree.ElementTree as ET

ROOT = pathlib.Path(__file__).resolve().parents[2]

# The hand-written part of the public interface, with the group of its page.
HAND_WRITTEN = {
    "QUILLET::IQuilletObject": "base", "QUILLET::Logger": "base", "Converters": "base",
    "QuilletRootException": "base", "QuilletException": "base", "OutOfRangeException": "base",
    "IncompleteDefinitionException": "base", "InvalidXmlException": "base", "BinaryParsingException": "base",
    "HALVANE::schema::Table": "registry", "HALVANE::schema::Field": "registry", "HALVANE::schema::Class": "registry",
    "HALVANE::schema::Value": "registry", "HALVANE::schema::RecordVisitor": "registry",
}
REGISTRY_FUNCTIONS = ["kindName", "classes", "findClass", "findClassById", "findTag", "exampleXml", "mustBeGiven",
                      "xmlSchema", "describe",
                      "walkTagged", "walkRaw"]


def text(element):
    return "".join(element.itertext()).strip() if element is not None else ""


def described(member):
    return bool(text(member.find("briefdescription")) or text(member.find("detaileddescription")))


def public_declarations(header, name):
    """Names of the members declared public in the class's header, one per
    declaration, and the names of its public nested structures."""
    lines = header.read_text(encoding="utf-8").splitlines()
    start = next(i for i, line in enumerate(lines) if re.match(rf"class (\w+ )?{name} :", line))
    access = None
    members, structs = [], []
    depth = 0
    for line in lines[start + 1:]:
        if line == "};":
            break
        if line.strip() in ("public:", "protected:", "private:"):
            access = line.strip()[:-1]
            continue
        if access != "public" or not line.strip() or line.strip().startswith("//"):
            continue
        if depth:
            depth += line.count("{") - line.count("}")
            continue
        m = re.match(r"    struct (\w+) \{", line)
        if m:
            structs.append(m.group(1))
            depth = 1
            continue
        decl = line.strip()
        m = re.match(r"typedef .* (\w+);$", decl)
        if m:
            members.append(m.group(1))
        elif "(" in decl:
            m = re.search(r"(operator\W+|~?\w+)\(", decl)
            members.append(m.group(1))
        else:
            members.append(re.search(r"(\w+)\s*(=[^;]*)?;$", decl).group(1))
    return members, structs


def main():
    xml = pathlib.Path(sys.argv[1])
    index = ET.parse(xml / "index.xml").getroot()
    compounds = {}
    groups = {}
    for c in index.findall("compound"):
        name, kind, refid = text(c.find("name")), c.get("kind"), c.get("refid")
        if kind in ("class", "struct"):
            compounds[name] = (kind, refid)
        elif kind == "group":
            group = ET.parse(xml / f"{refid}.xml").getroot()
            groups[name] = {text(c) for c in group.iter("innerclass")} | {text(m.find("name")) for m in group.iter("memberdef")}
    faults = []

    def compound(name):
        if name not in compounds:
            faults.append(f"{name}: not in the reference")
            return None
        return ET.parse(xml / f"{compounds[name][1]}.xml").getroot()

    def in_group(name, group):
        if name not in groups.get(group, ()):
            faults.append(f"{name}: not on the page of {group}")

    classes = 0
    members = 0
    for path in sorted((ROOT / "src").rglob("*.toml")):
        with open(path, "rb") as f:
            data = tomllib.load(f)
        if "class" not in data:
            continue
        name = data["class"]
        full = f"HALVANE::{name}"
        group = path.relative_to(ROOT / "src").parts[0]
        classes += 1
        in_group(full, group)
        root = compound(full)
        if root is None:
            continue
        listed = collections.Counter()
        for m in root.iter("memberdef"):
            if m.get("prot") == "public":
                listed[text(m.find("name"))] += 1
                if not described(m):
                    faults.append(f"{full}::{text(m.find('name'))}: listed without a description")
        declared, structs = public_declarations(path.with_suffix(".h"), name)
        members += len(declared)
        missing = collections.Counter(declared) - listed
        for member, count in missing.items():
            faults.append(f"{full}::{member}: declared {count} more time(s) than the reference lists it")
        inner = {text(c) for c in root.iter("innerclass")}
        for s in structs:
            if f"{full}::{s}" not in inner:
                faults.append(f"{full}::{s}: the row structure is not in the reference")
    for name, group in HAND_WRITTEN.items():
        in_group(name, group)
        root = compound(name)
        if root is None:
            continue
        for m in root.iter("memberdef"):
            if m.get("prot") == "public" and not described(m):
                faults.append(f"{name}::{text(m.find('name'))}: listed without a description")
            members += m.get("prot") == "public"
    for function in REGISTRY_FUNCTIONS:
        in_group(function, "registry")
    if classes != 56:
        faults.append(f"{classes} class descriptions under src/, not 56")
    for fault in faults:
        print(f"check_reference: {fault}", file=sys.stderr)
    if faults:
        return 1
    print(f"check_reference: {classes} classes and the base, the exceptions and the registry; "
          f"{members} public members, each in the reference with its description")
    return 0


if __name__ == "__main__":
    sys.exit(main())
