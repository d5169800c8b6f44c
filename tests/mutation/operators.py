# SPDX-FileCopyrightText: 2026 The Vantelo authors
# SPDX-License-Identifier: MIT
"""Small changes to C++ source that its tests are to notice.

It works on text and leans on the tree's format: comparisons stand between blanks, brackets of templates do not.
A change that makes no sense does not compile, and is counted apart.
"""

import re
from typing import NamedTuple


class Mutant(NamedTuple):
    start: int
    end: int
    text: str  # what stands there instead

    def apply(self, source):
        return source[:self.start] + self.text + source[self.end:]

    def describe(self, path, source):
        line = source.count("\n", 0, self.start) + 1
        old, new = (re.sub(r"\s+", " ", text).strip() or "(nothing)" for text in (source[self.start:self.end], self.text))
        return f"{path}:{line}: {old}  ->  {new}"


OTHER_OPERATORS = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="], "!=": ["=="],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"],
    "?": ["&& false ?", "|| true ?"],
}

OTHER_NAMES = {
    "true": "false", "false": "true", "max": "min", "min": "max", "highest": "lowest", "lowest": "highest",
    "any_of": "all_of", "startsWith": "endsWith", "front": "back", "first": "last",
    "stale": "ok", "ok": "stale", "cbegin": "cend", "SkipEmptyParts": "KeepEmptyParts", "StrictMode": "TolerantMode",
    "Key_Up": "Key_Down", "Grapheme": "Word", "fixed": "scientific", "Informational": "Warning",
    "Warning": "Informational", "Headline": "Caption", "Caption": "Headline",
    "Green": "Red", "Red": "White", "White": "Green",
}


def mutants(source, parts=()):
    """Every change to a source, or to these functions and classes of it alone, in its order."""
    code = _blanked(source)
    found = [*_of_operators(code), *_of_names(code), *_of_constants(code), *_of_texts(source, code),
             *_of_conditions(code), *_of_statements(code), *_of_members(code)]
    spans = [re.search(rf"^[^\n]*\b{part}\b.*?^}}", code, re.DOTALL | re.MULTILINE).span() for part in parts]
    found = [mutant for mutant in found
             if not parts or any(start <= mutant.start < end for start, end in spans)]
    return sorted({mutant.apply(source): mutant for mutant in found}.values())


def _blanked(source):
    """The source with blanks for comments, preprocessor lines and what stands between quotation marks."""
    def blank(match):
        text = match[0]
        if text[0] in "\"'":
            return text[0] + " " * (len(text) - 2) + text[-1]
        return re.sub(r"[^\n]", " ", text)

    return re.sub(r'(?<=R)"(\w*)\(.*?\)\1"|//[^\n]*|/\*.*?\*/|^#[^\n]*|"(?:\\.|[^"\\])*"'
                  r'|(?:(?<!\w)|(?<=\bu))\'(?:\\.|[^\'\\])+\'|\'(?:\\.|[^\'\\])\'(?!\d)',
                  blank, source, flags=re.DOTALL | re.MULTILINE)


def _of_operators(code):
    for match in re.finditer(r" (<|<=|>|>=|==|!=|&&|\|\||\+|-|\*|/|\?) ", code):
        for other in OTHER_OPERATORS[match[1]]:
            yield Mutant(*match.span(1), other)
    for match in re.finditer(r"(?<=[(\s])[!-](?=[\w(])", code):  # a sign or a "not"
        yield Mutant(*match.span(), "")
    for match in re.finditer(r"\+\+|--", code):
        yield Mutant(*match.span(), "--" if match[0] == "++" else "++")


def _of_names(code):
    for match in re.finditer(r"\w+", code):
        if match[0] in OTHER_NAMES:
            yield Mutant(*match.span(), OTHER_NAMES[match[0]])


def _of_constants(code):
    for match in re.finditer(r"(?<![\w.'])\d[\d']*(\.\d+)?(ms|s|min|h)?(?![\w.'])", code):
        for change in ("+ 1", "- 1"):
            yield Mutant(*match.span(), f"({match[0]} {change}{match[2] or ''})")
    for match in re.finditer(r"\b0x[0-9a-fA-F]+\b", code):  # a colour, mostly
        yield Mutant(*match.span(), f"({match[0]} ^ 0x80)")


