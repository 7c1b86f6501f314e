#!/usr/bin/env python3
"""The description of the commands: valid by its schema, and changed only together with its version."""
import copy
import hashlib
import json
import pathlib
import subprocess
import sys
import unittest

import jsonschema

SOURCES = pathlib.Path(__file__).parents[2] / 'integration' / 'description'
BUILD = pathlib.Path(sys.argv.pop(sys.argv.index('--build') + 1))
sys.argv.remove('--build')


def read_description():
    return json.loads((BUILD / 'integration/orfc-esxcli.json').read_text())


def digest(value):
    return hashlib.sha256(json.dumps(value, sort_keys=True).encode()).hexdigest()[:16]


class Description(unittest.TestCase):
    def setUp(self):
        self.schema = json.loads((SOURCES / 'orfc-esxcli.schema.json').read_text())
        self.description = read_description()

    def test_is_valid_by_its_schema(self):
        jsonschema.Draft7Validator.check_schema(self.schema)
        jsonschema.validate(self.description, self.schema)

    def test_schema_refuses_what_readers_do_not_know(self):
        def invalid(change):
            changed = copy.deepcopy(self.description)
            change(changed)
            with self.assertRaises(jsonschema.ValidationError):
                jsonschema.validate(changed, self.schema)
        command = self.description['families'][0]['commands'][0]
        self.assertEqual(command['name'], 'list')
        for key in command:
            invalid(lambda changed, key=key: changed['families'][0]['commands'][0].pop(key))
        invalid(lambda changed: changed['families'][0]['commands'][0].update(extra=1))
        invalid(lambda changed: changed['families'][0]['commands'][0]['document'].update(list_field='x'))
        invalid(lambda changed: changed['families'][0]['commands'][0]['document'].update(shape='report'))

    def test_changes_with_its_version(self):
        """A row of the file `versions` for each version, the last one for this description."""
        version = '.'.join(map(str, self.description.pop('schema_version')))
        del self.description['version'] # of the program
        rows = [line.split() for line in (SOURCES / 'versions').read_text().splitlines() if not line.startswith('#')]
        now = [version, digest(self.schema), digest(self.description)]
        self.assertEqual(rows[-1], now, 'append this row, with a version of its own (SCHEMA_VERSION in Describe.cpp)')
        numbers = [tuple(map(int, row[0].split('.'))) for row in rows]
        self.assertEqual(numbers, sorted(set(numbers)))
        for before, after in zip(rows, rows[1:]):
            if before[1] != after[1]:
                self.assertNotEqual(before[0].split('.')[0], after[0].split('.')[0], 'the schema has changed')

    def test_names_every_command_of_the_program(self):
        for family in self.description['families']:
            helped = subprocess.run([BUILD / 'orfc-esxcli', *family['words'], 'help'], capture_output=True, text=True,
                                    check=True).stdout
            for command in family['commands']:
                self.assertIn(command['text_name'], helped)

    def test_program_refuses_arguments(self):
        refused = subprocess.run([BUILD / 'orfc-describe', '--help'], capture_output=True, text=True, check=False)
        self.assertEqual((refused.returncode, refused.stdout), (2, ''))
        self.assertIn('usage', refused.stderr)

    def test_full_disk_is_told(self):
        with open('/dev/full', 'w', encoding='utf-8') as full:
            refused = subprocess.run([BUILD / 'orfc-describe'], stdout=full, stderr=subprocess.PIPE, text=True,
                                     check=False)
        self.assertEqual(refused.returncode, 1)
        self.assertIn('No space left', refused.stderr)


if __name__ == '__main__':
    unittest.main()
