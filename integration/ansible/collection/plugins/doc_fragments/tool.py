"""Options that every module has, and those that change settings of a port."""
from __future__ import absolute_import, division, print_function
__metaclass__ = type


class ModuleDocFragment(object):

    DOCUMENTATION = r'''
options:
  executable:
    description: The program to run, if it isn't the one of the C(PATH) of the host.
    type: path
  timeout:
    description: Seconds after which a run of the program is ended, and the module fails.
    type: int
    default: 60
'''

    LIBRARY = r'''
options:
  library:
    description: The management library, C(linux), C(simulator) or the path of one, if it isn't the one of the host.
    type: str
'''

    PORT = r'''
options:
  port:
    description: The port, as C(orfc ports) shows it, or its worldwide name in any usual spelling.
    type: str
    required: true
notes:
  - Values of before and after are those that C(orfc-esxcli) reports.
  - Whether an earlier change still waits for a reboot isn't known; I(reboot_required) tells of this run's change.
'''

    STAGED = r'''
options: {}
notes:
  - Settings are staged and written by this module at once. If settings of somebody else are staged at the port, the
    module fails, since they would be written too.
  - When the module fails, it removes what it has staged.
'''
