from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
name: differences
short_description: Ports that differ from most others of their model
description:
  - Compares columns of the rows of all ports of a model. The value of most ports is the usual one.
  - Of values that are equally frequent, the one that sorts last as a text is the usual one.
options:
  _input:
    description: The rows.
    type: list
    elements: dict
    required: true
  columns:
    description: What to compare.
    type: list
    elements: str
    required: true
'''

EXAMPLES = r'''
odd: "{{ rows | orfc.fc.differences(['firmware_version', 'driver_version']) }}"
'''

RETURN = r'''
_value:
  description: A record for each value that isn't the usual one, with host, port, model, column, value and usual.
  type: list
  elements: dict
'''

import collections


def differences(rows, columns):
    values = collections.defaultdict(collections.Counter)
    for row in rows:
        for column in columns:
            values[row['model'], column][row[column]] += 1
    usual = dict((key, max(counts, key=lambda value, counts=counts: (counts[value], str(value))))
                 for key, counts in values.items())
    return [dict(host=row['host'], port=row['port'], model=row['model'], column=column, value=row[column],
                 usual=usual[row['model'], column])
            for row in rows for column in columns if row[column] != usual[row['model'], column]]


class FilterModule(object):
    def filters(self):
        return dict(differences=differences)
