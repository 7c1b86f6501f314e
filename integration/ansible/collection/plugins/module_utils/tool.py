"""Runs a program of the host with a time limit, and reads what it prints strictly."""
from __future__ import absolute_import, division, print_function
__metaclass__ = type

import json
import os
import re
import signal
import subprocess
import xml.etree.ElementTree as ElementTree

JSON_FORMAT_VERSION = 1  # the first number of the documents that are understood
DATA_FIELD = 'Data'  # of a report that is a text of lines


class ToolFailure(Exception):
    """Why a program failed, in words for the user."""


def run(arguments, timeout):
    """The status and both outputs of a program, as bytes. It is killed with all that it started after `timeout`
    seconds, and that is a ToolFailure."""
    try:
        process = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                                   env=dict(os.environ, ORFC_XML='strict'), start_new_session=True)
    except OSError as error:
        raise ToolFailure('%s: %s' % (arguments[0], error.strerror))
    try:
        output, errors = process.communicate(timeout=timeout)
        return process.returncode, output, errors
    except BaseException as error:
        os.killpg(process.pid, signal.SIGKILL)
        try:
            process.communicate(timeout=1)
        except subprocess.TimeoutExpired:
            pass  # It waits for hardware, and ends when that answers.
        if isinstance(error, subprocess.TimeoutExpired):
            raise ToolFailure('%s: no answer within %s seconds' % (' '.join(arguments), timeout))
        raise


def without_duplicates(pairs, what):
    members = dict(pairs)
    if len(members) != len(pairs):
        raise ToolFailure('the document has the same %s twice' % what)
    return members


def read_json(text):
    """The records of a document of `orfc -o json`."""
    def refuse(constant):
        raise ToolFailure('the document has the number %s' % constant)
    try:
        document = json.loads(text.decode('utf-8'), parse_constant=refuse,
                              object_pairs_hook=lambda pairs: without_duplicates(pairs, 'key'))
    except (ValueError, RecursionError) as error:
        raise ToolFailure('the document is not JSON: %s' % error)
    try:
        version = document['json_format_version'][0]
        if version != JSON_FORMAT_VERSION:
            raise ToolFailure('the document is of version %s, only %d is understood' % (version, JSON_FORMAT_VERSION))
        if document['ok'] is not True:
            raise ToolFailure('; '.join(document['messages']))
        if any(type(record) is not dict for record in document['records']):
            raise ToolFailure('the document has records that are no objects')
        return document['records']
    except (KeyError, IndexError, TypeError) as error:
        raise ToolFailure('the document lacks %s' % error)


def read_value(element):
    text = element.text or ''
    if element.tag == 'list':
        return [read_structure(row, None) for row in element]
    if len(element) == 0:
        if element.tag == 'string':
            return text
        if element.tag == 'int' and re.match(r'-?[0-9]+\Z', text):
            return int(text)
        if element.tag == 'bool' and text in ('true', 'false'):
            return text == 'true'
    raise ToolFailure('the document has a bad <%s>' % element.tag)


def read_structure(element, name):
    if element.tag != 'structure' or name not in (None, element.get('typeName')):
        raise ToolFailure('the document has a <%s> "%s" where "%s" belongs'
                          % (element.tag, element.get('typeName'), name))
    fields = []
    for field in element:
        if field.tag != 'field' or not field.get('name') or len(field) != 1:
            raise ToolFailure('the document has a bad <%s>' % field.tag)
        fields.append((field.get('name'), read_value(field[0])))
    return without_duplicates(fields, 'field')


def read_document(text, name):
    """The fields of a document of `orfc-esxcli`, whose structure is called `name`. One that tells of a failure is a
    ToolFailure."""
    try:
        root = ElementTree.fromstring(text)
    except ElementTree.ParseError as error:
        raise ToolFailure('the document is not XML: %s' % error)
    if root.tag != 'output' or len(root) != 1:
        raise ToolFailure('the document has no <output> with one structure')
    fields = read_structure(root[0], name)
    message = fields.get('Message')
    if message != 'Success':
        raise ToolFailure(message or 'the document has no message')
    return fields


def read_row(fields):
    """The one row of a report as texts by label, whether its fields or the lines of its text are the labels."""
    rows = [value for value in fields.values() if type(value) is list]
    if len(rows) != 1 or len(rows[0]) != 1:
        raise ToolFailure('the document has no single row')
    row = rows[0][0]
    if list(row) == [DATA_FIELD]:
        lines = [line.strip().partition(':') for line in row[DATA_FIELD].splitlines()]
        return without_duplicates([(label, value.strip()) for label, colon, value in lines], 'line')
    return dict((label, str(value)) for label, value in row.items())


class Tool:
    """A program of the host, for a module with the arguments TOOL_ARGUMENTS."""

    def __init__(self, module, name):
        self.path = module.params['executable'] or module.get_bin_path(name)
        self.timeout = module.params['timeout']
        library = module.params.get('library')
        self.library = ['--library', library] if library else []
        if not self.path:
            raise ToolFailure('%s is not installed' % name)

    def __call__(self, arguments):
        """What it prints. A failure that it tells in its document is up to the reader."""
        status, output, errors = run([self.path] + arguments, self.timeout)
        if status < 0:
            raise ToolFailure('%s: ended by signal %d' % (self.path, -status))
        if not output:
            raise ToolFailure('%s: status %d: %s' % (self.path, status, errors.decode('utf-8', 'replace').strip()))
        return output


TOOL_ARGUMENTS = dict(
    executable=dict(type='path'),
    timeout=dict(type='int', default=60),
)
LIBRARY_ARGUMENT = dict(type='str')
