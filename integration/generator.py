"""What generators share: the description of the commands, checked by its schema, and files written whole."""
import argparse
import json
import os
import pathlib
import re
import sys
import tempfile

SCHEMA = pathlib.Path(__file__).parent / 'description' / 'orfc-esxcli.schema.json'
SCHEMA_VERSION = 1 # the first number of the descriptions that generators understand

TYPES = {'object': dict, 'array': list, 'string': str, 'integer': int, 'boolean': bool}


class Problem(Exception):
    """What is wrong with an input, and where."""


def read_text(path):
    try:
        return pathlib.Path(path).read_text(encoding='utf-8')
    except UnicodeDecodeError as error:
        raise Problem(f'{path}: is not UTF-8: {error}') from error


def conforms(value, schema, root):
    try:
        check(value, schema, root, '')
    except Problem:
        return False
    return True


def check(value, schema, root, place):
    """Raises Problem unless the value conforms to a schema, of which this knows the keywords below."""
    def require(holds, reason):
        if not holds:
            raise Problem(f'{place or "/"}: {reason}')

    for keyword, rule in schema.items():
        match keyword:
            case '$ref':
                check(value, root['definitions'][rule.removeprefix('#/definitions/')], root, place)
            case 'type':
                require(type(value) is TYPES[rule], f'is not of the type {rule}')
            case 'const':
                require(value == rule, f'is not {json.dumps(rule)}')
            case 'enum':
                require(value in rule, f'is none of {json.dumps(rule)}')
            case 'pattern':
                require(re.search(rule, value), f'does not match {rule}')
            case 'minimum':
                require(value >= rule, f'is less than {rule}')
            case 'minItems':
                require(len(value) >= rule, f'has fewer than {rule} items')
            case 'maxItems':
                require(len(value) <= rule, f'has more than {rule} items')
            case 'items':
                for index, item in enumerate(value):
                    check(item, rule, root, f'{place}/{index}')
            case 'required':
                for key in rule:
                    require(key in value, f'lacks "{key}"')
            case 'properties':
                for key in value.keys() & rule.keys():
                    check(value[key], rule[key], root, f'{place}/{key}')
            case 'additionalProperties':
                for key in value.keys() - schema['properties'].keys():
                    require(rule, f'has an unknown key "{key}"')
            case 'allOf':
                for each in rule:
                    check(value, each, root, place)
            case 'anyOf':
                require(any(conforms(value, each, root) for each in rule), 'conforms to no alternative of its schema')
            case 'not':
                require(not conforms(value, rule, root), 'conforms to what its schema excludes')
            case 'if':
                check(value, schema.get('then' if conforms(value, rule, root) else 'else', {}), root, place)
            case 'then' | 'else' | 'description' | 'definitions' | 'title' | '$schema':
                pass
            case _:
                require(False, f'its schema has an unknown keyword "{keyword}"')


def read_json(path):
    try:
        return json.loads(read_text(path))
    except (ValueError, RecursionError) as error:
        raise Problem(f'{path}: is not JSON: {error}') from error


class Lookup(dict):
    """An object of JSON that is not held to a schema. A key that is missing is a Problem and tells its place."""

    def __init__(self, value, place):
        super().__init__(value)
        self.place = place

    def __missing__(self, key):
        raise Problem(f'{self.place}: lacks "{key}"')


def read_program(path):
    """What a program tells of its commands, options and records."""
    def with_places(value, place):
        if isinstance(value, dict):
            return Lookup({key: with_places(each, f'{place}/{key}') for key, each in value.items()}, place)
        if isinstance(value, list):
            return [with_places(each, f'{place}/{index}') for index, each in enumerate(value)]
        return value
    program = read_json(path)
    if not isinstance(program, dict) or 'commands' not in program:
        raise Problem(f'{path}: does not describe a program')
    return with_places(program, f'{path}: ')


def read_description(path):
    """The description of the commands. Raises Problem if it is not one that generators understand."""
    description = read_json(path)
    try:
        # Before the rest, which another version may have in another form.
        version = description.get('schema_version') if isinstance(description, dict) else None
        if isinstance(version, list) and version[:1] != [SCHEMA_VERSION]:
            raise Problem(f'/schema_version: is {version}, but only versions {SCHEMA_VERSION}.x are understood')
        schema = json.loads(SCHEMA.read_text())
        check(description, schema, schema, '')
    except Problem as problem:
        raise Problem(f'{path}: {problem}') from problem
    return description


class Template:
    """A text in which generated parts have their places: a comment "insert PART" is replaced by the lines of the part,
    @WORD@ by a word."""

    INSERT = re.compile(r'(?:#|\.\\") insert (.+)')
    WORD = re.compile('@([A-Z]+)@')

    def __init__(self, path):
        self.path = path
        self.lines = read_text(path).splitlines()
        self.parts = [found[1] for found in map(self.INSERT.fullmatch, self.lines) if found]

    def filled(self, parts, **words):
        """The lines. Raises Problem unless the parts are those that the template inserts."""
        if set(self.parts) != set(parts):
            raise Problem(f'{self.path}: inserts {sorted(self.parts)}, not {sorted(parts)}')
        lines = []
        for number, line in enumerate(self.lines, 1):
            for word in self.WORD.findall(line):
                if word not in words:
                    raise Problem(f'{self.path}:{number}: there is no word {word}')
            insert = self.INSERT.fullmatch(line)
            lines += parts[insert[1]] if insert else [self.WORD.sub(lambda word: words[word[1]], line)]
        return lines


def write_whole(path, text):
    """Writes a file, which replaces an older one at the end, or leaves everything as it was."""
    path = pathlib.Path(path)
    new = None
    try:
        with tempfile.NamedTemporaryFile('w', encoding='utf-8', dir=path.parent, prefix=f'{path.name}.',
                                         delete=False) as file:
            new = file.name
            file.write(text)
            file.flush()
            os.fchmod(file.fileno(), 0o644)
        os.replace(new, path)
    except (OSError, UnicodeError) as error:
        if new is not None:
            os.unlink(new)
        raise Problem(f'{path}: {getattr(error, "strerror", error)}') from error


def run(generate, **readers):
    """The program of a generator: `generate` makes the text of a file from other files, each argument read by its
    reader. Ends with a message and a status above 0 if that fails."""
    parser = argparse.ArgumentParser(description=generate.__doc__)
    for name in readers:
        parser.add_argument(name)
    parser.add_argument('output', help='the file to write')
    arguments = parser.parse_args()
    try:
        write_whole(arguments.output,
                    generate(**{name: reader(getattr(arguments, name)) for name, reader in readers.items()}))
    except (Problem, OSError) as problem:
        sys.exit(f'{parser.prog}: {problem}')
