"""Writes orfc-esxcli(8)."""
import re
import textwrap

import roff
from generator import Problem, Template, read_description, run
from readme import Readme, blocks

IDENTIFIERS = ('adapter', 'port', 'target', 'lun') # kinds of arguments with a section of their own
VALUES = {'word': '*WORD*', 'number': '*NUMBER*', 'wwpn': '*WWPN*', 'text': '*TEXT*'}
EXAMPLE_WIDTH = 66
OPTION = r'--[\w-]+'


def listed(words):
    *most, last = (f'`{word}`' for word in words)
    return f'{", ".join(most)} or {last}' if most else last


def allowed_range(argument):
    unit = argument['unit']
    separator = ', in units of ' if unit[:1].isdigit() else ' ' if unit else ''
    return f'{argument["minimum"]} to {argument["maximum"]}{separator}{unit}'


def deciding_words(argument):
    """The words of another argument with which this one applies; none if it always does."""
    return frozenset(argument.get('applies_with', {'words': ()})['words'])


def placeholder(argument):
    return f'*{argument["name"].upper()}*'


def is_option(argument):
    return 'short_name' in argument


def head(command):
    """A command with its variant, positional arguments and whether there are options."""
    words = [f'`{command["name"]}`, `{command["text_name"]}`']
    words += [placeholder(argument) for argument in command['arguments'] if not is_option(argument)]
    words += ['[*OPTION*...]'] if any(map(is_option, command['arguments'])) else []
    return ' '.join(words)


def few_words(argument):
    """The allowed words of an option if they are few."""
    words = '|'.join(f'`{word}`' for word in argument.get('words', ()))
    return words if is_option(argument) and len(words) < 24 else ''


def tag(argument):
    if not is_option(argument):
        return placeholder(argument)
    return f'`{argument["name"]}`, `{argument["short_name"]}` {few_words(argument) or VALUES[argument["kind"]]}'


def documents(commands):
    """The kinds of documents of commands, with the commands where they differ."""
    kinds = {}
    for command in commands:
        document = command['document']
        kinds.setdefault(f'`{document["structure"]}` ({document["shape"]})', []).append(f'`{command["name"]}`')
    if len(kinds) == 1:
        return f'Document: {"".join(kinds)}.'
    return 'Documents: ' + '; '.join(f'{", ".join(names)}: {kind}' for kind, names in kinds.items()) + '.'


def broken(example):
    """The lines of a command line."""
    lines = textwrap.wrap(example, EXAMPLE_WIDTH, break_long_words=False, break_on_hyphens=False,
                          subsequent_indent='    ')
    return [f'{line} \\' for line in lines[:-1]] + lines[-1:]


