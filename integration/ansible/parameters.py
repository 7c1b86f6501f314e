"""Writes what the collection knows of parameters, from the description of the commands: a module of Python with tables,
or the options in the modules' documentation."""
import argparse
import json
import pprint
import sys

import generator

# The families whose settings modules change: the name of the staged file, None if `set` takes the options itself, and
# the labels of options if the report is a text, of whose lines the description doesn't tell.
FAMILIES = {
    'hbaparams': ('HBAParams', None),
    'fec': (None, None),
    'bbcr': ('BBCR', {
        '--bbcr-status': 'BBCR Status',
        '--bbcr-configured': 'BBCR Configured',
    }),
    'bootconfigext': ('BootConfigExt', {
        '--enable-bfs': 'Adapter BIOS',
        '--fabric-assigned-boot-lun': 'Fabric Assigned Boot LUN',
        '--selectable-boot': 'Selectable Boot',
        '--selective-login': 'Selective Login',
        '--selective-lun-login': 'Selective LUN Login',
        '--world-login': 'World Login',
        '--fc-nvme': 'FC NVMe',
    }),
}


def words_of(text):
    return text.lower().replace('_', ' ').replace('-', ' ').split()


def label_of(option, labels):
    """The shortest label that has all words of an option, in their order: "Link Down Timeout In Seconds" is that of
    --link-down-timeout."""
    def has_all(label):
        rest = iter(words_of(label))
        return all(word in rest for word in words_of(option))
    found = sorted(filter(has_all, labels), key=len)
    if not found:
        raise generator.Problem(f'{option}: none of the labels {labels} is its')
    return found[0]


def parameters_of(command, labels, report_labels):
    """The parameters that an option sets by itself, by name. Options that start an action, and those that name one of
    several things, are none."""
    parameters = {}
    for argument in command['arguments']:
        option = argument['name']
        words = argument.get('words', [])
        if not option.startswith('--') or len(words) == 1 or (labels is not None and option not in labels):
            continue
        row = {'option': option, 'label': label_of(option, report_labels) if labels is None else labels[option],
               'description': argument['description']}
        if set(words) == {'true', 'false'}:
            row['type'] = 'bool'
        elif words:
            is_number = all(word.isdigit() for word in words)
            row.update(type='int' if is_number else 'str', choices=[int(word) if is_number else word for word in words])
        elif argument['kind'] == 'number':
            row.update(type='int', minimum=argument['minimum'], maximum=argument['maximum'], unit=argument['unit'])
        else:
            raise generator.Problem(f'{option}: is of the unknown kind {argument["kind"]}')
        if 'applies_with' in argument:
            row['modes'] = argument['applies_with']['words']
        parameters[option.removeprefix('--').replace('-', '_')] = row
    used = [row['label'] for row in parameters.values()]
    if not parameters or len(set(used)) != len(used):
        raise generator.Problem(f'no label for each option: {used}')
    return parameters


def families_of(description):
    found = {family['path'][-1]: family for family in description['families']}
    families = {}
    for name, (staged, labels) in FAMILIES.items():
        commands = {command['name']: command for command in found[name]['commands']}
        document = commands['get']['document']
        report_labels = [field['name'] for field in document['row_fields']]
        parameters = parameters_of(commands['setFile' if staged else 'set'], labels, report_labels)
        families[name] = {
            'words': found[name]['words'],
            'structure': document['structure'],
            'staged': staged,
            # What else there is in these reports is no setting.
            'labels': None if name == 'bootconfigext' else [row['label'] for row in parameters.values()],
            'parameters': parameters,
        }
    return families


def table(families):
    """The module of Python."""
    return f'''"""Parameters of the settings of a port. Generated from the description of the commands."""
from __future__ import absolute_import, division, print_function
__metaclass__ = type

FAMILIES = {pprint.pformat(families, width=110, sort_dicts=False)}
'''


def documented(parameters):
    """The options as YAML, of which JSON is a part."""
    lines = ['options:']
    for name, row in parameters.items():
        sentences = [row['description'][0].upper() + row['description'][1:] + '.']
        if 'minimum' in row:
            unit = {'': '', '100 us': ', in units of 100 us'}.get(row['unit'], f' {row["unit"]}')
            sentences.append(f'From {row["minimum"]} to {row["maximum"]}{unit}.')
        if 'modes' in row:
            sentences.append(f'Only with I(mode={" or ".join(row["modes"])}).')
        lines += [f'  {name}:', '    description:', *(f'      - {json.dumps(sentence)}' for sentence in sentences),
                  f'    type: {row["type"]}']
        if 'choices' in row:
            lines.append(f'    choices: {json.dumps(row["choices"])}')
    return '\n'.join(lines)


def fragment(families):
    """The fragments of documentation, one for each family."""
    parts = [f"    {name.upper()} = r'''\n{documented(family['parameters'])}\n'''\n" for name, family in families.items()]
    return f'''"""Options of modules. Generated from the description of the commands."""
from __future__ import absolute_import, division, print_function
__metaclass__ = type


class ModuleDocFragment(object):

{chr(10).join(parts)}'''


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument('kind', choices=['table', 'fragment'])
    parser.add_argument('description', help='the description of the commands')
    parser.add_argument('output', help='the file to write')
    arguments = parser.parse_args()
    make = {'table': table, 'fragment': fragment}[arguments.kind]
    try:
        families = families_of(generator.read_description(arguments.description))
        generator.write_whole(arguments.output, make(families))
    except generator.Problem as problem:
        sys.exit(f'{parser.prog}: {problem}')


if __name__ == '__main__':
    main()
