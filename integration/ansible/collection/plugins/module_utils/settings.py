"""Brings the settings of a port to a wished state: compares, stages, writes once, and reads back."""
from __future__ import absolute_import, division, print_function
__metaclass__ = type

import os
import re
import signal
import socket
import stat
import sys

from ansible.module_utils.basic import AnsibleModule
from ansible_collections.orfc.fc.plugins.module_utils.parameters import FAMILIES
from ansible_collections.orfc.fc.plugins.module_utils.tool import (
    TOOL_ARGUMENTS, Tool, ToolFailure, read_document, read_row)

STAGED_FOLDER = '/tmp'  # where orfc-esxcli keeps settings between `setFile` and `set`
NOT_SUPPORTED = 'NA'


def wwn(text):
    """A worldwide name as the programs write it, from any usual spelling."""
    digits = re.sub(r'\A0x|:', '', text.lower())
    if not re.match(r'[0-9a-f]{16}\Z', digits):
        raise ToolFailure('%s: is no worldwide name' % text)
    return ':'.join(digits[at:at + 2] for at in range(0, 16, 2))


def port_identifier(text):
    return 'FC_' + wwn(text[3:] if text.upper().startswith('FC_') else text)


def as_text(value):
    return str(value).lower() if type(value) is bool else str(value)


def parameter_arguments(family):
    """The arguments of a module for the parameters of a family."""
    return dict((name, dict((key, row[key]) for key in ('type', 'choices') if key in row))
                for name, row in FAMILIES[family]['parameters'].items())


def wish_of(module, family):
    """What the module's parameters ask for: labels with their texts, and the options of a command."""
    wanted, options = {}, []
    for name, row in FAMILIES[family]['parameters'].items():
        value = module.params[name]
        if value is None:
            continue
        if 'minimum' in row and not row['minimum'] <= value <= row['maximum']:
            raise ToolFailure('%s: %d is not from %d to %d' % (name, value, row['minimum'], row['maximum']))
        wanted[row['label']] = as_text(value)
        options += [row['option'], as_text(value)]
    return wanted, options


class StagedFile:
    """The file in which orfc-esxcli stages settings of a port. Everything in it is written by `set`, so it must be
    that of this run alone."""

    def __init__(self, name, port):
        self.path = '%s/%s_%s' % (STAGED_FOLDER, name, port)
        self.content = None  # what this run has staged, when known

    def refuse_foreign(self):
        if os.path.lexists(self.path):
            raise ToolFailure('%s: settings of somebody else are staged, and would be written too. Write or delete '
                              'them first' % self.path)

    def claim(self):
        """Keeps other runs of this module away, for as long as the result lives."""
        claim = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        try:
            claim.bind('\0orfc.fc:' + self.path)
        except OSError:
            raise ToolFailure('%s: another run is changing these settings' % self.path)
        return claim

    def read(self):
        """The content of the file, None if there is none. One that isn't the user's own is a ToolFailure."""
        try:
            descriptor = os.open(self.path, os.O_RDONLY | os.O_NOFOLLOW | os.O_NONBLOCK)
        except FileNotFoundError:
            return None
        except OSError as error:
            raise ToolFailure('%s: %s' % (self.path, error.strerror))
        with os.fdopen(descriptor, 'rb') as file:
            status = os.fstat(descriptor)
            if not stat.S_ISREG(status.st_mode) or status.st_uid != os.geteuid():
                raise ToolFailure('%s: is not a file of this user' % self.path)
            return file.read(1 << 20)

    def keep(self):
        self.content = self.read()

    def require_unchanged(self):
        if self.read() != self.content:
            raise ToolFailure('%s: was changed by somebody else while this ran, and is left as it is' % self.path)

    def discard(self):
        """Removes what this run staged, and nothing that somebody else has changed since."""
        content = self.read()
        if content is not None and self.content in (None, content):
            os.unlink(self.path)


class Settings:
    """A family's settings of a port, with the words between its identifier and the options, as `mode`."""

    def __init__(self, module, family, words=()):
        self.module = module
        self.family = FAMILIES[family]
        self.words = list(words)
        self.port = port_identifier(module.params['port'])
        self.tool = Tool(module, 'orfc-esxcli')

    def command(self, name, arguments=()):
        """The fields of a command's document, without rows; and its row."""
        output = self.tool(self.family['words'] + [name, self.port] + list(arguments))
        fields = read_document(output, self.family['structure'])
        return fields, read_row(fields)

    def get(self):
        row = self.command('get', self.words)[1]
        labels = self.family['labels']
        return dict((label, row[label]) for label in row if not labels or label in labels)

    def write(self, wanted, changes):
        """Makes the changes, each a list of options. Returns whether the host must be rebooted."""
        if not self.family['staged']:
            return self.command('set', changes[0])[0]
        staged = StagedFile(self.family['staged'], self.port)
        with staged.claim():
            staged.refuse_foreign()
            try:
                for options in changes:
                    staged.require_unchanged()
                    row = self.command('setFile', self.words + options)[1]
                    staged.keep()
                require_wanted(wanted, row, 'were staged differently')
                staged.require_unchanged()
                return self.command('set')[0]
            finally:
                staged.discard()

    def bring_to(self, wanted, changes):
        """Ends the module with its result. `wanted` has labels with their texts."""
        before = self.get()
        unsupported = sorted(label for label in wanted if before.get(label, NOT_SUPPORTED) == NOT_SUPPORTED)
        if unsupported:
            raise ToolFailure('%s: not supported here: %s' % (self.port, ', '.join(unsupported)))
        result = dict(changed=any(before[label] != wanted[label] for label in wanted), reboot_required=False)
        after = dict(before, **wanted)
        if result['changed'] and self.module.check_mode:
            if self.family['staged']:
                StagedFile(self.family['staged'], self.port).refuse_foreign()
        elif result['changed']:
            result['reboot_required'] = self.write(wanted, changes).get('Reboot Required', False)
            after = self.get()
            require_wanted(wanted, after, 'were written, but read back differently')
        self.module.exit_json(before=before, after=after, diff=[dict(
            before_header=self.port, after_header=self.port, before=as_lines(before), after=as_lines(after))], **result)


def require_wanted(wanted, row, what):
    different = sorted(label for label in wanted if row.get(label) != wanted[label])
    if different:
        raise ToolFailure('%s %s' % (', '.join(different), what))


def as_lines(row):
    return ''.join('%s: %s\n' % item for item in row.items())


def run_module(family, work, more_arguments=None, **keywords):
    """A module for the parameters of a family: `work(module)` ends it with its result."""
    arguments = dict(TOOL_ARGUMENTS, port=dict(type='str', required=True), **parameter_arguments(family))
    module = AnsibleModule(argument_spec=dict(arguments, **(more_arguments or {})), supports_check_mode=True, **keywords)
    # A connection that breaks ends the module, and must not leave anything staged.
    for number in (signal.SIGHUP, signal.SIGTERM):
        signal.signal(number, lambda *ignored: sys.exit(1))
    try:
        work(module)
    except ToolFailure as failure:
        module.fail_json(msg=str(failure))


def set_parameters(family):
    """A module that does nothing else."""
    def work(module):
        wanted, options = wish_of(module, family)
        Settings(module, family).bring_to(wanted, [options])
    run_module(family, work, required_one_of=[list(FAMILIES[family]['parameters'])])
