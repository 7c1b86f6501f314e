#!/usr/bin/python3
"""The modules by themselves, each run as Ansible runs it, on simulated hosts."""
import fcntl
import itertools
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

from hosts import ARRAY, NVME_ARRAY, COLLECTION, COLLECTIONS, Host, description, hanging_library

sys.path.insert(0, str(COLLECTIONS))
sys.dont_write_bytecode = True
from ansible_collections.orfc.fc.plugins.module_utils.parameters import FAMILIES  # noqa: E402
from ansible_collections.orfc.fc.plugins.module_utils.settings import StagedFile  # noqa: E402
from ansible_collections.orfc.fc.plugins.module_utils.tool import ToolFailure  # noqa: E402

NUMBERS = itertools.count(1)
ZEROS = '00:00:00:00:00:00:00:00'


class ModuleTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        self.host = self.make_host()

    def make_host(self, **keywords):
        number = next(NUMBERS)
        return Host(self.folder / f'host{number}', number, **keywords)

    def start(self, module, host=None, check=False, **arguments):
        host = host or self.host
        if module not in ('orfc_info', 'health'):
            arguments.setdefault('port', host.port)
        arguments |= {'_ansible_check_mode': check, '_ansible_diff': True}
        process = subprocess.Popen([host.interpreter, COLLECTION / f'plugins/modules/{module}.py'], text=True,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   env=os.environ | {'PYTHONPATH': str(COLLECTIONS), 'PYTHONDONTWRITEBYTECODE': '1'})
        process.stdin.write(json.dumps({'ANSIBLE_MODULE_ARGS': arguments}))
        process.stdin.close()
        process.stdin = None
        return process

    def run_module(self, module, host=None, **arguments):
        output, errors = self.start(module, host, **arguments).communicate()
        self.assertEqual(errors, '')
        return json.loads(output)

    def succeed(self, module, **arguments):
        result = self.run_module(module, **arguments)
        self.assertNotIn('msg', result)
        return result

    def fail_with(self, words, module, **arguments):
        result = self.run_module(module, **arguments)
        self.assertTrue(result.get('failed'), result)
        self.assertIn(words, result['msg'])
        return result


class Wishes(ModuleTest):
    """What is asked for is brought about, once."""

    def require_settles(self, module, **wish):
        result = self.succeed(module, **wish)
        self.assertTrue(result['changed'], wish)
        again = self.succeed(module, **wish)
        self.assertFalse(again['changed'], wish)
        self.assertEqual(again['before'], result['after'])
        self.assertFalse(again['reboot_required'])
        return result

    def test_every_parameter(self):
        """Each parameter takes another value than the one it has, and the value comes back with it."""
        for module, family in [('hba_params', 'hbaparams'), ('credit_recovery', 'bbcr')]:
            before = self.succeed(module, check=True, **first_wish(family))['before']
            for name, row in FAMILIES[family]['parameters'].items():
                if row['type'] == 'bool':
                    value = before[row['label']] == 'false'
                elif 'choices' in row:
                    # The last one of a list that every port takes.
                    value = {'connection_options': 'Point_To_Point_Only', 'data_rate': '32_Gbps', 'frame_size': 512,
                             'operation_mode': 'Interrupt_When_Interrupt_Delay_Timer_Expires'}[name]
                else:
                    value = row['minimum'] + 7
                if name == 'execution_throttle': # not of this adapter
                    self.fail_with('Failed, feature not supported', module, **{name: value})
                    continue
                with self.subTest(parameter=name, value=value):
                    result = self.require_settles(module, **{name: value})
                    self.assertEqual(result['after'][row['label']], str(value).lower() if value is True or value is False
                                     else str(value))
        self.assertEqual(list(pathlib.Path('/tmp').glob('*_FC_*')), [])

    def test_several_at_once(self):
        result = self.require_settles('hba_params', link_down_timeout=45, frame_size=1024)
        self.assertTrue(result['reboot_required'])
        self.assertEqual([result[when]['Link Down Timeout In Seconds'] for when in ('before', 'after')], ['30', '45'])
        self.assertIn('Frame Size: 2048\n', result['diff'][0]['before'])
        self.assertIn('Frame Size: 1024\n', result['diff'][0]['after'])
        # One write for both.
        self.assertEqual(len(self.host.changes()), 1)

    def test_spellings_of_a_port(self):
        digits = self.host.port[3:].replace(':', '')
        for number, spelling in enumerate([digits, f'0x{digits}', self.host.port[3:].upper(), f'fc_{digits}']):
            result = self.succeed('hba_params', port=spelling, link_down_timeout=50 + number)
            self.assertEqual(result['diff'][0]['before_header'], self.host.port)

    def test_fec(self):
        before = self.succeed('fec', fec_status=True, check=True)['before']
        self.assertEqual(list(before), ['FEC_Status'])
        self.require_settles('fec', fec_status=before['FEC_Status'] == 'false')

    def test_boot(self):
        for mode in ('BIOS', 'UEFI'):
            result = self.require_settles('boot', mode=mode, enable_bfs=mode == 'BIOS', targets=[
                {'number': 0, 'wwpn': ARRAY.upper(), 'disk': 3}, {'number': 2, 'wwpn': ARRAY.replace(':', ''), 'disk': 4},
                {'number': 3, 'wwpn': ARRAY, 'disk': 15 if mode == 'BIOS' else 14}])
            self.assertEqual([result['after'][f'Drive {number} LUN'] for number in range(3)], ['3', '0', '4'])
        self.assertEqual(result['after']['Adapter Driver'], 'false')
        self.require_settles('boot', mode='UEFI', targets=[{'number': 2, 'wwpn': ZEROS}])

    def test_boot_from_nvme(self):
        target = {'number': 1, 'wwpn': NVME_ARRAY, 'disk': 2, 'enable': True}
        result = self.require_settles('boot', mode='NVME', fc_nvme=True, targets=[target])
        self.assertEqual(result['after']['Storage 1 NamespaceID'], '2')
        self.fail_with('enable', 'boot', mode='NVME', targets=[{'number': 1, 'wwpn': NVME_ARRAY}])


