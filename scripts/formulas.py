"""Formulas of the headers' comments as MathML.

A formula is read by a grammar that knows what the comments use: relations, sums, products by * or by standing side by side, quotients, powers, indices in brackets or behind _,
magnitudes, roots and named functions. What the grammar does not cover (tables, drawings, sentences) is no formula, and the caller keeps it as it stands.
"""
import html
import re

GREEK = {"pi": "π", "alpha": "α", "beta": "β", "delta": "δ", "mu": "μ", "omega": "ω", "phi": "φ", "theta": "θ"}
FUNCTIONS = {"sin", "cos", "tan", "exp", "ln", "log10", "atan", "atan2", "sqrt", "cbrt", "conj", "floor", "ceil"}
# Words of sentences. Behind one of them nothing is a formula, but for "sum over .. of", which the grammar knows.
WORDS = {"a", "all", "and", "as", "at", "by", "every", "for", "from", "if", "in", "is", "it", "no", "of", "or", "over", "so", "that", "the", "to", "where", "with"}
RELATIONS = {"=": "=", "<": "<", ">": ">", "<=": "≤", ">=": "≥", "!=": "≠", "+=": "+=", "*=": "×=", "-=": "−="}
TOKEN = re.compile(r"(\s*)(\d+(?:\.\d+)?|[A-Za-z][A-Za-z0-9]*|\.\.\.?|[-+*<>!]=|[-+*/^_=<>|()\[\],.])")


class NoFormula(Exception):
    pass


def tag(name, *inner, **attributes):
    return f"<{name}{''.join(f' {k}={chr(34)}{v}{chr(34)}' for k, v in attributes.items())}>{''.join(inner)}</{name}>"


def sign(text, **attributes):
    return tag("mo", html.escape(text), **attributes)


def fenced(opening, inner, closing):
    """Between brackets or bars, which grow with what stands on more than a line."""
    grows = {} if re.search("<m(?:frac|under|underover|sqrt|root|sup)>", inner) else {"stretchy": "false"}
    return row(sign(opening, form="prefix", **grows), inner, sign(closing, form="postfix", **grows))


def row(*inner):
    return inner[0] if len(inner) == 1 else tag("mrow", *inner)


