"""Writes the completion of orfc for a shell."""
import pathlib

from generator import Template, read_program, read_text, run
from orfc_esxcli import array, function, one_word

HERE = pathlib.Path(__file__).parent


def options(rows):
    """Five words for each option: its name, the short one, what it takes, the allowed words, and its description."""
    return ['    ' + array([row['name'], row['short_name'], row['argument'], one_word(row['words'], row['name']), row['description']])
            for row in rows]


def commands(program):
    """Cases of a command: its options, whether it takes names of objects, and the columns of its records."""
    for command in program['commands']:
        columns = list(dict.fromkeys(column['key'] for kind in program['records'].get(command['name'], ())
                                     for column in program['kinds'][kind]))
        yield [command['name']], [
            'options+=(', *options(command['options']), ')',
            f'takes_names={"1" if command["takes_names"] else ""}',
            f'takes_file={"1" if command["takes_file"] else ""}',
            f'columns=({array(columns)})']


def generate(program, template):
    """Writes the completion of orfc for a shell."""
    lines = [f'commands=({array(command["name"] for command in program["commands"] if command["name"])})',
             'options=(', *options(program['options']), ')']
    common = ['_orfc_line() {', *(f'    {line}' for line in lines), '}',
              *function('_orfc_command', commands(program))]
    parts = {name: read_text(HERE / name).splitlines() for name in template.parts if name != 'commands'}
    return '\n'.join(template.filled({'commands': common, **parts})) + '\n'


if __name__ == '__main__':
    run(generate, program=read_program, template=Template)
