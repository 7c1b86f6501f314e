"""Manual pages: texts with a little markup to roff, and templates to pages.

The markup is `literal` and **strong**, both bold, and *argument*, italic. A link is only its text.
"""
import os
import re
import textwrap
import time

WIDTH = 78 # of a line of roff
SPECIAL = {'\\': r'\e', '-': r'\-', "'": r'\(aq', '`': r'\(ga', '^': r'\(ha', '~': r'\(ti'}
MARKUP = re.compile(r'`(?P<literal>[^`]+)`|\*\*(?P<strong>[^*]+)\*\*|\*(?P<argument>[^*\s]+)\*|'
                    r'\[(?P<link>[^]]+)\]\([^)]+\)')
# What ends a sentence, if another one follows; the next one may begin with markup or a sign.
SENTENCE_END = re.compile(r'(?<=[\w)"])([.!?]["\')]*(?:\\fR)?["\')]*) +(?=\S)')


def build_date():
    """Today, or the date that makes builds reproducible."""
    return time.strftime('%Y-%m-%d', time.gmtime(int(os.environ.get('SOURCE_DATE_EPOCH', time.time()))))


def sentence(text):
    return text[0].upper() + text[1:] + ('' if text.endswith('.') else '.')


def escaped(text):
    return ''.join(SPECIAL.get(character, character) for character in text)


def unhyphenated(text, words=r'\S*[_/]\S*'):
    """Names aren't hyphenated. What is longer than a line is broken after an underscore."""
    return re.sub(words, lambda word: r'\%' + word[0].replace('_', r'_\:'), escaped(text))


def inline(text):
    """One line of roff."""
    line, end = '', 0
    for found in MARKUP.finditer(text):
        line += unhyphenated(text[end:found.start()])
        if found['link']:
            line += inline(found['link'])
        else:
            name = unhyphenated(found[found.lastgroup].replace('`', ''), r'\S+')
            line += (r'\fI' if found['argument'] else r'\fB') + name + r'\fR'
        end = found.end()
    return line + unhyphenated(text[end:])


def guarded(line):
    """A line that is no request."""
    return rf'\&{line}' if line[0] in ".'" else line


def filled(text):
    """Lines of a paragraph: each sentence begins a line."""
    sentences = SENTENCE_END.sub('\\1\n', inline(' '.join(text.split()))).split('\n')
    return [guarded(line) for sentence in sentences
            for line in textwrap.wrap(sentence, WIDTH, break_long_words=False, break_on_hyphens=False)]


def paragraph(text):
    return ['.PP', *filled(text)]


def tagged(tags, text):
    """A paragraph with one or more tags."""
    lines = [line for tag in tags for line in ('.TQ', guarded(inline(tag)))]
    return ['.TP', *lines[1:], *filled(text)]


def indented(lines):
    return ['.RS', *lines, '.RE'] if lines else []


def literal(lines):
    return ['.EX', *(guarded(escaped(line)) if line else '' for line in lines), '.EE']


def heading(macro, text):
    return [f'.{macro} "{escaped(text)}"']


def page(template, parts, **words):
    """A page from its template."""
    lines = template.filled(parts, DATE=build_date(), **words)
    # A heading begins a paragraph.
    return re.sub(r'^(\.S[HS] .*\n)\.PP\n', r'\1', '\n'.join(lines) + '\n', flags=re.MULTILINE)
