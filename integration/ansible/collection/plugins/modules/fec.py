#!/usr/bin/python
from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
module: fec
short_description: Forward error correction of a Fibre Channel port
description:
  - Brings forward error correction of a port to the given state. It can be changed at 16 Gbps and while the port is offline.
  - Only parameters that are given are compared and changed.
extends_documentation_fragment:
  - orfc.fc.tool
  - orfc.fc.tool.port
  - orfc.fc.parameters.fec
author:
  - The orfc-esxcli maintainers (@orfc)
'''

EXAMPLES = r'''
- name: Correct errors
  orfc.fc.fec:
    port: FC_21:00:00:24:ff:4b:18:7a
    fec_status: true
'''

RETURN = r'''
before:
  description: The settings before, by the labels of C(orfc-esxcli).
  returned: success
  type: dict
  sample: {"FEC_Status": "false"}
after:
  description: The settings as they were read back; with C(--check), as they would be.
  returned: success
  type: dict
  sample: {"FEC_Status": "true"}
reboot_required:
  description: Whether the change takes effect after a reboot of the host only.
  returned: success
  type: bool
'''

from ansible_collections.orfc.fc.plugins.module_utils.settings import set_parameters

if __name__ == '__main__':
    set_parameters('fec')
