#!/usr/bin/env python3
"""Completion in bash and zsh, through a terminal: what is offered, that identifiers are those of the host, and that
nothing of a host is ever run."""
import json
import os
import pathlib
import resource
import shlex
import subprocess
import sys
import tempfile
import textwrap
import time
import unittest

import pexpect

ROOT = pathlib.Path(__file__).parents[2]
COMPLETION = ROOT / 'integration/completion'
BUILD = pathlib.Path(os.environ['BUILD'])
DESCRIPTION = json.loads((BUILD / 'integration/orfc-esxcli.json').read_text())
FAMILIES = {' '.join(family['words']): family for family in DESCRIPTION['families']}
LABELS = {'adapter': 'Adapters', 'port': 'Ports', 'target': 'Targets', 'lun': 'LUNs/Namespaces'}
PROMPT = 'ready> '
LIBRARY_LOG = pathlib.Path('/var/tmp/vexapi-output.log')
LIMIT = 30 # seconds until something counts as hanging
SECOND_USER = 65534

# Names that a target, an adapter or another program could have.
HOSTILE = [
    '$(touch evil)', '`touch evil`', 'a b', "it's", 'say "hi"', '!!', 'a!b', r'a\b', '*', '?x', '[ab]', '~', '~root',
    '{a,b}', ';touch evil', '&touch evil', '|touch evil', '>evil', '<(touch evil)', '#a', 'a=b', 'x:y:z', '@host', '%1',
    '^a^b', '-n', "'$(touch evil)'", '"$(touch evil)"', r'\$(touch evil)', "';touch evil;'", '\x1b[2J', 'é…', '$HOME',
    r"$'\x41'", '==', '${x[$(touch evil)]}', '(touch evil)', 'a\tb']


def option_names(argument):
    return [argument['name'], argument['short_name']]


def is_option(argument):
    return 'short_name' in argument


def filler(argument):
    """A value that may stand for an argument."""
    return argument.get('words', ['1' if argument['kind'] == 'number' else 'X'])[0]


class Terminal:
    """A shell in which orfc-esxcli is a program that notes its calls and then behaves as told, and a function, which
    completion doesn't see, that only notes them."""

    note = """printf '%s\\0' "$@" $'\\n' >>"$HOME/calls\""""

    def __init__(self, as_user=(), **variables):
        self.temporary = tempfile.TemporaryDirectory(prefix='completion-')
        self.folder = pathlib.Path(self.temporary.name)
        self.folder.chmod(0o777)
        (self.folder / 'bin').mkdir()
        program = self.folder / 'bin/orfc-esxcli'
        program.write_text(f'#!/bin/bash\n{self.note}\n. {self.folder}/behaviour\n')
        program.chmod(0o755)
        self.real()
        self.prepare()
        # Tests wait as long as it takes, except for what hangs.
        environment = {'ORFC_COMPLETION_SECONDS': '60', 'PATH': f'{self.folder}/bin:/usr/bin:/bin',
                       'HOME': str(self.folder), 'TERM': 'dumb', 'LANG': 'C.UTF-8',
                       'VEXAPI_SIM_STATE': f'{self.folder}/state', **variables}
        command = [*as_user, *self.program]
        self.noise = ''
        self.child = pexpect.spawn(command[0], command[1:], env=environment, encoding='utf-8', timeout=LIMIT,
                                   dimensions=(200, 1000), cwd=self.folder)
        self.child.delaybeforesend = None
        self.run('true')

    def close(self):
        self.child.close(force=True)
        self.temporary.cleanup()

    def real(self):
        self.behave(f'exec {BUILD}/orfc-esxcli "$@"')

    def behave(self, script):
        (self.folder / 'behaviour').write_text(script)
        self.calls()

    def list(self, kind, *identifiers):
        """The program lists these identifiers."""
        (self.folder / 'document').write_text(
            '****\n' + ''.join(f'List:\n{LABELS[kind]}: {each}\n' for each in identifiers) + '****\n')
        self.behave(f'cat {self.folder}/document')

    def calls(self):
        """The words of each call since the last use."""
        calls = self.folder / 'calls'
        if not calls.exists():
            return []
        text = calls.read_text()
        calls.unlink()
        return [call.split('\0')[:-1] for call in text.split('\n\0')[:-1]]

    def expect(self, pattern):
        """The groups of a pattern in what the terminal shows."""
        try:
            self.child.expect(f'(?s){pattern}')
            return self.child.match.groups()
        except pexpect.TIMEOUT:
            self.child.send('\x03') # for the next one
            raise

    def run(self, line):
        """What a command prints."""
        self.child.sendline(f'{line}; printf "%s\\n" do""ne')
        # The shell reads keys when it has shown its prompt.
        return self.expect(f'(.*)done\r\n.*{PROMPT}')[0]

    def press(self, text, key):
        """The line after a text and a key. What the terminal showed meanwhile is in `noise`."""
        self.child.send(f'\x05\x15{text}{key}\x18\x0c')
        self.noise, line = self.expect('(.*)\x02(.*)\x03\r\n')
        self.child.send('\x05\x15')
        return line

    def tab(self, text):
        return self.press(text, '\t')

    def offered(self, text):
        """The words that the shell offers for the last word of a text, without a colon."""
        line = self.press(text, '\x18\x01')
        start, _, last = text.rpartition(' ')
        assert line.startswith(f'{start} '), (text, line)
        words = line.removeprefix(f'{start} ').split()
        return [] if words == [last] else words

    @staticmethod
    def leaves_out(quote, name):
        """Whether a name isn't offered after this quote."""
        del quote, name
        return False

    def forget(self):
        """As if ten seconds had passed."""
        self.run('_orfc_esxcli_until=0')


