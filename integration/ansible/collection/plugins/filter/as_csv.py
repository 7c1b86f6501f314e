from __future__ import absolute_import, division, print_function
__metaclass__ = type

DOCUMENTATION = r'''
name: as_csv
short_description: Rows as CSV
description: Writes rows with the same columns as a text of CSV, with a line of headings. Unknown values are empty.
options:
  _input:
    description: The rows.
    type: list
    elements: dict
    required: true
'''

EXAMPLES = r'''
text: "{{ rows | orfc.fc.as_csv }}"
'''

RETURN = r'''
_value:
  description: The text.
  type: str
'''

import csv
import io


def as_csv(rows):
    text = io.StringIO()
    writer = csv.writer(text, lineterminator='\n')
    if rows:
        writer.writerow(rows[0])
    writer.writerows(row.values() for row in rows)
    return text.getvalue()


class FilterModule(object):
    def filters(self):
        return dict(as_csv=as_csv)