class Parser:
    def __init__(self, text):
        self.tokens, at = [], 0
        text = text.strip()
        while at < len(text):
            m = TOKEN.match(text, at)
            if not m:
                raise NoFormula
            self.tokens.append((m[2], bool(m[1])))
            at = m.end()
        self.at, self.bars, self.related = 0, 0, False

    def peek(self, ahead=0):
        return self.tokens[self.at + ahead][0] if self.at + ahead < len(self.tokens) else ""

    def spaced(self):
        return self.at < len(self.tokens) and self.tokens[self.at][1]

    def take(self, *texts):
        if self.peek() in texts and self.peek():
            self.at += 1
            return self.tokens[self.at - 1][0]
        return None

    def expect(self, text):
        if not self.take(text):
            raise NoFormula

    def whole(self):
        """A relation, a chain of them, or a sum or root by itself."""
        alone = re.fullmatch(r"sum|sqrt", self.peek())
        result = self.relation()
        if self.at != len(self.tokens) or not (self.related or alone):
            raise NoFormula
        return result

    def relation(self):
        parts = [self.range()]
        while self.peek() in RELATIONS:
            parts += [sign(RELATIONS[self.take(*RELATIONS)]), self.range()]
            self.related = True
        return row(*parts)

    def range(self):
        left = self.sum()
        return row(left, sign("…"), self.sum()) if self.take("..") else left

    def sum(self):
        parts = [sign("−" if s == "-" else s, form="prefix")] if (s := self.take("-", "+")) else []
        parts.append(self.term())
        while self.peek() in ("+", "-", "mod"):
            s = self.take("+", "-", "mod")
            parts += [sign({"-": "−", "mod": " mod "}.get(s, s), **({"lspace": "0.3em", "rspace": "0.3em"} if s == "mod" else {})), self.term()]
        return row(*parts)

    def starts(self):
        """Whether a factor begins here."""
        t = self.peek()
        return bool(t) and (t[0].isalnum() and t != "mod" and t not in WORDS - {"a"} or t == "(" or t == "|" and not self.bars)

    def term(self):
        factors, word = [], None
        while True:
            t = self.peek()
            # Two names side by side are a sentence, unless one of them is a letter, a function or Greek.
            named = re.fullmatch(r"[A-Za-z]\w+", t) and t not in GREEK and t not in FUNCTIONS and t != "sum"
            if word and named and not re.fullmatch(r"[A-Za-z]\d", t):
                raise NoFormula
            at = self.at
            factors.append(self.factor())
            word = named if self.at == at + 1 else None
            if self.take("*"):
                factors.append(sign("⋅"))
                word = None
                continue
            while self.take("/"):
                below = self.factor()
                factors = [tag("mfrac", self.bare(row(*factors)), self.bare(below))]
            if self.take("*"):
                factors.append(sign("⋅"))
                word = None
            elif self.starts():
                factors.append(tag("mspace", width="0.17em"))
            else:
                return row(*factors)

    @staticmethod
    def bare(expression):
        """Without the brackets that a fraction's line, a root or a raised place stand for."""
        m = re.fullmatch(r"<mrow><mo[^>]*>\(</mo>(.*)<mo[^>]*>\)</mo></mrow>", expression)
        return expression if not m or unbalanced(m[1]) else m[1]

    def factor(self):
        base = self.primary()
        while True:
            if self.take("^"):
                minus = sign("−", form="prefix") if self.take("-") else ""
                base = tag("msup", base, row(minus, self.bare(self.factor())) if minus else self.bare(self.factor()))
            elif self.peek() == "_" and not self.spaced():
                self.take("_")
                base = tag("msub", base, self.bare(self.primary()))
            elif self.peek() in ("[", "(") and not self.spaced() and base.startswith(("<mi>", "<msub>", "<mrow><mi>")):
                base = row(base, self.brackets())
            elif self.peek() == "." and self.peek(1) in ("re", "im"):
                self.take(".")
                base = row(base, sign("."), tag("mi", self.take("re", "im")))
            else:
                return base

    def brackets(self):
        opening = self.take("[", "(")
        parts = [self.relation()]
        while self.take(","):
            parts += [sign(","), self.relation()]
        closing = {"[": "]", "(": ")"}[opening]
        self.expect(closing)
        return fenced(opening, row(*parts), closing)

    def primary(self):
        t = self.peek()
        if t in ("(", "["):
            return self.inner(self.brackets)
        if t == "|":
            self.take("|")
            self.bars += 1
            inside = self.sum()
            self.bars -= 1
            self.expect("|")
            return fenced("|", inside, "|")
        if t == "*" and not self.peek(1) == "":   # what a pointer points to
            self.take("*")
            return row(sign("*", form="prefix"), self.primary())
        if t[:1].isdigit():
            self.take(t)
            number = tag("mn", t)
            # 2N and 2n stand closer together than a quotient's sign.
            if re.fullmatch(r"[A-Za-z]\w?", self.peek()) and not self.spaced():
                return row(number, self.factor())
            return number
        if not t or not t[0].isalpha() or t in WORDS - {"a"} or t == "mod":
            raise NoFormula
        self.take(t)
        if t == "sum":
            return self.series()
        if t in FUNCTIONS:
            return self.function(t)
        if t in GREEK:
            return tag("mi", GREEK[t])
        if m := re.fullmatch(r"([A-Za-z])(\d)", t):
            return tag("msub", tag("mi", m[1]), tag("mn", m[2]))
        return tag("mi", t)

    def inner(self, read):
        bars, self.bars = self.bars, 0
        result = read()
        self.bars = bars
        return result

    def function(self, name):
        if name in ("sqrt", "cbrt", "conj", "floor", "ceil"):
            inside = self.bare(self.inner(self.brackets)) if self.peek() == "(" else self.factor()
            around = {"floor": "⌊⌋", "ceil": "⌈⌉"}.get(name)
            if around:
                return fenced(around[0], inside, around[1])
            return {"sqrt": lambda: tag("msqrt", inside), "cbrt": lambda: tag("mroot", inside, tag("mn", "3")),
                    "conj": lambda: tag("mover", inside, sign("¯", stretchy="true"), accent="true")}[name]()
        written = tag("msub", tag("mi", "log"), tag("mn", "10")) if name == "log10" else tag("mi", name)
        if self.take("^"):
            written = tag("msup", written, self.factor())
        if self.peek() == "(":
            return row(written, self.inner(self.brackets))
        return row(written, tag("mspace", width="0.17em"), self.factor())

    def series(self):
        below = above = ""
        if self.take("over"):
            name = self.peek()
            if not re.fullmatch(r"[a-z]", name):
                raise NoFormula
            self.take(name)
            below = tag("mi", name)
            if self.take("="):
                first = self.sum()
                self.expect("..")
                below, above = row(below, sign("="), first), self.sum()
        self.expect("of")
        body = self.term()
        symbol = sign("∑", largeop="true", movablelimits="false")
        symbol = tag("munderover", symbol, below, above) if above else tag("munder", symbol, below) if below else symbol
        return row(symbol, body)