class Bash(Terminal):
    program = ['bash', '--noprofile', '-i'] # reads .bashrc
    load = f'. {BUILD}/integration/orfc-esxcli.bash'

    def prepare(self):
        (self.folder / '.bashrc').write_text(textwrap.dedent(rf'''
            PS1='{PROMPT}'
            orfc-esxcli() {{ {self.note}; }}
            bind 'set enable-bracketed-paste off'
            bind 'set bell-style none'
            bind -x '"\C-x\C-l": printf "\002%s\003\n" "$READLINE_LINE"'
            bind '"\C-x\C-a": insert-completions'
            {self.load}
            '''))

    @staticmethod
    def leaves_out(quote, name):
        return quote and (quote in name or not name.isprintable() or quote == '"' and set(name) & set('$`!\\'))


class BashWithPackage(Bash):
    """With the package bash-completion, which loads a command's completion from a folder."""
    load = '. /usr/share/bash-completion/bash_completion'

    def prepare(self):
        super().prepare()
        folder = self.folder / '.local/share/bash-completion/completions'
        folder.mkdir(parents=True)
        (folder / 'orfc-esxcli').symlink_to(BUILD / 'integration/orfc-esxcli.bash')


class BashWithoutColon(Bash):
    """A colon separates no words, and a pattern without files is nothing."""
    load = f'COMP_WORDBREAKS=${{COMP_WORDBREAKS//:}}; shopt -s nullglob; {Bash.load}'


class Zsh(Terminal):
    program = ['zsh', '-d', '-i'] # no global files

    def prepare(self):
        (self.folder / '.zshrc').write_text(textwrap.dedent(rf'''
            PS1='{PROMPT}'
            orfc-esxcli() {{ {self.note}; }}
            unset zle_bracketed_paste
            unsetopt beep prompt_sp prompt_cr
            fpath=({BUILD}/integration $fpath)
            autoload -Uz compinit
            compinit -u -D
            bindkey -e
            show-line() {{ print -rn -- $'\2'$BUFFER$'\3\n' }}
            zle -N show-line
            bindkey '^X^L' show-line
            zstyle ':completion:*:messages' format '%d'
            zle -C insert-all complete-word _generic
            bindkey '^X^A' insert-all
            zstyle ':completion:insert-all::::' completer _all_matches _complete
            zstyle ':completion:insert-all:*' insert yes
            '''))


