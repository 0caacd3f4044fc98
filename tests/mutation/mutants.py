"""This module alters the library's sources. Each mutant has one small change, of the kind that a person makes by
mistake.
"""

import dataclasses
import re

COMMENT_OR_TEXT = re.compile(r'//[^\n]*|"(?:\\.|[^"\\\n])*"')
FUNCTION = re.compile(r"^uint32_t (\w+)\(([^)]*)\)\n\{\n(.*?)^\}", re.MULTILINE | re.DOTALL)
DOCUMENTED = re.compile(r"/\*\*((?:(?!\*/).)*)\*/\nBSP_PON_API uint32_t (\w+)\(", re.DOTALL)
NOT_A_STATEMENT = r"(?!return|const|using|static|template|uint32_t|int32_t|char|alignas|extern|friend|explicit|break)"
OPERAND = r"(?:[^:?;()\n]|::|\([^()\n]*\))+"
POLICIES = ["report", "pass", "silent"]


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str  # path below src/
    line: int
    kind: str
    old: str
    new: str
    text: str  # the whole file, altered; it has as many lines as before

    @property
    def change(self):
        return f"{' '.join(self.old.split())} -> {' '.join(self.new.split()) or '(nothing)'}"

    @property
    def altered_line(self):
        return " ".join(self.text.split("\n")[self.line - 1].split())


def blanked(text):
    """Returns the text with its comments and string literals replaced by blanks. Every character keeps its position."""
    return COMMENT_OR_TEXT.sub(lambda match: re.sub(r"[^\n]", " ", match[0]), text)


class Header:
    """This class has the names of the public header that can be confused with each other."""

    def __init__(self, text):
        self.codes = dict(re.findall(r"^#define (BSP_CMD_\w+) (\w+)", text, re.MULTILINE))
        self.channels = re.findall(r"^#define (BSP_MSG_\w+)", text, re.MULTILINE)
        self.structs = {}
        for name, body in re.findall(r"^struct (\w+) \{(.*?)^\};", text, re.MULTILINE | re.DOTALL):
            self.structs[name] = re.findall(r"^    (\w+) (\w+?)(\[\d+\])?;", body, re.MULTILINE)

        self.refused = {(function, argument)  # where null is refused
                        for comment, function in DOCUMENTED.findall(text)
                        for argument in re.findall(r"@param (\w+) (?:(?!@param).)*must not be null", comment, re.DOTALL)}

    @staticmethod
    def next(names, name):
        return [names[(names.index(name) + 1) % len(names)]] if len(names) > 1 and name in names else []

    def next_command(self, name):
        """Returns the next command, of those with another code."""
        if name not in self.codes:
            return []
        return self.next([other for other, code in self.codes.items() if other == name or code != self.codes[name]], name)

    def fields_like(self, name):
        """Returns the next fields of the same kind, one for each record that has a field of this name."""
        found = []
        for members in self.structs.values():
            kinds = {member: (kind, bool(count)) for kind, member, count in members
                     if not member.startswith("reserved")}
            if name in kinds:
                found += self.next([member for member in kinds if kinds[member] == kinds[name]], name)
        return found


