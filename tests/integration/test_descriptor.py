#!/usr/bin/env python3
"""The generator of the esxcli descriptor, and its linter: bad input, and descriptors with one fault each."""
import json
import os
import pathlib
import re
import subprocess
import tempfile
import types
import unittest

BUILD = pathlib.Path(os.environ['BUILD'])
TOOLS = pathlib.Path(__file__).parents[2] / 'integration/descriptor'
DESCRIPTION = BUILD / 'integration/orfc-esxcli.json'
RECORDS = BUILD / 'integration/orfc.json'
DESCRIPTOR = (BUILD / 'integration/orfc-esxcli.xml').read_text()


def run(tool, *arguments, **options):
    return subprocess.run([TOOLS / tool, *arguments], capture_output=True, text=True, check=False, **options)


def load(tool):
    """A tool as a module, which saves the starts of hundreds of processes."""
    module = types.ModuleType(tool)
    exec(compile((TOOLS / tool).read_text(), TOOLS / tool, 'exec'), module.__dict__)
    return module


linter = load('lint')


class InFolder(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)


class Generator(InFolder):
    def generate(self, description=DESCRIPTION, *options, **more):
        if isinstance(description, dict):
            (self.folder / 'in.json').write_text(json.dumps(description))
            description = self.folder / 'in.json'
        return run('generate', *options, description, self.folder / 'out.xml', **more)

    def check_refused(self, place, refused):
        self.assertEqual((refused.returncode, refused.stdout), (1, ''))
        self.assertIn(place, refused.stderr)
        self.assertEqual(refused.stderr.count('\n'), 1)
        self.assertEqual([name for name in os.listdir(self.folder) if name != 'in.json'], [])

    def test_build_has_its_descriptor(self):
        self.assertEqual((self.generate(DESCRIPTION, '--records', RECORDS).returncode, (self.folder / 'out.xml').read_text()), (0, DESCRIPTOR))
        self.assertEqual(os.listdir(self.folder), ['out.xml'])

    def test_program_is_an_option(self):
        self.assertEqual(self.generate(DESCRIPTION, '--records', RECORDS, '--program', '/usr/libexec/x').returncode, 0)
        self.assertEqual((self.folder / 'out.xml').read_text(),
                         DESCRIPTOR.replace('/opt/orvane/fc/bin/orfc-esxcli', '/usr/libexec/x')
                         .replace('/opt/orvane/fc/bin/orfc', '/usr/libexec/orfc'))

    def test_usage(self):
        for options in (['--nosuch'], ['--program'], ['--program', 'orfc-esxcli'], ['--program', '/a b'],
                        ['--program', "/a'b"], ['extra']):
            refused = self.generate(DESCRIPTION, *options)
            self.assertEqual((refused.returncode, refused.stdout), (2, ''), options)
            self.assertIn('usage: generate', refused.stderr)
        self.assertEqual(os.listdir(self.folder), [])

    def test_other_versions(self):
        for version, is_read in (([1, 0], True), ([1, 7], True), ([0, 9], False), ([2, 0], False), ([], False)):
            description = json.loads(DESCRIPTION.read_text()) | {'schema_version': version}
            result = self.generate(description)
            self.assertEqual(result.returncode == 0, is_read, version)
            (self.folder / 'out.xml').unlink() if is_read else self.check_refused('schema_version', result)

    def test_what_is_no_description(self):
        for content in (b'', b'{', b'[]', b'null', b'7', b'{"schema_version": [1', b'<xml/>', b'\xff\xfe\x00',
                        DESCRIPTION.read_bytes()[:-3], b'[' * 100000):
            (self.folder / 'in.json').write_bytes(content)
            self.check_refused(f'{self.folder}/in.json: ', self.generate(self.folder / 'in.json'))
        for path in (self.folder / 'nosuch', self.folder):
            self.check_refused(f"'{path}'", self.generate(path))

    def test_what_no_descriptor_can_say(self):
        def check(told, family, command, change):
            description = json.loads(DESCRIPTION.read_text())
            commands = {(*family['path'], command['name']): command
                        for family in description['families'] for command in family['commands']}
            change(commands[*family, command])
            self.check_refused(told, self.generate(description))

        def argument(command, name):
            return next(argument for argument in command['arguments'] if argument['name'] == name)
        check('orfc.port.info.get: "port" is optional, but not an option', ['port', 'info'], 'get',
              lambda command: argument(command, 'port').update(required=False))
        check('orfc.port.bootconfigext.setfile: no argument decides which ones apply', ['port', 'bootconfigext'], 'setFile',
              lambda command: command['arguments'][-1]['applies_with'].update(argument='x'))
        check('/document/shape: is none of', ['port', 'info'], 'get', lambda command: command['document'].update(shape='tree'))
        check('out.xml: ', ['port', 'info'], 'get', lambda command: command.update(description='\ud800'))

    def test_descriptor_stays_whole(self):
        for limit, why in (('ulimit -f 0', 'File too large'), ('ulimit -f 8', 'File too large')):
            (self.folder / 'out.xml').write_text('before')
            refused = subprocess.run(['bash', '-c', f'{limit}; exec "$@"', '-', TOOLS / 'generate', DESCRIPTION,
                                      self.folder / 'out.xml'], capture_output=True, text=True, check=False)
            self.assertEqual((refused.returncode, refused.stdout), (1, ''))
            self.assertEqual(refused.stderr, f'generate: {self.folder}/out.xml: {why}\n')
            self.assertEqual((self.folder / 'out.xml').read_text(), 'before')
            self.assertEqual(os.listdir(self.folder), ['out.xml'])
        refused = run('generate', DESCRIPTION, self.folder / 'nosuch/out.xml')
        self.assertEqual((refused.returncode, refused.stderr.count('\n')), (1, 1))
        self.assertIn('No such file', refused.stderr)
        (self.folder / 'folder').mkdir()
        refused = run('generate', DESCRIPTION, self.folder / 'folder')
        self.assertIn('Is a directory', refused.stderr)
        self.assertEqual(sorted(os.listdir(self.folder)), ['folder', 'out.xml'])