class InShell:
    """Tests run in one terminal. Nothing of a name was run if the file `evil` is missing."""

    @classmethod
    def setUpClass(cls):
        cls.shell = cls.terminal()

    @classmethod
    def tearDownClass(cls):
        cls.shell.close()

    def setUp(self):
        LIBRARY_LOG.touch()
        self.shell.real()
        self.shell.forget()

    def tearDown(self):
        self.assertEqual(list(self.shell.folder.rglob('evil')), [])

    def listed(self, kind, **host):
        """The identifiers of the lab host or another one."""
        output = subprocess.run([BUILD / 'orfc-esxcli', '-t', kind, 'listcli'], capture_output=True, text=True,
                                check=True, env={'VEXAPI_SIM_STATE': '', **host}).stdout
        return [line.removeprefix(f'{LABELS[kind]}: ') for line in output.splitlines() if ': ' in line]

    def test_colons(self):
        """Wherever the cursor stands in an identifier, and however it is quoted."""
        ports = self.listed('port')
        for port in ('FC_21:00:00:24:ff:7e:2d:94', 'FC_28:24:00:24:ff:00:00:1a'):
            for quote in ('', '"', "'"):
                for end in range(len(port) + 1):
                    matches = [each for each in ports if each.startswith(port[:end])]
                    completed = os.path.commonprefix(matches) if len(matches) > 1 else f'{port}{quote} '
                    start = f'orfc-esxcli -t port -s info getcli {quote}'
                    self.assertEqual(self.shell.tab(f'{start}{port[:end]}'), f'{start}{completed}')

    def test_hostile_identifiers(self):
        identifiers = [f'{number}_{name}' for number, name in enumerate(HOSTILE)]
        self.shell.list('target', *identifiers)
        for identifier in identifiers:
            self.inserts(identifier, identifier.split('_')[0] + '_')

    def inserts(self, identifier, start=''):
        """Completing its start makes a line that has it as one word, exactly."""
        for quote in ('', '"', "'"):
            with self.subTest(identifier, quote=quote):
                typed = f'orfc-esxcli -t target -v info get {quote}{start}'
                line = self.shell.tab(typed)
                if self.shell.leaves_out(quote, identifier):
                    self.assertEqual(line, typed)
                    continue
                self.shell.calls()
                self.shell.run(f'{typed}\t')
                self.assertEqual([call[5:] for call in self.shell.calls()], [[identifier]], line)


