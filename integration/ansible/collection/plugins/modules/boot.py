#!/usr/bin/python
from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
module: boot
short_description: Boot settings of a Fibre Channel port
description:
  - Brings what a port boots from to the given state.
  - Only settings and boot targets that are given are compared and changed.
extends_documentation_fragment:
  - orfc.fc.tool
  - orfc.fc.tool.port
  - orfc.fc.tool.staged
  - orfc.fc.parameters.bootconfigext
options:
  mode:
    description:
      - The boot code to which the settings belong.
      - C(UEFI) and C(NVME) are for Larch, Alder and Birch.
    type: str
    choices: [BIOS, UEFI, NVME]
    required: true
  targets:
    description: Entries of the list of boot targets.
    type: list
    elements: dict
    suboptions:
      number:
        description: Which entry, from 0 to 3 with I(mode=BIOS), else from 0 to 7.
        type: int
        required: true
      wwpn:
        description:
          - Port name of the target, in any usual spelling. The port must see the target.
          - Zeros clear the entry.
        type: str
        required: true
      disk:
        description: The LUN or, with I(mode=NVME), the namespace.
        type: int
        default: 0
      enable:
        description: Whether the entry is used. Required with I(mode=NVME), and only for it.
        type: bool
author:
  - The orfc-esxcli maintainers (@orfc)
'''

EXAMPLES = r'''
- name: Boot from LUN 12 of the array
  orfc.fc.boot:
    port: FC_21:00:00:24:ff:7e:2d:94
    mode: UEFI
    enable_bfs: true
    targets:
      - number: 0
        wwpn: 50:06:0e:80:12:4a:7c:10
        disk: 12
'''

RETURN = r'''
before:
  description: The settings before, by the labels of C(orfc-esxcli).
  returned: success
  type: dict
  sample: {"Drive 0 LUN": "0"}
after:
  description: The settings as they were read back; with C(--check), as they would be.
  returned: success
  type: dict
  sample: {"Drive 0 LUN": "12"}
reboot_required:
  description: Whether the change takes effect after a reboot of the host only.
  returned: success
  type: bool
'''

from ansible_collections.orfc.fc.plugins.module_utils.settings import Settings, as_text, run_module, wish_of, wwn
from ansible_collections.orfc.fc.plugins.module_utils.tool import ToolFailure

FAMILY = 'bootconfigext'
TARGETS = dict(type='list', elements='dict', options=dict(
    number=dict(type='int', required=True),
    wwpn=dict(type='str', required=True),
    disk=dict(type='int', default=0),
    enable=dict(type='bool'),
))


def wish_of_target(target, mode):
    """Labels with their texts, and the options of a command, which takes one target."""
    number, name, disk, enable = target['number'], wwn(target['wwpn']), target['disk'], target['enable']
    if (enable is None) == (mode == 'NVME'):
        raise ToolFailure('targets: enable belongs to mode NVME, and to no other')
    options = ['--boot-target-num', str(number), '--boot-target-wwpn', name, '--boot-disk-num', str(disk)]
    if mode != 'NVME':
        return {'Drive %d WWPN' % number: name, 'Drive %d LUN' % number: str(disk)}, options
    return ({'Storage %d' % number: as_text(enable), 'Storage %d WWPN' % number: name,
             'Storage %d NamespaceID' % number: str(disk)}, options + ['--boot-target-enable', as_text(enable)])


def work(module):
    mode = module.params['mode']
    wanted, options = wish_of(module, FAMILY)
    changes = [options] if options else []
    if mode != 'BIOS' and 'Adapter BIOS' in wanted:
        wanted['Adapter Driver'] = wanted.pop('Adapter BIOS')
    targets = module.params['targets'] or []
    if len(set(target['number'] for target in targets)) != len(targets):
        raise ToolFailure('targets: the same number twice')
    for target in targets:
        labels, options = wish_of_target(target, mode)
        wanted.update(labels)
        changes.append(options)
    if not wanted:
        raise ToolFailure('neither a setting nor a target is given')
    Settings(module, FAMILY, [mode]).bring_to(wanted, changes)


def main():
    run_module(FAMILY, work, more_arguments=dict(
        mode=dict(type='str', choices=['BIOS', 'UEFI', 'NVME'], required=True), targets=TARGETS))


if __name__ == '__main__':
    main()
