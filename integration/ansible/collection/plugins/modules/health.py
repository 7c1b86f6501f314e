#!/usr/bin/python
from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
module: health
short_description: Verdicts on the adapters, links, transceivers, storage and paths of a host
description:
  - Returns the records of C(orfc health -o json), and fails or warns by their verdicts.
  - C(orfc health) compares with its last run, of which it keeps a file. With C(--check), the file is neither read nor
    written.
extends_documentation_fragment:
  - orfc.fc.tool
  - orfc.fc.tool.library
options:
  fail_on:
    description:
      - The verdicts with which the module fails.
      - It warns of all others but C(ok).
    type: list
    elements: str
    choices: [unknown, warning, critical]
    default: [critical]
  names:
    description: Names of objects, in any spelling, if not all are to be judged.
    type: list
    elements: str
    default: []
  rules:
    description: A file of the host that changes bounds and switches rules off.
    type: path
  state:
    description: The file of earlier readings, if it isn't the usual one.
    type: path
  far:
    description: Whether the far end of each link is asked, too, which sends a frame.
    type: bool
    default: false
author:
  - The orfc-esxcli maintainers (@orfc)
'''

EXAMPLES = r'''
- name: Nothing may be critical
  orfc.fc.health:

- name: Collect what isn't well, and go on
  orfc.fc.health:
    fail_on: []
  register: fc
'''

RETURN = r'''
verdict:
  description: The worst one, C(ok) if there is none.
  returned: always
  type: str
  sample: critical
findings:
  description: What isn't C(ok).
  returned: always
  type: list
  elements: dict
  sample: [{"verdict": "critical", "rule": "link-down", "object": "FC_21:00:00:24:ff:4b:18:7a"}]
'''

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.orfc.fc.plugins.module_utils.tool import (
    LIBRARY_ARGUMENT, TOOL_ARGUMENTS, Tool, ToolFailure, read_json)

VERDICTS = ['ok', 'unknown', 'warning', 'critical']  # the worst is the last


def options_of(module):
    options = ['--far'] if module.params['far'] else []
    if module.params['rules']:
        options += ['--rules', module.params['rules']]
    if module.check_mode or module.params['state']:
        options += ['--state', '' if module.check_mode else module.params['state']]
    return options


def main():
    module = AnsibleModule(supports_check_mode=True, argument_spec=dict(
        TOOL_ARGUMENTS,
        library=LIBRARY_ARGUMENT,
        fail_on=dict(type='list', elements='str', default=['critical'], choices=VERDICTS[1:]),
        names=dict(type='list', elements='str', default=[]),
        rules=dict(type='path'),
        state=dict(type='path'),
        far=dict(type='bool', default=False),
    ))
    try:
        tool = Tool(module, 'orfc')
        records = read_json(tool(tool.library + ['-o', 'json', 'health'] + options_of(module)
                                 + ['--'] + module.params['names']))
        unheard = sorted(set(str(record.get('verdict')) for record in records) - set(VERDICTS))
        if unheard:
            raise ToolFailure('the document has unheard-of verdicts: %s' % ', '.join(unheard))
    except ToolFailure as failure:
        module.fail_json(msg=str(failure))
    findings = [record for record in records if record['verdict'] != 'ok']
    worst = max((record['verdict'] for record in records), key=VERDICTS.index, default='ok')
    bad = []
    for finding in findings:
        text = '%s: %s: %s' % (finding['verdict'], finding['object'], finding['reason'])
        if finding['verdict'] in module.params['fail_on']:
            bad.append(text)
        else:
            module.warn(text)
    if bad:
        module.fail_json(msg='; '.join(bad), verdict=worst, findings=findings)
    module.exit_json(changed=False, verdict=worst, findings=findings)


if __name__ == '__main__':
    main()
