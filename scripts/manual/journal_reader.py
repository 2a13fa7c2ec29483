"""Finds all lines that the sources can write to the journal; journal-lines.py tells why none escapes."""
import itertools
import re

from cpp_text import STRING, Fault, Source, matching, split_top, unquoted

FOLDERS = ["app", "link", "procedures", "records", "sound", "text", "ui"]
JOURNAL = ("records/protocol.h", "records/protocol.cpp", "records/protocol_file.cpp")

# What may be done with the journal beside writing an event into it.
ALLOWED = [
    r"Log\.(?:Load|Save|flush)\(\)",
    r"Log\.(?:rewriteAll|flushRequested|behind|writeError|lineWidthLimit)\b",
    r"Log\.add\(\w+, Protocol(?:Received|Sent)\)",
    r"CProtocol Log;",
    r"new CProtocolWidget\(&Log, this\)",
]
# Who names the journal's class: its definition, and the view, which reads.
HOLDERS = {"app/run/globals.cpp", "ui/roll/protocol_widget.cpp", "ui/roll/protocol_widget.h"}

# What varies, by file (a beginning of its path) and source text. The first row that fits counts.
VALUES = [
    ("", r"shownName\(.*\)", "<файл>"),
    ("", r"QString::number\(address, 16\)", "<адрес>"),
    ("", r"QString::number\(.*\)", "<число>"),
    ("", r"\w+\.errorString\(\)|Log\.writeError", "<ошибка>"),
    ("", r"QCoreApplication::applicationVersion\(\)", "<версия>"),
    ("app/run/startup.cpp", r"buildDate\(\)", "<дата сборки>"),
    ("app/run/user_data.cpp", r"name", "<файл>"),
    ("app/run/startup.cpp", r"processModeWord\(Options\.processMode\)", "<процедура>"),
    ("link/fw_update.cpp", r"m_record\.version", "<версия>"),
    ("link/fw_update.cpp", r"m_record\.size", "<байтов>"),
    ("link/fw_update.cpp", r"serial", "<серийный номер>"),
    ("link/tcp_client.cpp", r"address", "<адрес>"),
    ("link/tcp_", r"port", "<порт>"),
    ("link/tcp_server.cpp", r"peerAddress\(\*?socket\)\.toString\(\)", "<адрес>"),
    ("link/tcp_loop.cpp", r"m_thread\.silenceLimit\(\)", "<число>"),
    ("link/port_link.cpp", r"adapterSN", "<серийный номер>"),
    ("link/port_link.cpp", r"name", "<порт>"),
    ("link/port_loop.cpp", r"m_portName", "<порт>"),
    ("link/port_loop.cpp", r"version", "<версия>"),
    ("link/", r"(?:m_)?prefix", "<связь>"),
    ("procedures/process_cks_kg.cpp", r"State\.prevCKS_(?:in|out)", "<число>"),
    ("procedures/process_cks_telegram.cpp", r"forwarded", "<файл>"),
    ("procedures/process_direct.cpp", r"path", "<файл>"),
    ("procedures/process_skk.cpp", r"receiveBuffer", "<принятый текст>"),
    ("procedures/process_skk", r"name", "<файл>"),
    ("procedures/process_skk.cpp", r"number", "<номер>"),
    ("records/new_telegram.cpp", r"queued\.unsent\.join\(QLatin1Char\(','\)\)", "<номера>"),
    ("ui/dialogs/pick_list_dialog.cpp", r"m_heading", "<список>"),
    ("ui/printing/raw_printer.cpp", r"printer|name|address", "<принтер>"),
    ("ui/printing/system_printer.cpp", r"name", "<принтер>"),
    ("ui/window/form_main_editor.cpp", r"name", "<оператор>"),
    ("ui/window/form_main_tick.cpp", r"State\.idleSeconds", "<число>"),
]
# A field of a row of a table in the same file: the table, and the number of the string among those of a row.
FIELDS = {
    "results[index].description": ("results", -1),
    "mode.label": ("centreModes", 0),
}
# Lists that carry texts to the thread of the journal: the file and the source text of what is written there,
# and the name of what fills the list.
RELAYS = {
    ("ui/window/form_main_line.cpp", "text", "TlgThread.stateText.mTakeNews()"): "mSet",
    ("ui/printing/print_queue.cpp", "error", "qAsConst(errors)"): "jobs",
}
LINK_STATE = re.compile(r"\bstateText\.mSet\(")
# The beginnings of the texts of a link, which stand in the table once instead of before each of them as <связь>.
PREFIX_PLACES = ["link/port_link.cpp", "link/tcp_client.cpp", "link/tcp_server.cpp"]
# What of the link's folder tells its state to the status strip alone.
STRIP_ONLY = ("link/prf_thread.cpp", "link/prf_loop.cpp")
# The jobs of printing are these files' functions; each list that one of them returns is of journal lines.
PRINT_FILES = ("ui/printing/raw_printer.cpp", "ui/printing/system_printer.cpp")