def first_wish(family):
    name, row = next(iter(FAMILIES[family]['parameters'].items()))
    return {name: row['choices'][0] if 'choices' in row else True}


class Refusals(ModuleTest):
    def require_untouched(self):
        self.assertEqual(self.host.changes(), [])
        self.assertFalse(self.host.state.exists())

    def test_check_mode_writes_nothing(self):
        result = self.succeed('hba_params', link_down_timeout=45, check=True)
        self.assertTrue(result['changed'])
        self.assertEqual(result['after']['Link Down Timeout In Seconds'], '45')
        self.require_untouched()
        self.assertFalse(self.host.staged.exists())

    def test_staged_by_somebody_else(self):
        subprocess.run(['orfc-esxcli', '-t', 'port', '-s', 'hbaparams', 'setFile', self.host.port, '-z', '512'],
                       env=os.environ | self.host.variables, stdout=subprocess.DEVNULL, check=True)
        content = self.host.staged.read_text()
        self.addCleanup(self.host.staged.unlink)
        for check in (True, False):
            self.fail_with('somebody else', 'hba_params', link_down_timeout=45, check=check)
        # What is as wished needs no file.
        self.assertFalse(self.succeed('hba_params', link_down_timeout=30)['changed'])
        self.assertEqual(self.host.staged.read_text(), content)
        self.require_untouched()

    def test_files_that_are_no_files(self):
        for make in (lambda path: path.symlink_to('/nowhere'), os.mkfifo, pathlib.Path.mkdir):
            make(self.host.staged)
            self.fail_with('somebody else', 'hba_params', link_down_timeout=45)
            self.assertTrue(os.path.lexists(self.host.staged))
            self.host.staged.rmdir() if self.host.staged.is_dir() else self.host.staged.unlink()
        self.require_untouched()

    def test_option_that_is_refused(self):
        # orfc-esxcli stages the current parameters before it looks at the option.
        self.fail_with('Failed, Invalid parameter', 'hba_params', frame_size=2112)
        self.assertFalse(self.host.staged.exists())
        self.require_untouched()

    def test_write_that_fails(self):
        host = self.make_host(VEXAPI_SIM_FAULTS='VEXAPI_UpdateHBAParameters=5')
        self.fail_with('Failed, NVRAM update failed', 'hba_params', host=host, link_down_timeout=45)
        self.assertFalse(host.staged.exists())

    def test_write_without_effect(self):
        # Status 0, and nothing is done.
        host = self.make_host(VEXAPI_SIM_FAULTS='VEXAPI_UpdateHBAParameters=0')
        self.fail_with('Link Down Timeout In Seconds were written, but read back differently', 'hba_params', host=host,
                       link_down_timeout=45)
        self.assertFalse(host.staged.exists())

    def hold_state(self):
        """Holds the lock of the host's state, so that a write waits."""
        lock = open(f'{self.host.state}.lock', 'w', encoding='utf-8')
        self.addCleanup(lock.close)
        fcntl.flock(lock, fcntl.LOCK_EX)
        return lock

    def test_write_that_hangs(self):
        self.hold_state()
        self.fail_with('no answer within 2 seconds', 'hba_params', link_down_timeout=45, timeout=2)
        self.assertFalse(self.host.staged.exists())

    def wait_for_write(self, process):
        """Until the module has staged its settings and runs the program a third time, after `get` and `setFile`: the
        write waits."""
        while not self.host.staged.exists() or self.host.calls().count('VEXAPI_Initialize') < 3:
            self.assertIsNone(process.poll())
            time.sleep(0.05)

    def test_module_that_is_ended(self):
        self.hold_state()
        process = self.start('hba_params', link_down_timeout=45)
        self.wait_for_write(process)
        self.assertTrue(self.host.staged.exists())
        process.send_signal(signal.SIGHUP)
        process.communicate()
        self.assertFalse(self.host.staged.exists())

    def test_staged_by_somebody_else_meanwhile(self):
        staged = StagedFile('HBAParams', self.host.port)
        self.assertEqual(staged.path, str(self.host.staged))
        staged.require_unchanged()
        self.host.staged.write_text('Frame_Size=1024\n')
        self.assertRaisesRegex(ToolFailure, 'somebody else', staged.require_unchanged)
        staged.keep()
        staged.require_unchanged()
        self.host.staged.write_text('Frame_Size=512\n')
        self.assertRaisesRegex(ToolFailure, 'somebody else', staged.require_unchanged)
        staged.discard()
        self.assertTrue(self.host.staged.exists())
        staged.keep()
        staged.discard()
        self.assertFalse(self.host.staged.exists())

    def test_two_runs_at_once(self):
        self.hold_state()
        process = self.start('hba_params', link_down_timeout=45, timeout=4)
        self.wait_for_write(process)
        self.fail_with('another run', 'hba_params', link_down_timeout=50)
        process.communicate()
        self.assertFalse(self.host.staged.exists())

    def test_values(self):
        self.fail_with('link_down_timeout: 241 is not from 0 to 240', 'hba_params', link_down_timeout=241)
        self.fail_with('is no worldwide name', 'hba_params', port='../../etc/passwd', link_down_timeout=24)
        self.fail_with('one of the following is required', 'hba_params')
        self.fail_with('neither', 'boot', mode='BIOS')
        self.fail_with('Failed, Invalid parameter', 'hba_params', port='21000024ffffffff', link_down_timeout=24)
        self.require_untouched()

    def test_not_supported(self):
        what = description(int(self.host.port[-2:], 16))
        what['Adapters'][0]['PhyPorts'][0]['Protocols'][0]['ChipProperty']['DeviceId'] = '0x2532'
        (self.host.folder / 'host.json').write_text(json.dumps(what))
        self.fail_with('not supported here: Virtual Lane', 'hba_params', virtual_lane=True)
        self.fail_with('Failed, feature not supported', 'credit_recovery', bbcr_status=True)
        self.require_untouched()


