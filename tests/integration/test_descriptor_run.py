#!/usr/bin/env python3
"""The esxcli descriptor is run: a model of the agent starts its command lines through the shell, on simulated hosts,
and holds every document to the output-spec of its command."""
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import agent

TESTS = pathlib.Path(__file__).resolve().parents[1]
sys.path.insert(0, str(TESTS / 'refusals'))
import test_refusals as refusals

BUILD = pathlib.Path(os.environ['BUILD'])
DESCRIPTION = BUILD / 'integration/orfc-esxcli.json'
FOLDER = pathlib.Path(refusals.FOLDER.name)
TOP = 'orfc'


def descriptor_for(program):
    """The commands of a descriptor for a program in another place."""
    path = FOLDER / 'descriptor.xml'
    subprocess.run([TESTS.parent / 'integration/descriptor/generate', '--program', program, DESCRIPTION, path],
                   check=True)
    return agent.read_descriptor(path)


def records_of(program):
    """The commands for the lists of orfc, which is installed beside the program."""
    path = FOLDER / 'records.xml'
    subprocess.run([TESTS.parent / 'integration/descriptor/generate', '--program', program,
                    '--records', BUILD / 'integration/orfc.json', DESCRIPTION, path], check=True)
    return {path: command for path, command in agent.read_descriptor(path).items()
            if path.startswith(f'{TOP}.records.')}


def lab(**variables):
    return dict(os.environ, VEXAPI_SIM_STATE='', **variables)


PROGRAM = FOLDER / 'orfc-esxcli'
PROGRAM.symlink_to(BUILD / 'orfc-esxcli')
COMMANDS = descriptor_for(PROGRAM)
FAMILIES = json.loads(DESCRIPTION.read_text())['families']
FAMILY_PATHS = [family['path'] for family in FAMILIES]


def kinds_of(family, leaf):
    """The commands of a leaf, by the word that is fixed in each; None for no word."""
    found = {}
    for path, command in COMMANDS.items():
        top, *parents, last = path.split('.')
        if last == leaf['name'].lower() and parents == family['path']:
            found[None] = command
        elif last == leaf['name'].lower() and parents[:-1] == family['path'] and parents not in FAMILY_PATHS:
            found[parents[-1]] = command
    return found


def deciding_argument(leaf):
    names = {argument['applies_with']['argument'] for argument in leaf['arguments'] if 'applies_with' in argument}
    return next((argument for argument in leaf['arguments'] if argument['name'] in names), None)


LEAVES = [(family, leaf, kinds_of(family, leaf)) for family in FAMILIES for leaf in family['commands']]


def parameter_of(argument):
    return argument['name'].lstrip('-')


def is_option(argument):
    return 'short_name' in argument


class Words(unittest.TestCase):
    """What the shell makes of each command line: the words that the program gets."""
    maxDiff = None

    HOSTILE = ["it's", "'", "''", '"', 'a b', ' ', '', '$(touch {0})', '`touch {0}`', "'; touch {0}; '", '; touch {0}',
               '\ntouch {0}\n', '| touch {0}', '& touch {0} &', '> {0}', '$HOME', '${{HOME}}', '$val{{port}}',
               '$if{{port, x}}', '}}', '{{', '\\', "\\'", '*', '~', '#', '!', '\t', '\x7f', '\u00e9', '%s', '--', '-h']

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.forbidden = pathlib.Path(cls.folder.name) / 'forbidden'
        recorder = FOLDER / 'recorder'
        recorder.write_text('#!/bin/sh\nprintf "%s\\036" "$ORFC_XML" "$@"\n')
        recorder.chmod(0o755)
        cls.commands = descriptor_for(recorder)

    def check_words(self, family, leaf, word, command, calls):
        recorded = self.commands[command.path].run_all(calls, cwd=self.folder.name)
        self.assertEqual([words.decode().split('\036')[:-1] for words in recorded],
                         [['strict', *self.expected(family, leaf, word, values)] for values in calls])

    def expected(self, family, leaf, word, values):
        deciding = deciding_argument(leaf)
        words = [*family['words'], leaf['name']]
        for argument in leaf['arguments']:
            value = values.get(parameter_of(argument))
            if argument is deciding and word:
                value = next(other for other in argument['words'] if other.lower() == word)
            elif value is None or word not in self.words_of(argument, deciding):
                continue
            elif value is True:
                value, = argument['words']
            words += [argument['name'], value] if is_option(argument) else [value]
        return words

    @staticmethod
    def words_of(argument, deciding):
        """The fixed words of the commands that have an argument."""
        if deciding is None or 'applies_with' not in argument:
            return [None, *(word.lower() for word in deciding['words'])] if deciding else [None]
        return [word.lower() for word in argument['applies_with']['words']]

    def each(self, check):
        for family, leaf, kinds in LEAVES:
            for word, command in kinds.items():
                with self.subTest(command=command.path):
                    check(family, leaf, word, command)

    def test_one_command_for_each_leaf_and_word(self):
        for family, leaf, kinds in LEAVES:
            with self.subTest(family=family['path'], leaf=leaf['name']):
                deciding = deciding_argument(leaf)
                if deciding is None:
                    self.assertEqual(list(kinds), [None])
                    continue
                applying = [(word.lower(), {argument['name'] for argument in leaf['arguments']
                                            if word.lower() in self.words_of(argument, deciding)})
                            for word in deciding['words']]
                alone = {word for word, names in applying if [names for _, names in applying].count(names) == 1}
                self.assertEqual(set(kinds) - {None}, alone)
                self.assertEqual(None in kinds, len(alone) < len(applying))
        self.assertEqual(sum(len(kinds) for _, _, kinds in LEAVES), len(COMMANDS))

    def test_parameters_are_those_that_apply(self):
        def check(family, leaf, word, command):
            deciding = deciding_argument(leaf)
            expected = {parameter_of(argument) for argument in leaf['arguments']
                        if word in self.words_of(argument, deciding) and not (word and argument is deciding)}
            self.assertEqual(set(command.parameters), expected)
        self.each(check)

    def test_required_parameters_alone(self):
        def check(family, leaf, word, command):
            values = {name: f'<{name}>' if parameter.type == 'string' else str(parameter.range[0])
                      for name, parameter in command.parameters.items() if parameter.is_required}
            self.check_words(family, leaf, word, command, [values])
        self.each(check)

    def test_hostile_values_are_one_word_each(self):
        def check(family, leaf, word, command):
            self.check_words(family, leaf, word, command, [
                {name: True if parameter.type == 'flag' else str(parameter.range[1]) if parameter.type == 'int'
                 else text.format(self.forbidden) for name, parameter in command.parameters.items()}
                for text in self.HOSTILE])
            self.assertEqual(os.listdir(self.folder.name), [])
        self.each(check)


