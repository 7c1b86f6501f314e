"""Writes the completion of orfc-esxcli for a shell."""
import pathlib
import shlex

from generator import Problem, Template, read_description, read_text, run

HERE = pathlib.Path(__file__).parent


def array(words):
    """The words of an array, for bash and for zsh."""
    return ' '.join(map(shlex.quote, words))


def one_word(words, place):
    """Words as one, separated by blanks."""
    for word in words:
        if len(word.split()) != 1:
            raise Problem(f'{place}: the word "{word}" contains a blank')
    return ' '.join(words)


def function(name, cases):
    """A function of either shell that sets variables for the value of its argument."""
    lines = [f'{name}() {{', '    case $1 in']
    for patterns, settings in cases:
        lines += [f'    {" | ".join(map(shlex.quote, patterns))})', *(f'        {line}' for line in settings),
                  '        ;;']
    return [*lines, '    esac', '}']


def names(command):
    return command['name'], command['text_name']


def families(description):
    """Cases of a family: its commands, and its sub-families with the option that selects them."""
    below = {}
    for family in description['families']:
        below.setdefault(tuple(family['path'][:-1]), []).append(family)
    yield [''], [f'families=({array(family["path"][-1] for family in below[()])})']
    for family in description['families']:
        settings = [f'commands=({array(name for command in family["commands"] for name in names(command))} help)']
        children = below.get(tuple(family['path']))
        if children:
            settings.append(f'families=({array(child["path"][-1] for child in children)}) '
                            f'selector={shlex.quote(children[0]["words"][-2])}')
        yield [' '.join(family['path']).lower()], settings


def arguments(description):
    """Cases of a command: six words for each of its arguments."""
    for family in description['families']:
        for command in family['commands']:
            if not command['arguments']:
                continue
            settings = ['arguments=(']
            for argument in command['arguments']:
                place = ' '.join([*family['words'], command['name'], argument['name']])
                condition = argument.get('applies_with')
                decided = [condition['argument'], *condition['words']] if condition else []
                settings.append('    ' + array([
                    argument['name'], argument.get('short_name', ''), argument['kind'],
                    one_word(argument.get('words', ()), place), one_word(decided, place), argument['description']]))
            yield [' '.join([*family['path'], name]).lower() for name in names(command)], [*settings, ')']


def labels(description):
    """Cases of a kind of identifiers: what precedes each one in the list."""
    for family in description['families']:
        for command in family['commands']:
            if command['document']['shape'] == 'list':
                yield family['path'], [f'label={shlex.quote(command["document"]["fields"][0]["name"])}']


def generate(description, template):
    """Writes the completion of orfc-esxcli for a shell."""
    commands = [*function('_orfc_esxcli_family', families(description)),
                *function('_orfc_esxcli_arguments', arguments(description)),
                *function('_orfc_esxcli_label', labels(description))]
    parts = {name: read_text(HERE / name).splitlines() for name in template.parts if name != 'commands'}
    return '\n'.join(template.filled({'commands': commands, **parts})) + '\n'


if __name__ == '__main__':
    run(generate, description=read_description, template=Template)