class Completion(InShell):
    """All tests of a shell."""

    def offers(self, text, words):
        self.assertCountEqual(self.shell.offered(text), words, text)

    # Words.

    def test_start(self):
        self.offers('orfc-esxcli ', ['-t', 'help', '-debug', '-eng'])
        self.offers('orfc-esxcli -', ['-t', '-debug', '-eng'])
        self.offers('orfc-esxcli -ENG ', ['-t', 'help', '-debug'])
        self.offers('orfc-esxcli help ', ['-t'])
        self.assertEqual(self.shell.tab('orfc-esxcli -d'), 'orfc-esxcli -debug ')

    def test_families_and_commands(self):
        self.offers('orfc-esxcli -t ', [family['path'][0] for family in FAMILIES.values() if len(family['path']) == 1])
        for words, family in FAMILIES.items():
            below = [other for other in FAMILIES.values() if other['path'][:-1] == family['path']]
            selectors = {other['words'][-2] for other in below}
            commands = [name for command in family['commands'] for name in (command['name'], command['text_name'])]
            self.offers(f'orfc-esxcli {words} ', {*commands, 'help', *selectors})
            if len(family['path']) == 1:
                for selector in ('-s', '-v'):
                    self.offers(f'orfc-esxcli {words} {selector} ',
                                [other['path'][-1] for other in below] if selector in selectors else [])

    def test_any_letter_case(self):
        """The case is that of the tree, whatever was typed."""
        for typed, completed in (
                ('-T POR', '-T port'), ('-T PORT -S HBAP', '-T PORT -S hbaparams'),
                ('-t Port -s hbaParams RESTOREDEFAULTSC', '-t Port -s hbaParams restoreDefaultscli'),
                ('-t port -s fec SETCLI X --FEC-', '-t port -s fec SETCLI X --fec-status'),
                ('-t port -s beacon set X of', '-t port -s beacon set X OFF'),
                ('-t port -s info get fc_28', '-t port -s info get FC_28:24:00:24:ff:00:00:1a')):
            self.assertEqual(self.shell.tab(f'orfc-esxcli {typed}'), f'orfc-esxcli {completed} ')

    def test_order(self):
        """-t, -s and -v may follow the command."""
        self.assertEqual(self.shell.tab('orfc-esxcli setcli -t port -s beacon X of'),
                         'orfc-esxcli setcli -t port -s beacon X OFF ')
        self.assertEqual(self.shell.tab('orfc-esxcli -s beacon -t port setc'), 'orfc-esxcli -s beacon -t port setcli ')

    def test_unknown(self):
        for text in ('-t none ', '-t none -s ', '-t port -s none ', '-t port -s none get ', '-t port none ',
                     '-t port -s info get X '):
            self.offers(f'orfc-esxcli {text}', [])

    def test_every_argument(self):
        for words, family in FAMILIES.items():
            for command in family['commands']:
                line = f'orfc-esxcli {words} {command["text_name"]} '
                for argument in command['arguments']:
                    if not is_option(argument):
                        self.offers_values(line, argument)
                        line += f'{filler(argument)} '
                self.offers_options(line, command)
                for number, argument in enumerate(filter(is_option, command['arguments'])):
                    name, short = option_names(argument)
                    for given in (name, short):
                        self.offers_values(f'{line}{given} ', argument)
                    # Not twice, whichever name was given.
                    given = (name.upper(), short)[number % 2]
                    self.offers_options(f'{line}{given} {filler(argument)} ', command, name)

    def offers_values(self, line, argument):
        if argument['kind'] in ('word', 'number', 'text'):
            self.offers(line, argument.get('words', []))

    def offers_options(self, line, command, *given):
        """Those that aren't given, and that apply with the other words on the line."""
        words = line.split()
        left = {}
        for argument in filter(is_option, command['arguments']):
            condition = argument.get('applies_with')
            decided = condition and (not condition['argument'].startswith('-') or condition['argument'] in given)
            if argument['name'] not in given and (not decided or set(words) & set(condition['words'])):
                left[argument['name']] = argument
        self.offers(line, left)
        self.offers(f'{line}-', [name for argument in left.values() for name in option_names(argument)])

    def test_deciding_words(self):
        """An option is offered only with the words of another argument with which it applies."""
        seen = 0
        for words, family in FAMILIES.items():
            for command in family['commands']:
                deciding = {argument['applies_with']['argument'] for argument in command['arguments']
                            if 'applies_with' in argument}
                for argument in [each for each in command['arguments'] if each['name'] in deciding]:
                    for word in argument['words']:
                        line = f'orfc-esxcli {words} {command["name"]} ' + ''.join(
                            f'{word if each is argument else filler(each)} ' for each in command['arguments']
                            if not is_option(each))
                        if is_option(argument):
                            line += f'{argument["name"]} {word} '
                        self.offers_options(line, command, argument['name'])
                        seen += 1
        self.assertGreater(seen, 5)

    # Files.

    def test_files(self):
        folder = self.shell.folder / 'data'
        folder.mkdir()
        self.shell.behave('')
        for argument in ('-t adapter update X', '-t port -s fwdump getcli X'):
            for name in ('plain', 'a b', 'c:d', "it's", '$(touch evil)', '!!', 'e=f'):
                file = folder / f'file-{name}'
                file.touch()
                line = self.shell.tab(f'orfc-esxcli {argument} data/fi')
                self.shell.run(line)
                self.assertEqual([call[-1] for call in self.shell.calls()], [f'data/file-{name}'])
                file.unlink()

    # Identifiers of the host.

    def test_identifiers(self):
        host = ROOT / 'tests/data/boot.json'
        self.shell.behave(f'VEXAPI_SIM_HOST={host} exec {BUILD}/orfc-esxcli "$@"')
        for kind, command in (('adapter', '-s info get'), ('port', '-s vpd getcli'), ('target', '-v stats get'),
                              ('lun', '-v info getcli')):
            identifiers = self.listed(kind, VEXAPI_SIM_HOST=host)
            self.assertGreater(len(identifiers), 1)
            self.offers(f'orfc-esxcli -t {kind} {command} ', identifiers)

    def test_remote_ports(self):
        """The WWPNs of the targets that a port sees."""
        port = 'FC_21:00:00:24:ff:7e:2d:94'
        seen = {each.split('_Target_')[1] for each in self.listed('target') if each.startswith(f'{port}_')}
        self.assertGreater(len(seen), 2)
        self.offers(f'orfc-esxcli -t port -s fcping run {port} ', seen)
        self.offers(f'orfc-esxcli -t port -s bootconfigext setFile {port} BIOS -p ', seen)
        self.offers('orfc-esxcli -t port -s fcping run X ', [])

    def test_path(self):
        """The program that lists is the one on the line."""
        self.shell.run('saved=$PATH PATH=/usr/bin:/bin')
        for folder in (f'{self.shell.folder}/bin', '~/bin', './bin'):
            line = f'{folder}/orfc-esxcli -t port -s info getcli FC_28:'
            self.assertEqual(self.shell.tab(line), f'{line}24:00:24:ff:00:00:1a ')
        self.shell.run('PATH=$saved')

    def test_one_run_for_many_tabs(self):
        ports, adapters = 'orfc-esxcli -t port -s info get FC_21:', 'orfc-esxcli -t adapter -s info get '
        for _ in range(3):
            self.shell.tab(ports)
        self.shell.tab('orfc-esxcli -t port -s vpd get FC')
        self.assertEqual(self.shell.calls(), [['-t', 'port', 'listcli']])
        self.shell.tab(adapters)
        self.shell.tab(adapters)
        self.assertEqual(self.shell.calls(), [['-t', 'adapter', 'listcli']])
        self.shell.forget()
        self.shell.tab(adapters)
        self.assertEqual(len(self.shell.calls()), 1)
        # Another host.
        self.shell.run('LD_LIBRARY_PATH=/nowhere')
        self.shell.tab(adapters)
        self.assertEqual(len(self.shell.calls()), 1)
        self.shell.run('unset LD_LIBRARY_PATH')

    def test_ten_seconds(self):
        begun = int(time.time())
        self.shell.tab('orfc-esxcli -t port -s info get ')
        until = int(self.shell.run('echo $_orfc_esxcli_until').split()[-1])
        self.assertTrue(begun + 10 <= until <= time.time() + 10)

    def test_words_start_no_program(self):
        for text in ('', '-t ', '-t port ', '-t port -s ', '-t port -s fec set X -', '-t port -s beacon set X '):
            self.shell.offered(f'orfc-esxcli {text}')
        self.assertEqual(self.shell.calls(), [])

    def offers_nothing(self):
        """No identifier is offered, soon, and nothing is shown but the line."""
        line = 'orfc-esxcli -t port -s info get FC_21:'
        self.shell.run('unset ORFC_COMPLETION_SECONDS')
        self.addCleanup(self.shell.run, 'export ORFC_COMPLETION_SECONDS=60')
        self.assertEqual(self.shell.tab(line), line)
        self.assertNotRegex(self.shell.noise, '(?i)oops|not found|no such|error|fault|killed|terminated|null')

    def test_no_library(self):
        alone = self.shell.folder / 'alone'
        alone.write_bytes((BUILD / 'orfc-esxcli').read_bytes())
        alone.chmod(0o755)
        self.shell.behave(f'exec {alone} "$@"')
        self.offers_nothing()

    def test_no_program(self):
        program = self.shell.folder / 'bin/orfc-esxcli'
        away = program.rename(f'{program}.away')
        self.offers_nothing()
        away.rename(program)

    def test_failing_program(self):
        self.shell.behave('echo oops >&2; kill -SEGV $$')
        self.offers_nothing()

    def test_hanging_library(self):
        """It even ignores signals. Another key press doesn't wait again."""
        self.shell.behave(f'trap "" TERM INT HUP\necho $$ >{self.shell.folder}/process\nsleep 1000')
        self.offers_nothing()
        self.assertEqual(len(self.shell.calls()), 1)
        process = int((self.shell.folder / 'process').read_text())
        with self.assertRaises(ProcessLookupError):
            for _ in range(50):
                os.kill(process, 0)
                time.sleep(0.1)
        self.offers_nothing()
        self.assertEqual(self.shell.calls(), [])

    def test_endless_output(self):
        self.shell.behave("exec yes 'Ports: FC_21:11'")
        self.offers_nothing()

    def test_list_without_end(self):
        """One that was cut off would make an identifier look like the only one."""
        self.shell.behave("echo '****'; echo 'Ports: FC_21:11'; sleep 1000")
        self.offers_nothing()
        self.shell.forget()
        self.shell.behave("echo '****'; echo 'Ports: FC_21:11'")
        self.offers_nothing()

    def test_no_traces(self):
        """A key press adds no lines to the debug log."""
        self.shell.run('export ORFC_DEBUG_LEVEL=5')
        self.offers('orfc-esxcli -t adapter -s info get ', self.listed('adapter'))
        self.shell.run('unset ORFC_DEBUG_LEVEL')
        self.assertFalse(pathlib.Path('/var/tmp/orfc-esxcli.log').exists())

    # Attackers.

    def test_hostile_starts(self):
        for name in HOSTILE:
            self.shell.list('target', name)
            self.shell.forget()
            self.inserts(name)

    def test_hostile_neighbours(self):
        """Of names with a common start, a key press inserts no more, and shows none as it is."""
        pairs = list(enumerate(zip(HOSTILE, HOSTILE[1:])))
        self.shell.list('adapter', *(f'{number}_{name}' for number, pair in pairs for name in pair))
        for number, pair in pairs:
            for quote in ('', '"', "'"):
                start = f'orfc-esxcli -t adapter -s info get {quote}'
                line = self.shell.press(f'{start}{number}', '\t\t\t')
                self.assertNotIn('\x1b[2J', self.shell.noise)
                if quote:
                    self.assertTrue(line.startswith(f'{start}{number}'), line)

    def test_hostile_host(self):
        """The same from the program itself."""
        names = ['$(touch evil)', '`touch evil`', 'it\'s "it"']
        host = self.shell.folder / 'host.json'
        host.write_text(json.dumps({'Adapters': [
            {'Model': name, 'SerialNumber': f'{number}',
             'PhyPorts': [{'Protocols': [{'WWPN': f'21:00:00:00:00:00:00:0{number}'}]}]}
            for number, name in enumerate(names)]}))
        self.shell.behave(f'VEXAPI_SIM_HOST={host} exec {BUILD}/orfc-esxcli "$@"')
        for number, name in enumerate(names):
            start = shlex.quote(f'Adapter_{name[:3]}').rstrip("'")
            self.shell.tab(f'orfc-esxcli -t adapter -s info get {start}')
            self.shell.calls()
            self.shell.run(f'orfc-esxcli -t adapter -s info get {start}\t')
            self.assertEqual(self.shell.calls()[-1][-1], f'Adapter_{name}_{number}')

    def test_typed_words_are_not_run(self):
        for text in ('-t $(touch evil) ', '-t `touch evil` -s ', '-t port -s fec set "$(touch evil)" -',
                     '-t port -s bootconfigext setFile X a[$(touch evil)] -', '-t port -s fec set X -[$(touch evil)] ',
                     '-t port -s fcping run x[$(touch evil)] ', "-t port -s fec set $'\\x24(touch evil)' -"):
            self.shell.tab(f'orfc-esxcli {text}')
            self.shell.tab(f'$(touch${{IFS}}evil)/orfc-esxcli {text}')

    def test_variables_are_not_run(self):
        shell = self.terminal(_orfc_esxcli_until='a[$(touch evil)]', _orfc_esxcli_listed='orfc-esxcli port ',
                              _orfc_esxcli_identifiers='a[$(touch evil)]')
        self.addCleanup(shell.close)
        shell.list('port', 'FC_1')
        self.assertEqual(shell.tab('orfc-esxcli -t port -s info get F'), 'orfc-esxcli -t port -s info get FC_1 ')
        self.assertFalse((shell.folder / 'evil').exists())

    def test_takes_the_log_from_nobody(self):
        """The program creates a log, and refuses that of another user: a key press of someone who isn't root must not
        create one that root can't use."""
        LIBRARY_LOG.unlink()
        if os.geteuid() == 0:
            os.chmod('/var/tmp', 0o1777)
        as_user = ('setpriv', f'--reuid={SECOND_USER}', f'--regid={SECOND_USER}', '--clear-groups')
        shell = self.terminal(as_user if os.geteuid() == 0 else ())
        self.addCleanup(shell.close)
        shell.list('port', 'FC_1')
        line = 'orfc-esxcli -t port -s info get F'
        self.assertEqual((shell.tab(line), shell.calls()), (line, []))
        LIBRARY_LOG.symlink_to('/nowhere')
        shell.forget()
        self.assertEqual((shell.tab(line), shell.calls()), (line, []))
        LIBRARY_LOG.unlink()
        shell.run(f'touch {LIBRARY_LOG}')
        shell.forget()
        self.assertEqual(shell.tab(line), f'{line}C_1 ')
        LIBRARY_LOG.unlink()


