"""What of a C++ source is code, and where in it something can be changed.

It knows the house's format: binary operators have blanks around them, template brackets and
references have none, and statements end in ";".
"""

import re
from dataclasses import dataclass


@dataclass(frozen=True)
class Change:
    start: int  # characters of the source
    end: int
    after: str
    kind: str


def code_of(text):
    """The text with comments, literals and directives blanked, place by place."""
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|R"(?P<raw>[^()\\ ]*)\(.*?\)(?P=raw)"|"(?:\\.|[^"\\\n])*"'
        r"|(?<![0-9A-Za-z_])'(?:\\.|[^'\\\n])+'|^[ \t]*#(?:[^\n\\]|\\.|\\\n)*",
        re.S | re.M)

    def blanked(match):
        return re.sub(r'[^\n]', ' ', match.group())

    return pattern.sub(blanked, text)


RELATIONS = {
    '<': ['<=', '>='], '<=': ['<', '>'], '>': ['>=', '<='], '>=': ['>', '<'],
    '==': ['!='], '!=': ['=='],
}
OPERATORS = {
    '+': ['-'], '-': ['+'], '*': ['/'], '/': ['*'], '%': ['*'],
    '&&': ['||'], '||': ['&&'], '+=': ['-='], '-=': ['+='], '*=': ['/='], '/=': ['*='],
    '&': ['|'], '|': ['&'], '<<': ['>>'], '>>': ['<<'],
}
WORDS = {'true': 'false', 'false': 'true'}

# A statement that can go: a call, an assignment, a step, or a leaving of something.
DROPPABLE = re.compile(
    r'(?:(?:\+\+|--|\*)?[A-Za-z_][\w.\[\]:]*(?:->[\w.]+)*'
    r'\s*(?:\(|=(?!=)|\+=|-=|\*=|/=|\|=|&=|\+\+|--)|(?:\+\+|--)[A-Za-z_]'
    r'|break;|continue;|return;|throw\b|delete\b)')
NOT_DROPPABLE = re.compile(
    r'(?:return\b(?!;)|if\b|else\b|for\b|while\b|do\b|switch\b|case\b|default\b|using\b|namespace\b'
    r'|static_assert\b|constexpr\b|const\b|auto\b|static\b|class\b|struct\b|enum\b|template\b'
    r'|typedef\b|friend\b|extern\b|inline\b|explicit\b|virtual\b|public\b|private\b)')


def changes_of(text):
    """All changes of a source, in order."""
    code = code_of(text)
    found = []
    found += operator_changes(code)
    found += constant_changes(code)
    found += condition_changes(code)
    found += dropped_statements(code)
    return sorted(found, key=lambda each: (each.start, each.end, each.after))


def skipped(code, at):
    """Lines on which nothing is to be found out."""
    start = code.rfind('\n', 0, at) + 1
    end = code.find('\n', at)
    line = code[start:end if end >= 0 else len(code)]
    return re.search(r'\bstatic_assert\b|\boperator\b|\btemplate\b|\busing\b|\breserve\(', line)


def operator_changes(code):
    for match in re.finditer(r'(?<=[\s])(<=|>=|==|!=|&&|\|\||\+=|-=|\*=|/=|<<|>>|[<>+\-*/%&|])(?=\s)',
                             code):
        if skipped(code, match.start()):
            continue
        token = match.group()
        kind = 'relation' if token in RELATIONS else 'operator'
        for after in RELATIONS.get(token, []) + OPERATORS.get(token, []):
            yield Change(match.start(), match.end(), after, kind)
    for match in re.finditer(r'\+\+|--', code):
        if not skipped(code, match.start()):
            yield Change(match.start(), match.end(),
                         '--' if match.group() == '++' else '++', 'operator')
    for match in re.finditer(r'!(?=[A-Za-z_(])', code):
        yield Change(match.start(), match.end(), '', 'negation')


def constant_changes(code):
    for match in re.finditer(r'(?<![\w.\'])(\d+)(?:u|U|L|LL)?(?![\w.\'])', code):
        if skipped(code, match.start()):
            continue
        number = int(match.group(1))
        suffix = match.group()[len(match.group(1)):]
        for after in {number + 1, max(number - 1, 0)} - {number}:
            yield Change(match.start(), match.end(), f'{after}{suffix}', 'constant')
    for match in re.finditer(r'\b(true|false)\b', code):
        if not skipped(code, match.start()):
            yield Change(match.start(), match.end(), WORDS[match.group()], 'constant')


def closing(code, at):
    """Behind the bracket that closes the one at a place."""
    depth = 0
    for place in range(at, len(code)):
        depth += {'(': 1, ')': -1}.get(code[place], 0)
        if depth == 0:
            return place + 1
    return len(code)


def condition_changes(code):
    for match in re.finditer(r'\b(if|while) \(', code):
        start = match.end() - 1
        end = closing(code, start)
        condition = code[start + 1:end - 1]
        # One that declares what it looks at has no shorter form.
        if ';' in condition or re.search(r'[^=!<>+\-*/]=(?!=)', condition):
            continue
        # A single relation or negation is turned round elsewhere.
        if not re.search(r'&&|\|\|', condition) and re.search(r'^!| (?:[<>=!]=|[<>]) ', condition):
            continue
        yield Change(start, start + 1, '(!(', 'condition')


def dropped_statements(code):
    depth = 0
    start = None
    for place, character in enumerate(code):
        if character in '([':
            depth += 1
        elif character in ')]':
            depth -= 1
        elif depth == 0 and character in '{}':
            start = place + 1
        elif depth == 0 and character == ';':
            if start is not None:
                change = droppable(code, start, place)
                if change:
                    yield change
            start = place + 1


def droppable(code, start, end):
    statement = code[start:end + 1]
    begin = start + len(statement) - len(statement.lstrip())
    statement = statement.strip()
    # Behind a condition without braces the statement alone is meant.
    head = re.match(r'(?:else )?(?:if|for|while) \(', statement)
    while head:
        at = begin + head.end() - 1
        begin = closing(code, at)
        begin += len(code[begin:end]) - len(code[begin:end].lstrip())
        statement = code[begin:end + 1]
        head = re.match(r'(?:else )?(?:if|for|while) \(', statement)
    statement = re.sub(r'^(?:else|case [^:]+:|default:)\s+', '', statement)
    begin = end + 1 - len(statement)
    if '{' in statement or NOT_DROPPABLE.match(statement) or not DROPPABLE.match(statement):
        return None
    return Change(begin, end, '', 'statement')


def applied(text, change):
    """The changed source; a negated condition gets its closing bracket too."""
    changed = text[:change.start] + change.after + text[change.end:]
    if change.kind != 'condition':
        return changed
    end = closing(code_of(text), change.start)
    # Two characters more stand before it by then.
    return changed[:end + 1] + '))' + changed[end + 2:]


def line_of(text, place):
    return text.count('\n', 0, place) + 1


def described(text, change):
    """What stood there and what stands there, in one line each."""
    if change.kind == 'condition':
        end = closing(code_of(text), change.start)
        before = text[change.start:end]
        after = f'(!{before})'
    elif change.kind == 'statement':
        before, after = text[change.start:change.end] + ';', ';'
    else:
        start = text.rfind('\n', 0, change.start) + 1
        end = text.find('\n', change.end)
        end = len(text) if end < 0 else end
        before = text[start:end]
        after = text[start:change.start] + change.after + text[change.end:end]
    return tuple(' '.join(each.split()) for each in (before, after))
