"""What declarations come down to, so that lists in several languages can be compared.

Each reader returns a dictionary. Its keys name what is declared: "function CFRelease", "variable kCFURLFileSizeKey",
"constant kCFNumberSInt8Type", "structure CFRange", "method -[NSError code]". Its values have what must agree: kinds of
arguments and of the result, the value, kinds of the fields. Signs of numbers and what a pointer points to are left out.
"""

POINTER = "pointer"


def signature(arguments, result):
    return "(" + ", ".join(arguments) + ") " + result


def selector_key(class_name, is_class_method, selector):
    return f"method {'+' if is_class_method else '-'}[{class_name} {selector}]"


class Types:
    """Resolves the names of types by a list's own aliases."""

    def __init__(self, plain, pointers=()):
        self.aliases = {}
        self.structures = set()
        self.plain = plain
        self.pointers = set(pointers)

    def kind(self, name):
        """The kind of a type; an unknown one is its name with a question mark, which agrees with nothing."""
        for _ in range(20):
            if name in self.plain:
                return self.plain[name]
            if name in self.pointers:
                return POINTER
            if name in self.structures:
                return name
            if name not in self.aliases:
                break
            name = self.aliases[name]
        return f"{name}?"
