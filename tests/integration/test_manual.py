#!/usr/bin/env python3
"""The manual pages: well-formed, complete by the description and the sources, and true by their examples."""
import json
import os
import pathlib
import re
import resource
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree

ROOT = pathlib.Path(__file__).parents[2]
MANUAL = ROOT / 'integration/manual'
BUILD = pathlib.Path(os.environ['BUILD'])
PAGES = {name: BUILD / 'integration' / name for name in ('orfc-esxcli.8', 'vexapi-linux.7', 'vexapi-simulator.7')}
DESCRIPTION = json.loads((BUILD / 'integration/orfc-esxcli.json').read_text())
FAMILIES = {' '.join(family['words']): family for family in DESCRIPTION['families']}

# Files that the examples read, and those that they write.
INPUTS = {'/tmp/mbi.bin': 'ORFC-IMAGE MBI 2.10.15\n',
          '/tmp/nvram.dat': 'ORFC-IMAGE NVRAM 1\nFrameSize 1024\n',
          '/tmp/sfp.img': 'ORFC-IMAGE SFP B\n'}
OUTPUTS = ['/tmp/nvram.txt', '/tmp/dump.bin']


def rendered(page):
    """The page as a reader sees it."""
    text = subprocess.run(['mandoc', '-T', 'utf8', PAGES[page]], capture_output=True, text=True, check=True).stdout
    return re.sub('.\b', '', text)


def sections(page, macro='SH'):
    """Source by heading."""
    parts = re.split(rf'^\.{macro} "?(.+?)"?\n', page, flags=re.MULTILINE)
    return {plain(title): text for title, text in zip(parts[1::2], parts[2::2])}


def plain(source):
    """The text of lines without fonts and escapes."""
    source = re.sub(r'^\.(?:[BI]|BR|IR|RB) +', '', source, flags=re.MULTILINE)
    source = re.sub(r'\\f.|\\[%:&]', '', source)
    return re.sub(r'\\(?:\((..)|([-e]))', lambda name: {'aq': "'", 'ha': '^', 'ti': '~', 'ga': '`', '-': '-', 'bu': '*',
                                                       'e': '\\'}[name[1] or name[2]], source)


def tagged(source):
    """(tag, text) of each tagged paragraph."""
    return [(plain(tag), ' '.join(plain(text).split()))
            for tag, text in re.findall(r'^\.T[PQ]\n(.*)\n((?:(?!\.(?!B|I)).*\n)*)', source, re.MULTILINE)]


SOURCES = {page: path.read_text() for page, path in PAGES.items()}
SECTIONS = {page: sections(source) for page, source in SOURCES.items()}
COMMANDS = {heading: text for title in ('ADAPTERS', 'PORTS', 'TARGETS', 'LUNS')
            for heading, text in sections(SECTIONS['orfc-esxcli.8'][title], macro='SS').items()}


class Form(unittest.TestCase):
    def test_no_warnings(self):
        for page, path in PAGES.items():
            with self.subTest(page):
                lint = subprocess.run(['mandoc', '-T', 'lint', '-W', 'style', path], capture_output=True, text=True,
                                      check=False)
                self.assertEqual((lint.returncode, lint.stdout + lint.stderr), (0, ''))
                for width in ('60', '80'):
                    shown = subprocess.run(['man', '--warnings', '-E', 'UTF-8', '-l', path], capture_output=True,
                                           text=True, check=False, env=dict(os.environ, MANWIDTH=width))
                    self.assertEqual((shown.returncode, shown.stderr), (0, ''))
                    self.assertIn('SEE ALSO', shown.stdout)

    def test_titles(self):
        for page in PAGES:
            name, section = page.split('.')
            text = rendered(page)
            self.assertTrue(text.startswith(f'{name.upper()}({section})'))
            self.assertRegex(text, rf'(?m)^NAME\n +{name} [-\u2013] ')
            for other in set(PAGES) - {page}:
                self.assertIn(other.replace('.', '(') + ')', text[text.index('\nSEE ALSO\n'):])

    def test_version(self):
        self.assertIn(f'orfc-esxcli {DESCRIPTION["version"]}', rendered('orfc-esxcli.8').rstrip().split('\n')[-1])


