"""The Markdown of this project's READMEs to roff: paragraphs, lists, tables and code."""
import re

import roff
from generator import read_text

CODE = '    '


def sections(path):
    """(title, roff) of each section of a file; what is above the first one isn't part of any."""
    parts = re.split(r'^## (.+)\n', read_text(path), flags=re.MULTILINE)
    return [(title, converted(text)) for title, text in zip(parts[1::2], parts[2::2])]


def converted(text):
    """Lines of roff."""
    # Fenced code is like indented code.
    text = re.sub(r'^```\n((?:.*\n)*?)```$', lambda code: re.sub('^', CODE, code[1].rstrip(), flags=re.MULTILINE), text,
                  flags=re.MULTILINE)
    lines = []
    for chunk in re.split(r'\n{2,}', text.strip('\n')):
        if chunk.startswith(CODE):
            lines += ['.PP', *roff.literal([line.removeprefix(CODE) for line in chunk.split('\n')])]
        elif chunk.startswith('|'):
            lines += table(chunk.split('\n'))
        elif chunk.startswith('- '):
            for item in re.split(r'^- ', chunk, flags=re.MULTILINE)[1:]:
                lines += [r'.IP \(bu 2', *roff.filled(item)]
        else:
            lines += roff.paragraph(chunk)
    return lines


def cells(line):
    return [cell.strip() for cell in line.strip('|').split('|')]


def table(lines):
    """A tagged paragraph for each row. The title of its column precedes a cell from the third one on."""
    titles = cells(lines[0])
    found = []
    for tag, *texts in map(cells, lines[2:]):
        named = [f'{titles[at]}: {text}' if at > 1 else text for at, text in enumerate(texts, 1) if text]
        found += roff.tagged([tag], ' '.join(map(roff.sentence, named)))
    return found