class InBash(Completion, unittest.TestCase):
    terminal = Bash

    def test_part_of_a_line(self):
        for before in ('true; ', 'VARIABLE=1 ', 'true | ', 'true && '):
            line = f'{before}orfc-esxcli -t port -s info getcli FC_28:'
            self.assertEqual(self.shell.tab(line), f'{line}24:00:24:ff:00:00:1a ')

    def test_escaped(self):
        """What is typed with backslashes is completed too."""
        self.assertEqual(self.shell.tab(r'orfc-esxcli -t port -s info getcli FC_28\:24'),
                         'orfc-esxcli -t port -s info getcli FC_28:24:00:24:ff:00:00:1a ')
        self.shell.list('adapter', r"A_it's a \ b")
        for typed in (r"A_it\'s\ a", r'"A_it'"'"r's "a', r"'A_it'\'s\ a"):
            self.assertEqual(self.shell.tab(f'orfc-esxcli -t adapter -s info get {typed}'),
                             r"orfc-esxcli -t adapter -s info get A_it\'s\ a\ \\\ b ")


class InBashWithPackage(InShell, unittest.TestCase):
    terminal = BashWithPackage


class InBashWithoutColon(InShell, unittest.TestCase):
    terminal = BashWithoutColon


class InZsh(Completion, unittest.TestCase):
    terminal = Zsh

    def test_descriptions(self):
        """Options are listed with their descriptions, and a number shows what it is."""
        self.shell.press('orfc-esxcli -t port -s fec setcli X -', '\t')
        self.assertRegex(self.shell.noise, r'--fec-status +-f +-- whether forward error correction is on')
        self.shell.press('orfc-esxcli -t port -s bbcr setFile X -c ', '\t')
        self.assertIn('count of credits to recover', self.shell.noise)


