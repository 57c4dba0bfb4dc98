"""Reads our own declarations, with the compiler that uses them."""
import glob
import json
import os
import re
import subprocess

from kinds import POINTER, Types, selector_key, signature

PLAIN = {
    "void": "nothing", "bool": "i8", "char": "i8", "signed char": "i8", "unsigned char": "i8", "short": "i16",
    "unsigned short": "i16", "int": "i32", "unsigned int": "i32", "long": "i64", "unsigned long": "i64",
    "long long": "i64", "unsigned long long": "i64", "float": "float", "double": "double", "__uint128_t": "i128",
}
NESTED = ("LinkageSpecDecl", "EnumDecl", "TranslationUnitDecl")


def nodes(node, *kinds):
    for inner in node.get("inner", []):
        if inner.get("kind") in kinds:
            yield inner
        if inner.get("kind") in NESTED:
            yield from nodes(inner, *kinds)


class Tree:
    def __init__(self, command, source):
        output = subprocess.run(command, input=source, text=True, check=True, capture_output=True).stdout
        self.root = json.loads(output)
        self.types = Types(PLAIN)
        for typedef in nodes(self.root, "TypedefDecl"):
            self.types.aliases[typedef["name"]] = self.bare(typedef["type"]["qualType"])

    @staticmethod
    def bare(written):
        for word in ("const ", "struct ", "_Nullable", "_Nonnull", "__strong", "__autoreleasing"):
            written = written.replace(word, "")
        return written.strip()

    def kind(self, written):
        name = self.bare(written)
        if name.endswith("*") or "(*" in name or name.endswith("]") or name.startswith("id<") \
                or name in ("id", "instancetype", "Class", "SEL"):
            return POINTER
        alias = self.types.aliases.get(name)
        if alias and alias != name:
            return self.kind(alias)
        return self.types.kind(name)

    def function(self, node):
        arguments = [self.kind(p["type"]["qualType"]) for p in node.get("inner", []) if p["kind"] == "ParmVarDecl"]
        return signature(arguments, self.kind(node["type"]["qualType"].split("(")[0]))

    def structures(self):
        """The types of the fields of structures that have a name or a typedef for it."""
        fields = {}
        for record in nodes(self.root, "CXXRecordDecl", "RecordDecl"):
            kinds = [f["type"]["qualType"] for f in record.get("inner", []) if f["kind"] == "FieldDecl" and "name" in f]
            if kinds:
                fields[record["id"]] = kinds
                if "name" in record:
                    self.types.structures.add(record["name"])
                    yield record["name"], kinds
        for typedef in nodes(self.root, "TypedefDecl"):
            owned = typedef["inner"][0].get("ownedTagDecl", {}).get("id")
            if owned in fields:
                self.types.structures.add(typedef["name"])
                del self.types.aliases[typedef["name"]]
                yield typedef["name"], fields[owned]

    def everything(self):
        found = {f"structure {n}": [*k] for n, k in self.structures()}
        found = {name: ", ".join(self.kind(k) for k in kinds) for name, kinds in found.items()}
        for function in nodes(self.root, "FunctionDecl"):
            found[f"function {function['name']}"] = self.function(function)
        for variable in nodes(self.root, "VarDecl"):
            found[f"variable {variable['name']}"] = self.kind(variable["type"]["qualType"])
        for constant in nodes(self.root, "EnumConstantDecl"):
            value = constant["inner"][0]
            while "value" not in value:
                value = value["inner"][0]
            found[f"constant {constant['name']}"] = str(int(value["value"]))
        for interface in nodes(self.root, "ObjCInterfaceDecl", "ObjCCategoryDecl", "ObjCProtocolDecl"):
            name = interface.get("interface", interface)["name"]
            for method in interface.get("inner", []):
                if method["kind"] == "ObjCMethodDecl":
                    arguments = [self.kind(p["type"]["qualType"]) for p in method.get("inner", [])
                                 if p["kind"] == "ParmVarDecl"]
                    found[selector_key(name, not method["instance"], method["name"])] = signature(
                        arguments, self.kind(method["returnType"]["qualType"]))
        return found


def read_frameworks(folder):
    """What the headers of the frameworks in a folder declare."""
    command = ["clang++-19", "-target", "arm64-apple-macos13.4", "-x", "objective-c++", "-std=c++23", "-nostdlibinc",
               "-isystem", folder, "-Xclang", "-ast-dump=json", "-fsyntax-only", "-"]
    source = "".join(f"#include <{name}/{name}.h>\n" for name in sorted(os.listdir(folder)))
    return Tree(command, source).everything()


def read_c_library(folder):
    """What the headers in a folder declare that come before musl's: structures, functions and numbers."""
    musl = sorted(glob.glob("/usr/include/*-linux-musl"))[0]
    command = ["clang++-19", "-target", "arm64-apple-macos13.4", "-x", "c++", "-std=c++23", "-nostdlibinc", "-isystem", folder,
               "-isystem", musl, "-Xclang", "-ast-dump=json", "-fsyntax-only", "-"]
    everything = Tree(command, "#include <dirent.h>\n#include <sys/stat.h>\n#include <sys/xattr.h>\n").everything()
    time = everything["structure timespec"]
    found = {name: kinds.replace("timespec", time) for name, kinds in everything.items()
             if name in ("structure stat", "structure dirent") or name.endswith("xattr")}
    for header in ("bits/errno.h", "bits/fcntl.h", "fcntl.h"):
        with open(os.path.join(folder, header), encoding="utf-8") as file:
            for name, value in re.findall(r"^#define (\w+) \(?(-?\w+)\)?$", file.read(), re.MULTILINE):
                if re.match(r"-?\d", value):
                    found[f"constant {name}"] = str(int(value, 0))
    return found


def read_functions(header, names):
    """Functions of a header that is for Linux, each of which must be there."""
    found = {}
    for name in names:
        command = ["clang++-19", "-x", "c++", "-std=c++23", "-Xclang", "-ast-dump=json", "-Xclang",
                   f"-ast-dump-filter={name}", "-fsyntax-only", header]
        function = json.loads(subprocess.run(command, text=True, check=True, capture_output=True).stdout)
        kinds = [kind_of_plain(p["type"]) for p in function["inner"] if p["kind"] == "ParmVarDecl"]
        found[f"function {function['name']}"] = signature(kinds, kind_of_plain(function["type"]))
    return found


def kind_of_plain(written):
    """The kind of a type, or of what a function returns, that the compiler has traced to a plain one."""
    name = Tree.bare(written.get("desugaredQualType", written["qualType"]).split("(")[0])
    return POINTER if name.endswith("*") else Types(PLAIN | {"ssize_t": "i64"}).kind(name)