def _of_texts(source, code):
    for match in re.finditer(r'"( *)"', code):
        if match[1]:
            start, end = match.span()
            text = (source.index("(", start) if code[start - 1] == "R" else start) + 1  # R"(raw)" begins after its "("
            yield Mutant(start, end, source[start:text] + "~" + source[text:end])
    for match in re.finditer(r"'( +)'", code):
        yield Mutant(*match.span(), "'~'")


def _of_conditions(code):
    for match in re.finditer(r"\b(?:if|while) \(", code):
        end = _closing(code, match.end() - 1)
        condition = code[match.end():end]
        declares = re.match(r"(?:const )?auto [^=]+=", condition)
        if condition.strip() not in ("true", "false"):
            for value in ("true", "false"):
                yield Mutant(*((end, end) if declares else (match.end(), end)), f"; {value}" if declares else value)


def _closing(code, opening):
    depth = 0
    for position in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[position], 0)
        if depth == 0:
            return position
    raise ValueError("unbalanced parentheses")


DECLARATION = re.compile(r"(?:const|constexpr|static|auto|using|class|struct|enum|template|namespace|friend|public|private|"
                         r"explicit|Q_\w+)\b|(?!return|co_return|co_await|else|delete|throw)[\w:<>,]+[\s*&]+\w+\s*[=;({]")


EMPTY = ("", "{}", "0", "false", "nullptr", "std::nullopt", "QString()", "QByteArray()", "QVariant()")


def _of_statements(code):
    """Each statement left out, and each returned value replaced by an empty one."""
    for start, end, last in _statements(code):
        statement = code[start:end]
        if DECLARATION.match(statement):
            continue
        returns = re.match(r"(return|co_return)\b(.*);$", statement, re.DOTALL)
        if returns and returns[2].strip() not in EMPTY:
            yield Mutant(start, end, f"{returns[1]} {{}};")
        if not (returns and last):  # a function that reaches its end without a value is no program
            yield Mutant(start, end, ";")


def _statements(code):
    """(start, end, whether it ends a function) of what ends in a semicolon, innermost ones included."""
    blocks, start, parentheses = [], 0, 0
    for position, character in enumerate(code):
        if character in "([":
            parentheses += 1
        elif character in ")]":
            parentheses -= 1
        elif character == "{":
            blocks.append((start, parentheses, _opens_block(code, position)))
            if blocks[-1][2]:
                start, parentheses = position + 1, 0
        elif character == "}":
            outer, parentheses, is_block = blocks.pop()
            if is_block:
                start = outer if parentheses else position + 1
        elif character == ";" and parentheses == 0:
            text = code[start:position + 1]
            begin = start + len(text) - len(text.lstrip())
            rest = code[position + 1:].lstrip()
            if code[begin:position] and all(block[2] for block in blocks):
                yield begin, position + 1, rest.startswith("}") and _ends_function(code, blocks)
            start = position + 1


def _opens_block(code, position):
    before = code[:position].rstrip()
    if not before or before[-1] in ")];{}":
        return True
    head = re.split(r"[;{}]", before)[-1].strip()
    return bool(re.search(r"\b(?:else|do|try|const|override|noexcept)$", before)
                or re.match(r"(?:template ?<[^>]*> ?)?(?:class|struct|enum|namespace|extern)\b", head)
                or re.search(r"\) (?:mutable )?-> [\w:<>]+$", head))


def _ends_function(code, blocks):
    return not re.search(r"\b(?:if|for|while|else|switch)\b[^;{}]*$", code[:blocks[-1][0]] + _head(code, blocks[-1][0]))


def _head(code, start):
    return re.split(r"\{", code[start:], maxsplit=1)[0]


def _of_members(code):
    """Each member of an aggregate left to its default, and each element of a list of rows or parts left out."""
    for match in re.finditer(r"^ +\.\w+ = [^\n]*,\n|^ {8}MenuRow::[^\n]*,\n|^ {8}\w+Button\([^\n]*,\n", code, re.MULTILINE):
        yield Mutant(*match.span(), "")