class BadInput(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.output = self.folder / 'completion'
        self.output.write_text('before')
        self.template = (COMPLETION / 'orfc-esxcli.bash.in').read_text()

    def refused(self, *options, description=DESCRIPTION, status=1, **settings):
        (self.folder / 'description').write_text(json.dumps(description))
        (self.folder / 'template').write_text(self.template)
        run = subprocess.run([sys.executable, '-B', COMPLETION / 'orfc_esxcli.py', self.folder / 'description',
                              self.folder / 'template', self.output, *options],
                             capture_output=True, text=True, check=False, env={'PYTHONPATH': ROOT / 'integration'},
                             **settings)
        self.assertEqual((run.returncode, run.stdout), (status, ''))
        self.assertNotIn('Traceback', run.stderr)
        self.assertEqual(self.output.read_text(), 'before')
        self.assertEqual(len(os.listdir(self.folder)), 3)
        return run.stderr

    def test_arguments(self):
        self.assertIn('unrecognized arguments: --shell', self.refused('--shell', status=2))

    def test_description(self):
        later = {**DESCRIPTION, 'schema_version': [9, 0]}
        self.assertIn('description: /schema_version: ', self.refused(description=later))
        less = {key: value for key, value in DESCRIPTION.items() if key != 'families'}
        self.assertIn('description: /: lacks "families"', self.refused(description=less))

    def test_word_with_a_blank(self):
        """The shells separate words by blanks."""
        changed = json.loads(json.dumps(DESCRIPTION).replace('"Monitor_Only"', '"Monitor Only"'))
        self.assertIn('-t port -s scmprofile set --activation: the word "Monitor Only"',
                      self.refused(description=changed))

    def test_template(self):
        self.template = self.template.replace('# insert commands', '')
        self.assertIn('template: inserts', self.refused())
        self.template += '# insert commands\n# insert no such file\n'
        self.assertIn('no such file', self.refused())

    def test_full_disk(self):
        refused = self.refused(preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (8192, 8192)))
        self.assertIn('completion: File too large', refused)


if __name__ == '__main__':
    unittest.main()
