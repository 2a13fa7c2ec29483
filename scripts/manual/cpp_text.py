"""C++ sources as text: brackets, parts of expressions, functions. Understands what clang-format makes of them."""
import re

STRING = r'"(?:[^"\\]|\\.)*"'


class Fault(Exception):
    pass


def without_comments(text):
    """The text with blanks for its comments, so that positions stay."""
    def blank(match):
        found = match.group(0)
        return found if found[0] in "\"'" else re.sub(r"[^\n]", " ", found)
    return re.sub(STRING + r"|'(?:[^'\\]|\\.)'|//[^\n]*|/\*.*?\*/", blank, text, flags=re.DOTALL)


def matching(text, start):
    """Position of the bracket that closes the one at start."""
    depth = 0
    i = start
    while i < len(text):
        if text[i] in "\"'":
            i = re.compile(STRING + r"|'(?:[^'\\]|\\.)'").match(text, i).end()
            continue
        depth += text[i] in "([{"
        depth -= text[i] in ")]}"
        if depth == 0:
            return i
        i += 1
    raise Fault("скобка не закрыта")


def split_top(text, marks):
    """Parts of an expression between those of the marks that stand in no bracket; no part if it is blank."""
    parts, depth, begin, i = [], 0, 0, 0
    while i < len(text):
        if text[i] in "\"'":
            i = re.compile(STRING + r"|'(?:[^'\\]|\\.)'").match(text, i).end()
            continue
        depth += text[i] in "([{"
        depth -= text[i] in ")]}"
        if depth == 0 and text[i] in marks and text[i - 1:i + 1] != "::" and text[i:i + 2] != "::":
            parts.append(text[begin:i])
            begin = i + 1
        i += 1
    parts.append(text[begin:])
    return [part.strip() for part in parts] if text.strip() else []


class Function:
    """A function, or a lambda with a name, and what its parameters are called."""

    def __init__(self, name, parameters, start, end, local, nested=False):
        self.kind, _, self.name = name.rpartition("::")  # the class of a method
        self.nested = nested
        self.parameters = []
        self.defaults = []
        for parameter in split_top(parameters, ","):
            declared, _, default = parameter.partition("=")
            self.parameters.append(re.search(r"(\w*)\s*(?:\[\])?$", declared.strip()).group(1))
            self.defaults.append(default.strip())
        self.start, self.end = start, end
        self.local = local  # span of text in which it can be called; None is the whole program


class Source:
    def __init__(self, tree, path):
        self.name = path.relative_to(tree).as_posix()
        self.text = without_comments(path.read_text(encoding="utf-8"))
        self.functions = self.find_functions()

    def find_functions(self):
        """clang-format puts the braces of a function, and nothing else's but a namespace's and a type's, at the
        beginning of a line."""
        found = []
        hidden = [(m.start(), matching(self.text, m.end() - 1)) for m in re.finditer(r"^namespace\s*\{", self.text, re.M)]
        for brace in re.finditer(r"^\{", self.text, re.M):
            head_start = max(self.text.rfind(mark, 0, brace.start()) for mark in (";", "}", "{", "#", "\n\n")) + 1
            head = self.text[head_start:brace.start()]
            if "#" == self.text[head_start - 1:head_start]:
                head = head.partition("\n")[2]
            name = re.search(r"([\w:~]+)\s*\(", head)
            if re.match(r"\s*(?:namespace|struct|class|enum)\b", head) or not name:
                continue
            end = matching(self.text, brace.start())
            close = matching(head, name.end() - 1)
            static = any(a < brace.start() < b for a, b in hidden) and "::" not in name.group(1)
            found.append(Function(name.group(1), head[name.end():close], brace.start(), end,
                                  (0, len(self.text)) if static else None))
        for lambda_ in re.finditer(r"const auto (\w+) = \[[^\]]*\]\(", self.text):
            close = matching(self.text, lambda_.end() - 1)
            brace = self.text.index("{", close)
            outer = [f.end for f in found if f.start < lambda_.start() < f.end]
            found.append(Function(lambda_.group(1), self.text[lambda_.end():close], brace, matching(self.text, brace),
                                  (lambda_.start(), min(outer, default=len(self.text))), nested=True))
        return found

    def around(self, position):
        inside = [f for f in self.functions if f.start < position < f.end]
        return max(inside, key=lambda f: f.start) if inside else None

    def line(self, position):
        return self.text.count("\n", 0, position) + 1


def unquoted(string):
    return string[1:-1].replace('\\"', '"').replace("\\\\", "\\").replace("\\r", "<").replace("\\n", ">")