class Programs(ModuleTest):
    """Programs that don't do what they should."""

    def program(self, text):
        path = self.folder / 'program'
        path.write_text(f'#!/bin/sh\n{text}\n')
        path.chmod(0o755)
        return str(path)

    def test_missing(self):
        self.fail_with('No such file', 'orfc_info', executable='/nowhere')

    def test_hangs_with_children(self):
        mark = self.folder / 'mark'
        begun = time.monotonic()
        self.fail_with('no answer within 1 seconds', 'orfc_info', timeout=1,
                       executable=self.program(f'trap "" TERM; (sleep 3; touch {mark}) & wait'))
        self.assertLess(time.monotonic() - begun, 3)
        time.sleep(2.5)
        self.assertFalse(mark.exists())

    def test_library_that_hangs(self):
        host = self.make_host(**hanging_library(self.folder / 'library'))
        self.fail_with('no answer within 1 seconds', 'orfc_info', host=host, timeout=1)
        self.fail_with('no answer within 1 seconds', 'fec', host=host, timeout=1, fec_status=True)

    def test_bad_documents(self):
        for text, words in [('echo nonsense', 'not JSON'), ('exit 3', 'status 3'), ('kill -9 $$', 'signal 9'),
                            ('echo "{}"', 'lacks')]:
            self.fail_with(words, 'orfc_info', executable=self.program(text))
        self.fail_with('not XML', 'fec', executable=self.program('echo nonsense'), fec_status=True)