def call_of(path, words):
    """The command and the values that give the program these words, or Refused."""
    family, leaf, kinds = next((family, leaf, kinds) for family, leaf, kinds in LEAVES
                               if family['words'] == path.split() and leaf['name'] == words[0])
    positions = [argument for argument in leaf['arguments'] if not is_option(argument)]
    options = {name.lower(): argument for argument in leaf['arguments'] if is_option(argument)
               for name in (argument['name'], argument['short_name'])}
    values, rest = {}, words[1:]
    while rest:
        word = rest.pop(0)
        argument = options.get(word.lower())
        if argument and rest:
            word = rest.pop(0)
        elif positions:
            argument = positions.pop(0)
        else:
            raise agent.Refused('there is no such parameter')
        values[parameter_of(argument)] = word
    deciding = deciding_argument(leaf)
    command = kinds.get(None)
    if deciding:
        word = values.get(parameter_of(deciding), deciding['words'][0] if is_option(deciding) else '').lower()
        if word in kinds:
            command = kinds[word]
            values.pop(parameter_of(deciding), None)
        elif command is None:
            raise agent.Refused('there is no such command')
    for argument in leaf['arguments']:
        parameter = command.parameters.get(parameter_of(argument))
        if parameter and parameter.type == 'flag' and values.get(parameter.name, '').lower() == argument['words'][0].lower():
            values[parameter.name] = True
    command.command_line(values)
    return command, values


class Documents:
    """Checks of documents."""
    maxDiff = None

    def examine(self, command, output):
        """A document that is as the descriptor says, for the agent and for a client that knows no nesting. Returns
        its records."""
        self.assertEqual(command.judge(output), set())
        records = agent.read_records(output)
        outer, inner = (set(names) for names in command.names())
        for record in records:
            self.assertIn(set(record), (outer | inner, outer)) # a nested list may be empty
            self.assertEqual(list(record), list(records[0]))
            self.assertLessEqual(len({len(record[name]) for name in inner & record.keys()}), 1)
            self.assertEqual([column for column in command.columns if column.replace(' ', '') not in record], [])
        return records

    def message(self, family, records):
        (message,), = (record[agent.stripped(family.field)] for record in records)
        return message


