#!/usr/bin/python
from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
module: hba_params
short_description: NVRAM parameters of a Fibre Channel port
description:
  - Brings NVRAM parameters of a port to the given values.
  - Only parameters that are given are compared and changed.
extends_documentation_fragment:
  - orfc.fc.tool
  - orfc.fc.tool.port
  - orfc.fc.tool.staged
  - orfc.fc.parameters.hbaparams
author:
  - The orfc-esxcli maintainers (@orfc)
'''

EXAMPLES = r'''
- name: Ports wait 45 seconds for a link
  orfc.fc.hba_params:
    port: FC_21:00:00:24:ff:4b:18:7a
    link_down_timeout: 45
    data_rate: Auto
  register: parameters

- name: Tell who must reboot
  ansible.builtin.debug:
    msg: Reboot for {{ parameters.diff }}
  when: parameters.reboot_required
'''

RETURN = r'''
before:
  description: The settings before, by the labels of C(orfc-esxcli).
  returned: success
  type: dict
  sample: {"Link Down Timeout In Seconds": "30"}
after:
  description: The settings as they were read back; with C(--check), as they would be.
  returned: success
  type: dict
  sample: {"Link Down Timeout In Seconds": "45"}
reboot_required:
  description: Whether the change takes effect after a reboot of the host only.
  returned: success
  type: bool
'''

from ansible_collections.orfc.fc.plugins.module_utils.settings import set_parameters

if __name__ == '__main__':
    set_parameters('hbaparams')