class Info(ModuleTest):
    def test_kinds(self):
        kinds = ['adapters', 'ports', 'targets', 'luns', 'paths', 'transceivers', 'counters']
        result = self.succeed('orfc_info', gather=kinds, check=True)
        self.assertFalse(result['changed'])
        self.assertEqual(result['ports'][0]['port'], self.host.port)
        self.assertEqual([len(result[kind]) for kind in kinds[:4]], [1, 1, 2, 18])
        self.assertEqual(len(result['paths']), 18)

    def test_failure(self):
        host = self.make_host(VEXAPI_SIM_FAULTS='VEXAPI_Initialize=1')
        self.fail_with("doesn't start, status 0x1", 'orfc_info', host=host)

    def facts(self, host, **variables):
        result = subprocess.run([COLLECTION / 'roles/fleet/files/orfc.fact'], stdout=subprocess.PIPE, check=True,
                                env=os.environ | host.variables | variables)
        return json.loads(result.stdout)

    def test_facts(self):
        facts = self.facts(self.host)
        self.assertEqual((facts['ok'], facts['ports'][0]['port']), (True, self.host.port))

    def test_facts_that_fail(self):
        bad = self.make_host(VEXAPI_SIM_FAULTS='VEXAPI_Initialize=1')
        hanging = self.make_host(**hanging_library(self.folder / 'library'))
        (self.folder / 'bin').mkdir()
        shutil.copy(shutil.which('false'), self.folder / 'bin/orfc')
        for host, variables in [(bad, {}), (hanging, {'ORFC_FACT_TIMEOUT': '0.5'}),
                                (self.host, {'PATH': f'{self.folder}/bin:/usr/bin'}), (self.host, {'PATH': '/usr/bin'})]:
            facts = self.facts(host, **variables)
            self.assertEqual((facts['ok'], len(facts['messages'])), (False, 1))


class Health(ModuleTest):
    def make_sick(self):
        """The port's link is down."""
        path = self.host.folder / 'host.json'
        what = json.loads(path.read_text())
        what['Adapters'][0]['PhyPorts'][0]['Protocols'][0]['PortState'] = 3
        path.write_text(json.dumps(what))

    def test_fails_by_verdict(self):
        self.make_sick()
        state = str(self.folder / 'health.json')
        result = self.fail_with('critical: ', 'health', state=state)
        self.assertEqual(result['verdict'], 'critical')
        self.assertIn(self.host.port, [finding['port'] for finding in result['findings']])
        result = self.succeed('health', fail_on=[], state=state)
        self.assertEqual((result['changed'], result['verdict']), (False, 'critical'))
        self.assertTrue(any(text.startswith('critical: ') for text in result['warnings']))

    def test_check_mode_keeps_no_readings(self):
        state = self.folder / 'health.json'
        self.succeed('health', fail_on=[], state=str(state), check=True)
        self.assertFalse(state.exists())
        self.succeed('health', fail_on=[], state=str(state))
        self.assertTrue(state.exists())

    def test_unheard_of_verdict(self):
        program = self.folder / 'program'
        program.write_text('#!/bin/sh\necho \'{"json_format_version":[1,0],"ok":true,"messages":[],'
                           '"records":[{"verdict":"fine"}]}\'\n')
        program.chmod(0o755)
        self.fail_with('verdicts: fine', 'health', executable=str(program))
        program.write_text(program.read_text().replace('fine', 'ok'))
        self.assertEqual(self.succeed('health', executable=str(program))['verdict'], 'ok')


if __name__ == '__main__':
    unittest.main()