class Lab(Documents, unittest.TestCase):
    """Every command, on everything that there is on the lab host, and where tests/refusals knows that it succeeds."""

    FILES = {'adapter': refusals.NAMES['mbi'], 'dmi': refusals.NAMES['sfp_image'], 'port': refusals.NAMES['nvram']}
    TARGET, DRIVE = '50:06:0e:80:12:4a:7c:10', '50:06:0e:80:12:4a:7c:10-12'

    def sample(self, family, argument):
        kind = argument['kind']
        return {'word': lambda: argument['words'][0], 'number': lambda: str(argument['minimum']),
                'wwpn': lambda: self.TARGET, 'text': lambda: self.DRIVE, 'output-file': lambda: f'{FOLDER}/output',
                'input-file': lambda: self.FILES[family['path'][-1]]}[kind]()

    def setUp(self):
        self.succeeded = set()
        self.identifiers = {}
        for kind in ('adapter', 'port', 'target', 'lun'):
            command = COMMANDS[f'{TOP}.{kind}.list']
            records = self.examine(command, command.run({}, env=lab()))
            self.identifiers[kind] = [text for record in records for texts in record.values() for text in texts]
        of_target = {text.rpartition('_')[0]: text for text in self.identifiers['lun']}
        self.identifiers['lun'] = list(of_target.values()) # there are hundreds
        self.assertGreater(min(map(len, self.identifiers.values())), 10)

    def run_all(self, command, calls):
        """The calls that succeed."""
        good = []
        for values, output in zip(calls, command.run_all(calls, env=lab()), strict=True):
            with self.subTest(command=command.path, values=values):
                records = self.examine(command, output)
                if not any(text.startswith('Failed') for record in records for texts in record.values()
                           for text in texts):
                    good.append(values)
        self.succeeded |= {command.path} if good else set()
        return good

    def test_every_command_everywhere(self):
        for family, leaf, kinds in LEAVES:
            for command in kinds.values():
                arguments = {parameter_of(argument): argument for argument in leaf['arguments']
                             if parameter_of(argument) in command.parameters}
                samples = {name: self.sample(family, argument) for name, argument in arguments.items()
                           if argument['kind'] not in self.identifiers}
                options = [name for name, parameter in command.parameters.items() if not parameter.is_required]
                identifier = next((name for name in arguments if arguments[name]['kind'] in self.identifiers), None)
                places = [{identifier: text} for text in self.identifiers[identifier]] if identifier else [{}]
                needed = {name: text for name, text in samples.items() if name not in options}
                good = self.run_all(command, [place | needed for place in places])
                self.run_all(command, [
                    values | {name: True if command.parameters[name].type == 'flag' else samples[name]}
                    for values in good[:1] for name in options])
        for family in refusals.REFUSALS:
            for words, _ in family.successes:
                with self.subTest(family=family.path, words=words):
                    command, values = call_of(family.path, refusals.words_of(words))
                    host = {'VEXAPI_SIM_HOST': f'{TESTS}/data/{family.host}.json'} if family.host else {}
                    records = self.examine(command, command.run(values, env=lab(**host)))
                    if not words.startswith('list'):
                        self.assertEqual(self.message(family, records), 'Success')
                    self.succeeded.add(command.path)
        self.assertEqual(COMMANDS.keys() - self.succeeded, set())


class Refusals(Documents, unittest.TestCase):
    """Every refusal of tests/refusals that can be brought about through the descriptor."""

    # Failures whose document is that of another command.
    OTHER_SPEC = {f'{TOP}.port.stats.reset': f'{TOP}.port.stats.get'}
    # Commands that write no document, or two, in some failures. No parser takes either.
    NONE = {f'{TOP}.{kind}.list' for kind in ('adapter', 'port', 'target', 'lun')} | {f'{TOP}.adapter.update'}
    TWO = {f'{TOP}.port.scmstats.get', f'{TOP}.target.scmstats.get', f'{TOP}.port.rwbuffer.run'}
    # Messages of a family that the agent prevents: it demands what is required, and offers only what applies.
    PREVENTED = {
        '-t adapter': {'Failed, Invalid Number of parameters'},
        '-t port -s bootconfig': {refusals.NOT_IN_UEFI, refusals.NEEDS_UEFI},
        '-t port -s bootconfigext': {refusals.NOT_IN_UEFI, refusals.NEEDS_MODE},
    }

    def test_documents(self):
        refused = set()
        for family in refusals.REFUSALS:
            met = set()
            for refusal in family.rows:
                with self.subTest(family=family.path, refusal=str(refusal)):
                    try:
                        command, values = call_of(family.path, refusals.words_of(refusal.words))
                    except agent.Refused:
                        continue
                    refused.add(command.path)
                    met.add(refusal.message)
                    line = command.command_line(values)
                    result = refusals.run_row(family, refusal, 0, ['/bin/sh', '-c', line])
                    self.assertEqual((result.status, result.errors), (0, ''))
                    self.check_documents(family, refusal, command, result.output)
            with self.subTest(family=family.path):
                self.assertEqual({refusal.message for refusal in family.rows} - met,
                                 self.PREVENTED.get(family.path, set()))
        self.assertEqual(COMMANDS.keys() - refused, set())

    def check_documents(self, family, refusal, command, output):
        if refusal.message is refusals.NO_DOCUMENT or 'output' not in refusal.where:
            self.assertEqual(output, '')
            self.assertIn(command.path, self.NONE)
        elif refusal.ahead:
            self.assertEqual(output.count('<?xml'), 2)
            self.assertIn(command.path, self.TWO)
        else:
            command = COMMANDS[self.OTHER_SPEC.get(command.path, command.path)]
            self.assertEqual(self.message(family, self.examine(command, output)), refusal.message)


