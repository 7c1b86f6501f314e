#!/usr/bin/python
from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
module: orfc_info
short_description: Adapters, ports, storage and paths of a host
description:
  - Returns the records of C(orfc -o json). C(orfc schema) describes them.
  - Changes nothing, and runs with C(--check) as well.
  - Also called C(orfc.fc.facts).
extends_documentation_fragment:
  - orfc.fc.tool
  - orfc.fc.tool.library
options:
  gather:
    description: Which kinds of records.
    type: list
    elements: str
    choices: [adapters, ports, targets, luns, paths, transceivers, counters]
    default: [adapters, ports]
author:
  - The orfc-esxcli maintainers (@orfc)
'''

EXAMPLES = r'''
- name: Which ports are there?
  orfc.fc.orfc_info:
  register: fc

- name: No link may be down
  ansible.builtin.assert:
    that: fc.ports | selectattr('state', 'ne', 'online') | length == 0
'''

RETURN = r'''
adapters:
  description: One record an adapter, if I(gather) has it.
  returned: success
  type: list
  elements: dict
ports:
  description: One record a port, if I(gather) has it; so for each other kind.
  returned: success
  type: list
  elements: dict
  sample: [{"port": "FC_21:00:00:24:ff:4b:18:7a", "state": "online", "speed_gbps": 16}]
'''

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.orfc.fc.plugins.module_utils.tool import (
    LIBRARY_ARGUMENT, TOOL_ARGUMENTS, Tool, ToolFailure, read_json)


def main():
    module = AnsibleModule(supports_check_mode=True, argument_spec=dict(
        TOOL_ARGUMENTS,
        gather=dict(type='list', elements='str', default=['adapters', 'ports'],
                    choices=['adapters', 'ports', 'targets', 'luns', 'paths', 'transceivers', 'counters']),
        library=LIBRARY_ARGUMENT,
    ))
    try:
        tool = Tool(module, 'orfc')
        records = dict((kind, read_json(tool(tool.library + ['-o', 'json', kind]))) for kind in module.params['gather'])
    except ToolFailure as failure:
        module.fail_json(msg=str(failure))
    module.exit_json(changed=False, **records)


if __name__ == '__main__':
    main()
