"""Reads lists of what macOS declares that others made, each independently of the others."""
import glob
import os
import re

from kinds import POINTER, Types, selector_key, signature


def text_of(paths):
    found = []
    for path in paths:
        with open(path, encoding="utf-8", errors="replace") as file:
            found.append(file.read())
    return "\n".join(found)


class Pascal:
    """Free Pascal's translations: univint for the C interfaces, cocoaint for the classes."""

    PLAIN = {
        "Boolean": "i8", "boolean": "i8", "ObjCBOOL": "i8", "SInt8": "i8", "UInt8": "i8", "UInt16": "i16", "SInt16": "i16",
        "LongInt": "i32", "Longword": "i32", "SInt64": "i64", "UInt64": "i64", "NSInteger": "i64", "NSUInteger": "i64",
        "Float64": "double", "CGFloat": "double", "NSTimeInterval": "double", "UnivPtr": POINTER, "id": POINTER,
        "instancetype": POINTER, "SEL": POINTER, "pobjc_class": POINTER, "PChar": POINTER,
    }
    FOLDER = "/usr/share/fpcsrc/3.2.2/packages"
    CLASSES = ("foundation", "appkit", "quicklookui")

    def __init__(self):
        self.types = Types(self.PLAIN)

    def kind(self, written):
        name = written.strip()
        if name.startswith("^"):
            return POINTER
        return self.types.kind(name)

    def arguments(self, text):
        kinds = []
        for group in filter(None, (g.strip() for g in text.split(";"))):
            names, _, written = group.rpartition(":")
            kind = POINTER if names.startswith("var ") else self.kind(written)
            kinds += [kind] * len(names.split(","))
        return kinds

    def learn(self, text):
        for name, target in re.findall(r"^\s*(\w+)\s*=\s*(\^?[A-Za-z_]\w*)\s*;", text, re.MULTILINE):
            if target.startswith("^"):
                self.types.pointers.add(name)
            else:
                self.types.aliases.setdefault(name, target)
        self.types.pointers.update(re.findall(r"^\s*(\w+)\s*=\s*(?:function|procedure)\b", text, re.MULTILINE))
        self.types.pointers.update(re.findall(r"^\s*(\w+)\s*=\s*objc(?:class|protocol)\b", text, re.MULTILINE))
        records = dict(re.findall(r"^\s*(\w+)\s*=\s*(?:packed )?record\b(.*?)\bend;", text, re.MULTILINE | re.DOTALL))
        self.types.structures.update(records)
        return records

    def read(self):
        functions = text_of(glob.glob(os.path.join(self.FOLDER, "univint/src/CF*.pas"))
                            + [os.path.join(self.FOLDER, f"univint/src/{name}.pas") for name in ("MacTypes", "xattr")])
        classes = text_of(path for name in self.CLASSES
                          for path in glob.glob(os.path.join(self.FOLDER, f"cocoaint/src/{name}/*.inc")))
        text = re.sub(r"\{.*?\}|\(\*.*?\*\)", "", functions + "\n" + classes, flags=re.DOTALL)
        found = {f"structure {name}": ", ".join(self.arguments(fields)) for name, fields in self.learn(text).items()}
        for name, arguments, result in re.findall(
                r"^\s*(?:function|procedure) (\w+)\s*(?:\(([^)]*)\))?\s*(?::\s*(\w+))?\s*;\s*(?:external|cdecl)", text,
                re.MULTILINE):
            found[f"function {name}"] = signature(self.arguments(arguments), self.kind(result) if result else "nothing")
        for name, written in re.findall(r"^\s*(?:var\s+)?(\w+)\s*:\s*(\w+)\s*;\s*(?:external|cvar)", text, re.MULTILINE):
            found[f"variable {name}"] = self.kind(written)
        for name, value in re.findall(r"^\s*(k\w+|NS\w+)\s*=\s*(\$?-?[0-9A-Fa-f]+);", text, re.MULTILINE):
            found[f"constant {name}"] = str(int(value.replace("$", "0x"), 0))
        # Fields may be records, whose ends are not those of their classes.
        text = re.sub(r"^  private\n(?:(?!.*\bobjcclass\b).*\n)*?  public\n", "", text, flags=re.MULTILINE)
        for own, kind, head, block in re.findall(
                r"^\s*(\w+)\s*=\s*objc(class|category|protocol)\s+external\b([^;\n]*)\n(.*?)^\s*end;", text,
                re.MULTILINE | re.DOTALL):
            pattern = {"class": "", "category": r"\((\w+)", "protocol": r"name '(\w+)'"}[kind]
            renamed = re.search(pattern, head) if pattern else None
            name = renamed[1] if renamed else own
            self.add_methods(found, name, block)
        return found

    def add_methods(self, found, name, block):
        for is_class, arguments, result, selector in re.findall(
                r"^\s*(class )?(?:function|procedure) \w+\s*(?:\(([^)]*)\))?\s*(?::\s*(\w+))?\s*;.*?message '([^']+)'",
                block, re.MULTILINE):
            found[selector_key(name, bool(is_class), selector)] = signature(
                self.arguments(arguments), self.kind(result) if result else "nothing")