class Commands(unittest.TestCase):
    """Everything that the description tells is on the page."""

    def test_every_family(self):
        self.assertEqual(list(COMMANDS), list(FAMILIES))

    def test_every_command(self):
        for words, family in FAMILIES.items():
            heads = [tag for tag, _ in tagged(COMMANDS[words]) if re.match(r'\w+, \w+', tag)]
            expected = []
            for command in family['commands']:
                names = [argument['name'].upper() for argument in command['arguments'] if 'short_name' not in argument]
                options = ['[OPTION...]'] if len(names) < len(command['arguments']) else []
                expected.append(' '.join([f'{command["name"]}, {command["text_name"]}', *names, *options]))
            self.assertCountEqual(heads, expected)

    def test_every_argument(self):
        for words, family in FAMILIES.items():
            told = tagged(COMMANDS[words])
            for command in family['commands']:
                for argument in command['arguments']:
                    if argument['kind'] in ('adapter', 'port', 'target', 'lun'):
                        continue
                    start = f'{argument["name"]}, {argument["short_name"]} ' if 'short_name' in argument \
                        else argument['name'].upper()
                    texts = [f'{tag} {text}' for tag, text in told if f'{tag} '.startswith(start)]
                    self.assertTrue(any(self.tells(text, argument) for text in texts), (words, argument, texts))

    @staticmethod
    def tells(text, argument):
        """Whether a paragraph contains everything about an argument."""
        wanted = [argument['description'].split(';')[0], *argument.get('words', ())]
        if argument['kind'] == 'number':
            wanted += [f'{argument["minimum"]} to {argument["maximum"]}', argument['unit']]
        if 'applies_with' in argument:
            wanted += ['Only with', argument['applies_with']['argument'].strip('-'), *argument['applies_with']['words']]
        return all(re.search(rf'(?<!\w){re.escape(each)}(?!\w)', text, re.IGNORECASE) for each in wanted)

    def test_every_document(self):
        for words, family in FAMILIES.items():
            for command in family['commands']:
                document = command['document']
                self.assertIn(f'{document["structure"]} ({document["shape"]})', plain(COMMANDS[words]))

    def test_every_result_text(self):
        told = {tag for tag, _ in tagged(SECTIONS['orfc-esxcli.8']['DIAGNOSTICS'])}
        texts = {row['text'] for family in FAMILIES.values() for row in family['result_texts']} - {'Success'}
        self.assertGreater(len(texts), 80)
        self.assertEqual(texts - told, set())


# As they are displayed, to be copied.
SHOWN = re.findall(r'^ +(orfc-esxcli (?:-t|help).*)$', re.sub(r' \\\n +', ' ', rendered('orfc-esxcli.8')),
                   re.MULTILINE)
EXAMPLES = [example for example in SHOWN if not re.search(r"help$|'\?'$", example)]


class Examples(unittest.TestCase):
    maxDiff = None

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.environment = dict(os.environ, VEXAPI_SIM_STATE=f'{folder.name}/state')
        for path, text in INPUTS.items():
            pathlib.Path(path).write_text(text)
        for path in (*INPUTS, *OUTPUTS):
            self.addCleanup(pathlib.Path(path).unlink, missing_ok=True)

    def run_example(self, example):
        return subprocess.run(example, shell=True, env=self.environment, stdout=subprocess.PIPE, timeout=60,
                              check=True).stdout.decode()

    def commands(self):
        """(example, command of the description), in the order of the page."""
        for example in EXAMPLES:
            family = max((words for words in FAMILIES if example.startswith(f'orfc-esxcli {words} ')), key=len)
            name = example.removeprefix(f'orfc-esxcli {family} ').split()[0]
            (command,) = [each for each in FAMILIES[family]['commands'] if each['text_name'] == name]
            yield example, command

    def test_text(self):
        for example, command in self.commands():
            output = self.run_example(example)
            self.assertEqual(output.split('\n')[1], f'{command["document"]["structure"]}:', example)
            if command['document']['shape'] == 'list':
                self.assertGreater(output.count(f'\n{command["document"]["structure"]}:\n'), 1, example)
            else:
                self.assertRegex(output, r'(?m)^(Message|Test Result): Success$', example)

    def test_xml(self):
        """The same with the commands that write XML."""
        for example, command in self.commands():
            output = self.run_example(example.replace(f' {command["text_name"]}', f' {command["name"]}', 1))
            document = command['document']
            top = xml.etree.ElementTree.fromstring(output.replace('xmlns:esxcli="orfc"', ''))
            structures = top.findall('list/structure' if document['shape'] == 'list' else 'structure')
            self.assertEqual({structure.get('typeName') for structure in structures}, {document['structure']}, example)
            lists = {field.get('name') for field in structures[0] if field.find('list') is not None}
            self.assertEqual(lists, {document['list_field']} if document['shape'] == 'report' else set(), example)
            fields = {field.get('name'): field.findtext('string') for field in structures[0]}
            if document['shape'] != 'list':
                self.assertEqual(fields.get('Message', fields.get('Test Result')), 'Success', example)

    def test_every_command_has_one(self):
        shown = [id(command) for _, command in self.commands()]
        for family in FAMILIES.values():
            for command in family['commands']:
                self.assertIn(id(command), shown, (family['path'], command['name']))

    def test_help(self):
        helped = [example for example in SHOWN if example.endswith(' help')]
        usages = [example for example in SHOWN if example.endswith(" '?'")]
        self.assertTrue(helped and usages)
        for example in helped:
            self.assertIn('list of available commands', self.run_example(example), example)
        for example in usages:
            self.assertTrue(self.run_example(example).startswith('Usage: '), example)

    def test_documents(self):
        """The documents shown are those of the lab host."""
        shown = re.findall(r'^\.EX\n(.*?)^\.EE$', SECTIONS['orfc-esxcli.8']['DOCUMENTS'], re.MULTILINE | re.DOTALL)
        for name, document in zip(('getcli', 'get'), shown, strict=True):
            output = self.run_example(f'orfc-esxcli -t port -s fec {name} FC_21:00:00:24:ff:4b:18:7a')
            self.assertEqual(plain(document), output)

    def test_exit_status(self):
        self.run_example('orfc-esxcli -t port -s fec getcli none')
        program = self.folder / 'orfc-esxcli'
        program.write_bytes((BUILD / 'orfc-esxcli').read_bytes())
        program.chmod(0o755)
        alone = subprocess.run([program, '-t', 'port', 'list'], env={}, capture_output=True, check=False)
        self.assertEqual(alone.returncode, 127)
        self.assertIn('127 if', SECTIONS['orfc-esxcli.8']['EXIT STATUS'])