class Source:
    """This class holds one file of the library and all its mutants."""

    def __init__(self, file, text, header):
        self.file, self.text, self.header = file, text, header
        self.code = blanked(text)
        self.found = {}

    def alter(self, kind, start, end, new, of=None):
        old = self.text[start:end]
        text = self.text[:start] + new + "\n" * (old.count("\n") - new.count("\n")) + self.text[end:]
        if text != self.text and text not in self.found:
            line = self.text.count("\n", 0, start) + 1
            self.found[text] = Mutant(self.file, line, kind, of or old, new, text)

    def replace(self, kind, pattern, *news, within=None):
        """Replaces each match by each of `news`. Each of them is a template for match.expand, or a function that
        returns a list.
        """
        start, end = within or (0, len(self.code))
        for match in re.compile(pattern, re.MULTILINE).finditer(self.code, start, end):
            for new in news:
                for text in (new(match) if callable(new) else [match.expand(new)]):
                    self.alter(kind, match.start(), match.end(), text)

    def mutants(self):
        self.wire()
        self.checks()
        self.failures()
        self.answers()
        self.statements()
        self.expressions()
        return sorted(self.found.values(), key=lambda mutant: (mutant.line, mutant.kind, mutant.new))

    def wire(self):
        """Changes what is sent: command, channel, call, fields, arguments."""
        header = self.header
        self.replace("command", r"\bBSP_CMD_\w+", lambda match: header.next_command(match[0]))
        self.replace("channel", r"\bBSP_MSG_\w+", lambda match: header.next(header.channels, match[0]))
        self.replace("module", r"\bBSP_IPC_MODULE\b", r"(\g<0> + 1)")
        self.replace("call", r"\bipc_(set|get)_exec\b", r"ipc_dgram_\1_exec")
        self.replace("field", r"(?<=->)\w+(?= = )|(?<=::)(?:text|data)\d+|(?<=, )(?:text|data)\d+(?=\))",
                     lambda match: header.fields_like(match[0]))
        self.replace("record", r"\*Request\{(\w+), \*(\w+)\}", r"*\2", r"*Request<bsp_pon_msg>{\1}")
        for match in FUNCTION.finditer(self.code):
            numbers = re.findall(r"uint32_t (\w+)", match[2])
            texts = re.findall(r"const char \*(\w+)", match[2])
            body = match.span(3)
            self.replace("argument", r"(?<= = )\w+(?=;)", lambda use: header.next(numbers, use[0]), within=body)
            self.replace("argument", r"\b\w+(?=\);)", lambda use: header.next(texts, use[0]), within=body)

    def checks(self):
        """Removes, inverts and changes null checks."""
        self.replace("null check", r"if \(!(\w+)\) return BSP_ERR_PARAM;", "", r"if (\1) return BSP_ERR_PARAM;",
                     r"if (!\1) return BSP_ERR_IPC;", r"if (!\1) return BSP_OK;")
        for match in FUNCTION.finditer(self.code):
            for pointer in re.findall(r"\*+(\w+)", match[2]):
                # What a function refuses without a check of its own, one that it calls refuses.
                if f"if (!{pointer})" not in match[3] and (match[1], pointer) not in self.header.refused:
                    check = f"if (!{pointer}) return BSP_ERR_PARAM;"
                    self.alter("null check", match.start(3), match.start(3), check, of=match[1])

    def failures(self):
        """Changes what is done with a failed exchange."""
        self.replace("policy", r"\bon\((BSP_MSG_\w+)\)", r"on(\1, frame::ErrorPolicy::pass)",
                     r"on(\1, frame::ErrorPolicy::silent)")
        self.replace("policy", r"\bErrorPolicy::(\w+)",
                     lambda match: [f"ErrorPolicy::{other}" for other in POLICIES if other != match[1]])
        self.replace("policy", r"\bsilently_on\b", "on")
        self.replace("call", r"\.by_datagram\(\)", "")
        self.replace("status", r"\bBSP_ERR_IPC\b", "BSP_ERR_NOMEM")
        self.replace("status", r"\bBSP_OK\b", "BSP_ERR_IPC")
        self.replace("log", r"\buserlog_err\b", "userlog_debug")
        self.replace("log", r"\broute\.function\b", '"frame"')
        self.replace("log", r"\broute\.line\(\)", "0")
        for match in re.finditer(r'"[^"\n]* failed[^"\n]*"', self.text):
            self.alter("log", *match.span(), match[0].replace("\\n", ""))
            self.alter("log", *match.span(), match[0].replace("failed", "failure"))
            self.alter("log", *match.span(), match[0].replace("%d", "%u"))

    def answers(self):
        """Changes where an answer is stored and how long it may be."""
        self.replace("bound", r"\bframe::small_view\b", "frame::large_view")
        self.replace("bound", r"\bframe::large_view\b", "frame::small_view")
        self.replace("room", r"\b(frame::)?(whole|unoffered)<(\w+)>",
                     lambda match: [f"{match[1] or ''}{'whole' if match[2] == 'unoffered' else 'unoffered'}<{match[3]}>"])
        self.replace("room", r"\bframe::view_room\b", "frame::whole<bsp_pon_msg>")
        self.replace("place", r"\bframe::get_in_place\b", "frame::set")

    def statements(self):
        """Leaves out a statement, or swaps two texts."""
        self.replace("statement", rf"^ +{NOT_A_STATEMENT}[\w>.:*\-]+(?:\(| = )[^;{{}}]*;$", "")
        self.replace("statement", r"(?<=\) )(?:\*?\w+ = |__builtin_)[^;{}]*;$", ";")
        for match in re.finditer(r"^( +request\.put\([^\n]*\n)( +request\.put\([^\n]*\n)", self.code, re.MULTILINE):
            first, second = (self.text[slice(*match.span(group))] for group in (1, 2))
            self.alter("order", match.start(), match.end(), second + first)

    def expressions(self):
        """Changes operators, constants and sizes."""
        for old, *news in [("==", "!="), ("!=", "=="), (">", ">=", "<"), (">=", ">"), ("<", "<=", ">"), ("&&", "||"),
                           ("||", "&&"), ("+", "-"), ("-", "+")]:
            self.replace("operator", rf"(?<= ){re.escape(old)}(?= )", *news)
        self.replace("operator", r"\(!(?=\w)", "(")
        self.replace("operator", rf"\? ({OPERAND}) : ({OPERAND})", r"? \2 : \1")
        self.replace("operator", r"\b(ipc_result|text|block|out)(?= [?&)]|\) )", r"!\1")
        self.replace("constant", r"(?<![\w.'])\d+(?![\w.'])",
                     lambda match: [str(int(match[0]) + step) for step in (1, -1) if int(match[0]) + step >= 0])
        self.replace("constant", r"'\\0'", "'x'")
        self.replace("size", r"\bsizeof (?:record\.onu_mac|record|request)(?![\w.])|\bsizeof\(Record\)",
                     r"\g<0> - 1", r"\g<0> - 4", r"\g<0> + 4")
        self.replace("size", r"\bsize(?=[);])", "size - 1")


def mutants_of(folder, header):
    """Returns all mutants of the sources below a folder, in order."""
    names = Header(header.read_text(encoding="utf-8"))
    found = []
    for path in sorted([*folder.rglob("*.cpp"), *folder.rglob("*.h")]):
        found += Source(str(path.relative_to(folder)), path.read_text(encoding="utf-8"), names).mutants()
    return found