def unbalanced(inside):
    depth = 0
    for m in re.finditer(r"<mo[^>]*>([()])</mo>", inside):
        depth += 1 if m[1] == "(" else -1
        if depth < 0:
            return True
    return depth != 0


def math(text):
    """The MathML of a formula; None of what is none."""
    try:
        inner = Parser(text).whole()
    except NoFormula:
        return None
    return tag("math", inner, displaystyle="true", alttext=html.escape(text.strip(), quote=True))


def clauses(text):
    """A cell's parts that are separated by commas outside of brackets, with what separates them."""
    parts, depth, start = [], 0, 0
    for n, c in enumerate(text):
        depth += (c in "([") - (c in ")]")
        if c in ",;" and depth == 0 and text[n + 1:n + 2] in ("", " "):
            parts.append((text[start:n], c + " "))
            start = n + 1
    return parts + [(text[start:], "")]


def cell(text):
    """HTML of a cell, and whether it begins with a formula."""
    out, first = [], None
    for clause, behind in clauses(text):
        clause = clause.strip()
        found = math(clause)
        if not found and (m := re.match(r"(.*?) ?\b(for|where|if|from|at) (.*)", clause)):
            left, right = math(m[1]) if m[1] else "", math(m[3])
            found = f"{left} {m[2]} {right or html.escape(m[3])}" if left or (right and not m[1]) else None
            if found and first is None and not m[1]:
                first = False
        first = bool(found) if first is None else first
        out.append((found or html.escape(clause)) + behind)
    return "".join(out), first


def table(lines):
    """A group of lines as an HTML table of labels, formulas and remarks; None where a line of it has no formula."""
    joined = []
    for line in lines:
        line = re.sub(r"\bof  +(?=\S)", "of ", line.rstrip())
        line = re.sub(r"(?<=\S)  ([-+])  (?=\S)", r" \1 ", line)
        if joined and len(line) - len(line.lstrip()) >= 8:
            joined[-1] += " " + line.strip()
        else:
            joined.append(line.strip())
    rows = []
    for line in joined:
        cells = re.split(r" {2,}", line)
        made = [cell(c) for c in cells]
        labelled = len(made) > 1 and not made[0][1] and made[1][1] and not re.search(r"[=+\[]", cells[0])
        if not labelled and not made[0][1]:
            return None
        label = html.escape(cells[0]) if labelled else ""
        made = made[1:] if labelled else made
        rows.append((label, made[0][0], " &ensp; ".join(c for c, _ in made[1:])))
    has_label, has_remark = any(r[0] for r in rows), any(r[2] for r in rows)
    return "<table class=\"formulas\">" + "".join(
        "<tr>" + (f"<th>{label}</th>" if has_label else "") + f"<td>{formula}</td>" + (f"<td class=\"remark\">{remark}</td>" if has_remark else "") + "</tr>"
        for label, formula, remark in rows) + "</table>"


def faithful(element):
    """Whether an element math of the page has the names and numbers of the text that it was made of, in their order."""
    names = [e.text for e in element.iter() if e.tag in ("mi", "mn")]
    text = re.sub(r"\b(?:sqrt|conj|floor|ceil|sum|over|of|mod)\b", " ", element.get("alttext"))
    text = re.sub(r"\bcbrt\b(.*)", r"\1 3", text.replace("log10", "log 10"))
    words = []
    for word in re.findall(r"\d+(?:\.\d+)?|[A-Za-z][A-Za-z0-9]*", text):
        words += [word[0], word[1]] if re.fullmatch(r"[A-Za-z]\d", word) else [GREEK.get(word, word)]
    return names == words
