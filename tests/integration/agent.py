"""A model of the agent that reads an esxcli descriptor, and of a client that knows no nesting.

It escapes a single quote in a value, as a shell demands between single quotes; whether the real one does is unknown."""
import dataclasses
import re
import subprocess
import xml.etree.ElementTree as ElementTree

NAMESPACE = '{http://www.vmware.com/Products/ESX/5.0/esxcli/}'
SCALARS = ('string', 'int', 'bool')


class Refused(Exception):
    """The agent refuses a value by itself, and starts nothing."""


def stripped(name):
    return re.sub(r'[^A-Za-z0-9_]', '', name)


def parse(text):
    root = ElementTree.fromstring(text)
    for element in root.iter():
        element.tag = element.tag.removeprefix(NAMESPACE)
    return root


@dataclasses.dataclass(frozen=True)
class Parameter:
    name: str
    type: str
    is_required: bool
    range: tuple

    def check(self, value):
        if self.type == 'flag':
            if value is not True:
                raise Refused(f'{self.name} takes no value')
            return ''
        if '\0' in value:
            raise Refused(f'{self.name} has a zero byte')
        if self.type == 'int':
            if not re.fullmatch(r'-?\d+', value):
                raise Refused(f'{self.name} is no number')
            if self.range and not self.range[0] <= int(value) <= self.range[1]:
                raise Refused(f'{self.name} is out of range')
        return value


class Command:
    def __init__(self, element):
        self.path = element.get('path')
        self.line = element.findtext('execute')
        self.spec = element.find('output-spec')[0]
        self.columns = [column for parameter in element.iter('format-parameter')
                        if parameter.get('name').startswith('fields:') for column in parameter.text.split(',')]
        self.parameters = {}
        for parameter in element.iter('parameter'):
            limits = parameter.find('constraint/range')
            self.parameters[parameter.get('name')] = Parameter(
                parameter.get('name'), parameter.get('type'), parameter.get('required') == 'true',
                None if limits is None else (int(limits.get('min')), int(limits.get('max'))))

    def command_line(self, values):
        """The line for the shell; values of flags are True."""
        for name in values.keys() - self.parameters.keys():
            raise Refused(f'{name} is unknown')
        for name, parameter in self.parameters.items():
            if parameter.is_required and name not in values:
                raise Refused(f'{name} is missing')
        texts = {name: self.parameters[name].check(value) for name, value in values.items()}
        line = re.sub(r'\$if\{([^,]*), ((?:\$val\{[^}]*\}|[^{}])*)\}',
                      lambda match: match[2] if match[1] in texts else '', self.line)
        return re.sub(r'\$val\{([^}]*)\}', lambda match: texts[match[1]].replace("'", "'\\''"), line)

    def run(self, values, **options):
        """What the program prints, as bytes."""
        output, = self.run_all([values], **options)
        return output

    def run_all(self, calls, **options):
        """The same for several calls, in one shell, which takes half the time."""
        lines = '\n'.join(f"{self.command_line(values)}\nprintf '\\0'" for values in calls)
        return subprocess.run(['/bin/sh', '-c', lines], stdout=subprocess.PIPE, check=True,
                              timeout=300, **options).stdout.split(b'\0')[:-1]

    def names(self):
        """The names that a client which knows no nesting finds: those of the record, and those of a list in it."""
        record = self.spec[0] if self.spec.tag == 'list' else self.spec
        outer = [field for field in record if field[0].tag in SCALARS]
        inner = [field for field in record.iterfind('field/list/structure/field')]
        return tuple([stripped(field.get('name')) for field in fields] for fields in (outer, inner))

    def judge(self, output):
        """Holds a document to the output-spec. Returns the missing fields, as (structure, field); raises ValueError
        for any other fault."""
        root = ElementTree.fromstring(output)
        if root.tag != 'output' or len(root) != 1:
            raise ValueError(f'{root.tag} with {len(root)} children')
        return set(judge_value(root[0], self.spec))


def judge_value(value, spec):
    if value.tag != spec.tag:
        raise ValueError(f'{value.tag} instead of {spec.tag}')
    if spec.tag == 'structure':
        yield from judge_structure(value, spec)
    elif spec.tag == 'list':
        if value.get('type') != spec.get('type'):
            raise ValueError(f'list of {value.get("type")}')
        for row in value:
            yield from judge_value(row, spec[0] if len(spec) else ElementTree.Element('string'))
    elif len(value):
        raise ValueError(f'{spec.tag} with elements in it')
    elif spec.tag == 'int' and not (re.fullmatch(r'-?\d+', value.text or '') and -2**63 <= int(value.text) < 2**63):
        raise ValueError(f'int {value.text!r}')
    elif spec.tag == 'bool' and value.text not in ('true', 'false'):
        raise ValueError(f'bool {value.text!r}')


def judge_structure(value, spec):
    if value.get('typeName') != spec.get('typeName'):
        raise ValueError(f'structure {value.get("typeName")} instead of {spec.get("typeName")}')
    fields = {}
    for field in value:
        name = field.get('name')
        if field.tag != 'field' or len(field) != 1:
            raise ValueError(f'{field.tag} {name} with {len(field)} children')
        if stripped(name) in map(stripped, fields):
            raise ValueError(f'field {name} twice')
        fields[name] = field[0]
    specs = {field.get('name'): field[0] for field in spec}
    for name in fields.keys() - specs.keys():
        raise ValueError(f'field {name} is not in the output-spec')
    for name, inner in specs.items():
        if name in fields:
            yield from judge_value(fields[name], inner)
        else:
            yield value.get('typeName'), name


def read_records(output):
    """What a client that knows no nesting reads: one record for each structure of a list, or a single one. A record is
    a map of names to texts; those of a nested list are parallel arrays."""
    top = ElementTree.fromstring(output)[0]
    return [flat_record(structure) for structure in (top if top.tag == 'list' else [top])]


def flat_record(structure):
    record = {}
    for field in structure:
        rows = [field[0]] if field[0].tag == 'structure' else field[0] if field[0].tag == 'list' else []
        if field[0].tag in SCALARS:
            record.setdefault(stripped(field.get('name')), []).append(field[0].text or '')
        for row in rows:
            for name, texts in flat_record(row).items():
                record.setdefault(name, []).extend(texts)
    return record


def read_descriptor(path):
    """The commands by path."""
    with open(path, 'rb') as file:
        return {element.get('path'): Command(element) for element in parse(file.read()).iter('command')}