class Rust:
    """The crates core-foundation-sys, written by hand for a browser, and libc."""

    PLAIN = {
        "bool": "i8", "u8": "i8", "i8": "i8", "u16": "i16", "i16": "i16", "u32": "i32", "i32": "i32", "c_int": "i32",
        "c_uint": "i32", "i64": "i64", "u64": "i64", "isize": "i64", "usize": "i64", "c_long": "i64", "c_ulong": "i64",
        "c_longlong": "i64", "size_t": "i64", "ssize_t": "i64", "f32": "float", "f64": "double", "c_double": "double",
        "c_char": "i8",
    }
    FOLDER = "/usr/share/cargo/registry"

    def __init__(self):
        self.types = Types(self.PLAIN)

    def kind(self, written):
        name = written.strip()
        if name.startswith(("*", "extern", "Option<", "[")):
            return POINTER
        return self.types.kind(name.rpartition("::")[2])

    def fields(self, text):
        return [self.kind(f.partition(": ")[2]) for f in text.split(",") if ":" in f]

    def read(self):
        # What libc says of the system itself comes after what it says of its relatives, and so counts.
        text = text_of(glob.glob(os.path.join(self.FOLDER, "core-foundation-sys-*/src/*.rs"))
                       + [path for place in ("", "bsd/", "bsd/apple/")
                          for path in glob.glob(os.path.join(self.FOLDER, f"libc-*/src/unix/{place}mod.rs"))])
        text = re.sub(r"/\*.*?\*/|//[^\n]*", "", text, flags=re.DOTALL)
        for name, target in re.findall(r"^\s*pub type (\w+)\s*=\s*([^;]+);", text, re.MULTILINE):
            if target.startswith(("*", "extern")):
                self.types.pointers.add(name)
            else:
                self.types.aliases[name] = target.rpartition("::")[2]
        records = re.findall(r"^\s*pub struct (\w+)\s*\{([^}]*)\}", text, re.MULTILINE)
        self.types.structures.update(name for name, _ in records)
        found = {f"structure {name}": ", ".join(self.fields(fields)) for name, fields in records}
        for name, arguments, result in re.findall(
                r"^\s*pub fn (\w+)\s*\(([^)]*)\)\s*(?:->\s*([^;{]+?))?\s*;", text, re.MULTILINE):
            found[f"function {name}"] = signature(self.fields(arguments), self.kind(result) if result else "nothing")
        for name, written, value in re.findall(
                r"^\s*pub (?:static|const) (\w+)\s*:\s*([^;=]+?)\s*(?:=\s*(-?\w+))?;", text, re.MULTILINE):
            if not value:
                found[f"variable {name}"] = self.kind(written)
            elif re.fullmatch(r"-?(?:\d+|0x[0-9A-Fa-f_]+)", value):
                found[f"constant {name}"] = str(int(value, 0))
            elif f"constant {value}" in found:
                found[f"constant {name}"] = found[f"constant {value}"]
        return found


class GNUstep:
    """The headers of GNUstep's own Foundation."""

    PLAIN = {
        "void": "nothing", "BOOL": "i8", "int": "i32", "unsigned": "i32", "NSInteger": "i64", "NSUInteger": "i64",
        "NSTimeInterval": "double", "id": POINTER, "instancetype": POINTER, "SEL": POINTER, "Class": POINTER,
    }
    FOLDER = "/usr/include/GNUstep/Foundation"

    def __init__(self):
        self.types = Types(self.PLAIN)

    def kind(self, written):
        name = re.sub(r"\b(?:const|out|in|inout|bycopy|oneway)\b|GS_GENERIC_\w+\([^)]*\)|<[^>]*>", "", written).strip()
        return POINTER if name.endswith(("*", "]")) else self.types.kind(name)

    def read(self):
        text = text_of(glob.glob(os.path.join(self.FOLDER, "*.h")))
        text = re.sub(r"/\*.*?\*/|//[^\n]*|^\s*#[^\n]*", "", text, flags=re.DOTALL | re.MULTILINE)
        found = {}
        for result, star, name, arguments in re.findall(
                r"^GS_EXPORT\s+(\w+)\s*(\*?)\s*(NS\w+)\s*\(([^)]*)\)\s*;", text, re.MULTILINE):
            kinds = [self.kind(re.sub(r"\w+$", "", a.strip())) for a in arguments.split(",") if a.strip() != "void"]
            found[f"function {name}"] = signature(kinds, self.kind(result + star))
        for name, block in re.findall(
                r"^@(?:interface|protocol)\s+(\w+)\b(?!\s*[;,])(.*?)^@end", text, re.MULTILINE | re.DOTALL):
            for sign, result, rest in re.findall(r"^([-+])\s*\(([^)]*)\)\s*([^;{]*);", block, re.MULTILINE):
                parts = re.findall(r"(\w+)\s*:\s*\(([^)]*)\)\s*\w+", rest)
                selector = "".join(f"{part}:" for part, _ in parts) or rest.split()[0]
                found[selector_key(name, sign == "+", selector)] = signature(
                    [self.kind(written) for _, written in parts], self.kind(result))
        return found
