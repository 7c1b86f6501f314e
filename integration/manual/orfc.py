"""Writes orfc(1)."""
import roff
from generator import Template, read_program, run


def options(rows):
    lines = []
    for option in rows:
        argument = f' *{option["argument_name"]}*' if option['argument_name'] else ''
        names = [f'`{name}`{argument}' for name in (option['short_name'], option['name']) if name]
        lines += roff.tagged(names, roff.sentence(option['description']))
    return lines


def commands(program):
    lines = []
    for command in program['commands']:
        if command['name']:
            names = ('*NAME*...' if command['needs_names'] else '[*NAME*...]' if command['takes_names'] else
                     '[*FILE*]' if command['takes_file'] else '')
            lines += roff.tagged([f'`{command["name"]}` {names}'.strip()],
                                 roff.sentence(command['description'] or command['summary']))
            lines += roff.indented(options(command['options']))
    return lines


def keys(program):
    """The keys of each kind of record, with the commands that show it."""
    lines = []
    for kind, columns in program['kinds'].items():
        shown_by = [f'`{name or "orfc"}`' for name, kinds in program['records'].items() if kind in kinds]
        lines += roff.heading('SS', f'Records of the kind {kind}')
        lines += roff.paragraph(f'Shown by {", ".join(shown_by)}.')
        for column in columns:
            lines += roff.tagged([f'`{column["key"]}` ({column["type"]})'], roff.sentence(column['description']))
    return lines


def rules(program):
    lines = []
    for rule in program['rules']:
        bounds = ', '.join(f'{bound["name"]} {bound["value"]:g}' for bound in rule['bounds'])
        lines += roff.tagged([f'`{rule["name"]}` ({rule["subject"]}, {rule["severity"]})'],
                             roff.sentence(rule['text'][0].upper() + rule['text'][1:]) +
                             (f' Bounds: {bounds}.' if bounds else ''))
    return lines


def examples(program):
    return roff.literal([example for command in program['commands'] for example in command['examples']])


def generate(program, template):
    """Writes the manual page of orfc."""
    parts = {'options': options(program['options']), 'commands': commands(program), 'keys': keys(program),
             'rules': rules(program),
             'examples': examples(program)}
    return roff.page(template, parts)


if __name__ == '__main__':
    run(generate, program=read_program, template=Template)