WORDS = "app/journal_words.h"  # namespace JournalWords
WRAPPERS = ("QStringLiteral", "QLatin1String", "QLatin1Char", "QString::fromUtf8", "QString::fromLatin1", "QString",
            "QChar")
HOLE = re.compile("\x01(\\d+)\x02")


class Reader:
    """All journal lines of a tree, as texts with <...> for what varies."""

    def __init__(self, tree):
        paths = sorted(p for folder in FOLDERS for p in (tree / folder).rglob("*") if p.suffix in (".cpp", ".h"))
        self.sources = [Source(tree, path) for path in paths]
        self.lines = {}  # text -> places
        self.prefixes = {}
        self.faults = []
        self.passers = []  # (function, its source, text with holes) still to be followed
        self.followed = set()

    def read(self):
        self.look_at_all_mentions()
        for source in self.sources:
            if source.name not in JOURNAL:
                for call in re.finditer(r"\bLog\.(addCacheServiceString|addServiceString)\(", source.text):
                    self.take_call(source, call.start(), call.end() - 1, "\x010\x02", None)
        while self.passers:
            self.follow(*self.passers.pop())
        self.read_prefixes()
        return self

    def fault(self, source, position, text):
        self.faults.append(f"{source.name}:{source.line(position)}: {text}")

    def look_at_all_mentions(self):
        for source in self.sources:
            if source.name in JOURNAL:
                continue
            bare = re.sub(STRING, lambda m: '"' + " " * (len(m.group(0)) - 2) + '"', source.text)
            for mention in re.finditer(r"\bLog\b", bare):
                forms = [*ALLOWED, r"Log\.add(?:Cache)?ServiceString\("]
                if not any(re.compile(form).match(bare, start) for form in forms
                           for start in (mention.start(), mention.start() - len("CProtocol "),
                                         mention.start() - len("new CProtocolWidget(&"))):
                    self.fault(source, mention.start(), "unknown use of the journal")
            for mention in re.finditer(r"\badd(?:Cache)?ServiceString\b", bare):
                if not re.compile(r"Log\.add(?:Cache)?ServiceString\(").match(bare, mention.start() - len("Log.")):
                    self.fault(source, mention.start(), "the journal is reached by an unknown way")
            for mention in re.finditer(r"\bCProtocol\b", bare):
                if source.name not in HOLDERS:
                    self.fault(source, mention.start(), "the journal's class in an unknown place")

    def take_call(self, source, position, bracket, template, defaults):
        """A call that makes a line of the template, whose holes are numbers of its arguments."""
        try:
            arguments = split_top(source.text[bracket + 1:matching(source.text, bracket)], ",")
            function = source.around(position)
            if function is None:
                raise Fault("writes outside of every function")
            for hole in sorted({int(h) for h in HOLE.findall(template)}):
                if hole >= len(arguments) and not (defaults and defaults[hole]):
                    raise Fault("argument is missing")
            texts = self.filled(source, function, position, template, arguments, defaults)
            for text in texts:
                self.take_text(source, function, position, text)
        except Fault as fault:
            self.fault(source, position, str(fault))

    def filled(self, source, function, position, template, arguments, defaults):
        parts = re.split("(\x01\\d+\x02)", template)
        choices = []
        for part in parts:
            hole = HOLE.fullmatch(part)
            if not hole:
                choices.append([part])
                continue
            number = int(hole.group(1))
            given = arguments[number] if number < len(arguments) else defaults[number]
            choices.append(self.text_of(source, function, position, given))
        return ["".join(c) for c in itertools.product(*choices)]

    def take_text(self, source, function, position, text):
        if HOLE.search(text):
            key = (source.name, function.start, text)
            if key not in self.followed:
                self.followed.add(key)
                self.passers.append((source, function, text))
            return
        place = f"{source.name}:{source.line(position)}"
        self.lines.setdefault(text.strip(), []).append(place)

    def follow(self, definer, function, template):
        """All calls of a function that hands its parameters to the journal."""
        defaults = self.declared_defaults(definer, function)
        calls = 0
        for source in self.sources:
            if function.local and source is not definer:
                continue
            begin, end = function.local or (0, len(source.text))
            for mention in re.finditer(r"(?<![\w~])" + function.name + r"\b", source.text[begin:end]):
                at = begin + mention.start()
                kind = self.kind_of_mention(source, at, function)
                if kind == "call":
                    calls += 1
                    bracket = source.text.index("(", at)
                    self.take_call(source, at, bracket, template, defaults)
                elif kind:
                    self.fault(source, at, kind)
        if calls == 0:
            self.fault(definer, function.start, f"nobody calls {function.name}()")

    def kind_of_mention(self, source, at, function):
        """"call", None for what is no mention of this function, else the fault."""
        text = source.text
        behind = text[at + len(function.name):].lstrip()[:1]
        before = text[max(0, at - 80):at]
        inside = source.around(at)
        if inside is None:  # a definition or a declaration
            return None if behind == "(" or function.kind else "unknown use of a function that writes to the journal"
        if function.kind and not self.may_mean(function.kind, before, behind, inside):
            return None
        if re.search(r"(?:\bauto|\bQ\w+(?: &)?) ?$", before):
            return None  # a variable of that name, or the name of a lambda
        return "call" if behind == "(" else f"{function.name}() is handed on"

    def may_mean(self, kind, before, behind, inside):
        """Whether a name in a function, with text before and behind it, can be a method of the class kind."""
        qualified = re.search(r"(\w+)::$", before)
        if qualified:
            return qualified.group(1) == kind
        if re.search(r"(?:\.|->)$", before):
            return behind == "("
        return inside.kind == kind or inside.kind in self.heirs(kind)

    def heirs(self, kind):
        return {heir for source in self.sources
                for heir in re.findall(rf"\bclass (\w+)[^;{{]*\bpublic {kind}\b", source.text)}

    def declared_defaults(self, definer, function):
        """Defaults stand in the declaration; that of a file's own function is its definition."""
        defaults = function.defaults
        for source in self.sources:
            if source.name.endswith(".h") and not function.local:
                for found in re.finditer(r"\b" + function.name + r"\(", source.text):
                    listed = split_top(source.text[found.end():matching(source.text, found.end() - 1)], ",")
                    if len(listed) == len(function.parameters) and any("=" in part for part in listed):
                        defaults = [part.partition("=")[2].strip() for part in listed]
        return defaults

    # What an expression can be

    def text_of(self, source, function, position, expression):
        expression = re.sub(STRING + r"|\s+", lambda m: m.group(0) if m.group(0)[0] == '"' else " ", expression).strip()
        known = self.known_value(source, expression)
        if function.nested and expression in function.parameters:
            known = None
        if known is not None:
            return known
        parts = split_top(expression, "?")
        if len(parts) == 2:
            either = split_top(parts[1], ":")
            return [t for part in either for t in self.text_of(source, function, position, part)]
        if len(parts) > 2:  # a ? x : b ? y : z
            first, rest = split_top(expression.partition("?")[2], ":")[0], expression.partition("?")[2]
            rest = rest[rest.index(first) + len(first):].lstrip().lstrip(":")
            return self.text_of(source, function, position, first) + self.text_of(source, function, position, rest)
        parts = split_top(expression, "+")
        if len(parts) > 1:
            choices = [self.text_of(source, function, position, part) for part in parts]
            return ["".join(choice) for choice in itertools.product(*choices)]
        return self.term(source, function, position, expression)

    def known_value(self, source, expression):
        if expression in FIELDS:
            table, number = FIELDS[expression]
            return self.fields(source, table, number)
        for place, pattern, shown in VALUES:
            if source.name.startswith(place) and re.fullmatch(pattern, expression) and \
                    len(split_top(expression, "+?")) == 1:
                return [shown]
        return None

    def term(self, source, function, position, expression):
        if expression.startswith("(") and matching(expression, 0) == len(expression) - 1:
            return self.text_of(source, function, position, expression[1:-1])
        if re.fullmatch(rf"(?:{STRING} ?)+", expression):
            return ["".join(unquoted(s) for s in re.findall(STRING, expression))]
        if re.fullmatch(r"u?'(?:[^'\\]|\\.)'", expression):
            return [expression[expression.index("'") + 1:-1]]
        if expression in ("QString()", "{}"):
            return [""]
        call = re.match(r"([\w:.]+)\(", expression)
        if call:
            return self.call(source, function, position, expression, call)
        return self.named(source, function, position, expression)

    def call(self, source, function, position, expression, call):
        close = matching(expression, call.end() - 1)
        inside, rest = expression[call.end():close], expression[close + 1:]
        if call.group(1) in WRAPPERS:
            texts = self.text_of(source, function, position, inside)
        elif call.group(1) == "QString::asprintf":
            texts = self.printed(source, function, position, split_top(inside, ","))
        elif not rest:
            return self.returned(source, call.group(1))
        else:
            raise Fault(f"not understood: {expression}")
        while rest:
            arg = re.match(r"\s*\.arg\(", rest)
            if not arg:
                raise Fault(f"not understood: {expression}")
            close = matching(rest, arg.end() - 1)
            texts = self.with_arguments(source, function, position, texts, split_top(rest[arg.end():close], ","))
            rest = rest[close + 1:]
        return texts

    def with_arguments(self, source, function, position, texts, arguments):
        for argument in arguments:
            values = self.text_of(source, function, position, argument)
            filled = []
            for text in texts:
                numbers = re.findall(r"%(\d)", text)
                if not numbers:
                    raise Fault(f"no place for {argument}")
                filled += [text.replace("%" + min(numbers), value) for value in values]
            texts = filled
        return texts

    def printed(self, source, function, position, arguments):
        texts = self.text_of(source, function, position, arguments[0])
        for argument in arguments[1:]:
            value = self.text_of(source, function, position, argument)[0]
            texts = [re.sub(r"%0?\d*[dsu]", lambda _: value, text, count=1) for text in texts]
        return texts

    def returned(self, source, name):
        """What a function of one line of text returns; it must depend on nothing but tables."""
        name = name.split("::")[-1]
        found = [(s, f) for s in self.sources for f in s.functions
                 if f.name == name and (s is source or not f.local)]
        if len(found) != 1:
            raise Fault(f"not understood: {name}()")
        where, function = found[0]
        texts = []
        for back in re.finditer(r"\breturn ([^;]*);", where.text[function.start:function.end]):
            texts += self.text_of(where, function, function.start + back.start(), back.group(1))
        if not texts or any(HOLE.search(text) for text in texts):
            raise Fault(f"not understood: {name}()")
        return texts

    def named(self, source, function, position, name):
        if name.startswith("JournalWords::"):
            return self.shared_word(name)
        if not re.fullmatch(r"\w+", name):
            raise Fault(f"not understood: {name}")
        if name in function.parameters:
            body = source.text[function.start:position]
            if re.search(rf"\b{name}\s*(?:\+?=[^=]|\.(?:append|prepend|insert|replace|remove))", body):
                raise Fault(f"the parameter {name} is changed")
            return [f"\x01{function.parameters.index(name)}\x02"]
        relayed = self.relayed(source, function, position, name)
        if relayed is not None:
            return relayed
        body = source.text[function.start:position]
        local = list(re.finditer(rf"\b(?:const )?QString {name} = ([^;]*);", body))
        if len(local) == 1:
            texts = self.text_of(source, function, position, local[0].group(1))
            for more in re.finditer(rf"\b{name} (\+?)= ([^;]*);", body[local[0].end():]):
                further = self.text_of(source, function, position, more.group(2))
                texts = texts + ([a + b for a in texts for b in further] if more.group(1) else further)
            return texts
        constant = list(re.finditer(rf"^const QString {name} = ([^;]*);", source.text, re.M))
        if len(constant) == 1 and not local:
            return self.text_of(source, function, position, constant[0].group(1))
        raise Fault(f"not understood: {name}")

    def shared_word(self, name):
        """One of the words that those who write the journal share with those who read it."""
        for source in self.sources:
            if source.name == WORDS:
                found = re.search(rf"\bQString {name.split('::')[-1]} = QStringLiteral\(({STRING})\);", source.text)
                if found:
                    return [unquoted(found.group(1))]
        raise Fault(f"not understood: {name}")

    def fields(self, source, table, number):
        begin = re.search(rf"\b{table}\[\] = ", source.text)
        if not begin:
            raise Fault(f"no table {table}")
        rows = source.text[begin.end() + 1:matching(source.text, begin.end())]
        texts = []
        for row in re.finditer(r"\{", rows):
            if rows[:row.start()].count("{") == rows[:row.start()].count("}"):
                strings = re.findall(STRING, rows[row.start():matching(rows, row.start())])
                texts.append(unquoted(strings[number]))
        unknown = re.search(r"const CentreMode unknownCentreMode = \{(" + STRING + ")", source.text)
        return texts + ([unquoted(unknown.group(1))] if unknown and table == "centreModes" else [])

    # Lists that other threads fill

    def relayed(self, source, function, position, name):
        for (place, variable, taken), filler in RELAYS.items():
            loop = rf"for \(const QString &{variable} : {re.escape(taken)}\)\s*$"
            before = source.text[function.start:position]
            if place == source.name and variable == name and re.search(loop, before):
                return self.state_texts() if filler == "mSet" else self.print_errors()
        return None

    def state_texts(self):
        texts = []
        for source in self.sources:
            if source.name.startswith("link/state_text") or source.name in STRIP_ONLY:
                continue
            for call in LINK_STATE.finditer(source.text):
                self.take_call(source, call.start(), call.end() - 1, "\x010\x02", None)
                texts = [None]
            if re.search(r"\bm_news\b", source.text):
                self.fault(source, 0, "the link's news are reached by an unknown way")
        if not texts:
            raise Fault("nothing fills the state of the link")
        return []

    def print_errors(self):
        found = 0
        for source in self.sources:
            for job in re.finditer(r"\breturn \{([^{}]+)\};", source.text):
                function = source.around(job.start())
                kind = source.text[:function.start].rstrip().rfind("\n\n") if function else -1
                if function and re.search(r"\bQStringList [\w:]*" + function.name + r"\(", source.text[max(kind, 0):]) \
                        and source.name.startswith("ui/printing/"):
                    found += 1
                    for text in split_top(job.group(1), ","):
                        for line in self.text_of(source, function, job.start(), text):
                            self.take_text(source, function, job.start(), line)
            if source.name.startswith("ui/printing/") and source.name not in PRINT_FILES:
                if re.search(r"\breturn \{[^{}]*\bQStringLiteral", source.text):
                    self.fault(source, 0, "errors of printing in an unknown place")
        if found == 0:
            raise Fault("nothing fills the errors of printing")
        return []

    def read_prefixes(self):
        for source in self.sources:
            if not source.name.startswith("link/") or source.name in STRIP_ONLY:
                continue
            found = list(re.finditer(r"\bprefix = ([^;]*);", source.text))
            if bool(found) != (source.name in PREFIX_PLACES):
                self.fault(source, 0, "beginnings of a link's texts in an unknown place")
            for given in found:
                self.take_prefix(source, given)

    def take_prefix(self, source, given):
        expression = given.group(1).replace("kind", '"Nerva (%1)"') if "kind" in given.group(1) else given.group(1)
        kinds = re.search(r'kind = [^;]*\? (' + STRING + r") : (" + STRING + ");", source.text)
        expressions = [expression] if not kinds else [expression.replace('"Nerva (%1)"', k) for k in kinds.groups()]
        for each in expressions:
            try:
                for text in self.text_of(source, source.around(given.start()), given.start(), each):
                    self.prefixes.setdefault(text, []).append(f"{source.name}:{source.line(given.start())}")
            except Fault as fault:
                self.fault(source, given.start(), str(fault))