FEC, BIOS, LUNS, LOOP = 'port.fec.set', 'port.bootconfigext.bios.setfile', 'lun.list', 'port.loopback.run'
COUNT = 'name="count" type="int" required="true"'
# A command, a text in it and its replacement, and the faults that follow.
FAULTS = [
    # Those of public descriptors.
    (FEC, "'$val{port}'", "'val{port}'", '{ without $val or $if', 'parameter "port" is not used'),
    (FEC, "'$val{port}'", "'$val{port'", '$ without val{name} or if{name, text}', '{ without $val or $if',
     '{ without }', 'parameter "port" is not used'),
    (FEC, "'$val{fec-status}'}", "'$val{fec-status}'", '{ without }'),
    (FEC, "'$val{port}'", "'$val{port}' '$val{ports}'", '"ports" is not declared'),
    (FEC, '$if{reset,', '$if{rest,', '"rest" is not declared', 'parameter "reset" is not used'),
    (FEC, "'$val{port}'", '$val{port}', 'string "port" is not in single quotes'),
    (FEC, '"Correctable FEC errors"', '"FEC-Status"'),
    (FEC, '"Correctable FEC errors"', '"FEC_Status!"',
     'fields collide: clients keep letters, digits and underscores, which are "FEC_Status" in both'),
    (FEC, '"Correctable FEC errors"', '"Message"',
     'fields collide: clients keep letters, digits and underscores, which are "Message" in both'),
    ('port.list', '>Ports<', '>Ports,State<', 'fields:PortList has "State", which is no field'),
    (None, '<namespace path="orfc.port.fec">', '<namespace path="orfc.port.fed">',
     'orfc.port.fec.get: namespace orfc.port.fec is not declared',
     'orfc.port.fec.set: namespace orfc.port.fec is not declared'),
    (None, '<namespace path="orfc.lun">', '<namespace path="orfc.luns">',
     'orfc.lun.info: namespace orfc.lun is not declared', 'orfc.lun.list: namespace orfc.lun is not declared'),
    # The command line.
    (FEC, "'$val{port}'", '"$val{port}"', '\'"\' is not in single quotes', '\'"\' is not in single quotes',
     'string "port" is not in single quotes'),
    (FEC, "'$val{port}'", "'$val{port}", 'quote is open where the $if of "fec-status" ends',
     'string "fec-status" is not in single quotes', '$if of "fec-status" is in quotes', 'quote without an end',
     'quote is open where the $if of "reset" ends', '$if of "reset" is in quotes'),
    (FEC, "'$val{port}'", "'$val{port}'}", '} without {'),
    (FEC, "'$val{port}'", "'$val{port}'; true", "';' is not in single quotes"),
    (FEC, "'$val{port}'", "'$val{port}'\ntrue", "'\\n' is not in single quotes"),
    (FEC, "'$val{port}'", "'$val{port}' $HOME", '$ without val{name} or if{name, text}'),
    (FEC, '--reset reset', "--reset '$val{reset}'", 'flag "reset" has no value'),
    (FEC, "$if{fec-status, --fec-status '$val{fec-status}'}", "'$val{fec-status}'",
     'optional "fec-status" is used outside of its $if'),
    (FEC, "$if{fec-status, --fec-status '$val{fec-status}'}", '$if{fec-status, --fec-status true}',
     'parameter "fec-status" is not used'),
    (FEC, ' $if{reset, --reset reset}', '', 'parameter "reset" is not used'),
    (FEC, '$if{reset, ', '$if{reset,', '$ without val{name} or if{name, text}', '{ without $val or $if',
     'parameter "reset" is not used'),
    # Parameters.
    (BIOS, 'name="boot-disk-num"', 'name="bootdisknum"', '"boot-disk-num" is not declared',
     '"boot-disk-num" is not declared', 'parameter "bootdisknum" is not used'),
    (BIOS, 'name="enable-bfs" type="string"', 'name="port" type="string"', '"enable-bfs" is not declared',
     '"enable-bfs" is not declared', 'optional "port" is used outside of its $if',
     'two parameters have the name "port"'),
    (BIOS, 'shortname="o"', 'shortname="n"', 'two parameters have the short name "n"'),
    (BIOS, 'shortname="o"', 'shortname="-o"',
     'parameter "boot-disk-num" has the short name "-o", not one letter or digit'),
    (BIOS, 'name="port"', 'name="p rt"', '"port" is not declared', 'parameter "p rt" is not a plain name',
     'parameter "p rt" is not used'),
    (LOOP, COUNT, COUNT.replace('int', 'string'), 'parameter "count" has a range and is no int'),
    (LOOP, 'min="1" max="65535"', 'min="1" max="0"', 'parameter "count" has an empty range'),
    (LOOP, 'min="1" max="65535"', 'min="1" max="9223372036854775808"',
     'parameter "count" has the range 1 to 9223372036854775808, not integers of 64 bits'),
    (LOOP, 'min="1" max="65535"', 'min="1" max="many"',
     'parameter "count" has the range 1 to many, not integers of 64 bits'),
    (FEC, 'type="flag" required="false"', 'type="flag" required="true"',
     'parameter "reset" is a flag that must be given'),
    # Documents.
    (LUNS, '<formatter>simple</formatter>', '<formatter>table</formatter>'
     '<format-parameter name="fields:LunList">LUNs/Namespaces</format-parameter>',
     'fields:LunList has "LUNs/Namespaces": its column stays empty, by its punctuation'),
    ('port.list', '>Ports<', '>Ports,Ports<', 'fields:PortList has "Ports" twice'),
    ('port.list', '"fields:PortList"', '"fields:List"', 'format-parameter fields:List: no such structure'),
    ('port.list', '"fields:PortList"', '"units:PortList.Port"', 'format-parameter units:PortList.Port: no such field'),
    ('port.list', '"fields:PortList"', '"colour:PortList"', 'unknown format-parameter colour:PortList'),
    (FEC, '"FECList"', '"FECInfo"', 'two structures have the same typeName'),
    (FEC, '"Reboot Required"', '"*"', 'field "*" has no letter or digit'),
    (LUNS, 'type="structure"', 'type="string"', 'list of type string contains a structure'),
    (FEC, '<field name="Reboot Required">\n      <bool />', '<field name="Reboot Required">\n      '
     '<list type="string"/>', 'field "Reboot Required" is a list of strings'),
    (FEC, '<field name="Reboot Required">\n      <bool />', '<field name="Reboot Required">\n      '
     '<list type="structure"/>', 'list of type structure contains no structure'),
    # Paths.
    (FEC, 'path="orfc.port.fec.set"', 'path="orfc.port.fec.Set"',
     'orfc.port.fec.Set: path is not of lower-case words with dots between them'),
    (FEC, 'path="orfc.port.fec.set"', 'path="orfc.port.fec.get"', 'orfc.port.fec.get: path is used twice'),
    (FEC, 'path="orfc.port.fec.set"', 'path="orfc.port.vpd"', 'orfc.port.vpd: path is used twice'),
    (FEC, 'path="orfc.port.fec.set"', 'path="set"', 'set: command without a namespace'),
    # The grammar.
    (FEC, '<input-spec>', '<input-spec colour="red">', 'input-spec has an unknown attribute colour'),
    (FEC, 'type="flag"', 'type="switch"', 'parameter has the type "switch"'),
    (FEC, 'required="false"', 'required="no"', 'parameter has the required "no"'),
    (FEC, ' type="flag"', '', 'parameter has no type'),
    (FEC, 'typeName="FECInfo"', 'typeName=""', 'structure has no typeName'),
    (FEC, '<formatter>simple<', '<formatter>pretty<', 'formatter is "pretty"'),
    (FEC, '<bool />', '<boolean />', 'field contains boolean', 'unknown element boolean'),
    (FEC, '<bool />', '<bool /><bool />', 'field contains bool bool'),
    (FEC, '<bool />', 'bool', 'field contains nothing', 'field contains text'),
    (FEC, '<bool />', '<bool xmlns="" />', 'field contains "bool"', 'unknown element "bool"'),
    (FEC, '<format-parameters>', '<execute>x</execute><format-parameters>',
     'command contains description input-spec output-spec execute format-parameters execute'),
    (FEC, '<description>set ', '<description /><description>set ',
     'command contains description description input-spec output-spec format-parameters execute',
     'description is empty'),
    (None, '<version>1.0.0<', '<version>1.0.1<', 'plugin: version is "1.0.1"'),
    (None, '<namespaces>', '<namespaces><command path="x"/>', 'plugin: namespaces contains command',
     'plugin: command contains nothing'),
    (None, ' <version>1.0.0</version>\n', '', 'plugin: plugin contains namespaces commands'),
]


