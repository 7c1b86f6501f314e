#!/usr/bin/python3
"""Plays of the collection over a fleet of simulated hosts; the collection as ansible-lint, ansible-doc and ansible-test
see it; the plays of docs/FLEET.md."""
import json
import os
import pathlib
import re
import shutil
import subprocess
import tempfile
import unittest

from hosts import COLLECTION, COLLECTIONS, SOURCES, Host, description, hanging_library

HOSTS = 20
ENVIRONMENT = os.environ | {
    'ANSIBLE_COLLECTIONS_PATH': str(COLLECTIONS), 'ANSIBLE_FORKS': '6', 'ANSIBLE_PIPELINING': '1', 'LC_ALL': 'C.UTF-8',
    'ANSIBLE_NOCOLOR': '1', 'ANSIBLE_LOCALHOST_WARNING': '0', 'PYTHONDONTWRITEBYTECODE': '1', 'USER': 'root'}

ROLE = '''
- hosts: all
  gather_facts: false
  roles:
    - orfc.fc.fleet
'''
SETTINGS = '''
- hosts: all
  gather_facts: false
  tasks:
    - orfc.fc.hba_params:
        port: '{{ port }}'
        link_down_timeout: 45
        timeout: 4
'''


def run(*command, **keywords):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False,
                          env=ENVIRONMENT, **keywords)


class PlaysTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = pathlib.Path(folder.name)
        cls.hosts = {}

    @classmethod
    def add_host(cls, name, what=None, environment=None, **variables):
        """A host with its variables, for an inventory in the folder."""
        number = len(cls.hosts) + 1
        host = Host(cls.folder / name, number, what or description(number), **(environment or {}))
        cls.hosts[name] = host
        (cls.folder / 'host_vars').mkdir(exist_ok=True)
        (cls.folder / f'host_vars/{name}.json').write_text(json.dumps({
            'ansible_connection': 'local', 'ansible_python_interpreter': str(host.interpreter), 'port': host.port,
            'fleet_packages': [], 'fleet_facts_folder': '', **variables}))

    def play(self, *arguments):
        """The output of ansible-playbook, and how often hosts are counted: {host: {'ok': 1, ...}}."""
        result = run('ansible-playbook', *arguments, cwd=self.folder)
        recap = {found[1]: {key: int(number) for key, number in re.findall(r'(\w+)=(\d+)', found[2])}
                 for found in re.finditer(r'(?m)^(\w+) +: (ok=.*)$', result.stdout)}
        return result, recap


