"""Simulated hosts for Ansible: each a folder with a description, a state, a journal, and an interpreter that makes
modules see them."""
import json
import os
import pathlib
import re
import shlex

BUILD = pathlib.Path(os.environ['BUILD'])
SOURCES = pathlib.Path(__file__).resolve().parents[2]
COLLECTIONS = BUILD / 'integration'
COLLECTION = COLLECTIONS / 'ansible_collections/orfc/fc'
ARRAY = '50:06:0e:80:12:4a:7c:10'
NVME_ARRAY = '50:0a:09:81:a1:c3:40:10'


def description(number, firmware='9.15.06'):
    """A Birch adapter with a port whose name has the number, a target with 16 LUNs, and one with 2 namespaces."""
    return {'Adapters': [{'Model': 'ORV2872', 'SerialNumber': f'S{number:05}', 'PhyPorts': [{'Protocols': [{
        'ChipProperty': {'DeviceId': '0x2281'}, 'SupportedSpeeds': '0x7C', 'PortSpeed': 22, 'WWPN': wwpn(number),
        'OptionRomMask': '0x0a', 'RunningFwVersion': firmware, 'DriverVersion': '5.4.82', 'CreditRecovery': {'Status': 1, 'Configured': 5},
        'PrincipalFabricWWN': '10:00:88:94:71:0b:3c:00', 'AdjacentFabricWWN': '20:07:88:94:71:0b:3c:00',
        'Targets': [
            {'PortName': ARRAY, 'Luns': [{'LunNumber': 0, 'Repeat': 16}]},
            {'PortName': NVME_ARRAY, 'TargetFlags': '00:00:00:00:00:08', 'StorageNqn': 'nqn.2010-06.com.basalt:array',
             'Luns': [{'LunNumber': 1}, {'LunNumber': 2}]},
        ],
    }]}]}]}


def wwpn(number):
    return f'21:00:00:24:ff:00:{number >> 8:02x}:{number & 255:02x}'


class Host:
    def __init__(self, folder, number, what=None, **variables):
        """`what` is the description, if it isn't the usual one; `variables` are of the modules' environment."""
        self.folder = pathlib.Path(folder)
        self.folder.mkdir(parents=True)
        self.port = f'FC_{wwpn(number)}'
        self.staged = pathlib.Path(f'/tmp/HBAParams_{self.port}')
        self.state = self.folder / 'state'
        self.journal = self.folder / 'journal'
        (self.folder / 'host.json').write_text(json.dumps(what or description(number)))
        self.variables = {'VEXAPI_SIM_HOST': f'{self.folder}/host.json', 'VEXAPI_SIM_STATE': f'{self.state}',
                          'VEXAPI_SIM_JOURNAL': f'{self.journal}', **variables}
        self.interpreter = self.folder / 'python'
        assignments = ' '.join(shlex.quote(f'{key}={value}') for key, value in self.variables.items())
        self.interpreter.write_text(f'#!/bin/sh\nexec env {assignments} python3 "$@"\n')
        self.interpreter.chmod(0o755)

    def calls(self):
        """The functions of the library that were called."""
        lines = self.journal.read_text().splitlines() if self.journal.exists() else []
        return [json.loads(line)['function'] for line in lines]

    def changes(self):
        return [call for call in self.calls() if re.match('VEXAPI_(Update|FCSet)', call)]


def hanging_library(folder):
    """The variables of a host whose library never starts."""
    folder.mkdir()
    (folder / 'libvexapi_fconly.so').symlink_to(BUILD / 'tests/orfc/libwaiting_library.so')
    os.mkfifo(folder / 'pipe')
    return {'LD_LIBRARY_PATH': str(folder), 'WAITING_LIBRARY_PIPE': f'{folder}/pipe'}
