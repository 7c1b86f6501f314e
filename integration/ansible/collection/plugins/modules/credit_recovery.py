#!/usr/bin/python
from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
module: credit_recovery
short_description: Buffer-to-buffer credit recovery of a Fibre Channel port
description:
  - Brings credit recovery of a port to the given state. Larch, Alder and Birch.
  - Only parameters that are given are compared and changed.
extends_documentation_fragment:
  - orfc.fc.tool
  - orfc.fc.tool.port
  - orfc.fc.tool.staged
  - orfc.fc.parameters.bbcr
author:
  - The orfc-esxcli maintainers (@orfc)
'''

EXAMPLES = r'''
- name: Recover credits
  orfc.fc.credit_recovery:
    port: FC_21:00:00:24:ff:7e:2d:94
    bbcr_status: true
    bbcr_configured: 8
'''

RETURN = r'''
before:
  description: The settings before, by the labels of C(orfc-esxcli).
  returned: success
  type: dict
  sample: {"BBCR Configured": "5"}
after:
  description: The settings as they were read back; with C(--check), as they would be.
  returned: success
  type: dict
  sample: {"BBCR Configured": "8"}
reboot_required:
  description: Whether the change takes effect after a reboot of the host only.
  returned: success
  type: bool
'''

from ansible_collections.orfc.fc.plugins.module_utils.settings import set_parameters

if __name__ == '__main__':
    set_parameters('bbcr')