class Fleet(PlaysTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        for number in range(1, HOSTS + 1):
            name = f'h{number:02}'
            more = {}
            if number == 1:
                more = {'fleet_facts_folder': f'{cls.folder}/facts', 'fleet_systemd_folder': f'{cls.folder}/systemd',
                        'fleet_timers': {'orfc-exporter-counters.timer': '5min'}}
            cls.add_host(name, description(number, '9.08.02') if number == 7 else None, **more)
        cls.add_host('bad', environment={'VEXAPI_SIM_FAULTS': 'VEXAPI_Initialize=1'})
        cls.add_host('hanging', environment=hanging_library(cls.folder / 'library'), fleet_timeout=1)
        cls.good = sorted(set(cls.hosts) - {'bad', 'hanging'})
        (cls.folder / 'hosts.yml').write_text(json.dumps({'all': {
            'hosts': {name: {} for name in cls.hosts}, 'vars': {
                'fleet_inventory_folder': str(cls.folder), 'ansible_python_interpreter': '/usr/bin/python3'}}}))
        (cls.folder / 'role.yml').write_text(ROLE)
        (cls.folder / 'settings.yml').write_text(SETTINGS)

    def test_settings(self):
        few = ('h01', 'h02', 'h03')
        result, recap = self.play('-i', 'hosts.yml', 'settings.yml', '--check', '--diff', '--limit', ','.join(few))
        self.assertIn('+Link Down Timeout In Seconds: 45', result.stdout)
        for name in few:
            host = self.hosts[name]
            self.assertEqual((recap[name]['changed'], host.changes()), (1, []))
            self.assertIn('VEXAPI_GetHBAParamsInfo', host.calls())
            self.assertFalse(host.state.exists() or host.staged.exists())
        for changed in (1, 0):
            result, recap = self.play('-i', 'hosts.yml', 'settings.yml')
            self.assertEqual({name: recap[name]['changed'] for name in self.good}, {name: changed for name in self.good},
                             result.stdout)
            self.assertEqual([name for name in self.hosts if recap[name]['failed']], ['bad', 'hanging'])
            self.assertRegex(result.stdout, r'fatal: \[bad\].*Failed, Host not found')
            self.assertRegex(result.stdout, r'fatal: \[hanging\].*no answer within 4 seconds')
            # One write for each host, the first time.
            self.assertEqual([len(self.hosts[name].changes()) for name in self.good], [1] * HOSTS)

    def test_role(self):
        made = ('facts', 'systemd', 'fleet.csv', 'fleet.json')
        result, recap = self.play('-i', 'hosts.yml', 'role.yml', '--check', '--limit', 'h01')
        self.assertEqual((recap['h01']['failed'], recap['h01']['changed'] > 0), (0, True), result.stdout)
        self.assertEqual([name for name in made if (self.folder / name).exists()], [])

        result, recap = self.play('-i', 'hosts.yml', 'role.yml')
        self.assertEqual([name for name in self.hosts if recap[name]['failed']], ['bad', 'hanging'], result.stdout)
        self.assertRegex(result.stdout, "fatal: \\[bad\\].*doesn't start, status 0x1")
        self.assertRegex(result.stdout, r'fatal: \[hanging\].*no answer within 1 seconds')
        self.require_inventory()
        self.require_local_files()

        result, recap = self.play('-i', 'hosts.yml', 'role.yml', '--limit', 'h01,h02,h07', '-e',
                                  'fleet_fail_on_difference=true fleet_inventory_folder=')
        self.assertEqual({name: (recap[name]['changed'], recap[name]['failed']) for name in recap},
                         {'h01': (0, 0), 'h02': (0, 0), 'h07': (0, 1)}, result.stdout)

    def require_local_files(self):
        self.assertEqual((self.folder / 'systemd/orfc-exporter-counters.timer.d/fleet.conf').read_text(),
                         '[Timer]\n' "# An empty value forgets all of the unit's own times.\n"
                         'OnUnitActiveSec=\nOnBootSec=1min\nOnUnitActiveSec=5min\n')
        result = run('ansible', '-i', 'hosts.yml', 'h01', '-m', 'ansible.builtin.setup', '-a',
                     f'gather_subset=!all fact_path={self.folder}/facts', cwd=self.folder)
        self.assertRegex(result.stdout, r'"ansible_local": \{\s+"orfc": \{')
        self.assertIn('"ok": true', result.stdout)

    def require_inventory(self):
        inventory = json.loads((self.folder / 'fleet.json').read_text())
        self.assertEqual(inventory['failed'], ['bad', 'hanging'])
        self.assertEqual([row['host'] for row in inventory['rows']], self.good)
        self.assertEqual(inventory['rows'][6], {
            'host': 'h07', 'port': self.hosts['h07'].port, 'model': 'ORV2872', 'serial_number': 'S00007',
            'firmware_version': '9.08.02', 'driver_version': '5.4.82', 'port_name': self.hosts['h07'].port[3:],
            'state': 'online', 'speed_gbps': 16, 'fabric': '10:00:88:94:71:0b:3c:00',
            'switch': '20:07:88:94:71:0b:3c:00'})
        self.assertEqual(inventory['differences'], [{
            'host': 'h07', 'port': self.hosts['h07'].port, 'model': 'ORV2872', 'column': 'firmware_version',
            'value': '9.08.02', 'usual': '9.15.06'}])
        lines = (self.folder / 'fleet.csv').read_text().splitlines()
        self.assertEqual(len(lines), 1 + HOSTS)


class Page(PlaysTest):
    """The part of docs/FLEET.md on Ansible, from top to bottom."""

    def test_page(self):
        for number, name in enumerate(('db1', 'db2', 'web1'), 1):
            self.add_host(name, description(number, '9.08.02' if name == 'web1' else '9.15.06'))
        text = (SOURCES / 'docs/FLEET.md').read_text().partition('## Ansible')[2]
        blocks = re.findall(r'(?ms)^```(\w+) ?([\w.]*)\n(.*?)^```$|^    \$ ([^\n]*)\n((?:    [^$\n][^\n]*\n)*)', text)
        ran = 0
        for _, name, content, command, output in blocks:
            if name:
                (self.folder / name).write_text(content)
                continue
            for line in content.splitlines() or [command]:
                result = run('bash', '-c', line, cwd=self.folder)
                self.assertEqual(result.returncode, 0, f'{line}:\n{result.stdout}')
                if command:
                    self.assertEqual(result.stdout, re.sub('(?m)^    ', '', output), line)
                ran += 1
        self.assertEqual(ran, 5)
        self.assertEqual([len(host.changes()) for host in self.hosts.values()], [1, 1, 1])


class Collection(PlaysTest):
    """What Ansible's own checkers say."""

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        # Beside a repository, which ignores what is built.
        shutil.copytree(COLLECTIONS / 'ansible_collections', cls.folder / 'ansible_collections')
        cls.copy = cls.folder / 'ansible_collections' / COLLECTION.relative_to(COLLECTIONS / 'ansible_collections')

    def test_lint(self):
        result = run('ansible-lint', '--offline', '--nocolor', cwd=self.copy)
        self.assertRegex(result.stdout, r'Passed with production profile: 0 failure\(s\), 0 warning\(s\) on \d\d files')

    def test_lint_finds_something(self):
        tasks = self.copy / 'roles/fleet/tasks/facts.yml'
        text = tasks.read_text()
        self.addCleanup(tasks.write_text, text)
        tasks.write_text(text.replace('ansible.builtin.copy', 'copy'))
        result = run('ansible-lint', '--offline', '--nocolor', cwd=self.copy)
        self.assertIn('fqcn[action-core]', result.stdout)

    def test_documentation(self):
        """Each module and filter is documented, and modules document the arguments that they have."""
        kinds = {'module': 'modules', 'filter': 'filter'}
        for kind, folder in kinds.items():
            names = sorted(f'orfc.fc.{path.stem}' for path in (COLLECTION / 'plugins' / folder).glob('*.py'))
            result = run('ansible-doc', '-t', kind, '-j', *names)
            documents = json.loads(result.stdout)
            self.assertEqual(sorted(documents), names)
            for name, document in documents.items():
                self.assertTrue(document['examples'] and document['return'], name)
                if kind == 'module':
                    with self.subTest(module=name):
                        self.require_same(document['doc']['options'], arguments_of(name.rpartition('.')[2]))
        self.assertIn('fleet_inventory_folder', run('ansible-doc', '-t', 'role', 'orfc.fc.fleet').stdout)

    def require_same(self, documented, arguments):
        def essence(options, nested):
            return {name: (row.get('type', 'str'), row.get('choices'), row.get('default'), row.get('required', False),
                           row.get('elements'), essence(row.get(nested) or {}, nested)) for name, row in options.items()}
        self.assertEqual(essence(documented, 'suboptions'), essence(arguments, 'options'))

    def test_role_defaults(self):
        """The defaults of the role are those that it documents."""
        import yaml # pylint: disable=import-outside-toplevel
        role = COLLECTION / 'roles/fleet'
        options = yaml.safe_load((role / 'meta/argument_specs.yml').read_text())['argument_specs']['main']['options']
        self.assertEqual(yaml.safe_load((role / 'defaults/main.yml').read_text()),
                         {name: row['default'] for name, row in options.items()})

    def test_sanity(self):
        """Those of ansible-test's checks that need nothing from a network."""
        tests = '''action-plugin-docs changelog compile empty-init future-import-boilerplate line-endings
            metaclass-boilerplate no-assert no-basestring no-illegal-filenames no-main-display no-smart-quotes shebang
            symlinks use-argspec-type-path use-compat-six'''.split()
        arguments = [word for test in tests for word in ('--test', test)]
        result = run('ansible-test', 'sanity', '--python', '3.11', '--color', 'no', *arguments, cwd=self.copy)
        self.assertEqual(result.returncode, 0, result.stdout)
        for test in tests:
            self.assertIn(f'Running sanity test "{test}"', result.stdout)


PRINT_ARGUMENTS = '''
import json, runpy, sys
import ansible.module_utils.basic as basic
def take(self, argument_spec, **keywords):
    print(json.dumps(argument_spec))
    sys.exit()
basic.AnsibleModule.__init__ = take
runpy.run_module('ansible_collections.orfc.fc.plugins.modules.' + sys.argv[1], run_name='__main__')
'''


def arguments_of(module):
    return json.loads(subprocess.run(['python3', '-c', PRINT_ARGUMENTS, module], stdout=subprocess.PIPE, check=True,
                                     env=ENVIRONMENT | {'PYTHONPATH': str(COLLECTIONS)}).stdout)


if __name__ == '__main__':
    unittest.main()