class Sources(unittest.TestCase):
    """What the pages tell is in the sources, and nothing of it is missing."""

    @staticmethod
    def matches(pattern, *folders):
        return {found for folder in folders for path in (ROOT / folder).rglob('*') if path.suffix in ('.h', '.cpp')
                for found in re.findall(pattern, path.read_text(), re.MULTILINE)}

    def told(self, page, section):
        return {name.strip() for tag, _ in tagged(SECTIONS[page][section]) for name in tag.split(',')}

    def test_variables(self):
        read = self.matches(r'getenv\("(\w+)"\)', 'support', 'esx-cli-plugin')
        self.assertEqual(self.told('orfc-esxcli.8', 'ENVIRONMENT'), read | {'LD_LIBRARY_PATH'})
        self.assertEqual(self.told('vexapi-simulator.7', 'ENVIRONMENT'),
                         self.matches(r'"(VEXAPI_SIM_\w+)"', 'simulator'))
        self.assertEqual(self.told('vexapi-linux.7', 'ENVIRONMENT'),
                         self.matches(r'getenv\("(\w+)"\)', 'hosts/linux'))

    def test_files(self):
        groups = self.matches(r'StagedGroup GROUP = \{"(\w+)"', 'esx-cli-plugin')
        logs = self.matches(r'= "(/(?:var/)?tmp/[\w.-]+)"', 'support', 'esx-cli-plugin')
        self.assertEqual(self.told('orfc-esxcli.8', 'FILES'),
                         {f'/tmp/{group}_PORT' for group in groups} | logs | {'/var/tmp/orfc-esxcli.log'})

    def test_attributes(self):
        shown = SECTIONS['vexapi-linux.7']['WHAT IS READ']
        rows = tagged(shown)
        attributes = re.findall(r'\{"([\w/]+)", +"([^"]+)",', (ROOT / 'hosts/linux/Attributes.h').read_text())
        self.assertGreater(len(attributes), 50)
        for path, meaning in attributes:
            self.assertTrue(any(tag == path and text.startswith(f'{meaning[0].upper()}{meaning[1:]}. ')
                                for tag, text in rows), path)
        # And the other way: no row without its attribute.
        self.assertEqual({tag for tag, text in rows if 'Shown as' in text}, {path for path, _ in attributes})
        for counter in self.matches(r'^    \{"(\w+)", +&_VEXAPI_SANCONGTMGMTV2', 'hosts/linux'):
            self.assertIn(counter, plain(shown))

    def test_keys(self):
        """Keys of a simulated host: those of its tables are read, and all that are read are told."""
        shown = SECTIONS['vexapi-simulator.7']['THE DESCRIPTION']
        records = (ROOT / 'simulator/description/Records.cpp').read_text()
        answers = set(re.findall(r'F\((\w+)\)', re.search(r'SIM_RECORD\(PortAnswers,[^;]*?\)\)\n', records)[0]))
        read = answers | self.matches(r'(?:Take|Number|Read\w+|find)\((?:\w*[rR]eader, )?"([A-Z]\w+)"',
                                      'simulator/description')
        told = {name.strip() for tag, text in tagged(shown) if 'Default: ' in text for name in tag.split(',')}
        self.assertGreater(len(told), 30)
        self.assertEqual(told - read, set())
        for key in read - {'LinkSpeeds'}: # only in the state file
            self.assertRegex(plain(shown), rf'\b{key}s?\b', key)


