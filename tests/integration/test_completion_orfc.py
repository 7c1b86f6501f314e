#!/usr/bin/env python3
"""Completion of orfc in bash and zsh, through a terminal: commands, options, columns and names of the host at hand."""
import json
import unittest

import test_completion
from test_completion import BUILD, HOSTILE

PROGRAM = json.loads((BUILD / 'integration/orfc.json').read_text())
COMMANDS = [command['name'] for command in PROGRAM['commands'] if command['name']]
PORT_KEYS = [column['key'] for column in PROGRAM['kinds']['port']]


class WithOrfc:
    """A terminal with a program orfc, which notes its calls and then behaves as told."""

    def prepare(self):
        super().prepare()
        program = self.folder / 'bin/orfc'
        program.write_text(f'#!/bin/bash\n{self.note}\n. {self.folder}/behaviour\n')
        program.chmod(0o755)
        self.behave(f'exec {BUILD}/orfc "$@"')

    def names(self, *names):
        (self.folder / 'names').write_text(''.join(f'{name}\n' for name in names))
        self.behave(f'cat {self.folder}/names')

    def forget(self):
        self.run('_orfc_until=0')


class Bash(WithOrfc, test_completion.Bash):
    load = f'. {BUILD}/integration/orfc.bash'


class Zsh(WithOrfc, test_completion.Zsh):
    pass


class Completion:
    @classmethod
    def setUpClass(cls):
        cls.terminal = cls.shell()
        cls.addClassCleanup(cls.terminal.close)

    def setUp(self):
        self.terminal.behave(f'exec {BUILD}/orfc "$@"')
        self.terminal.forget()

    def offered(self, text):
        return sorted(set(self.terminal.offered(text)))

    def test_commands(self):
        self.assertEqual(self.offered('orfc '), sorted(COMMANDS))
        self.assertEqual(self.terminal.tab('orfc trans'), 'orfc transceivers ')

    def test_options_once(self):
        self.assertEqual(self.terminal.tab('orfc counters --inter'), 'orfc counters --interval ')
        self.assertEqual(self.terminal.tab('orfc ports --inter'), 'orfc ports --inter')
        self.assertEqual(self.terminal.tab('orfc ports --sort port --so'), 'orfc ports --sort port --so')

    def test_words(self):
        self.assertEqual(self.offered('orfc -o '), sorted(PROGRAM['options'][0]['words']))
        self.assertEqual(self.terminal.tab('orfc ports --color al'), 'orfc ports --color always ')

    def test_columns(self):
        self.assertEqual(self.offered('orfc ports --sort '), sorted(PORT_KEYS))
        self.assertIn('port,state', self.terminal.tab('orfc ports --columns port,stat'))

    def test_names_of_the_host(self):
        self.assertEqual(self.terminal.tab('orfc show FC_21:00:00:24:ff:7e:2d:94_Target_50:0a'),
                         'orfc show FC_21:00:00:24:ff:7e:2d:94_Target_50:0a:09:81:a1:c3:40:10')
        self.terminal.calls()
        self.terminal.tab('orfc show hos')
        self.assertEqual(self.terminal.calls(), []) # the list is kept for some seconds

    def test_names_by_the_library_on_the_line(self):
        self.terminal.tab('orfc --library simulator ports host1')
        self.assertEqual([call[:2] for call in self.terminal.calls()], [['--library', 'simulator']])

    def test_no_library(self):
        self.terminal.behave('echo no library >&2; exit 1')
        self.assertEqual(self.terminal.tab('orfc ports hos'), 'orfc ports hos')
        self.assertNotIn('no library', self.terminal.noise)

    def test_hostile_names_are_one_word(self):
        for name in HOSTILE:
            if not name.isprintable() or name.startswith('-'):
                continue
            with self.subTest(name=name):
                self.terminal.names(f'X{name}')
                self.terminal.forget()
                line = self.terminal.tab('orfc ports X')
                self.assertFalse((self.terminal.folder / 'evil').exists())
                words = self.terminal.run(f"set -- {line.removeprefix('orfc ports ')}; printf '<%s>' \"$@\"")
                self.assertIn(f'<X{name}>', words)


class InBash(Completion, unittest.TestCase):
    shell = Bash


class InZsh(Completion, unittest.TestCase):
    shell = Zsh


if __name__ == '__main__':
    unittest.main()