class Page:
    """The parts of the page that aren't in its template: what the Readme tells, with the arguments and documents of
    the description."""

    def __init__(self, description, readme):
        self.readme = readme
        self.families = {tuple(family['words']): family for family in description['families']}
        # The arguments' names in texts, except those that are words of the field.
        names = {argument['name'].upper() for family in description['families'] for command in family['commands']
                 for argument in command['arguments'] if argument['kind'] not in ('wwpn', 'lun')}
        self.names = re.compile(rf'\b(?:{"|".join(sorted(names))})\b')

    def marked(self, text):
        """A text of the Readme or the description with markup."""
        return self.names.sub(r'*\g<0>*', re.sub(rf'(?<![\w-])(?:{OPTION}|-\w\b)', r'`\g<0>`', text))

    def section(self, title):
        lines = []
        for row, text in blocks(self.readme.section(title), 3):
            if row is None:
                lines += ['.PP', *roff.literal([text])]
            else:
                lines += roff.tagged([f'`{row}`'], self.marked(text)) if row else roff.paragraph(self.marked(text))
        return lines

    def calling_examples(self):
        text = '\n'.join(self.readme.section('CALLING')).partition('Example:')[2]
        return roff.literal(re.findall(r'orfc-esxcli .*', text.partition('\n\n')[0]))

    def commands(self):
        lines = []
        for top in dict.fromkeys(words[:2] for words in self.families):
            names = {words: [command['name'] for command in family['commands']]
                     for words, family in self.families.items() if words[:2] == top}
            missing = {words: set(each) for words, each in names.items()}
            title, groups = self.readme.groups(top, names)
            lines += roff.heading('SH', title)
            shown = None
            for group in groups:
                if group.family != shown:
                    lines += roff.heading('SS', ' '.join(group.family))
                    shown = group.family
                lines += self.group(group)
                missing[shown] -= set(group.names)
            for words, each in missing.items():
                if each:
                    raise Problem(f'{self.readme.path}: does not describe "{" ".join((*words, min(each)))}"')
        return lines

    def group(self, group):
        commands = [command for command in self.families[group.family]['commands'] if command['name'] in group.names]
        # An option whose range depends on a word is described once for each.
        arguments = {(argument['name'], deciding_words(argument)): argument
                     for command in commands for argument in command['arguments']}
        remarks, rows, texts = {}, [], []
        for row, text in blocks(group.body, 8):
            if not row:
                texts.append(self.marked(text))
            elif row.startswith('--'):
                remarks |= self.remarks(row, text, arguments)
            else:
                rows.append((f'`{row}`', self.marked(text)))
        rows += [(tag(argument), self.about(argument, remarks.get(key))) for key, argument in arguments.items()
                 if argument['kind'] not in IDENTIFIERS]
        texts.append(documents(commands))
        lines = roff.paragraph(self.marked(group.introduction)) if group.introduction else []
        lines += roff.tagged(map(head, commands), texts[0])
        lines += roff.indented([line for row, text in rows for line in roff.tagged([row], text)])
        for text in texts[1:]:
            lines += ['.IP', *roff.filled(text)]
        return lines + ['.IP', *roff.literal([line for example in group.examples for line in broken(example)])]

    def remarks(self, row, text, arguments):
        """What a row tells of each of its options beyond the allowed values, which must be those of the command."""
        words = re.search(r'\((.*)\)$', row)
        deciding = frozenset(words[1].split(', ')) if words else frozenset()
        names = [name for name, words in arguments if words == deciding]
        named = re.findall(OPTION, row)
        if not named or not set(named) <= set(names):
            raise Problem(f'{self.readme.path}: "{row}" is no option of its command')
        allowed, _, remark = text.partition('; ')
        between = [(name, deciding) for name in names[names.index(named[0]):names.index(named[-1]) + 1]]
        for argument in map(arguments.get, between):
            if 'words' in argument and set(allowed.split(', ')) != set(argument['words']) or \
                    argument['kind'] == 'number' and allowed != allowed_range(argument):
                raise Problem(f'{self.readme.path}: the values of "{row}" are not those of the command: {allowed}')
        return dict.fromkeys(between, remark)

    def about(self, argument, remark):
        text, separator, rest = argument['description'].partition(';')
        if 'words' in argument and not few_words(argument):
            text += f': {listed(argument["words"])}'
        if argument['kind'] == 'number':
            text += f': {allowed_range(argument)}'
        sentences = [roff.sentence(self.marked(f'{text}{separator}{rest}'))]
        if remark:
            sentences.append(roff.sentence(self.marked(remark)))
        if 'applies_with' in argument:
            condition = argument['applies_with']
            name = condition['argument']
            sentences.append(f'Only with {f"`{name}`" if name.startswith("-") else f"*{name.upper()}*"} '
                             f'{listed(condition["words"])}.')
        return ' '.join(sentences)

    def messages(self):
        introduction, groups = self.readme.messages()
        lines = [line for text in introduction for line in roff.paragraph(text)]
        told = {'Success'}
        for title, rows in groups:
            lines += roff.heading('SS', title)
            for texts, advice in rows:
                lines += roff.tagged([f'`{text}`' for text in texts], self.marked(advice))
                told |= set(texts)
        for words, family in self.families.items():
            for row in family['result_texts']:
                if row['text'] not in told:
                    raise Problem(f'{self.readme.path}: does not tell "{row["text"]}" of {" ".join(words)}')
        return lines


def generate(description, readme, template):
    """Writes the manual page orfc-esxcli(8)."""
    page = Page(description, readme)
    parts = {'calling examples': page.calling_examples(), 'identifiers': page.section('IDENTIFIERS'),
             'commands': page.commands(), 'shared folders': page.section('FILES IN SHARED FOLDERS'),
             'messages': page.messages()}
    return roff.page(template, parts, VERSION=description['version'])


if __name__ == '__main__':
    run(generate, description=read_description, readme=Readme, template=Template)