class BadInput(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.output = self.folder / 'page'
        self.output.write_text('before')
        self.inputs = {'description': BUILD / 'integration/orfc-esxcli.json', 'readme': ROOT / 'ORFC_ESXCLI_Readme.txt',
                       'template': MANUAL / 'orfc-esxcli.8.in'}

    def run_generator(self, *options, **settings):
        return subprocess.run([sys.executable, '-B', MANUAL / 'orfc_esxcli.py', *self.inputs.values(), self.output,
                               *options], capture_output=True, text=True, check=False,
                              env={'PYTHONPATH': ROOT / 'integration', 'SOURCE_DATE_EPOCH': '86400'}, **settings)

    def refused(self, *options, status=1, **settings):
        run = self.run_generator(*options, **settings)
        self.assertEqual((run.returncode, run.stdout), (status, ''))
        self.assertNotIn('Traceback', run.stderr)
        self.assertEqual(self.output.read_text(), 'before')
        self.assertEqual(list(self.folder.glob('page?*')), [])
        return run.stderr

    def change(self, name, old, new):
        """An input with another text."""
        text = self.inputs[name].read_text()
        self.assertIn(old, text)
        self.inputs[name] = self.folder / name
        self.inputs[name].write_text(text.replace(old, new))

    def test_arguments(self):
        self.assertIn('unrecognized arguments: --quick', self.refused('--quick', status=2))

    def test_description(self):
        self.change('description', '"required": true', '"wanted": true')
        self.assertIn('description: /families/0/commands/1/arguments/0: ', self.refused())

    def test_command_without_text(self):
        self.change('readme', '   -s vpd get, getcli PORT', '   -s vpd fetch, fetchcli PORT')
        self.assertIn('readme: does not describe "-t port -s vpd get"', self.refused())

    def test_other_values(self):
        self.change('readme', '0 to 240 seconds', '0 to 250 seconds')
        self.assertIn('readme: the values of "--link-down-timeout, -o" are not', self.refused())

    def test_other_words(self):
        self.change('readme', 'Auto, 1_Gbps, 2_Gbps,', 'Auto, 2_Gbps,')
        self.assertIn('readme: the values of "--data-rate, -d" are not', self.refused())

    def test_other_mode(self):
        self.change('readme', '--world-login, -g (UEFI)', '--world-login, -g (BIOS)')
        self.assertIn('readme: "--world-login, -g (BIOS)" is no option', self.refused())

    def test_result_text_without_advice(self):
        self.change('readme', 'Failed, Invalid SSID', 'Failed, Other SSID')
        self.assertIn('readme: does not tell "Failed, Invalid SSID"', self.refused())

    def test_section_missing(self):
        self.change('readme', '2. IDENTIFIERS', '2. NAMES')
        self.assertIn('readme: has no section "IDENTIFIERS"', self.refused())

    def test_foreign_file(self):
        good = dict(self.inputs)
        for name in good:
            self.inputs = good | {name: self.folder / name}
            self.inputs[name].write_bytes(b'\xff\xfe')
            self.assertIn(f'{name}: is not UTF-8', self.refused())
            self.inputs[name] = self.folder / 'missing'
            self.assertIn("missing'", self.refused())

    def test_template(self):
        good = self.inputs['template'].read_text()
        self.change('template', '.\\" insert messages\n', '')
        self.assertIn('template: inserts', self.refused())
        self.inputs['template'].write_text(f'.\\" insert poems\n{good}')
        self.assertIn('template: inserts', self.refused())
        self.inputs['template'].write_text(f'.TH @MOOD@\n{good}')
        self.assertIn('template:1: there is no word MOOD', self.refused())

    def test_full_disk(self):
        refused = self.refused(preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (4096, 4096)))
        self.assertIn('page: File too large', refused)

    def test_date(self):
        """A build with a date of its own is reproducible."""
        run = self.run_generator()
        self.assertEqual((run.returncode, run.stderr), (0, ''))
        self.assertIn(' 1970-01-02 ', self.output.read_text())


if __name__ == '__main__':
    unittest.main()