class Linter(InFolder):
    def lint(self, *texts):
        for number, text in enumerate(texts):
            (self.folder / f'{number}.xml').write_text(text)
        return run('lint', *(self.folder / f'{number}.xml' for number in range(len(texts))))

    def broken(self, path, old, new):
        start = end = None
        if path is not None:
            start = DESCRIPTOR.index(f'<command path="orfc.{path}"')
            end = DESCRIPTOR.index('</command>', start)
        section = DESCRIPTOR[start:end]
        self.assertIn(old, section)
        return DESCRIPTOR[:start or 0] + section.replace(old, new, 1) + (DESCRIPTOR[end:] if end else '')

    def test_descriptor_is_good(self):
        good = self.lint(DESCRIPTOR)
        self.assertEqual((good.returncode, good.stdout, good.stderr), (0, '', ''))

    def test_faults(self):
        for path, old, new, *faults in FAULTS:
            with self.subTest(path=path, old=old, new=new):
                (self.folder / 'broken.xml').write_text(self.broken(path, old, new))
                found = [f'{place}: {fault}' for place, fault in linter.check(linter.read(self.folder / 'broken.xml'))]
                self.assertEqual(sorted(found), sorted(
                    fault if path is None or re.match(r'(orfc\.[\w.]+|set): ', fault) else f'orfc.{path}: {fault}'
                    for fault in faults))

    def test_what_is_no_descriptor(self):
        for text, fault in ((DESCRIPTOR.replace('</plugin>', ''), 'not well formed: '),
                            (DESCRIPTOR.replace('</plugin>', '</plugin><plugin/>'), 'not well formed: '),
                            (DESCRIPTOR.replace('port', '&port;', 1), 'not well formed: '), ('', 'not well formed: '),
                            (DESCRIPTOR.replace('xmlns="http:', 'xmlns="https:'), '"{https:'),
                            ('<plugin/>', '"plugin": unknown element'),
                            ('<a>' * 100000 + '</a>' * 100000, '"a": unknown element'),
                            (DESCRIPTOR.replace('<bool />', '<structure typeName="a"><field name="b">' * 9999 +
                                                '<int/>' + '</field></structure>' * 9999, 1), 'nested too deeply')):
            result = self.lint(text)
            self.assertEqual((result.returncode, result.stdout, result.stderr.count('\n')), (1, '', 1))
            self.assertTrue(result.stderr.startswith(f'0.xml: {fault}'), result.stderr)

    def test_every_fault_of_every_file_is_told(self):
        first = self.broken(FEC, "'$val{port}'", '$val{port}')
        second = self.broken('port.list', '>Ports<', '>Port<')
        result = self.lint(first, DESCRIPTOR, second.replace("'$val{lun}'", '$val{lun}'))
        self.assertEqual(result.returncode, 1)
        self.assertEqual([line.split(': ')[:2] for line in result.stderr.splitlines()], [
            ['0.xml', 'orfc.port.fec.set'], ['2.xml', 'orfc.port.list'], ['2.xml', 'orfc.lun.info.get']])

    def test_count_of_commands(self):
        command = re.search(r'  <command path="orfc.port.list".*?</command>\n', DESCRIPTOR, re.DOTALL)[0]
        count = DESCRIPTOR.count('<command ')
        for more, is_good in ((99 - count, True), (100 - count, False)):
            extra = ''.join(command.replace('port.list', f'port.list{number}') for number in range(more))
            result = self.lint(DESCRIPTOR.replace(command, command + extra))
            self.assertEqual((result.returncode, result.stderr),
                             (0, '') if is_good else (1, '0.xml: commands: 100 of them, not 1 to 99\n'))

    def test_bad_input(self):
        for options in (['--nosuch', 'x.xml'], []):
            refused = run('lint', *options)
            self.assertEqual((refused.returncode, refused.stdout), (2, ''))
            self.assertIn('usage: lint', refused.stderr)
        refused = run('lint', self.folder / 'nosuch.xml', self.folder)
        self.assertEqual(refused.stderr.splitlines(), [
            'nosuch.xml: not readable: No such file or directory',
            f'{self.folder.name}: not readable: Is a directory'])
        self.assertEqual(refused.returncode, 1)


if __name__ == '__main__':
    unittest.main()