class Attacks(Documents, unittest.TestCase):
    """Values that try to run a command of their own, and others that the program takes for itself."""

    def test_no_shell_runs_a_value(self):
        """Each value in all strings. An identifier is one of the lab's if there are others."""
        first = {kind: agent.read_records(COMMANDS[f'{TOP}.{kind}.list'].run({}, env=lab()))[0].popitem()[1][0]
                 for kind in ('adapter', 'port', 'target', 'lun')}
        with tempfile.TemporaryDirectory() as folder:
            forbidden = pathlib.Path(folder) / 'forbidden'
            texts = [text.format(forbidden) for text in Words.HOSTILE if '{0}' in text]
            self.assertGreater(len(texts), 5)
            for command in COMMANDS.values():
                calls = []
                for text in texts if command.parameters else []:
                    hostile = {name: {'flag': True, 'int': '8'}.get(parameter.type, text)
                               for name, parameter in command.parameters.items()
                               if parameter.is_required or parameter.type == 'string'}
                    real = {name: identifier for name, identifier in first.items() if name in hostile}
                    calls.append(hostile | real if real.keys() < hostile.keys() else hostile)
                for values, output in zip(calls, command.run_all(calls, cwd=folder, env=lab()), strict=True):
                    with self.subTest(command=command.path, values=values):
                        other = Refusals.OTHER_SPEC.get(command.path, command.path)
                        self.examine(COMMANDS[other] if b'>Failed' in output else command, output)
                self.assertFalse(forbidden.exists(), command.path)

    def test_words_of_the_program_give_no_document(self):
        command = COMMANDS[f'{TOP}.port.info.get']
        for word in ('q', 'version', '?'):
            self.assertEqual(command.run({'port': word}, env=lab()), b'')


class Records(unittest.TestCase):
    """The lists of orfc as commands: flat records, of which scripts read properties."""
    KINDS = ('adapters', 'counters', 'luns', 'paths', 'ports', 'targets', 'transceivers')

    @classmethod
    def setUpClass(cls):
        cls.commands = records_of(BUILD / 'orfc-esxcli')

    def records(self, kind, environment=None, **values):
        output = self.commands[f'{TOP}.records.{kind}.list'].run(values, env=environment or lab())
        self.assertEqual(self.commands[f'{TOP}.records.{kind}.list'].judge(output), set())
        return agent.read_records(output)

    def test_each_list_is_a_command(self):
        self.assertEqual(tuple(sorted(self.commands)), tuple(f'{TOP}.records.{kind}.list' for kind in self.KINDS))

    def test_every_record_has_every_field(self):
        for kind in self.KINDS:
            with self.subTest(kind=kind):
                records = self.records(kind)
                self.assertGreater(len(records), 1)
                self.assertEqual({tuple(record) for record in records}, {tuple(records[0])})

    def test_no_record_without_a_port(self):
        path = FOLDER / 'empty.json'
        path.write_text('{"Adapters": []}')
        for kind in self.KINDS:
            with self.subTest(kind=kind):
                self.assertEqual(self.records(kind, lab(VEXAPI_SIM_HOST=str(path))), [])

    def test_properties_are_those_of_the_documents(self):
        """The link failures of a port, as a property and as a line of the report of orfc-esxcli."""
        port = 'FC_21:00:00:24:ff:7e:2d:94'
        record, = self.records('ports', name=port)
        self.assertEqual(record['Port'], [port])
        report = subprocess.run([BUILD / 'orfc-esxcli', '-t', 'port', '-s', 'stats', 'getcli', port, 'Firmware'], env=lab(),
                                capture_output=True, text=True, check=True).stdout
        self.assertIn(f'Link Failure Count: {record["LinkFailureCount"][0]}\n', report)

    def test_names_reach_the_program_as_one_word(self):
        with tempfile.TemporaryDirectory() as folder:
            forbidden = pathlib.Path(folder) / 'forbidden'
            for hostile in Words.HOSTILE:
                name = hostile.format(forbidden)
                if name == '':
                    continue # no name at all: every port
                with self.subTest(name=name):
                    output = self.commands[f'{TOP}.records.ports.list'].run({'name': name}, env=lab(), cwd=folder,
                                                                            stderr=subprocess.DEVNULL)
                    self.assertEqual(output, b'')
                    self.assertFalse(forbidden.exists())


if __name__ == '__main__':
    unittest.main()
