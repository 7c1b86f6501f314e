"""ORFC_ESXCLI_Readme.txt, whose layout carries its structure: what the description of the commands doesn't tell."""
import re
from dataclasses import dataclass, field

from generator import Problem, read_text


def depth_of(line):
    return len(line) - len(line.lstrip())


def blocks(lines, margin):
    """(tag, text) for each row "TAG   TEXT" at a margin or further in. A paragraph has an empty tag, and a line
    further in that is no row, which is literal, None."""
    found, ended = [], True
    for line in lines:
        text, depth = line.strip(), depth_of(line) - margin
        tag, gap, rest = re.fullmatch(r'(.*?)(?:( {2,})(.*))?', text).groups()
        if not text:
            ended = True
        elif depth > 3 or not (ended or depth or gap):
            found[-1] = (found[-1][0], f'{found[-1][1]} {text}')
        else:
            found.append((tag, rest) if gap else (None if depth else '', text))
            ended = bool(gap or depth)
    return found


@dataclass
class Group:
    """Commands that are described together."""
    introduction: str # about this group and later ones
    family: tuple # the words that select it
    names: list = field(default_factory=list) # of the plain commands
    body: list = field(default_factory=list)
    examples: list = field(default_factory=list)


class Readme:
    """The file by sections; a section's lines are those after its title."""

    def __init__(self, path):
        self.path = path
        # A backslash continues a line.
        text = re.sub(r' *\\\n *', ' ', read_text(path))
        parts = re.split(r'^\d+\. (.+)\n', text, flags=re.MULTILINE)
        self.sections = {title: body.split('\n') for title, body in zip(parts[1::2], parts[2::2])}

    def section(self, title):
        if title not in self.sections:
            raise Problem(f'{self.path}: has no section "{title}"')
        return self.sections[title]

    def groups(self, top, commands):
        """(title, groups) of the section about a top-level family. `top`: the words of the family;
        `commands`: plain names by the words of each family."""
        suffix = f' ({" ".join(top)})'
        title = next((title for title in self.sections if title.endswith(suffix)), suffix)
        found, introduction, is_open = [], [], False
        for line in self.section(title):
            depth, text = depth_of(line), line.strip()
            head = re.fullmatch(r'(-[sv] \w+ )?(\w+)(?:, \w+)*(?: .*)?', text)
            family = (*top, *(head[1] or '').split()) if head else ()
            if depth == 3 and text != 'help':
                if head and head[2] in commands.get(family, ()):
                    if not is_open or family != found[-1].family:
                        found.append(Group(' '.join(introduction), family))
                        introduction = []
                    found[-1].names.append(head[2])
                else:
                    introduction.append(text)
            elif depth > 3 and not found:
                raise Problem(f'{self.path}: "{text}" belongs to no command')
            elif depth > 3 and (example := re.fullmatch(r'(?:Example: +)?(orfc-esxcli .*)', text)):
                found[-1].examples.append(example[1])
            elif depth > 3:
                found[-1].body.append(line)
            is_open = depth == 3
        return title.removesuffix(suffix), found

    def messages(self):
        """(paragraphs before them, groups): each group (title, rows), and each row (texts, what to do)."""
        paragraphs, groups = [], []
        for chunk in re.split(r'\n{2,}', '\n'.join(self.section('WHEN A COMMAND FAILS')).strip('\n')):
            lines = chunk.split('\n')
            if depth_of(lines[0]) == 3:
                paragraphs.append(' '.join(map(str.strip, lines)))
                continue
            rows = []
            for line in lines:
                if depth_of(line) > 6:
                    rows[-1][1].append(line.strip())
                elif rows and not rows[-1][1]:
                    rows[-1][0].append(line.strip())
                else:
                    rows.append(([line.strip()], []))
            groups.append((paragraphs.pop(), [(texts, ' '.join(advice)) for texts, advice in rows]))
        return paragraphs, groups
